// The time to load a numbered text with the real run time and the real resource service: the cut marker,
// whose resource object is created for each use, and a text of the component, whose object is cached.
#include <benchmark/benchmark.h>

#include "bench/HomeFolder.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "runtime/ClassLookup.h"
#include "runtime/Folders.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace {

using namespace Platform;
using namespace TvEmailServices;

// The run time's services, with the resource files of the component, which is linked into this program,
// beside the libraries.
class BesideTheLibraries : public PlatformServices {
 public:
  ObjectRef CreateByName(StringView name) override { return real_.CreateByName(name); }
  ObjectRef CreateByClass(const Guid& id) override { return real_.CreateByClass(id); }
  String FolderOf(const void*) override {
    return real_.FolderOf(reinterpret_cast<const void*>(&Runtime::LibraryFolder));
  }
  Moment Now() override { return real_.Now(); }
  RandomSource& Random() override { return real_.Random(); }
  FormsToolkit& Toolkit() override { return real_.Toolkit(); }

 private:
  PlatformServices& real_ = Services();
};

BesideTheLibraries services;

const Bench::HomeFolder home;
[[maybe_unused]] PlatformServices* const before = InstallServices(&services);

void CutMarkerWithLookUp(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(LoadTVCOMResourceString(TextNumber::kCutMarker));
}
BENCHMARK(CutMarkerWithLookUp);

void CutMarker(benchmark::State& state) {
  const Runtime::ClassLookupScope scope;
  for (auto _ : state) benchmark::DoNotOptimize(LoadTVCOMResourceString(TextNumber::kCutMarker));
}
BENCHMARK(CutMarker);

void OwnText(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(LoadTvResourceString(TextNumber::kMailNotice));
}
BENCHMARK(OwnText);

}  // namespace
