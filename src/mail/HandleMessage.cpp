// MailHandler_HandleMessage: from the mailbox's logon to the reply in the project.
//
// It runs unattended and reports failures only in its result. A step that fails sets errorText, which
// replaces the text of an earlier step. The application and the project stay open after a failure.
#include "platform/StoredNames.h"
#include "platform/contracts/FailureText.h"
#include "src/mail/DiscussionSubject.h"
#include "src/mail/EMailManager.h"
#include "src/mail/ReplyBody.h"
#include "src/mailbox/MailboxRecords.h"
#include "src/security/ComponentSecurity.h"
#include "src/services/modComponents.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

// The fixed arguments of OpenProject and SetActingUser.
constexpr std::int32_t kOpenMode = 1;
constexpr std::int32_t kOpenOptions = 0;
constexpr std::int32_t kOpenAccess = 3;
constexpr std::int32_t kActingKind = 1;

// The object of a reference. Raises 91 for nothing.
template <class T>
T& Existing(const std::shared_ptr<T>& reference) {
  if (!reference) Raise(FailureNumber::ObjectNotSet);
  return *reference;
}

}  // namespace

String EMailManager::MailHandler_HandleMessage(const ObjectRef& mess) {
  String errorText;
  ObjectRef discussion;  // released after the result is composed
  try {
    const MailMessage message(mess);
    if (OpenSession(errorText) && ActForSender(message, errorText)) {
      AnswerDiscussion(message, discussion, errorText);
    }
  } catch (...) {
    const Failure failure = CurrentFailure();
    return RaisedFailureText(LoadTvResourceString(TextNumber::kMailNotice), failure);
  }
  if (errorText.empty()) return {};
  return NotedFailureText(LoadTvResourceString(TextNumber::kMailNotice), errorText);
}

// Reads the record and decodes its password for every message, also if the project is open.
bool EMailManager::OpenSession(String& errorText) {
  if (!application_) application_ = GetTalvaneApplication(false);
  if (!application_) {
    errorText = LoadTVResourceStringS(TextNumber::kComponentMissing, u"Talvane40.Dll", {});
    return false;
  }
  String projectPath, userId, password;
  if (!ReadMailBoxLogon(MailBoxArg(), projectPath, userId, password, errorText)) return false;
  password = ComponentSecurity().Decrypt(password);
  if (!project_) {
    project_ = application_->OpenProject(projectPath, kOpenMode, userId, password, kOpenOptions, kOpenAccess);
  }
  if (!project_) {
    errorText = LoadTVResourceStringS(TextNumber::kProjectNotOpened, projectPath, {});
    errorText += Existing(application_->GetStatus()).GetFailureText();
    return false;
  }
  if (!project_->GetUsers()) {
    errorText = LoadTvResourceString(TextNumber::kNoUsers);
    return false;
  }
  return true;
}

// If the sender isn't found, errorText is set and the processing continues with the previous acting user.
bool EMailManager::ActForSender(const MailMessage& message, String& errorText) {
  if (!message.HasFrom()) {
    errorText = LoadTvResourceString(TextNumber::kNoSender);
    return false;
  }
  const std::shared_ptr<ProjectUsers> users = project_->GetUsers();
  std::int32_t userKey = 0;
  if (!FindSenderKey(users, message.FromAddress(), userKey, errorText)) return true;
  const String logonText = Existing(application_->GetLogon()).GetLogonText();
  if (project_->SetActingUser(userKey, kActingKind, logonText)) return true;
  errorText = LoadTvResourceString(TextNumber::kActingUserRefused);
  return false;
}

void EMailManager::AnswerDiscussion(const MailMessage& message, ObjectRef& discussion, String& errorText) {
  std::int32_t number = 0;
  String subjectText;
  if (!ParseDiscussionSubject(message.Subject(), number, subjectText, errorText)) return;
  discussion = project_->GetDiscussion(number);
  if (!discussion) {
    errorText = LoadTvResourceString(TextNumber::kNoSuchDiscussion);
    return;
  }
  String body = message.Body();
  if (ParseReplyBody(body, errorText)) Discussion(discussion).Reply(subjectText, body);
}

bool EMailManager::FindSenderKey(const std::shared_ptr<ProjectUsers>& users, const String& address,
                                 std::int32_t& userKey, String& errorText) {
  try {
    bool accepted = false;
    const std::int32_t count = Existing(users).Count();
    for (std::int32_t position = 1; position <= count; ++position) {
      const std::shared_ptr<ProjectUser> user = users->Item(position);
      if (!EqualsIgnoreCase(Existing(user).GetEMailAddress(), address)) continue;
      accepted = bool(user->IsMailAccepted());
      if (accepted) {
        userKey = user->GetUserKey();
      } else {
        errorText = LoadTvResourceString(TextNumber::kMailNotAccepted);
      }
      break;
    }
    if (!accepted && errorText.empty()) errorText = LoadTvResourceString(TextNumber::kSenderUnknown);
    return accepted;
  } catch (...) {
    errorText = CurrentFailure().Description();
    return false;
  }
}

}  // namespace TvEmailServices
