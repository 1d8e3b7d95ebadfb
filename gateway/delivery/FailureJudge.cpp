#include "gateway/delivery/FailureJudge.h"

#include "platform/ProgramTexts.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/FailureText.h"
#include "platform/contracts/ResourceServices.h"
#include "runtime/Folders.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

// Texts of failures that the mail itself causes.
constexpr std::int32_t kOwnFaults[] = {
    Platform::TextNumber::kNoDiscussionSubject,  // the subject holds no discussion number
    Platform::TextNumber::kNoSuchDiscussion,     // no discussion has that number
    Platform::TextNumber::kSenderUnknown,        // no user has the sender's address
    Platform::TextNumber::kNoSender,             // no sender
    Platform::TextNumber::kMailNotAccepted,      // the user doesn't take part by mail
};

// Raised for a subject without its markers, and for a number or a body that is too large.
constexpr struct {
  std::int32_t Failure;
  std::int32_t Reason;  // the number of its text
} kOwnFailures[] = {
    {Platform::FailureNumber::InvalidArgument, Platform::TextNumber::kSubjectOfNoReply},
    {Platform::FailureNumber::Overflow, Platform::TextNumber::kReplyTooLarge},
};

String DescriptionOf(std::int32_t failureNumber) {
  try {
    Platform::Raise(failureNumber);
  } catch (const Platform::Failure& failure) {
    return failure.Description();
  }
}

}  // namespace

std::vector<FailureJudge::OwnFault> FailureJudge::LoadOwnFaults() {
  const Platform::Resource texts(Platform::Services().CreateByName(u"TvResourceServices.Resource"));
  texts.LoadResources(Runtime::LibraryFolder() + u"\\TvEmailServicesRes.dll", u"TvEmailServices");
  const String notice = texts.ResourceString(Platform::TextNumber::kMailNotice);
  std::vector<OwnFault> faults;
  for (const std::int32_t number : kOwnFaults) {
    const String reason = texts.ResourceString(number);
    faults.push_back({Platform::NotedFailureText(notice, reason), {Outcome::Refused, reason, number}});
  }
  for (const auto& [failure, number] : kOwnFailures)
    faults.push_back({Platform::NotedFailureText(notice, DescriptionOf(failure)),
                      {Outcome::Refused, Runtime::TextOf(number), number}});
  return faults;
}

Verdict FailureJudge::Judge(const String& failure) {
  if (failure.empty()) return {Outcome::Delivered};
  try {
    if (ownFaults_.empty()) ownFaults_ = LoadOwnFaults();
  } catch (const std::exception&) {
    return {Outcome::Retry, failure};
  }
  for (const OwnFault& fault : ownFaults_) {
    if (fault.Failure == failure) return fault.Refused;
  }
  return {Outcome::Retry, failure};
}

}  // namespace Gateway
