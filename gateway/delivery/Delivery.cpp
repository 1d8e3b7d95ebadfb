#include "gateway/delivery/Delivery.h"

#include <chrono>
#include <utility>

#include "gateway/delivery/ReadAhead.h"
#include "gateway/sources/StopSignal.h"

namespace Gateway {
namespace {

// Mails that are handled without a pause between them wait for the disk together: the disk needs about as
// long for one as for many.
class Group {
 public:
  Group(MailProcessor& processor, DeliveryReport& report,
        const std::function<void(const MailResult&)>& handled)
      : processor_(processor), report_(report), handled_(handled) {
    processor_.SyncLater();
  }

  // A result is reported at the latest when no other mail is ready. False if the disk reports an error.
  bool Add(MailResult result, bool moreReady) {
    if (results_.empty()) begun_ = Clock::now();
    results_.push_back(std::move(result));
    if (!moreReady || results_.size() == kMost || Clock::now() - begun_ > kLongest) return Report();
    return true;
  }

  bool Report() {
    if (results_.empty()) return true;
    const bool synced = processor_.Sync(results_);
    for (const MailResult& result : results_) {
      report_.Add(result);
      handled_(result);
    }
    results_.clear();
    return synced;
  }

 private:
  using Clock = std::chrono::steady_clock;
  static constexpr std::size_t kMost = 64;
  static constexpr std::chrono::milliseconds kLongest{50};

  MailProcessor& processor_;
  DeliveryReport& report_;
  const std::function<void(const MailResult&)>& handled_;
  std::vector<MailResult> results_;
  Clock::time_point begun_;
};

}  // namespace

Outcome Deliver(const String& mailBox, const DeliverySettings& settings,
                const std::vector<std::string>& sources, StandardInput input, DeliveryReport& report,
                const std::function<void(const MailResult&)>& handled) {
  MailProcessor processor(mailBox, settings);
  Group group(processor, report, handled);
  bool all = false;
  try {
    all = ReadAhead(sources, input, settings.Policy, [&](PreparedMail mail, bool moreReady) {
      if (StopWanted()) return false;
      return group.Add(processor.Process(std::move(mail)), moreReady);
    });
  } catch (...) {
    group.Report();
    throw;
  }
  group.Report();
  return report.Finish(!all);
}

}  // namespace Gateway
