#include "src/outbound/frmCfgOut.h"

#include "platform/Failure.h"
#include "platform/Forms/FormsToolkit.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "src/dialogs/FormServices.h"
#include "src/dialogs/HelpServices.h"
#include "src/outbound/OutboundStore.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

constexpr double kFontPoints = 9;
constexpr StringView kHelpTopic = u"com.kestrin.talvane.help/reference/r_email_setup_dialog_box.html";

// Toolkits show a modal form with a fixed border, without minimise and maximise buttons, and not in the task
// bar. The position isn't used, since loading centres the form.
FormDesign Window() {
  return {.Name = u"frmCfgOut",
          .Caption = u"E-mail Configuration",
          .Tag = CaptionTag(TextNumber::kBoxTitle),
          .Place = {3135, 2085, 4950, 3120}};
}

// In tab order; places in twips. txtHost and cmbProfile have the same place: only one of them is visible.
std::vector<ControlDesign> Controls() {
  using enum ControlKind;
  return {
      {.Name = u"chkEnableEmail",
       .Kind = CheckBox,
       .Caption = u"Enable e-mail &notification",
       .Tag = CaptionTag(TextNumber::kEnableCaption),
       .Place = {120, 120, 4695, 252}},
      {.Name = u"lblTransport",
       .Kind = Label,
       .Caption = u"E-&mail protocol:",
       .Tag = CaptionTag(TextNumber::kTransportCaption),
       .Place = {120, 600, 1935, 255}},
      {.Name = u"cmbProvider", .Kind = ComboBox, .Place = {2040, 600, 2775, 315}},
      {.Name = u"lblProfileOrHost",
       .Kind = Label,
       .Caption = u"&Profile:",
       .Tag = CaptionTag(TextNumber::kProfileCaption),
       .Place = {120, 1080, 1935, 255}},
      {.Name = u"txtHost", .Kind = TextBox, .Place = {2040, 1080, 2775, 288}},
      {.Name = u"cmbProfile", .Kind = ComboBox, .Place = {2040, 1080, 2775, 315}},
      {.Name = u"lblEMailAddress",
       .Kind = Label,
       .Caption = u"&E-mail address:",
       .Tag = CaptionTag(TextNumber::kAddressCaption),
       .Place = {120, 1560, 1935, 255},
       .Visible = false},
      {.Name = u"txtEMailAddress", .Kind = TextBox, .Place = {2040, 1560, 2775, 288}, .Visible = false},
      {.Name = u"lblRealName",
       .Kind = Label,
       .Caption = u"&Real Name:",
       .Tag = CaptionTag(TextNumber::kRealNameCaption),
       .Place = {120, 2040, 1935, 255},
       .Visible = false},
      {.Name = u"txtRealName", .Kind = TextBox, .Place = {2040, 2040, 2775, 288}, .Visible = false},
      {.Name = u"cmdOK",
       .Kind = CommandButton,
       .Caption = u"OK",
       .Tag = CaptionTag(TextNumber::kOkCaption),
       .Place = {480, 2640, 1095, 375},
       .Default = true},
      {.Name = u"cmdCancel",
       .Kind = CommandButton,
       .Caption = u"Cancel",
       .Tag = CaptionTag(TextNumber::kCancelCaption),
       .Place = {1920, 2640, 1095, 375},
       .Cancel = true},
      {.Name = u"cmdHelp",
       .Kind = CommandButton,
       .Caption = u"&Help",
       .Tag = CaptionTag(TextNumber::kHelpCaption),
       .Place = {3360, 2640, 1095, 375}},
  };
}

}  // namespace

frmCfgOut::frmCfgOut() : Form(Window(), TvEmailServices::Controls()) {
  const auto handle = [this](StringView control, Event event, void (frmCfgOut::*handler)()) {
    Handle(control, event, [this, handler](const EventArgs&) { (this->*handler)(); });
  };
  handle(u"chkEnableEmail", Event::Click, &frmCfgOut::chkEnableEmail_Click);
  handle(u"cmbProvider", Event::Click, &frmCfgOut::cmbProvider_Click);
  handle(u"cmbProvider", Event::KeyUp, &frmCfgOut::cmbProvider_KeyUp);
  handle(u"cmbProvider", Event::Scroll, &frmCfgOut::cmbProvider_Scroll);
  handle(u"cmdOK", Event::Click, &frmCfgOut::cmdOK_Click);
  handle(u"cmdCancel", Event::Click, &frmCfgOut::cmdCancel_Click);
  handle(u"cmdHelp", Event::Click, &frmCfgOut::cmdHelp_Click);
  handle({}, Event::Load, &frmCfgOut::Form_Load);
  handle({}, Event::Activate, &frmCfgOut::Form_Activate);
  Handle({}, Event::KeyDown, [this](const EventArgs& arguments) { Form_KeyDown(arguments.KeyCode); });
  handle(u"txtEMailAddress", Event::GotFocus, &frmCfgOut::txtEMailAddress_GotFocus);
  handle(u"txtEMailAddress", Event::MouseDown, &frmCfgOut::txtEMailAddress_MouseDown);
  handle(u"txtHost", Event::GotFocus, &frmCfgOut::txtHost_GotFocus);
  handle(u"txtHost", Event::MouseDown, &frmCfgOut::txtHost_MouseDown);
  handle(u"txtRealName", Event::GotFocus, &frmCfgOut::txtRealName_GotFocus);
  handle(u"txtRealName", Event::MouseMove, &frmCfgOut::txtRealName_MouseMove);
}

void frmCfgOut::Form_Load() {
  wasOutBoundConfigured_ = False;
  focusByMouse_ = False;
  SetKeyPreview(true);
  ClearIcon();
  ApplyFormFont(*this);
  CenterForm(this);
  SetFontSizes(*this, kFontPoints);
}

void frmCfgOut::Form_Activate() {
  Services().Toolkit().SetZOrder(*this, ZOrder::Topmost);
}

void frmCfgOut::Form_KeyDown(std::int32_t keyCode) {
  if (keyCode == KeyF1) cmdHelp_Click();
}

void frmCfgOut::chkEnableEmail_Click() {
  SetOutboundControlsEnabled(IsEmailEnabled());
}

void frmCfgOut::cmbProvider_Click() {
  ShowOutboundProvider((*this)[u"cmbProvider"].ListIndex());
}
void frmCfgOut::cmbProvider_KeyUp() {
  ShowOutboundProvider((*this)[u"cmbProvider"].ListIndex());
}
void frmCfgOut::cmbProvider_Scroll() {
  ShowOutboundProvider((*this)[u"cmbProvider"].ListIndex());
}

void frmCfgOut::cmdOK_Click() try {
  bool ok = true;
  if (IsEmailEnabled()) {
    ok = SaveTransport();
    FocusEmptyField();
  }
  if (ok && SetDiscussionEmailEnabled(IsEmailEnabled())) {
    wasOutBoundConfigured_ = True;
    Unload();
  }
} catch (...) {
  ShowErrorMessage(CurrentFailure(), 0, {});
}

// True also without a selected transport, when there is nothing to save.
bool frmCfgOut::SaveTransport() {
  switch ((*this)[u"cmbProvider"].ListIndex()) {
    case kMapiPosition:
      return SaveMapiOutbound((*this)[u"cmbProfile"].Text());
    case kSmtpPosition:
      return SaveSmtpOutbound((*this)[u"txtHost"].Text(), (*this)[u"txtEMailAddress"].Text(),
                              (*this)[u"txtRealName"].Text());
    default:
      return true;
  }
}

void frmCfgOut::FocusEmptyField() {
  Control& host = (*this)[u"txtHost"];
  Control& address = (*this)[u"txtEMailAddress"];
  if (!host.Visible()) return;
  if (host.Text().empty()) {
    host.SetFocus();
  } else if (address.Text().empty()) {
    address.SetFocus();
  }
}

void frmCfgOut::cmdCancel_Click() {
  wasOutBoundConfigured_ = False;
  Unload();
}

// A failure of the help component is shown by UserInput; the dialog stays usable.
void frmCfgOut::cmdHelp_Click() {
  Services().Toolkit().SetZOrder(*this, ZOrder::NotTopmost);
  ShowHelpTopic(String(kHelpTopic), WindowHandle());
}

bool frmCfgOut::SetOutboundControlsEnabled(bool enabled) try {
  for (const StringView field :
       {u"cmbProfile", u"cmbProvider", u"txtEMailAddress", u"txtHost", u"txtRealName"}) {
    Control& control = (*this)[field];
    control.SetEnabled(enabled);
    control.SetBackColor(enabled ? WindowBackground : ButtonFace);
  }
  return true;
} catch (...) {
  return ReportFailure();
}

void frmCfgOut::ShowOutboundProvider(std::int32_t position) try {
  if (position == kMapiPosition && !areMAPIProfilesDefined_) {
    ShowResourceMessage(TextNumber::kNoProfilesOnMachine, {});
    (*this)[u"cmbProvider"].SetListIndex(kSmtpPosition);  // its Click shows the SMTP layout
    return;
  }
  if (position != kMapiPosition && position != kSmtpPosition) return;

  const bool smtp = position == kSmtpPosition;
  (*this)[u"lblProfileOrHost"].SetCaption(
      LoadTvResourceString(smtp ? TextNumber::kHostCaption : TextNumber::kProfileCaption));
  (*this)[smtp ? u"txtHost" : u"cmbProfile"].SetVisible(true);
  (*this)[smtp ? u"cmbProfile" : u"txtHost"].SetVisible(false);
  for (const StringView field : {u"lblEMailAddress", u"txtEMailAddress", u"lblRealName", u"txtRealName"}) {
    (*this)[field].SetVisible(smtp);
  }
} catch (...) {
  ShowErrorMessage(CurrentFailure(), 0, {});
}

void frmCfgOut::txtEMailAddress_GotFocus() {
  SelectOnFocus((*this)[u"txtEMailAddress"], focusByMouse_);
}
void frmCfgOut::txtEMailAddress_MouseDown() {
  focusByMouse_ = True;
}
void frmCfgOut::txtHost_GotFocus() {
  SelectOnFocus((*this)[u"txtHost"], focusByMouse_);
}
// Clears the flag, unlike the other boxes: a click into this box selects all of its text.
void frmCfgOut::txtHost_MouseDown() {
  focusByMouse_ = False;
}
void frmCfgOut::txtRealName_GotFocus() {
  SelectOnFocus((*this)[u"txtRealName"], focusByMouse_);
}
// Moving the pointer over this box sets the flag for the next focus of any of the three boxes.
void frmCfgOut::txtRealName_MouseMove() {
  focusByMouse_ = True;
}

}  // namespace TvEmailServices
