#include "siblings/Talvane40/SteadyFacts.h"

namespace Talvane40 {
namespace {

constexpr std::size_t kMostFacts = 10'000;  // of a kind

}  // namespace

SteadyFacts::Facts& SteadyFacts::Valid() {
  const auto now = watch_.Now();
  const bool full = facts_.MailAccepted.size() >= kMostFacts || facts_.HasDiscussion.size() >= kMostFacts;
  if (!now || now != validAt_ || full) {
    facts_ = {};
    validAt_ = now;
  }
  return facts_;
}

// Nobody else could commit between BeginOwnChange and the commit. If somebody has done it since, the state is
// not the next one, and the facts are read again.
void SteadyFacts::EndOwnChange() {
  const auto now = watch_.Now();
  if (now && validAt_ && now->IsOneCommitAfter(*validAt_)) validAt_ = now;
}

}  // namespace Talvane40
