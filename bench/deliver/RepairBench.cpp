// The time for the repair of the cut marker: usual replies, and bodies designed to make it slow, at 1, 2, 4
// and 8 times a size.
#include <benchmark/benchmark.h>

#include "bench/HomeFolder.h"
#include "gateway/delivery/CutMarker.h"

namespace {

using Platform::String;

const Bench::HomeFolder home;

String Repeated(const char16_t* piece, std::int64_t length) {
  String text;
  while (text.size() < static_cast<std::size_t>(length)) text += piece;
  return text;
}

void Repair(benchmark::State& state, const char16_t* piece, const char16_t* end) {
  Gateway::CutMarker marker;
  const String body = Repeated(piece, state.range(0)) + end;
  for (auto _ : state) {
    String repaired = body;
    benchmark::DoNotOptimize(marker.Repair(repaired));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0) * 2);
}

constexpr const char16_t* kLine =
    u"The quick brown fox jumps over the lazy dog - and then, of course, sleeps\r\n";
constexpr const char16_t* kSentence =
    u"\r\nOn Mon, 2 Nov 2026 at 09:14, Alice Archer <\r\nalice@apollo.example> wrote:\r\n"
    u"> ----- Reply above this\r\n> line -----\r\n> Shall we?";

BENCHMARK_CAPTURE(Repair, UsualReply, kLine, kSentence)->Arg(200)->Arg(2000)->Arg(30000);
BENCHMARK_CAPTURE(Repair, NoMarker, kLine, u"")->RangeMultiplier(2)->Range(4000, 32000);
BENCHMARK_CAPTURE(Repair, NearMisses, u"----- Reply above this lime -----\n> ", u"")
    ->RangeMultiplier(2)
    ->Range(4000, 32000);
BENCHMARK_CAPTURE(Repair, Dashes, u"--------", u"")->RangeMultiplier(2)->Range(4000, 32000);
BENCHMARK_CAPTURE(Repair, BlankLines, u"> \n", kSentence)->RangeMultiplier(2)->Range(4000, 32000);
BENCHMARK_CAPTURE(Repair, HeaderLines, u"Subject: x\n", kSentence)->RangeMultiplier(2)->Range(4000, 32000);

}  // namespace
