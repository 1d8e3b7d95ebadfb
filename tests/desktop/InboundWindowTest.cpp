// The mailbox dialog in its real window.
#include <QAccessible>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QWindow>

#include "tests/desktop/DesktopWorld.h"

namespace Tests {
namespace {

class InboundWindow : public DesktopWorld {
 public:
  InboundWindow() { MakeProject(); }

  void EnterAll(DesktopUser& user, const std::string& password) {
    user.Enter("txtTVSFileName", Utf8(PathOf("Apollo.TVS")));
    user.Enter("txtUID", "ann");
    user.Enter("txtPwd", password);
  }
};

TEST(InboundWindow, EndsAsItsUserEndsIt) {
  // mode; act; what the call gives
  for (const Strings& row : Table(R"(
    add    ; Enter    ; true Apollo
    add    ; OK       ; true Apollo
    add    ; Escape   ; false Mars
    add    ; Cancel   ; false Mars
    add    ; close    ; false Mars
    change ; OK       ; true Apollo
    change ; Escape   ; true Mars
    change ; close    ; true Mars
)")) {
    SCOPED_TRACE(row[0] + " " + row[1]);
    InboundWindow world;
    if (row[0] == "change") WriteMailBoxRecord(world.PathOf("Apollo.TVS"), u"bob", u"", u"Mars");
    auto result = world.Configure(row[0] == "add", u"Mars");
    DesktopUser user("frmCfgInb");
    if (row[0] == "add") user.Enter("txtTVSFileName", Utf8(world.PathOf("Apollo.TVS")));
    user.Enter("txtUID", "ann");
    user.Enter("txtPwd", "word");
    if (row[1] == "Enter") user.Key(Qt::Key_Return);
    if (row[1] == "Escape") user.Key(Qt::Key_Escape);
    if (row[1] == "OK") user.Click("cmdOK");
    if (row[1] == "Cancel") user.Click("cmdCancel");
    if (row[1] == "close") user.CloseBox();
    EXPECT_EQ(row[2], result.get());
    EXPECT_TRUE(Eventually([&] { return !user.Window(); }));
  }
}

TEST(InboundWindow, StaysOpenWithItsEntriesAfterAWrongPassword) {
  InboundWindow world;
  auto result = world.Configure(true, u"");
  DesktopUser user("frmCfgInb");
  world.EnterAll(user, "bad");
  user.Key(Qt::Key_Return);
  EXPECT_EQ(Utf8(LoadTvResourceString(10001)), user.AnswerBox());
  user.Activate();
  EXPECT_EQ("txtPwd", user.Focus());
  EXPECT_EQ("bad", user.Text("txtPwd"));
  EXPECT_EQ("ann", user.Text("txtUID"));
  user.Enter("txtPwd", "word");
  user.Key(Qt::Key_Return);
  EXPECT_EQ("true Apollo", result.get());
}

TEST(InboundWindow, IsUsedByKeyboardAlone) {
  InboundWindow world;
  WriteMailBoxRecord(u"x.TVS", u"bob", u"", u"Mars");
  auto result = world.Configure(true, u"Mars");
  DesktopUser user("frmCfgInb");
  for (const char* control :
       {"txtTVSFileName", "cmdBrowse", "txtUID", "txtPwd", "cmdCancel", "cmdHelp", "cmdOK"}) {
    EXPECT_EQ(control, user.Focus());
    user.Key(Qt::Key_Tab);
  }
  EXPECT_EQ("txtTVSFileName", user.Focus()) << "the order goes round";
  user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ("cmdOK", user.Focus());
  user.Key(Qt::Key_P, Qt::AltModifier);
  EXPECT_EQ("txtTVSFileName", user.Focus());
  EXPECT_EQ("x.TVS", user.Selected("txtTVSFileName"));
  user.Key(Qt::Key_W, Qt::AltModifier);
  EXPECT_EQ("txtPwd", user.Focus());
  user.Key(Qt::Key_U, Qt::AltModifier);
  user.Write("eve");  // at once: what the focus selected is replaced by the first letter
  EXPECT_EQ("eve", user.Text("txtUID"));
  user.Key(Qt::Key_Tab);
  user.Key(Qt::Key_Tab);
  user.Key(Qt::Key_Space);  // Cancel
  EXPECT_EQ("false Mars", result.get());
}

TEST(InboundWindow, SelectsNothingInABoxThatThePointerChose) {
  InboundWindow world;
  WriteMailBoxRecord(u"x.TVS", u"bob", u"", u"Mars");
  auto result = world.Configure(true, u"Mars");
  DesktopUser user("frmCfgInb");
  EXPECT_EQ("x.TVS", user.Selected("txtTVSFileName"));
  user.Click("txtUID");
  EXPECT_EQ("", user.Selected("txtUID"));
  user.Key(Qt::Key_Tab);
  user.Key(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ("bob", user.Selected("txtUID"));
  user.CloseBox();
  result.get();
}

TEST(InboundWindow, KeepsThePathOfAMailBoxThatIsChanged) {
  InboundWindow world;
  WriteMailBoxRecord(u"x.TVS", u"bob", u"", u"Mars");
  auto result = world.Configure(false, u"Mars");
  DesktopUser user("frmCfgInb");
  EXPECT_EQ("txtTVSFileName", user.Focus());
  EXPECT_EQ("read-only", user.Look("txtTVSFileName"));
  EXPECT_EQ("grey", user.Look("cmdBrowse"));
  user.Write("y");
  EXPECT_EQ("x.TVS", user.Text("txtTVSFileName"));
  user.Key(Qt::Key_Tab);
  EXPECT_EQ("txtUID", user.Focus());
  user.CloseBox();
  EXPECT_EQ("true Mars", result.get());
}

TEST(InboundWindow, BrowsesForAProject) {
  InboundWindow world;
  auto result = world.Configure(true, u"");
  DesktopUser user("frmCfgInb");
  const auto dialog = [] {
    const auto windows = QApplication::topLevelWidgets();
    const auto found = std::find_if(windows.begin(), windows.end(), [](QWidget* window) {
      return window->isVisible() && qobject_cast<QFileDialog*>(window);
    });
    return found == windows.end() ? nullptr : static_cast<QFileDialog*>(*found);
  };
  for (const bool choose : {true, false}) {
    user.Click("cmdBrowse");
    ASSERT_TRUE(Eventually([&] { return dialog() && dialog()->windowHandle()->isActive(); }));
    OnWindows([&] {
      EXPECT_EQ(QStringList({"TVS Files (*.TVS)", "All files (*)"}), dialog()->nameFilters());
      EXPECT_EQ("Choose the Project File", dialog()->windowTitle().toStdString());
      auto* name = dialog()->findChild<QLineEdit*>("fileNameEdit");
      if (choose) name->setText(QString::fromStdString(Utf8(world.PathOf("Apollo.TVS"))));
      QTest::keyClick(name, choose ? Qt::Key_Return : Qt::Key_Escape);
    });
    ASSERT_TRUE(Eventually([&] { return !dialog(); }));
    EXPECT_EQ(Utf8(world.PathOf("Apollo.TVS")), user.Text("txtTVSFileName"));
  }
  user.CloseBox();
  result.get();
}

TEST(InboundWindow, OpensHelpByItsButtonItsKeyAndF1AndLivesWithoutIt) {
  InboundWindow world;
  auto result = world.Configure(true, u"");
  DesktopUser user("frmCfgInb");
  for (const char* control : {"txtTVSFileName", "cmdBrowse", "txtPwd", "cmdOK"}) {
    OnWindows([&] { user.Find(control)->setFocus(); });
    user.Key(Qt::Key_F1);
    EXPECT_EQ("Talvane E-mail Setup", user.Help()) << control;
    user.Activate();
  }
  user.Key(Qt::Key_H, Qt::AltModifier);
  EXPECT_EQ("Talvane E-mail Setup", user.Help());
  EXPECT_FALSE(world.Desktop().ShowHelp(0, "/lib/Missing.hlp >(w95sec)", 1, 160));
  EXPECT_FALSE(world.Desktop().ShowTopic(u"com.kestrin.talvane.help/reference/missing.html"));
  EXPECT_EQ("(none)", user.Help());
  user.Activate();
  user.Key(Qt::Key_Escape);
  EXPECT_EQ("false ", result.get());
}

TEST(InboundWindow, TellsAScreenReaderWhatEachControlIs) {
  InboundWindow world;
  auto result = world.Configure(true, u"");
  DesktopUser user("frmCfgInb");
  user.Enter("txtPwd", "word");
  const auto says = [&](const char* control) {
    return OnWindows([&] {
      QAccessibleInterface* told = QAccessible::queryAccessibleInterface(user.Find(control));
      return told->text(QAccessible::Name).toStdString() + (told->state().passwordEdit ? " secret" : "") +
             (told->role() == QAccessible::EditableText ? " box" : "");
    });
  };
  EXPECT_EQ("Project Path box", says("txtTVSFileName"));
  EXPECT_EQ("User Name box", says("txtUID"));
  EXPECT_EQ("Password secret box", says("txtPwd"));
  EXPECT_EQ("Browse...", says("cmdBrowse"));
  EXPECT_EQ("****", OnWindows([&] { return user.Find<QLineEdit>("txtPwd")->displayText().toStdString(); }));
  user.CloseBox();
  result.get();
}

}  // namespace
}  // namespace Tests
