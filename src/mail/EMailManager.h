// EMailManager: the handler object that a mail-reader host creates for each mailbox.
//
// Between calls it keeps the project library's application and the project, which stay open until
// MailHandler_Finalize or the object's end, and the inbound dialog's accepted entries for
// MailHandler_MboxUpdate. Created and called on one thread. See contracts/MailHandler.h for the operations.
#pragma once

#include <atomic>
#include <memory>

#include "platform/Component.h"
#include "platform/Object.h"
#include "platform/contracts/HostObjects.h"
#include "platform/contracts/MailHandler.h"
#include "platform/contracts/ProjectLibrary.h"

namespace TvEmailServices {

using namespace Platform;

class frmCfgInb;

// The number of living handler objects in the process.
extern std::atomic<long> LiveHandlers;

class EMailManager : public Object, public EMailManagerInterface, public MailHandler {
 public:
  EMailManager();
  ~EMailManager() override;

  // Calls a member of the default interface by its name.
  Value Call(StringView member, std::span<Value> arguments) override;

  Boolean ConfigureOutBoundEmail() override;

  void MailHandler_Initialize(const String& arg, const ObjectRef& MBUser) override;
  String MailHandler_HandleMessage(const ObjectRef& mess) override;
  void MailHandler_Finalize() override;
  Boolean MailHandler_Configure(std::int16_t AddMode, String& MailBoxName, String& ProductName,
                                const ObjectRef& Sess) override;
  Boolean MailHandler_MboxUpdate(const String& MailBoxName, const ObjectRef& Sess) override;
  void MailHandler_MboxDelete(const String& MailBoxName) override;

 private:
  void SetAddMode(Boolean mode) { addMode_ = mode; }
  Boolean AddMode() const { return addMode_; }
  void SetMailBoxArg(const String& name) { mailBoxArg_ = name; }
  String MailBoxArg() const { return mailBoxArg_; }
  void SetEditedMailBoxName(const String& name) { editedMailBoxName_ = name; }
  String EditedMailBoxName() const { return editedMailBoxName_; }
  void SetPassword(const String& password) { password_ = Trim(password); }
  String Password() const { return password_; }
  void SetProjectPath(const String& path) { projectPath_ = Trim(path); }
  String ProjectPath() const { return projectPath_; }
  void SetUserID(const String& userId) { userID_ = Trim(userId); }
  String UserID() const { return userID_; }

  // Calls UpdateMailBox with the dialog's entries. A raised failure is shown and gives false.
  bool ApplyMailBoxUpdate(const String& mailBoxName, const ObjectRef& sess);

  // The steps of MailHandler_HandleMessage, in their order. False ends the message. errorText is set to what
  // failed.
  bool OpenSession(String& errorText);
  bool ActForSender(const MailMessage& message, String& errorText);
  void AnswerDiscussion(const MailMessage& message, ObjectRef& discussion, String& errorText);

  // Sets userKey to the key of the first user with the address, in any case. False with errorText if there is
  // none (an earlier errorText is kept), if mail from the user isn't accepted, or after a failure.
  bool FindSenderKey(const std::shared_ptr<ProjectUsers>& users, const String& address, std::int32_t& userKey,
                     String& errorText);

  // The steps of MailHandler_Configure. Each shows its failure, with kConfiguringFailed, and gives false.
  bool SetConfigureMode(std::int16_t addMode, const String& mailBoxName);
  bool FillInboundForm(frmCfgInb& form, const String& mailBoxName, std::int16_t addMode);
  bool CollectInboundForm(frmCfgInb& form, String& productName, String& mailBoxName);
  void ResetConfigureState();

  void ReleaseSession();

  std::shared_ptr<TalvaneApplication> application_;
  std::shared_ptr<Project> project_;
  String mailBoxArg_;
  String editedMailBoxName_;
  String projectPath_;
  String userID_;
  String password_;
  Boolean addMode_;
  LiveObject live_{LiveHandlers};
};

}  // namespace TvEmailServices
