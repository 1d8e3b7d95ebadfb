#include "gateway/delivery/DeliveryReport.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "gateway/delivery/StoppableOutput.h"
#include "platform/Json.h"
#include "platform/TerminalText.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

std::string JsonLine(const MailResult& result) {
  return Platform::JsonObject()
      .Add("source", Platform::FromUtf8(result.Source))
      .Add("messageId", result.MessageId)
      .Add("outcome", Platform::FromUtf8(WordOf(result.Result)))
      .Add("reason", result.Reason.empty() ? result.WhyEmpty : result.Reason)
      .Add("replyStored", result.ReplyStored)
      .Add("failure", result.Failure)
      .Text();
}

std::string TextLine(const MailResult& result) {
  std::string outcome = SpokenWordOf(result.Result);
  if (!result.Reason.empty()) outcome += ": " + Platform::TerminalLine(result.Reason);
  if (!result.WhyEmpty.empty()) outcome += " (" + Platform::TerminalLine(result.WhyEmpty) + ")";
  return Platform::TerminalLine(Platform::FromUtf8(result.Source)) + "  " +
         (result.MessageId.empty() ? "(no Message-ID)" : Platform::TerminalLine(result.MessageId)) + "  " +
         outcome;
}

// An error on standard error is ignored, since there is no other place for the text.
void WriteError(const std::string& text) {
  static_cast<void>(WriteUnlessStopped(STDERR_FILENO, text));
}

}  // namespace

DeliveryReport::DeliveryReport(Form form, bool oneMail)
    : form_(form),
      oneMail_(oneMail),
      progress_(form != Form::Nothing && !oneMail && isatty(STDERR_FILENO) != 0) {}

void DeliveryReport::Add(const MailResult& result) {
  ++counts_[result.Result];
  if (!result.WhyEmpty.empty()) ++empty_;
  ClearProgress();
  if (form_ == Form::Text) WriteLine(TextLine(result));
  if (form_ == Form::Json) WriteLine(JsonLine(result));
  if (outputLost_) ++lostOutcomes_;
  if (oneMail_ && result.Result == Outcome::Refused) WriteError(Platform::TerminalLine(result.Reason) + "\n");
  if (!result.Warning.empty()) WriteError("tvmail: " + Platform::TerminalLine(result.Warning) + "\n");
  ShowProgress();
}

Outcome DeliveryReport::Finish(bool stopped) {
  ClearProgress();
  const std::string summary = Summary(stopped);
  if (form_ == Form::Text) WriteLine(summary);
  if (outputLost_) {
    std::string note = "tvmail: " + summary;
    if (lostOutcomes_ == 1) note += "; the last outcome was not written";
    if (lostOutcomes_ > 1)
      note += "; the last " + std::to_string(lostOutcomes_) + " outcomes were not written";
    WriteError(note + "; the exit code is correct\n");
  }
  if (counts_.contains(Outcome::Retry) || stopped) return Outcome::Retry;
  return counts_.contains(Outcome::Refused) ? Outcome::Refused : Outcome::Delivered;
}

// Duplicates and held mail are named if there are any.
std::string DeliveryReport::Counts() const {
  std::string text;
  for (const auto& [outcome, word] : kOutcomeWords) {
    const auto counted = counts_.find(outcome);
    const bool any = counted != counts_.end();
    if (!any && (outcome == Outcome::Duplicate || outcome == Outcome::Held)) continue;
    text +=
        (text.empty() ? "" : ", ") + std::to_string(any ? counted->second : 0) + " " + SpokenWordOf(outcome);
    if (outcome == Outcome::Delivered && empty_ > 0) text += " (" + std::to_string(empty_) + " empty)";
  }
  return text;
}

std::string DeliveryReport::Summary(bool stopped) const {
  std::size_t total = 0;
  for (const auto& [outcome, count] : counts_) total += count;
  std::string summary = total == 0
                            ? "no messages found"
                            : std::to_string(total) + (total == 1 ? " message: " : " messages: ") + Counts();
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
  WriteError("\r" + Counts() + " ...");
  progressShown_ = true;
}

void DeliveryReport::ClearProgress() {
  if (!progressShown_) return;
  WriteError("\r\x1b[K");
  progressShown_ = false;
}

}  // namespace Gateway
