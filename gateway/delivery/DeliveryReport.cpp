#include "gateway/delivery/DeliveryReport.h"

#include <unistd.h>

#include <cerrno>

#include "gateway/delivery/StoppableOutput.h"
#include "platform/Json.h"
#include "platform/TerminalText.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

// An error on standard error is ignored, since there is no other place for the text.
void WriteError(const std::string& text) {
  static_cast<void>(WriteUnlessStopped(STDERR_FILENO, text));
}

}  // namespace

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
  if (outputLost_) ++lostOutcomes_;
  ShowProgress();
}

Outcome DeliveryReport::Finish(bool stopped) {
  ClearProgress();
  const std::string summary = Summary(stopped);
  if (!json_) WriteLine(summary);
  if (outputLost_) {
    std::string note = "tvmail: " + summary;
    if (lostOutcomes_ == 1) note += "; the last outcome was not written";
    if (lostOutcomes_ > 1)
      note += "; the last " + std::to_string(lostOutcomes_) + " outcomes were not written";
    WriteError(note + "; the exit code is correct\n");
  }
  if (toTryAgain_ > 0 || stopped) return Outcome::Retry;
  return refused_ > 0 ? Outcome::Refused : Outcome::Delivered;
}

std::string DeliveryReport::Summary(bool stopped) const {
  const std::size_t total = delivered_ + refused_ + toTryAgain_;
  std::string summary =
      total == 0
          ? "no messages found"
          : std::to_string(total) + (total == 1 ? " message: " : " messages: ") + std::to_string(delivered_) +
                " delivered" + (empty_ == 0 ? ", " : " (" + std::to_string(empty_) + " empty), ") +
                std::to_string(refused_) + " refused, " + std::to_string(toTryAgain_) + " to be tried again";
  if (stopped) summary += "; stopped before the end: the other messages were not tried";
  return summary;
}

void DeliveryReport::WriteLine(const std::string& line) {
  if (outputLost_) return;
  const int error = WriteUnlessStopped(STDOUT_FILENO, line + "\n");
  if (error == 0) return;
  outputLost_ = true;
  WriteError(
      "tvmail: the outcomes can't be written: " +
      (error == EINTR ? "the program was stopped while nobody read them" : Runtime::SystemReason(error)) +
      "\n");
}

void DeliveryReport::ShowProgress() {
  constexpr std::chrono::milliseconds kInterval(100);
  if (!progress_) return;
  const auto now = std::chrono::steady_clock::now();
  if (now - lastProgress_ < kInterval) return;
  lastProgress_ = now;
  WriteError("\r" + std::to_string(delivered_) + " delivered, " + std::to_string(refused_) + " refused, " +
             std::to_string(toTryAgain_) + " to be tried again ...");
  progressShown_ = true;
}

void DeliveryReport::ClearProgress() {
  if (!progressShown_) return;
  WriteError("\r\x1b[K");
  progressShown_ = false;
}

}  // namespace Gateway
