#include <atomic>
#include <chrono>
#include <ctime>
#include <map>
#include <mutex>
#include <utility>

#include "platform/Failure.h"
#include "platform/Object.h"
#include "platform/Services.h"
#include "runtime/ClassLookup.h"
#include "runtime/Folders.h"
#include "runtime/ProcessServices.h"
#include "runtime/SystemRandom.h"

namespace Runtime {
namespace {

std::shared_ptr<FormsToolkit>& InstalledToolkit() {
  static auto& toolkit = *new std::shared_ptr<FormsToolkit>;
  return toolkit;
}

class ProcessServices : public PlatformServices {
 public:
  ObjectRef CreateByName(StringView programmaticName) override {
    return FindFactory(programmaticName).CreateInstance();
  }

  ObjectRef CreateByClass(const Guid& classId) override { return FindFactory(classId).CreateInstance(); }

  String FolderOf(const void* codeAddress) override {
    // Cached, since it is asked for each text. The folder can't change: libraries are never unloaded.
    static auto& lock = *new std::mutex;
    static auto& folders = *new std::map<const void*, String>;
    const std::lock_guard guard(lock);
    const auto known = folders.find(codeAddress);
    if (known != folders.end()) return known->second;
    const std::string file = FileOfAddress(codeAddress);
    if (file.empty()) Raise(FailureNumber::PathNotFound, u"no library holds this address");
    return folders.emplace(codeAddress, FromUtf8(FolderOfPath(file))).first->second;
  }

  Moment Now() override {
    const auto now = std::chrono::system_clock::now();
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    const auto part = std::chrono::duration_cast<std::chrono::milliseconds>(now.time_since_epoch()) % 1000;
    std::tm local{};
    localtime_r(&seconds, &local);
    return {local.tm_year + 1900,
            local.tm_mon + 1,
            local.tm_mday,
            local.tm_hour,
            local.tm_min,
            local.tm_sec,
            static_cast<std::int32_t>(part.count())};
  }

  RandomSource& Random() override {
    thread_local SystemRandom random;
    return random;
  }

  FormsToolkit& Toolkit() override {
    if (!InstalledToolkit())
      Raise(FailureNumber::CannotCreate, u"this process has no forms toolkit, so it can't show dialogs");
    return *InstalledToolkit();
  }
};

std::atomic<PlatformServices*> installed = nullptr;

}  // namespace

void InstallToolkit(std::shared_ptr<FormsToolkit> toolkit) {
  InstalledToolkit() = std::move(toolkit);
}

}  // namespace Runtime

namespace Platform {

PlatformServices& Services() {
  static auto& own = *new Runtime::ProcessServices;
  PlatformServices* other = Runtime::installed;
  return other ? *other : own;
}

PlatformServices* InstallServices(PlatformServices* services) {
  return Runtime::installed.exchange(services);
}

}  // namespace Platform
