#include "gateway/delivery/DeliveryReport.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "platform/Json.h"
#include "platform/TerminalText.h"

namespace Gateway {

DeliveryReport::DeliveryReport(bool json) : json_(json), progress_(isatty(STDERR_FILENO) != 0) {}

void DeliveryReport::Add(const std::string& source, const String& messageId, const String& failure,
                         const Verdict& verdict) {
  const Outcome result = verdict.Result;
  ++(result == Outcome::Delivered ? delivered_ : result == Outcome::Refused ? refused_ : toTryAgain_);
  if (!verdict.WhyEmpty.empty()) ++empty_;
  ClearProgress();
  if (json_) {
    WriteLine(
        Platform::JsonObject()
            .Add("source", Platform::FromUtf8(source))
            .Add("messageId", messageId)
            .Add("reason", verdict.Reason.empty() ? Platform::FromUtf8(verdict.WhyEmpty) : verdict.Reason)
            .Add("failure", failure)
            .Text());
  } else {
    std::string outcome = "delivered";
    if (result != Outcome::Delivered)
      outcome = (result == Outcome::Refused ? "refused: " : "to be tried again: ") +
                Platform::TerminalLine(verdict.Reason.empty() ? failure : verdict.Reason);
    if (!verdict.WhyEmpty.empty()) outcome += " (" + verdict.WhyEmpty + ")";
    WriteLine(Platform::TerminalLine(Platform::FromUtf8(source)) + "  " +
              (messageId.empty() ? "(no Message-ID)" : Platform::TerminalLine(messageId)) + "  " + outcome);
  }
  ShowProgress();
}

Outcome DeliveryReport::Finish(bool stopped) {
  ClearProgress();
  const std::size_t total = delivered_ + refused_ + toTryAgain_;
  if (!json_) {
    std::string summary = total == 0
                              ? "no messages found"
                              : std::to_string(total) + (total == 1 ? " message: " : " messages: ") +
                                    std::to_string(delivered_) + " delivered" +
                                    (empty_ == 0 ? ", " : " (" + std::to_string(empty_) + " empty), ") +
                                    std::to_string(refused_) + " refused, " + std::to_string(toTryAgain_) +
                                    " to be tried again";
    if (stopped) summary += "; stopped before the end: messages that aren't listed were not tried";
    WriteLine(summary);
  }
  if (outputLost_) std::fputs("tvmail: part of the output was lost; the exit code is correct\n", stderr);
  if (toTryAgain_ > 0 || stopped) return Outcome::Retry;
  return refused_ > 0 ? Outcome::Refused : Outcome::Delivered;
}

void DeliveryReport::WriteLine(const std::string& line) {
  if (outputLost_) return;
  const std::string output = line + "\n";
  const bool written = std::fwrite(output.data(), 1, output.size(), stdout) == output.size();
  if (written && std::fflush(stdout) == 0) return;
  outputLost_ = true;
  std::fprintf(stderr, "tvmail: the outcomes can't be written: %s\n", std::strerror(errno));
}

void DeliveryReport::ShowProgress() {
  constexpr std::chrono::milliseconds kInterval(100);
  if (!progress_) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - lastProgress_ < kInterval) return;
  lastProgress_ = now;
  std::fprintf(stderr, "\r%zu delivered, %zu refused, %zu to be tried again ...", delivered_, refused_,
               toTryAgain_);
  std::fflush(stderr);
  progressShown_ = true;
}

void DeliveryReport::ClearProgress() {
  if (!progressShown_) return;
  std::fputs("\r\x1b[K", stderr);
  progressShown_ = false;
}

}  // namespace Gateway
