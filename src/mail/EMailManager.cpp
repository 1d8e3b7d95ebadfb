#include "src/mail/EMailManager.h"

#include "platform/StoredNames.h"
#include "src/mailbox/MailboxFlows.h"
#include "src/services/modMain.h"

namespace TvEmailServices {
EMailManager::EMailManager() {
  ResetConfigureState();
}

EMailManager::~EMailManager() {
  ReleaseSession();
}

Value EMailManager::Call(StringView member, std::span<Value> arguments) {
  if (member != u"ConfigureOutBoundEmail") return Object::Call(member, arguments);
  if (!arguments.empty()) Raise(FailureNumber::WrongArguments, member);
  return ConfigureOutBoundEmail();
}

void EMailManager::MailHandler_Initialize(const String& arg, const ObjectRef&) {
  SetMailBoxArg(Trim(arg));
}

void EMailManager::MailHandler_Finalize() {
  ReleaseSession();
}

Boolean EMailManager::MailHandler_MboxUpdate(const String& MailBoxName, const ObjectRef& Sess) {
  try {
    return ApplyMailBoxUpdate(MailBoxName, Sess);
  } catch (...) {
    return ReportFailure(TextNumber::kConfiguringFailed);
  }
}

void EMailManager::MailHandler_MboxDelete(const String& MailBoxName) {
  DeleteMailBox(MailBoxName, false);
}

bool EMailManager::ApplyMailBoxUpdate(const String& mailBoxName, const ObjectRef& sess) {
  try {
    return UpdateMailBox(mailBoxName, sess, ProjectPath(), UserID(), Password(), bool(AddMode()));
  } catch (...) {
    return ReportFailure();
  }
}

// The project is released first, since it uses the application.
void EMailManager::ReleaseSession() {
  project_.reset();
  application_.reset();
}

}  // namespace TvEmailServices
