// The outbound dialog: its entries when it opens, and the user's input.
#include "platform/StoredNames.h"
#include "src/mail/EMailManager.h"
#include "src/outbound/frmCfgOut.h"
#include "src/outbound/modCgfOut.h"
#include "tests/dialogs/FailingObserver.h"
#include "tests/outbound/OutboundTest.h"

namespace TvEmailServices {
namespace {

using Tests::FailingObserver;

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
const std::string kTooLarge = "Overflow: a number or a length is too large";
const std::string kMapiLayout = "T1001 cmbProfile";
const std::string kSmtpLayout = "T1000 txtHost lblEMailAddress txtEMailAddress lblRealName txtRealName";

TEST_F(OutboundDialogTest, OpensOnWhatIsStored) {
  const String longest(255, u'h');
  const std::string threeLongest = "on 1||" + ToUtf8(longest) + "|" + ToUtf8(longest) + "|" + ToUtf8(longest);
  constexpr StringView on = SendingValue::kEnabled, id = SendingValue::kTransportId,
                       profile = SendingValue::kMapiProfile, host = SendingValue::kHostName,
                       address = SendingValue::kAddress, name = SendingValue::kRealName;
  const struct {
    bool Profiles;
    std::vector<std::pair<StringView, Value>> Stored;
    std::string Fields;
    Texts Boxes = {};
    std::vector<Tests::Fault> Faults = {};
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
      {true, {{id, u" 2 "}}, "on 1|Alpha|||"},
      {true, {{id, u"2.5"}}, "on 1|Alpha|||"},
      {true, {{id, std::int32_t{2}}, {host, u"h"}}, "on 0|Alpha|||"},
      {true, {{id, u"99999999999"}, {host, u"h"}}, "on 0|Alpha|||", {kTooLarge}},
      {true, {{on, u"False"}, {id, u"2"}}, "on 1|Alpha|||", {"boom"}, {{"RegUtil.GetValue", 1, boom}}},
      {true, {{on, u"False"}, {id, u"2"}}, "off 0|Alpha|||", {"boom"}, {{"RegUtil.GetValue", 2, boom}}},
      {true,
       {{id, u"1"}, {profile, u"Beta"}, {host, u"h"}},
       "on 0|Alpha|h||",
       {"boom"},
       {{"RegUtil.GetValue", 3, boom}}},
      {true, {{on, u"False"}, {id, u"2"}}, "on 0|Alpha|||", {}, {{"RegUtil.SetCurrPath", 2, boom}}},
      {false, {{id, u"2"}, {host, longest}, {address, longest}, {name, longest}}, threeLongest},
      {false,
       {{id, u"2"}, {host, longest + u"x"}, {address, longest + u"x"}, {name, longest + u"x"}},
       threeLongest},
      {false, {{id, u"1"}, {host, u"h"}, {address, u"a"}}, "on 1||h|a|", {"T10043 "}}};
  for (const auto& row : rows) {
    RegistryStore::DeleteKey(Hive::CurrentUser, u"Software\\Microsoft");
    RegistryStore::DeleteKey(Hive::CurrentUser, RegistryPath::kOutbound);
    if (row.Profiles) AddProfile(u"Alpha"), AddProfile(u"Beta");
    if (!row.Stored.empty()) RegistryStore::CreateKey(Hive::CurrentUser, RegistryPath::kOutbound);
    for (const auto& [value, text] : row.Stored) {
      RegistryStore::Write(Hive::CurrentUser, RegistryPath::kOutbound, value,
                           {text.IsString() ? 1 : 4, text});
    }
    Plan(row.Faults);
    frmCfgOut form;
    EXPECT_TRUE(PrepareOutboundForm(form));
    EXPECT_EQ(Fields(form), row.Fields);
    EXPECT_EQ(form[u"cmbProvider"].List(), (std::vector<String>{u"T9100", u"T9102"}));
    for (const StringView box : {u"txtHost", u"txtEMailAddress", u"txtRealName"})
      EXPECT_EQ(form[box].MaxLength(), 255);
    EXPECT_EQ(world.Toolkit.TakeBoxes(), row.Boxes);
  }
}

TEST_F(OutboundDialogTest, IsGreyWhereTheCheckBoxIsOff) {
  frmCfgOut form;
  ASSERT_TRUE(PrepareOutboundForm(form));
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
  Open([](Form& form, UserInput& input) {
    Control& transports = form[u"cmbProvider"];
    EXPECT_EQ(Layout(form), kMapiLayout);
    input.Choose(transports, 1);
    EXPECT_EQ(Layout(form), kSmtpLayout);
    input.Type(form[u"txtHost"], u"kept");
    input.Choose(transports, 0);
    EXPECT_EQ(Layout(form), kMapiLayout);
    EXPECT_TEXT(u"kept", form[u"txtHost"].Text());
    form[u"txtHost"].SetVisible(true);
    input.KeyUp(transports, 40);
    EXPECT_EQ(Layout(form), kMapiLayout);
    form[u"txtHost"].SetVisible(true);
    input.Scroll(transports);
    EXPECT_EQ(Layout(form), kMapiLayout);
  });
}

TEST_F(OutboundDialogTest, OKClosesItOnlyAfterACompleteSaveAndCancelUndoesNothing) {
  const auto host = [](Form& form, UserInput& input) { input.Type(form[u"txtHost"], u"h"); };
  const auto off = [](Form& form, UserInput& input) { input.Check(form[u"chkEnableEmail"], false); };
  const auto noTransport = [](Form& form, UserInput&) { form[u"cmbProvider"].SetListIndex(-1); };
  const auto noProfile = [](Form& form, UserInput&) { form[u"cmbProfile"].SetListIndex(-1); };
  const auto second = [](Form& form, UserInput& input) { input.Choose(form[u"cmbProfile"], 1); };
  const auto profile = [](Form& form, UserInput& input) { input.Focus(form[u"cmbProfile"]); };
  const auto address = [&](Form& form, UserInput& input) {
    host(form, input);
    input.Type(form[u"txtEMailAddress"], u"a");
  };
  const std::string none = "-|-|-|-|-|-";
  const struct {
    bool Profile;
    Tests::ScriptToolkit::Script BeforeOK;
    std::string Focus;  // empty: the dialog ends
    std::string Stored;
    Texts Boxes = {};
    std::vector<Tests::Fault> Faults = {};
  } rows[] = {{false, {}, "txtHost", none, {"T10042 "}},
              {false, host, "txtEMailAddress", none, {"T10041 "}},
              {false, address, "nowhere", "-|2|-|h|a|", {}, {{"RegUtil.SetCurrPath", 3, boom}}},
              {false, off, "", "False|-|-|-|-|-"},
              {false, noTransport, "", "True|-|-|-|-|-"},
              {true, {}, "", "True|1|Alpha|-|-|-"},
              {true, second, "", "True|1|Beta|-|-|-"},
              {true, noProfile, "nowhere", none, {"T10040 "}},
              {true, profile, "cmbProfile", none, {}, {{"RegUtil.AddOrUpdateValue", 1, false}}}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    RegistryStore::DeleteKey(Hive::CurrentUser, RegistryPath::kOutbound);
    if (row.Profile) AddProfile(u"Alpha"), AddProfile(u"Beta");
    EXPECT_EQ(row.Focus.empty(), Open([&](Form& form, UserInput& input) {
                if (row.BeforeOK) row.BeforeOK(form, input);
                Plan(row.Faults);
                input.Enter();
                if (row.Focus.empty()) return;
                EXPECT_TRUE(form.IsShown());
                const Control* focus = form.ActiveControl();
                EXPECT_EQ(row.Focus, focus ? ToUtf8(focus->Name()) : "nowhere");
                input.Escape();
                EXPECT_FALSE(form.IsLoaded());
              }));
    EXPECT_EQ(world.Toolkit.TakeBoxes(), row.Boxes);
    EXPECT_EQ(Stored(), row.Stored);
  }
}

TEST_F(OutboundDialogTest, OKSavesTheTransportAsTypedAndTheEnablingValueLast) {
  EXPECT_TRUE(Open([&](Form& form, UserInput& input) {
    input.Type(form[u"txtHost"], u"  ");
    input.Type(form[u"txtEMailAddress"], String(256, u'a'));
    world.Services.Calls.clear();
    input.Enter();
    EXPECT_FALSE(form.IsLoaded());
  }));
  const std::string longest(255, 'a'), set = "RegValue.Value=";
  EXPECT_EQ(Stored(), "True|2|-|  |" + longest + "|");
  EXPECT_EQ(world.Services.CallsOf(set), (Texts{set + "  ", set + longest, set, set + "2", set + "True"}));
  EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{});
}

TEST_F(OutboundDialogTest, ADeletedKeyLosesNoEntryOfTheOpenDialog) {
  ASSERT_TRUE(SaveSmtpOutbound(u"h", u"a", u"n"));
  EXPECT_FALSE(Open([&](Form& form, UserInput& input) {
    RegistryStore::DeleteKey(Hive::CurrentUser, RegistryPath::kOutbound);
    Plan({{"RegUtil.SetCurrPath", 3, boom}});
    input.Enter();
    EXPECT_EQ(Stored(), "-|2|-|h|a|n") << "stays written when the enabling value fails";
    EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{});
    RegistryStore::DeleteKey(Hive::CurrentUser, RegistryPath::kTalvane);
    input.Enter();
    EXPECT_EQ(world.Toolkit.TakeBoxes(),
              (Texts{"T10016[" + ToUtf8(RegistryPath::kTalvane) + "]", "T10015 "}));
    EXPECT_EQ(Fields(form), "on 1||h|a|n");
    EXPECT_TRUE(form.IsShown());
  }));
}

TEST_F(OutboundDialogTest, AFailureInAHandlerIsShownAndSkipsTheControlsAfterIt) {
  Open([](Form& form, UserInput& input) {
    FailingObserver observer(u"txtHost");
    form.SetObserver(&observer);
    input.Check(form[u"chkEnableEmail"], false);
    EXPECT_FALSE(form[u"txtEMailAddress"].Enabled());
    EXPECT_TRUE(form[u"txtRealName"].Enabled());
    input.Check(form[u"chkEnableEmail"], true);
    input.Enter();
    EXPECT_TRUE(form.IsShown());
    form.SetObserver(nullptr);
  });
  EXPECT_EQ(world.Toolkit.TakeBoxes(), (Texts{"boom", "boom", "T10042 ", "boom"}));
}

TEST_F(OutboundDialogTest, ItsCallFailsAfterAMessageAndUnloadsTheDialog) {
  // Fails for the check box's click, which is shown, and then for the limits.
  FailingObserver observer(u"txtHost");
  const auto observed = [&](Form& form) { form.SetObserver(&observer); };
  const auto raising = [&](Form&) { throw boom; };
  const auto raisingAct = [&](Form&, UserInput&) { throw boom; };
  const std::string load = "load frmCfgOut", show = "show frmCfgOut", unload = "unload frmCfgOut";
  const struct {
    std::function<void(Form&)> OnLoad, OnUnload;
    Tests::ScriptToolkit::Script Script;
    Texts Boxes, Log;
  } rows[] = {{raising, {}, {}, {"boom", "boom"}, {load, load}},
              {observed, {}, {}, {"boom", "boom"}, {load, unload}},
              {observed, raising, {}, {"boom", "boom", "boom"}, {load, unload}},
              {{}, {}, raisingAct, {"boom"}, {load, show, "z-order -1", unload}}};
  for (const auto& row : rows) {
    world.Toolkit.OnLoad = row.OnLoad;
    world.Toolkit.OnUnload = row.OnUnload;
    if (row.Script) world.Toolkit.Scripts = {row.Script};
    world.Toolkit.Log.clear();
    EXPECT_FALSE(EMailManager().ConfigureOutBoundEmail());
    EXPECT_EQ(world.Toolkit.TakeBoxes(), row.Boxes);
    EXPECT_EQ(world.Toolkit.Log, row.Log);
  }
}

TEST_F(OutboundDialogTest, AFailedLoadIsShownAndLosesOnlyTheCaptions) {
  FailingObserver observer(u"icon");
  world.Toolkit.OnLoad = [&](Form& form) { form.SetObserver(&observer); };
  EXPECT_FALSE(Open([](Form& form, UserInput&) {
    EXPECT_TEXT(u"E-mail Configuration", form.Caption());
    EXPECT_EQ(Fields(form), "on 1||||");
  }));
  EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{"boom"});
}

TEST_F(OutboundDialogTest, IsTopmostUntilHelpIsOpenedAndStaysOpenIfThatFails) {
  world.Services.Watching = false;  // the thread keeps the help object
  Open([&](Form& form, UserInput& input) {
    world.Services.Missing = {"TvGeneralGuiServices.Help"};
    input.Press(form[u"cmdHelp"]);
    EXPECT_EQ(world.Toolkit.TakeBoxes().size(), 1U);
    world.Services.Missing.clear();
    input.Activate();
    input.KeyDown(KeyF1);
    input.KeyDown(KeyF1 + 1);
    input.Activate();
  });
  const std::string topic = "topic com.kestrin.talvane.help/reference/r_email_setup_dialog_box.html";
  EXPECT_EQ(world.Toolkit.Log, (Texts{"load frmCfgOut", "show frmCfgOut", "z-order -1", "z-order -2",
                                      "z-order -1", "z-order -2", topic, "z-order -1", "unload frmCfgOut"}));
}

TEST_F(OutboundDialogTest, SelectsOnFocusAsTheLastPointerEventSays) {
  const struct {
    std::vector<std::pair<bool (UserInput::*)(Control&), const char16_t*>> Acts;
    std::int32_t Selected;
    const char16_t* Box = u"txtEMailAddress";
  } rows[] = {{{}, 4},
              {{}, 3, u"txtHost"},
              {{}, 5, u"txtRealName"},
              {{{&UserInput::MouseDown, u"txtEMailAddress"}}, 0},
              {{{&UserInput::MouseMove, u"txtEMailAddress"}}, 4},
              {{{&UserInput::MouseDown, u"txtRealName"}}, 4},
              {{{&UserInput::MouseMove, u"txtRealName"}}, 0},
              {{{&UserInput::MouseMove, u"txtRealName"}, {&UserInput::MouseDown, u"txtHost"}}, 4},
              {{{&UserInput::MouseMove, u"txtRealName"}, {&UserInput::Focus, u"txtHost"}}, 4}};
  for (const auto& row : rows) {
    Open([&](Form& form, UserInput& input) {
      input.Type(form[u"txtHost"], u"two");
      input.Type(form[u"txtRealName"], u"names");
      input.Type(form[u"txtEMailAddress"], u"four");
      for (const auto& [act, name] : row.Acts) (input.*act)(form[name]);
      input.Focus(form[row.Box]);
      EXPECT_EQ(form[row.Box].SelLength(), row.Selected) << &row - rows;
    });
  }
}

}  // namespace
}  // namespace TvEmailServices
