// Outcome: the result of handling a mail.
#pragma once

#include <utility>

namespace Gateway {

enum class Outcome {
  Delivered,
  Duplicate,  // its reply was stored before; nothing was changed
  Refused,    // by the mail's own fault or by a policy; trying again won't help
  Held,       // refused, and kept with its reason
  Retry,      // any other failure; nothing is lost
};

// True if the mail needs no further handling, so that it leaves a queue.
constexpr bool IsSettled(Outcome outcome) {
  return outcome == Outcome::Delivered || outcome == Outcome::Duplicate || outcome == Outcome::Held;
}

// The words of files, logs and JSON, which are the same in every language.
inline constexpr std::pair<Outcome, const char*> kOutcomeWords[] = {{Outcome::Delivered, "delivered"},
                                                                    {Outcome::Duplicate, "duplicate"},
                                                                    {Outcome::Refused, "refused"},
                                                                    {Outcome::Held, "held"},
                                                                    {Outcome::Retry, "retry"}};

constexpr const char* WordOf(Outcome outcome) {
  for (const auto& [one, word] : kOutcomeWords)
    if (one == outcome) return word;
  return "";
}

// The words of reports for people, in English as the reports are.
constexpr const char* SpokenWordOf(Outcome outcome) {
  return outcome == Outcome::Retry ? "to be tried again" : WordOf(outcome);
}

}  // namespace Gateway
