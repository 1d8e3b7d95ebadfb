#include "host/deliver/FailureJudge.h"

#include <algorithm>

#include "platform/Failure.h"
#include "platform/Services.h"
#include "platform/contracts/ResourceServices.h"
#include "runtime/Process.h"

namespace Host {
namespace {

// The component's numbers: the notice in front of a complaint, and the complaints of a mail's own making.
constexpr std::int32_t kNotice = 10006;
constexpr std::int32_t kOwnFaults[] = {
    10005,  // the subject holds no discussion number
    10007,  // no discussion has that number
    10032,  // no user has the sender's address
    10060,  // no sender
    10062,  // the user doesn't take part by mail
};

// What a subject without its marks and a subject or body that is too long raise.
constexpr std::int32_t kOwnFailures[] = {Platform::FailureNumber::InvalidArgument,
                                         Platform::FailureNumber::Overflow};

String DescriptionOf(std::int32_t failureNumber) {
  try {
    Platform::Raise(failureNumber);
  } catch (const Platform::Failure& failure) {
    return failure.Description();
  }
}

std::vector<String> LoadOwnFaults() {
  const Platform::Resource texts(Platform::Services().CreateByName(u"TvResourceServices.Resource"));
  texts.LoadResources(Runtime::LibraryFolder() + u"\\TvEmailServicesRes.dll", u"TvEmailServices");
  const String notice = texts.ResourceString(kNotice) + u" ";
  std::vector<String> faults;
  for (const std::int32_t number : kOwnFaults) faults.push_back(notice + texts.ResourceString(number));
  for (const std::int32_t number : kOwnFailures) faults.push_back(notice + DescriptionOf(number));
  return faults;
}

}  // namespace

ExitCode FailureJudge::Judge(const String& failure) {
  if (failure.empty()) return Done;
  try {
    if (!ownFaults_) ownFaults_ = LoadOwnFaults();
  } catch (const std::exception&) {
    return TryAgain;
  }
  const bool own = std::find(ownFaults_->begin(), ownFaults_->end(), failure) != ownFaults_->end();
  return own ? DataRefused : TryAgain;
}

}  // namespace Host
