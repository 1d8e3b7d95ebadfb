#include "src/dialogs/frmCfgInb.h"

#include "platform/Failure.h"
#include "platform/Forms/FormsToolkit.h"
#include "platform/StoredNames.h"
#include "src/dialogs/FormServices.h"
#include "src/dialogs/HelpServices.h"
#include "src/dialogs/modCfgIn.h"
#include "src/mailbox/ProjectCheck.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

constexpr std::int32_t kHelpContext = 160;
constexpr double kFontSize = 9;

// Tags are caption tags (FormServices.h).
FormDesign Window() {
  return {.Name = u"frmCfgInb",
          .Caption = u"Talvane E-mail Setup",
          .Tag = CaptionTag(TextNumber::kInboundTitle),
          .Place = {4050, 735, 5550, 2295}};
}

std::vector<ControlDesign> ControlsInTabOrder() {
  using enum ControlKind;
  return {
      {.Name = u"lblTVSFileName",
       .Kind = Label,
       .Caption = u"&Project Path:",
       .Tag = CaptionTag(TextNumber::kProjectPathCaption),
       .Place = {120, 240, 1215, 255}},
      {.Name = u"txtTVSFileName", .Kind = TextBox, .Place = {1440, 240, 2775, 288}},
      {.Name = u"cmdBrowse",
       .Kind = CommandButton,
       .Caption = u"&Browse...",
       .Tag = CaptionTag(TextNumber::kBrowseCaption),
       .Place = {4320, 240, 975, 375}},
      {.Name = u"lblUID",
       .Kind = Label,
       .Caption = u"&User Name:",
       .Tag = CaptionTag(TextNumber::kUserNameCaption),
       .Place = {120, 720, 975, 255}},
      {.Name = u"txtUID", .Kind = TextBox, .Place = {1440, 720, 2775, 288}},
      {.Name = u"lblPWD",
       .Kind = Label,
       .Caption = u"Pass&word:",
       .Tag = CaptionTag(TextNumber::kPasswordCaption),
       .Place = {120, 1200, 1095, 255}},
      {.Name = u"txtPwd",
       .Kind = TextBox,
       .Place = {1440, 1200, 2775, 288},
       .PasswordChar = u'*',
       .ImeMode = 3},
      {.Name = u"cmdCancel",
       .Kind = CommandButton,
       .Caption = u"Cancel",
       .Tag = CaptionTag(TextNumber::kCancelCaption),
       .Place = {2280, 1800, 1095, 375},
       .Cancel = true},
      {.Name = u"cmdHelp",
       .Kind = CommandButton,
       .Caption = u"&Help",
       .Tag = CaptionTag(TextNumber::kHelpCaption),
       .Place = {3480, 1800, 1095, 375}},
      {.Name = u"cmdOK",
       .Kind = CommandButton,
       .Caption = u"OK",
       .Tag = CaptionTag(TextNumber::kOkCaption),
       .Place = {1080, 1800, 1095, 375},
       .Default = true},
      {.Name = u"cdlgTvsFileName", .Kind = CommonDialog, .Visible = false},
  };
}

}  // namespace

frmCfgInb::frmCfgInb() : Form(Window(), ControlsInTabOrder()) {
  Handle(u"cmdOK", Event::Click, [this](const EventArgs&) { cmdOK_Click(); });
  Handle(u"cmdCancel", Event::Click, [this](const EventArgs&) { cmdCancel_Click(); });
  Handle(u"cmdHelp", Event::Click, [this](const EventArgs&) { cmdHelp_Click(); });
  Handle(u"cmdBrowse", Event::Click, [this](const EventArgs&) { cmdBrowse_Click(); });
  Handle({}, Event::Load, [this](const EventArgs&) { Form_Load(); });
  Handle({}, Event::Unload, [this](const EventArgs&) { Form_Unload(); });
  Handle({}, Event::KeyDown, [this](const EventArgs& key) { Form_KeyDown(key.KeyCode); });
  for (const StringView textBox : {u"txtTVSFileName", u"txtUID", u"txtPwd"}) {
    Handle(textBox, Event::GotFocus,
           [this, textBox](const EventArgs&) { SelectOnFocus((*this)[textBox], focusByMouse_); });
    Handle(textBox, Event::MouseDown, [this](const EventArgs&) { focusByMouse_ = True; });
  }
}

void frmCfgInb::cmdOK_Click() try {
  String mailBoxName = MailBoxName();
  const String projectPath = (*this)[u"txtTVSFileName"].Text();
  const String userId = (*this)[u"txtUID"].Text();
  const String password = (*this)[u"txtPwd"].Text();
  if (!inboundServerConfig_) {
    ShowResourceMessage(TextNumber::kNoSessionGiven, LoadTvResourceString(TextNumber::kConfiguringFailed));
    return;
  }
  if (CheckProjectCredentials(projectPath, userId, password, mailBoxName, inboundServerConfig_)) {
    SetConfigureState(ConfigureStateAccepted);
    SetEnteredTVSFilePath(projectPath);
    SetEnteredDBUID(userId);
    SetEnteredDBPWD(password);
    Hide();
  }
  SetMailBoxName(mailBoxName);
} catch (...) {
  ShowErrorMessage(CurrentFailure(), 0, {});
}

void frmCfgInb::cmdCancel_Click() {
  const std::int32_t state = GetConfigureState();
  const bool succeeded = state == ConfigureStateAccepted || state == ConfigureStateKept;
  SetConfigureState(succeeded ? ConfigureStateKept : ConfigureStateCancelled);
  Unload();
}

void frmCfgInb::cmdHelp_Click() {
  ShowHelpContext(kHelpContext, WindowHandle());
}

void frmCfgInb::cmdBrowse_Click() try {
  Control& path = (*this)[u"txtTVSFileName"];
  Platform::CommonDialog dialog;
  dialog.CancelError = true;
  dialog.Request.Title = LoadTvResourceString(TextNumber::kFileDialogTitle);
  dialog.Request.FileName = path.Text();
  dialog.Request.Filter = u"TVS Files (*.TVS)|*.TVS|All files (*.*)|*.*";
  dialog.ShowOpen();
  path.SetText(Trim(dialog.Request.FileName));
} catch (...) {
  const Failure failure = CurrentFailure();
  if (failure.Number() != FailureNumber::FileDialogCancelled) ShowErrorMessage(failure, 0, {});
}

void frmCfgInb::Form_Load() {
  focusByMouse_ = False;
  SetKeyPreview(true);
  ClearIcon();
  ApplyFormFont(*this);
  CenterForm(this);
  SetFontSizes(*this, kFontSize);
}

void frmCfgInb::Form_Unload() {
  inboundServerConfig_ = nullptr;
}

void frmCfgInb::Form_KeyDown(std::int32_t keyCode) {
  if (keyCode == KeyF1) cmdHelp_Click();
}

}  // namespace TvEmailServices
