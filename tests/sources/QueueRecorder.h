// QueueRecorder: a sink that notes what a queue passes, and answers with outcomes that a test sets.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "gateway/sources/MailQueue.h"
#include "platform/Failure.h"

namespace Tests {

struct QueueRecorder {
  std::function<std::optional<Gateway::Outcome>(const Gateway::RawMail&)> Answer =
      [](const Gateway::RawMail&) { return Gateway::Outcome::Delivered; };
  std::vector<Gateway::RawMail> Mails;

  Gateway::MailSink Sink() {
    return [this](Gateway::RawMail mail) {
      const auto outcome = Answer(mail);
      Mails.push_back(std::move(mail));
      return outcome;
    };
  }

  // The bytes, or the fault, of the mails since the last call, separated by "|".
  std::string Take() {
    std::string text;
    for (const Gateway::RawMail& mail : Mails)
      text += (text.empty() ? "" : "|") + (mail.Fault.empty() ? mail.Bytes : "(" + mail.Fault + ")");
    Mails.clear();
    return text;
  }
};

// The text of the failure; empty if none is raised.
inline std::string FailureOf(const std::function<void()>& act) {
  try {
    act();
  } catch (const Platform::Failure& failure) {
    return failure.what();
  }
  return {};
}

}  // namespace Tests
