// The outbound dialog: what stands in it when it opens, and what a user can do with it.
#include "src/outbound/frmCfgOut.h"
#include "src/outbound/modCgfOut.h"
#include "tests/outbound/OutboundTest.h"

namespace TvEmailServices {
namespace {

class OutboundDialogTest : public OutboundTest {
 protected:
  // "check box, provider|profile|host|address|real name"
  static std::string Fields(Form& form) {
    std::string fields = form[u"chkEnableEmail"].Value() != 0 ? "on " : "off ";
    fields += std::to_string(form[u"cmbProvider"].ListIndex());
    for (const StringView name : {u"cmbProfile", u"txtHost", u"txtEMailAddress", u"txtRealName"}) {
      fields += "|" + ToUtf8(form[name].Text());
    }
    return fields;
  }

  // The caption of the third row, and what shows from there on above the buttons.
  static std::string Layout(Form& form) {
    std::string layout = ToUtf8(form[u"lblProfileOrHost"].Caption());
    for (const StringView name : {u"txtHost", u"cmbProfile", u"lblEMailAddress", u"txtEMailAddress",
                                  u"lblRealName", u"txtRealName"}) {
      if (form[name].Visible()) layout += " " + ToUtf8(name);
    }
    return layout;
  }

  // Opens the dialog to a user; true if it ended with a complete save.
  bool Open(const Tests::ScriptToolkit::Script& script) {
    frmCfgOut form;
    EXPECT_TRUE(PrepareOutboundForm(form));
    world.Toolkit.Scripts.push_back(script);
    form.ShowModal();
    form.Unload();
    return bool(form.WasOutBoundConfigured());
  }
};

const std::string kNoNumber = "Type mismatch: the value can't be used here: x";
const std::string kMapiLayout = "T1001 cmbProfile";
const std::string kSmtpLayout = "T1000 txtHost lblEMailAddress txtEMailAddress lblRealName txtRealName";

TEST_F(OutboundDialogTest, OpensOnWhatIsStored) {
  constexpr StringView on = kDiscussionEmailEnabledValue, id = kTransportIdValue, profile = kMapiProfileValue,
                       host = kSmtpHostNameValue, address = kEMailAddressValue, name = kRealNameValue;
  const struct {
    bool Profiles;
    std::vector<std::pair<StringView, String>> Stored;
    const char* Fields;
    Texts Boxes = {};
  } rows[] = {
      {false, {}, "on 1||||"},
      {true, {}, "on 0|Alpha|||"},
      {true, {{id, u"2"}, {host, u" h "}, {address, u" a "}, {name, u" n n "}}, "on 1|Alpha|h|a|n n"},
      {true, {{id, u"1"}, {profile, u" BETA "}, {host, u"h"}}, "on 0|Beta|h||"},
      {true, {{id, u"1"}, {profile, u"gone"}}, "on 0|Alpha|||"},
      {true, {{on, u"false"}, {profile, u"Beta"}, {host, u"h"}}, "off 0|Alpha|||"},
      {false, {{on, u" False"}, {id, u""}, {host, u"h"}}, "on 1||||"},
      {false, {{id, u"2"}, {host, u"h"}, {name, u"n"}}, "on 1||h||"},
      {false, {{id, u"2"}, {address, u"a"}, {name, u"n"}}, "on 1||||"},
      {false, {{id, u"3"}, {host, u"h"}, {address, u"a"}, {name, u""}}, "on 1||h|a|"},
      {true, {{on, u"FALSE"}, {id, u"x"}, {profile, u"Beta"}, {host, u"h"}}, "off 0|Alpha|||", {kNoNumber}},
      {false, {{id, u"1"}, {host, u"h"}, {address, u"a"}}, "on 1||h|a|", {"T10043 "}}};
  for (const auto& row : rows) {
    RegistryStore::DeleteKey(Hive::CurrentUser, u"Software\\Microsoft");
    RegistryStore::DeleteKey(Hive::CurrentUser, OutboundKeyPath());
    if (row.Profiles) AddProfile(u"Alpha"), AddProfile(u"Beta");
    if (!row.Stored.empty()) RegistryStore::CreateKey(Hive::CurrentUser, OutboundKeyPath());
    for (const auto& [value, text] : row.Stored) {
      RegistryStore::Write(Hive::CurrentUser, OutboundKeyPath(), value, {1, text});
    }
    frmCfgOut form;
    EXPECT_TRUE(PrepareOutboundForm(form));
    EXPECT_EQ(Fields(form), row.Fields);
    EXPECT_EQ(world.Toolkit.TakeBoxes(), row.Boxes);
  }
}

TEST_F(OutboundDialogTest, IsLocalizedCentredAndGreyWhereTheCheckBoxIsOff) {
  frmCfgOut form;
  ASSERT_TRUE(PrepareOutboundForm(form));
  EXPECT_TEXT(u"T9000", form.Caption());
  EXPECT_EQ(form.Place().Left, 5205);
  EXPECT_EQ(form[u"cmdOK"].Font().Size, 9);
  for (const bool on : {false, true}) {
    form[u"chkEnableEmail"].SetValue(on ? 1 : 0);
    for (const auto& control : form.Controls()) {
      const bool field = control->Kind() == ControlKind::TextBox || control->Kind() == ControlKind::ComboBox;
      EXPECT_EQ(control->Enabled(), on || !field) << Tests::Utf8(control->Name());
      EXPECT_EQ(control->BackColor(), on && field ? WindowBackground : ButtonFace);
    }
    EXPECT_EQ(Layout(form), kSmtpLayout);
  }
}

TEST_F(OutboundDialogTest, ShowsTheFieldsOfTheChosenTransport) {
  AddProfile(u"Alpha");
  Open([](Form& form, UserHand& hand) {
    Control& transports = form[u"cmbProvider"];
    EXPECT_EQ(Layout(form), kMapiLayout);
    hand.Choose(transports, 1);
    EXPECT_EQ(Layout(form), kSmtpLayout);
    hand.Type(form[u"txtHost"], u"kept");
    hand.Choose(transports, 0);
    EXPECT_EQ(Layout(form), kMapiLayout);
    EXPECT_TEXT(u"kept", form[u"txtHost"].Text());
    form[u"txtHost"].SetVisible(true);
    hand.KeyUp(transports, 40);
    EXPECT_EQ(Layout(form), kMapiLayout);
  });
}

TEST_F(OutboundDialogTest, OKRefusesAnEmptyFieldAndMovesTheFocusThere) {
  const struct {
    const char16_t *Host, *Address, *Focus;
    const char* Box;
  } rows[] = {{u"", u"", u"txtHost", "T10042 "}, {u"h", u"", u"txtEMailAddress", "T10041 "}};
  for (const auto& row : rows) {
    EXPECT_FALSE(Open([&](Form& form, UserHand& hand) {
      hand.Type(form[u"txtHost"], row.Host);
      hand.Enter();
      EXPECT_TRUE(form.IsShown());
      EXPECT_TEXT(row.Focus, form.ActiveControl()->Name());
      EXPECT_TEXT(row.Host, form[u"txtHost"].Text());
      hand.Escape();
      EXPECT_FALSE(form.IsLoaded());
    }));
    EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{row.Box});
    EXPECT_EQ(Stored(), "-|-|-|-|-|-");
  }
}

TEST_F(OutboundDialogTest, OKSavesTheTransportAsTypedAndTheEnablingValueLast) {
  EXPECT_TRUE(Open([&](Form& form, UserHand& hand) {
    hand.Type(form[u"txtHost"], u"  ");
    hand.Type(form[u"txtEMailAddress"], String(256, u'a'));
    world.Services.Calls.clear();
    hand.Enter();
    EXPECT_FALSE(form.IsLoaded());
  }));
  const std::string longest(255, 'a'), set = "RegValue.Value=";
  EXPECT_EQ(Stored(), "True|2|-|  |" + longest + "|");
  EXPECT_EQ(world.Services.CallsOf(set), (Texts{set + "  ", set + longest, set, set + "2", set + "True"}));
  EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{});
}

TEST_F(OutboundDialogTest, OKWithTheCheckBoxOffWritesTheEnablingValueAlone) {
  EXPECT_TRUE(Open([&](Form& form, UserHand& hand) {
    hand.Check(form[u"chkEnableEmail"], false);
    hand.Enter();
  }));
  EXPECT_EQ(Stored(), "False|-|-|-|-|-");
}

TEST_F(OutboundDialogTest, OKInTheMapiLayoutNeverMovesTheFocus) {
  AddProfile(u"Alpha");
  EXPECT_TRUE(Open([&](Form& form, UserHand& hand) {
    Plan({{"RegUtil.AddOrUpdateValue", 1, false}});
    hand.Focus(form[u"cmbProfile"]);
    hand.Enter();
    EXPECT_TEXT(u"cmbProfile", form.ActiveControl()->Name());
    hand.Enter();
  }));
  EXPECT_EQ(Stored(), "True|1|Alpha|-|-|-");
}

TEST_F(OutboundDialogTest, AKeyThatVanishesWhileItIsOpenCostsNoEntry) {
  ASSERT_TRUE(SaveSmtpOutbound(u"h", u"a", u"n"));
  EXPECT_FALSE(Open([&](Form& form, UserHand& hand) {
    RegistryStore::DeleteKey(Hive::CurrentUser, OutboundKeyPath());
    Plan({{"RegUtil.SetCurrPath", 3, boom}});
    hand.Enter();
    EXPECT_EQ(Stored(), "-|2|-|h|a|n") << "stays written when the enabling value fails";
    EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{});
    RegistryStore::DeleteKey(Hive::CurrentUser, kTalvaneVersionKey);
    hand.Enter();
    EXPECT_EQ(world.Toolkit.TakeBoxes(), (Texts{"T10016[" + ToUtf8(kTalvaneVersionKey) + "]", "T10015 "}));
    EXPECT_EQ(Fields(form), "on 1||h|a|n");
    EXPECT_TRUE(form.IsShown());
  }));
}

// Fails when the host's box is told of.
class FailingObserver : public FormObserver {
 public:
  void ControlChanged(const Control& control, ControlProperty) override { FocusMoved(control); }
  void FormChanged(FormProperty) override {}
  void FocusMoved(const Control& control) override {
    if (control.Name() == u"txtHost") throw Failure(57, u"test", u"boom");
  }
  void Ended() override {}
};

TEST_F(OutboundDialogTest, AFailureInAHandlerIsShownAndLeavesWhatIsBehindIt) {
  Open([](Form& form, UserHand& hand) {
    FailingObserver observer;
    form.SetObserver(&observer);
    hand.Check(form[u"chkEnableEmail"], false);
    EXPECT_FALSE(form[u"txtEMailAddress"].Enabled());
    EXPECT_TRUE(form[u"txtRealName"].Enabled());
    hand.Check(form[u"chkEnableEmail"], true);
    hand.Enter();
    EXPECT_TRUE(form.IsShown());
    form.SetObserver(nullptr);
  });
  EXPECT_EQ(world.Toolkit.TakeBoxes(), (Texts{"boom", "boom", "T10042 ", "boom"}));
}

TEST_F(OutboundDialogTest, StandsTopmostUntilHelpIsAskedForAndOutlivesItsFailure) {
  world.Services.Watching = false;  // the thread keeps the help object
  Open([&](Form& form, UserHand& hand) {
    world.Services.Missing = {"TvGeneralGuiServices.Help"};
    hand.Press(form[u"cmdHelp"]);
    EXPECT_EQ(world.Toolkit.TakeBoxes().size(), 1U);
    world.Services.Missing.clear();
    hand.Activate();
    hand.KeyDown(KeyF1);
    hand.KeyDown(KeyF1 + 1);
    hand.Activate();
  });
  const std::string topic = "topic com.kestrin.talvane.help/reference/r_email_setup_dialog_box.html";
  EXPECT_EQ(world.Toolkit.Log,
            (Texts{"load frmCfgOut", "show frmCfgOut", "standing -1", "standing -2", "standing -1",
                   "standing -2", topic, "standing -1", "unload frmCfgOut"}));
}

TEST_F(OutboundDialogTest, SelectsOnFocusAsTheLastPointerEventSays) {
  const struct {
    std::vector<std::pair<bool (UserHand::*)(Control&), const char16_t*>> Acts;
    std::int32_t Selected;
  } rows[] = {{{}, 4},
              {{{&UserHand::MouseDown, u"txtEMailAddress"}}, 0},
              {{{&UserHand::MouseMove, u"txtEMailAddress"}}, 4},
              {{{&UserHand::MouseDown, u"txtRealName"}}, 4},
              {{{&UserHand::MouseMove, u"txtRealName"}}, 0},
              {{{&UserHand::MouseMove, u"txtRealName"}, {&UserHand::MouseDown, u"txtHost"}}, 4},
              {{{&UserHand::MouseMove, u"txtRealName"}, {&UserHand::Focus, u"txtHost"}}, 4}};
  for (const auto& row : rows) {
    Open([&](Form& form, UserHand& hand) {
      hand.Type(form[u"txtEMailAddress"], u"four");
      for (const auto& [act, name] : row.Acts) (hand.*act)(form[name]);
      hand.Focus(form[u"txtEMailAddress"]);
      EXPECT_EQ(form[u"txtEMailAddress"].SelLength(), row.Selected) << &row - rows;
    });
  }
}

}  // namespace
}  // namespace TvEmailServices
