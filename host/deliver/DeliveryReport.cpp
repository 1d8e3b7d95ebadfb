#include "host/deliver/DeliveryReport.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "host/Json.h"

namespace Host {
namespace {

bool IsDangerous(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x200B && c <= 0x200F) ||
         (c >= 0x2028 && c <= 0x202E) || (c >= 0x2060 && c <= 0x206F) || c == 0xFEFF;
}

}  // namespace

std::string VisibleText(StringView text) {
  String visible;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char16_t c = text[i];
    const bool high = c >= 0xD800 && c < 0xDC00;
    const bool pair = high && i + 1 < text.size() && text[i + 1] >= 0xDC00 && text[i + 1] < 0xE000;
    if (pair) {
      visible += text.substr(i++, 2);
    } else if (c == u'\r' || c == u'\n' || c == u'\t') {
      if (!visible.ends_with(u' ')) visible += u' ';
    } else if (IsDangerous(c) || (c >= 0xD800 && c < 0xE000)) {
      char escaped[8];
      std::snprintf(escaped, sizeof escaped, "\\u%04X", static_cast<unsigned>(c));
      visible += Platform::FromUtf8(escaped);
    } else {
      visible += c;
    }
  }
  return Platform::ToUtf8(visible);
}

DeliveryReport::DeliveryReport(bool json) : json_(json), progress_(isatty(STDERR_FILENO) != 0) {}

void DeliveryReport::Tell(const std::string& source, const String& messageId, const String& failure,
                          ExitCode code) {
  ++(code == Done ? delivered_ : code == DataRefused ? refused_ : toTryAgain_);
  ClearProgress();
  if (json_) {
    WriteLine(JsonObject()
                  .Add("source", Platform::FromUtf8(source))
                  .Add("messageId", messageId)
                  .Add("failure", failure)
                  .Text());
  } else {
    const std::string outcome = code == Done          ? "delivered"
                                : code == DataRefused ? "complaint: " + VisibleText(failure)
                                                      : "to be tried again: " + VisibleText(failure);
    WriteLine(VisibleText(Platform::FromUtf8(source)) + "  " +
              (messageId.empty() ? "(no Message-ID)" : VisibleText(messageId)) + "  " + outcome);
  }
  ShowProgress();
}

int DeliveryReport::Finish(bool stopped) {
  ClearProgress();
  const std::size_t total = delivered_ + refused_ + toTryAgain_;
  if (!json_) {
    std::string summary = total == 0
                              ? "no messages found"
                              : std::to_string(total) + (total == 1 ? " message: " : " messages: ") +
                                    std::to_string(delivered_) + " delivered, " + std::to_string(refused_) +
                                    " with complaints, " + std::to_string(toTryAgain_) + " to be tried again";
    if (stopped) summary += "; stopped before the end, what isn't listed here was not tried";
    WriteLine(summary);
  }
  if (outputLost_)
    std::fputs("tvmail: part of the output was lost, the exit code is right all the same\n", stderr);
  if (toTryAgain_ > 0 || stopped) return TryAgain;
  return refused_ > 0 ? DataRefused : Done;
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
  std::fprintf(stderr, "\r%zu delivered, %zu with complaints, %zu to be tried again ...", delivered_,
               refused_, toTryAgain_);
  std::fflush(stderr);
  progressShown_ = true;
}

void DeliveryReport::ClearProgress() {
  if (!progressShown_) return;
  std::fputs("\r\x1b[K", stderr);
  progressShown_ = false;
}

}  // namespace Host
