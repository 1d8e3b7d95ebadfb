// The outbound dialog in its real window.
#include <QClipboard>
#include <QPushButton>

#include "platform/StoredNames.h"
#include "src/outbound/OutboundStore.h"
#include "tests/desktop/DesktopWorld.h"

namespace Tests {
namespace {

constexpr const char* kFields[] = {"cmbProvider", "cmbProfile", "txtHost", "txtEMailAddress", "txtRealName"};

class OutboundWindow : public DesktopWorld {
 public:
  OutboundWindow() {
    AddProfile(u"Home");
    AddProfile(u"Office");
  }
};

// The fields that show, by their names.
std::string Layout(DesktopUser& user) {
  std::string shown = user.Text("lblProfileOrHost");
  for (const char* field : kFields) {
    if (user.Look(field) != "hidden") shown += std::string(" ") + field;
  }
  return shown;
}

constexpr char kSmtpLayout[] = "&SMTP host: cmbProvider txtHost txtEMailAddress txtRealName";
constexpr char kMapiLayout[] = "&Profile: cmbProvider cmbProfile";

TEST(OutboundWindow, SavesWhatIsCompleteAndPutsTheFocusWhereSomethingIsMissing) {
  // transport's key; host; address; box; focus after it; what is stored
  for (const Strings& row : Table(R"(
    m ;            ;              ;       ;                 ; True|1|Home|-|-|-
    s ;            ;              ; 10042 ; txtHost         ; -|-|-|-|-|-
    s ;            ; me@x.example ; 10042 ; txtHost         ; -|-|-|-|-|-
    s ; mail.x     ;              ; 10041 ; txtEMailAddress ; -|-|-|-|-|-
    s ; mail.x     ; me@x.example ;       ;                 ; True|2|-|mail.x|me@x.example|
)")) {
    SCOPED_TRACE(row[0] + " " + row[1] + " " + row[2]);
    OutboundWindow world;
    Dialog user("frmCfgOut", world.ConfigureOutbound());
    user.Key(Qt::Key_M, Qt::AltModifier);  // the label's key: the list of transports
    EXPECT_EQ("cmbProvider", user.Focus());
    user.Write(row[0]);
    if (row[0] == "s") {
      user.Enter("txtHost", row[1]);
      user.Enter("txtEMailAddress", row[2]);
    }
    user.Key(Qt::Key_Return);
    if (!row[3].empty()) {
      EXPECT_EQ(Utf8(LoadTvResourceString(std::stoi(row[3]))), user.AnswerBox());
      user.Activate();
      EXPECT_EQ(row[4], user.Focus());
      EXPECT_FALSE(user.BoxIsOpen());
      user.Key(Qt::Key_Escape);
    }
    EXPECT_EQ(row[3].empty(), user.Ended());
    EXPECT_EQ(row[5], StoredIn(world));
  }
}

TEST(OutboundWindow, ShowsTheFieldsOfTheTransport) {
  OutboundWindow world;
  Dialog user("frmCfgOut", world.ConfigureOutbound());
  EXPECT_EQ(kMapiLayout, Layout(user));
  EXPECT_EQ("Home", user.Text("cmbProfile"));
  user.Click("chkEnableEmail");  // off
  for (const char* field : {"cmbProvider", "cmbProfile"}) EXPECT_EQ("grey", user.Look(field)) << field;
  for (const char* label : {"lblTransport", "lblProfileOrHost"}) EXPECT_EQ("", user.Look(label)) << label;
  user.Key(Qt::Key_P, Qt::AltModifier);
  EXPECT_EQ("cmdOK", user.Focus()) << "the next control that can take it";
  EXPECT_FALSE(OnWindows([&] { return user.Find<QPushButton>("cmdOK")->isDown(); })) << "and isn't pressed";
  user.Key(Qt::Key_N, Qt::AltModifier);  // on
  user.Key(Qt::Key_Tab);
  user.Key(Qt::Key_Down);
  EXPECT_EQ(kSmtpLayout, Layout(user));
  user.Key(Qt::Key_F4);  // opens the list
  OnWindows([] { QTest::keyClick(QApplication::activePopupWidget()->windowHandle(), Qt::Key_F1); });
  EXPECT_EQ("Help: E-mail Configuration", user.Help());
  user.Activate();
  for (const char* control :
       {"cmbProvider", "txtHost", "txtEMailAddress", "txtRealName", "cmdOK", "cmdCancel", "cmdHelp"}) {
    EXPECT_EQ(control, user.Focus());
    user.Key(Qt::Key_Tab);
  }
  user.CloseBox();
  EXPECT_FALSE(user.Ended());
  EXPECT_EQ("-|-|-|-|-|-", StoredIn(world));
}

TEST(OutboundWindow, LeavesMapiWhereTheMachineHasNoProfile) {
  DesktopWorld world;
  const std::string expected = Utf8(LoadTvResourceString(10043));
  SaveSmtpOutbound(u"mail.x", u"me@x", u"");
  Runtime::RegistryStore::Write(Hive::CurrentUser, RegistryPath::kOutbound, SendingValue::kTransportId,
                                {1, Value(u"1")});
  auto call = world.ConfigureOutbound();
  EXPECT_EQ(expected, DesktopUser::AnswerBox()) << "while there is no window yet";
  Dialog user("frmCfgOut", std::move(call));
  EXPECT_EQ(kSmtpLayout, Layout(user));
  OnWindows([&] { user.Find("cmbProvider")->setFocus(); });
  user.Key(Qt::Key_Up);
  EXPECT_EQ(expected, user.AnswerBox());
  user.Activate();
  EXPECT_FALSE(user.BoxIsOpen());
  EXPECT_EQ("SMTP", user.Text("cmbProvider"));
  EXPECT_EQ(kSmtpLayout, Layout(user));
  user.Key(Qt::Key_Escape);
  EXPECT_FALSE(user.Ended());
}

TEST(OutboundWindow, SelectsOnFocusByItsOwnRulesAndTakes255CharactersOfOneLine) {
  DesktopWorld world;
  SaveSmtpOutbound(u"mail.x", u"me@x", u"Me");
  Dialog user("frmCfgOut", world.ConfigureOutbound());
  user.Click("txtHost");
  EXPECT_EQ("mail.x", user.Selected("txtHost")) << "its press selects";
  user.Click("txtEMailAddress");
  EXPECT_EQ("", user.Selected("txtEMailAddress"));
  user.Key(Qt::Key_Tab);
  EXPECT_EQ("Me", user.Selected("txtRealName"));
  user.MoveOver("txtRealName");
  user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ("", user.Selected("txtEMailAddress")) << "the pointer passed the name";
  user.Key(Qt::Key_Tab);
  EXPECT_EQ("Me", user.Selected("txtRealName"));
  user.Enter("txtHost", std::string(300, 'h'));
  EXPECT_EQ(255u, user.Text("txtHost").size());
  user.Enter("txtHost", "x");
  OnWindows([] { QApplication::clipboard()->setText(QString::fromUtf8("mail.\r\nb\tc\u2028\x7f")); });
  user.Key(Qt::Key_V, Qt::ControlModifier);
  user.Write("d");
  EXPECT_EQ("xmail.bcd", user.Text("txtHost")) << "line ends and controls are dropped";
}

}  // namespace
}  // namespace Tests
