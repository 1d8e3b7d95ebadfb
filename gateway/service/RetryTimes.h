// RetryTimes: when mails that could not be delivered are tried again.
#pragma once

#include <chrono>
#include <map>
#include <optional>
#include <string>

#include "gateway/sources/BackOff.h"
#include "platform/Text.h"

namespace Gateway {

// Each mail has its own back-off, so one that never succeeds delays no other. Mails are known by their
// sources. One thread.
class RetryTimes {
 public:
  using Clock = std::chrono::steady_clock;

  // Begins and ends a pass. What wasn't seen in a complete pass has left the queue, and is forgotten.
  void BeginPass() { ++pass_; }
  void EndPass(bool complete);

  // True if the mail is new, or its time has come.
  bool IsDue(const std::string& source);

  // The mail has to be tried again, for this reason. True if it has not failed for that reason before.
  bool Failed(const std::string& source, const Platform::String& reason);
  void Settled(const std::string& source) { mails_.erase(source); }

  std::size_t Count() const { return mails_.size(); }

  // The time until the first mail is due; nothing if there is none.
  std::optional<std::chrono::milliseconds> Next() const;

 private:
  // More aren't remembered, and tried again in each pass.
  static constexpr std::size_t kMost = 100'000;

  struct Waiting {
    Platform::String Reason;
    BackOff Times;
    Clock::time_point Due;
    std::size_t SeenIn = 0;
  };
  std::map<std::string, Waiting> mails_;
  std::size_t pass_ = 0;
};

// From 0 up to 1, for back-offs. Any thread.
double RandomPart();

}  // namespace Gateway
