// MailHandler_Configure: fills the inbound dialog, shows it, and takes its entries.
#include "platform/Forms/FormsToolkit.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "src/dialogs/FormServices.h"
#include "src/dialogs/frmCfgInb.h"
#include "src/dialogs/modCfgIn.h"
#include "src/mail/EMailManager.h"
#include "src/mailbox/MailboxRecords.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

void ShowPointer(MousePointer pointer) {
  Services().Toolkit().SetMousePointer(pointer);
}

bool CallSucceeds() {
  const std::int32_t state = GetConfigureState();
  return state == ConfigureStateAccepted || state == ConfigureStateKept;
}

}  // namespace

Boolean EMailManager::MailHandler_Configure(std::int16_t AddMode, String& MailBoxName, String& ProductName,
                                            const ObjectRef& Sess) {
  bool result = false;
  std::unique_ptr<frmCfgInb> form;
  try {
    ShowPointer(MousePointer::Hourglass);
    if (!IsResourceLoaded(true)) {
      // Its message has been shown.
    } else if (!Sess) {
      ShowResourceMessage(TextNumber::kNoSessionGiven, LoadTvResourceString(TextNumber::kConfiguringFailed));
    } else {
      form = std::make_unique<frmCfgInb>();
      form->SetInboundServerConfig(Sess);
      LocalizeForm(*form);
      if (SetConfigureMode(AddMode, MailBoxName) && FillInboundForm(*form, MailBoxName, AddMode)) {
        ShowPointer(MousePointer::Default);
        form->ShowModal();
        result = CollectInboundForm(*form, ProductName, MailBoxName) && CallSucceeds();
      }
      form->Unload();
    }
  } catch (...) {
    result = ReportFailure(TextNumber::kConfiguringFailed);
  }
  form.reset();
  try {
    ShowPointer(MousePointer::Default);
  } catch (...) {
    // Without a toolkit the first step has failed already.
  }
  return result;
}

bool EMailManager::SetConfigureMode(std::int16_t addMode, const String& mailBoxName) try {
  SetAddMode(addMode != 0);
  if (addMode != 0) return true;
  if (GetConfigureState() == ConfigureStateNone) SetConfigureState(ConfigureStateKept);
  SetEditedMailBoxName(mailBoxName);
  return true;
} catch (...) {
  return ReportFailure(TextNumber::kConfiguringFailed);
}

bool EMailManager::FillInboundForm(frmCfgInb& form, const String& mailBoxName, std::int16_t addMode) try {
  if (mailBoxName.empty()) return true;
  String projectPath = ProjectPath();
  String userId = UserID();
  if (projectPath.empty() || userId.empty()) {
    // What can't be read stays empty. The password must be entered each time.
    String encodedPassword;
    projectPath.clear();
    userId.clear();
    ReadMailBoxRecord(projectPath, userId, encodedPassword, mailBoxName);
  }
  form[u"txtUID"].SetText(userId);
  form[u"txtTVSFileName"].SetText(projectPath);
  form[u"txtTVSFileName"].SetLocked(addMode == 0);
  form[u"cmdBrowse"].SetEnabled(addMode != 0);
  form.SetMailBoxName(mailBoxName);
  return true;
} catch (...) {
  return ReportFailure(TextNumber::kConfiguringFailed);
}

bool EMailManager::CollectInboundForm(frmCfgInb& form, String& productName, String& mailBoxName) try {
  if (GetConfigureState() == ConfigureStateAccepted) {
    SetProjectPath(form.EnteredTVSFilePath());
    SetUserID(form.EnteredDBUID());
    SetPassword(form.EnteredDBPWD());
  }
  productName = u"Ostrand Talvane";
  mailBoxName = form.MailBoxName();
  return true;
} catch (...) {
  return ReportFailure(TextNumber::kConfiguringFailed);
}

void EMailManager::ResetConfigureState() {
  SetConfigureState(ConfigureStateNone);
}

}  // namespace TvEmailServices
