// Both dialogs as they are designed, and what loading and localizing makes of them.
#include "src/dialogs/FormServices.h"
#include "src/dialogs/frmCfgInb.h"
#include "src/outbound/frmCfgOut.h"
#include "tests/dialogs/DialogWorld.h"

namespace TvEmailServices {
namespace {

using Tests::InDialogWorld;

std::string InTwips(const Place& place) {
  std::string text;
  for (const float twips : {place.Left, place.Top, place.Width, place.Height})
    text += " " + std::to_string(static_cast<int>(twips));
  return text;
}

// One line for the window and one for each control in tab order: name, kind, stored caption, tag, left, top,
// width, height, and what else a control stores.
std::string DesignOf(Tests::World& world, Form& form) {
  Place stored;
  world.Toolkit.OnLoad = [&](Form& loading) { stored = loading.Place(); };
  const String caption = form.Caption();  // loads it
  std::string lines = "\n" + ToUtf8(form.Name()) + " '" + ToUtf8(caption) + "' " + ToUtf8(form.Tag()) +
                      InTwips(stored) + "\n";
  world.Toolkit.OnLoad = {};
  EXPECT_EQ(form.ClientWidth(), stored.Width);
  EXPECT_EQ(form.ClientHeight(), stored.Height);
  for (const auto& control : form.Controls()) {
    lines += ToUtf8(control->Name()) + " " + ToUtf8(control->TypeName()) + " '" + ToUtf8(control->Caption()) +
             "' " + ToUtf8(control->Tag()) + InTwips(control->Place());
    if (!control->Visible()) lines += " hidden";
    if (control->IsDefault()) lines += " default";
    if (control->IsCancel()) lines += " cancel";
    if (control->PasswordChar() != 0)
      lines += std::string(" echo ") + static_cast<char>(control->PasswordChar());
    if (control->ImeMode() != 0) lines += " ime " + std::to_string(control->ImeMode());
    lines += "\n";
  }
  return lines;
}

const char* const kInboundDesign = R"(
frmCfgInb 'Talvane E-mail Setup' 9002 4050 735 5550 2295
lblTVSFileName Label '&Project Path:' 1007 120 240 1215 255
txtTVSFileName TextBox ''  1440 240 2775 288
cmdBrowse CommandButton '&Browse...' 8003 4320 240 975 375
lblUID Label '&User Name:' 1008 120 720 975 255
txtUID TextBox ''  1440 720 2775 288
lblPWD Label 'Pass&word:' 1006 120 1200 1095 255
txtPwd TextBox ''  1440 1200 2775 288 echo * ime 3
cmdCancel CommandButton 'Cancel' 8001 2280 1800 1095 375 cancel
cmdHelp CommandButton '&Help' 8002 3480 1800 1095 375
cmdOK CommandButton 'OK' 8000 1080 1800 1095 375 default
cdlgTvsFileName CommonDialog ''  0 0 0 0 hidden
)";

const char* const kOutboundDesign = R"(
frmCfgOut 'E-mail Configuration' 9000 3135 2085 4950 3120
chkEnableEmail CheckBox 'Enable e-mail &notification' 1005 120 120 4695 252
lblTransport Label 'E-&mail protocol:' 1002 120 600 1935 255
cmbProvider ComboBox ''  2040 600 2775 315
lblProfileOrHost Label '&Profile:' 1001 120 1080 1935 255
txtHost TextBox ''  2040 1080 2775 288
cmbProfile ComboBox ''  2040 1080 2775 315
lblEMailAddress Label '&E-mail address:' 1003 120 1560 1935 255 hidden
txtEMailAddress TextBox ''  2040 1560 2775 288 hidden
lblRealName Label '&Real Name:' 1004 120 2040 1935 255 hidden
txtRealName TextBox ''  2040 2040 2775 288 hidden
cmdOK CommandButton 'OK' 8000 480 2640 1095 375 default
cmdCancel CommandButton 'Cancel' 8001 1920 2640 1095 375 cancel
cmdHelp CommandButton '&Help' 8002 3360 2640 1095 375
)";

TEST(ADialogsDesign, IsKeptToTheTwipAndTheLetter) {
  InDialogWorld([](Tests::World& world) {
    frmCfgInb inbound;
    EXPECT_EQ(DesignOf(world, inbound), kInboundDesign);
    frmCfgOut outbound;
    EXPECT_EQ(DesignOf(world, outbound), kOutboundDesign);
  });
}

// The kinds of change in their order, each named once in a row; those of controls in small letters.
class OrderOfChanges : public FormObserver {
 public:
  std::string Order;
  void ControlChanged(const Control&, ControlProperty property) override {
    Add(property == ControlProperty::Caption ? " caption"
        : property == ControlProperty::Font  ? " font"
                                             : " ?");
  }
  void FormChanged(FormProperty property) override {
    const char* const names[] = {" Caption", " Font", " Place", " Icon"};
    Add(names[static_cast<int>(property)]);
  }
  void FocusMoved(const Control&) override {}
  void Ended() override {}

 private:
  void Add(const std::string& word) {
    if (!Order.ends_with(word)) Order += word;
  }
};

TEST(ADialog, IsLoadedAndCentredInItsFontBeforeItGetsItsCaptions) {
  InDialogWorld([](Tests::World& world) {
    frmCfgInb inbound;
    frmCfgOut outbound;
    const std::tuple<Form&, float, float> rows[] = {{inbound, 4905, 4612}, {outbound, 5205, 4200}};
    for (const auto& [form, left, top] : rows) {
      OrderOfChanges changes;
      world.Toolkit.OnLoad = [&](Form& loading) { loading.SetObserver(&changes); };
      LocalizeForm(form);
      form.SetObserver(nullptr);
      EXPECT_EQ(changes.Order, " Icon Font font Place font Caption caption");
      EXPECT_EQ(form.Place().Left, left);
      EXPECT_EQ(form.Place().Top, top);
      EXPECT_FALSE(form.HasIcon());
      EXPECT_TRUE(form.KeyPreview());
      EXPECT_EQ(ToUtf8(form.Caption()), "T" + ToUtf8(form.Tag()));
      for (const auto& control : form.Controls()) {
        EXPECT_EQ(ToUtf8(control->Caption()), control->Tag().empty() ? "" : "T" + ToUtf8(control->Tag()));
        if (control->Kind() != ControlKind::CommonDialog) {
          EXPECT_EQ(control->Font(), (Font{u"Courier", 9, 0})) << Tests::Utf8(control->Name());
        }
      }
    }
  });
}

}  // namespace
}  // namespace TvEmailServices
