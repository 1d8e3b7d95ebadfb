// frmCfgInb: the dialog that binds a mailbox to a project.
//
// OK checks the entries and keeps the accepted ones for the handler object; nothing is stored. Created, shown
// and destroyed within one call of MailHandler_Configure, on its thread.
#pragma once

#include "platform/Boolean.h"
#include "platform/Forms/Form.h"
#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

class frmCfgInb : public Form {
 public:
  frmCfgInb();

  void SetMailBoxName(const String& name) { mailBoxName_ = name; }
  String MailBoxName() const { return mailBoxName_; }

  // The host's session object. Unloading releases it.
  void SetInboundServerConfig(const ObjectRef& session) { inboundServerConfig_ = session; }
  ObjectRef InboundServerConfig() const { return inboundServerConfig_; }

  // The accepted entries, without blanks at either end.
  void SetEnteredDBPWD(const String& password) { enteredDBPWD_ = Trim(password); }
  String EnteredDBPWD() const { return enteredDBPWD_; }
  void SetEnteredTVSFilePath(const String& path) { enteredTVSFilePath_ = Trim(path); }
  String EnteredTVSFilePath() const { return enteredTVSFilePath_; }
  void SetEnteredDBUID(const String& userId) { enteredDBUID_ = Trim(userId); }
  String EnteredDBUID() const { return enteredDBUID_; }

 private:
  void cmdOK_Click();
  void cmdCancel_Click();
  void cmdHelp_Click();
  void cmdBrowse_Click();
  void Form_Load();
  void Form_Unload();
  void Form_KeyDown(std::int32_t keyCode);

  String mailBoxName_;
  ObjectRef inboundServerConfig_;
  String enteredTVSFilePath_;
  String enteredDBUID_;
  String enteredDBPWD_;
  Boolean focusByMouse_;
};

}  // namespace TvEmailServices
