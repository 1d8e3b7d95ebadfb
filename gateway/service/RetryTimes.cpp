#include "gateway/service/RetryTimes.h"

#include <algorithm>
#include <random>

namespace Gateway {

double RandomPart() {
  thread_local std::minstd_rand random{std::random_device{}()};
  return std::uniform_real_distribution<double>(0, 1)(random);
}

void RetryTimes::EndPass(bool complete) {
  if (complete) std::erase_if(mails_, [this](const auto& mail) { return mail.second.SeenIn != pass_; });
}

bool RetryTimes::IsDue(const std::string& source) {
  const auto found = mails_.find(source);
  if (found == mails_.end()) return true;
  found->second.SeenIn = pass_;
  return found->second.Due <= Clock::now();
}

bool RetryTimes::Failed(const std::string& source, const Platform::String& reason) {
  if (mails_.size() >= kMost && !mails_.contains(source)) return true;
  const auto [found, isNew] = mails_.try_emplace(source);
  Waiting& mail = found->second;
  const bool news = isNew || mail.Reason != reason;
  mail.Reason = reason;
  mail.Times.Failed();
  mail.Due = Clock::now() + mail.Times.Pause(RandomPart());
  mail.SeenIn = pass_;
  return news;
}

std::optional<std::chrono::milliseconds> RetryTimes::Next() const {
  const auto first = std::ranges::min_element(mails_, {}, [](const auto& mail) { return mail.second.Due; });
  if (first == mails_.end()) return std::nullopt;
  const auto rest = std::chrono::ceil<std::chrono::milliseconds>(first->second.Due - Clock::now());
  return std::max(rest, std::chrono::milliseconds(0));
}

}  // namespace Gateway
