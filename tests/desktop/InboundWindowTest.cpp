// The mailbox dialog in its real window.
#include <QAccessible>
#include <QFileDialog>
#include <QPushButton>

#include <future>

#include "tests/desktop/DesktopWorld.h"

namespace Tests {
namespace {

class InboundWindow : public DesktopWorld {
 public:
  InboundWindow() {
    MakeProject();
    WriteMailBoxRecord(u"x.TVS", u"bob", u"", u"Mars");
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
    add    ; refused  ; true Apollo
)")) {
    SCOPED_TRACE(row[0] + " " + row[1]);
    InboundWindow world;
    if (row[0] == "change") WriteMailBoxRecord(world.PathOf("Apollo.TVS"), u"bob", u"", u"Mars");
    Dialog user("frmCfgInb", world.Configure(row[0] == "add", u"Mars"));
    if (row[0] == "add") user.Enter("txtTVSFileName", Utf8(world.PathOf("Apollo.TVS")));
    user.Enter("txtUID", "ann");
    user.Enter("txtPwd", "word");
    if (row[1] == "Enter") user.Key(Qt::Key_Return);
    if (row[1] == "Escape") user.Key(Qt::Key_Escape);
    if (row[1] == "OK") user.Click("cmdOK");
    if (row[1] == "Cancel") user.Click("cmdCancel");
    if (row[1] == "close") user.CloseBox();
    if (row[1] == "refused") {
      user.Enter("txtPwd", "bad");
      user.Key(Qt::Key_Return);
      EXPECT_EQ(Utf8(LoadTvResourceString(10001)), user.AnswerBox());
      user.Activate();
      EXPECT_EQ("txtPwd bad ann", user.Focus() + " " + user.Text("txtPwd") + " " + user.Text("txtUID"));
      user.Enter("txtPwd", "word");
      user.Key(Qt::Key_Return);
    }
    EXPECT_EQ(row[2], user.Ended());
    EXPECT_TRUE(Eventually([&] { return !user.Window(); }));
  }
}

TEST(InboundWindow, IsUsedByKeyboardAlone) {
  InboundWindow world;
  Dialog user("frmCfgInb", world.Configure(true, u"Mars"));
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
  EXPECT_EQ("false Mars", user.Ended());
}

TEST(InboundWindow, KeepsThePathOfAMailBoxThatIsChanged) {
  InboundWindow world;
  Dialog user("frmCfgInb", world.Configure(false, u"Mars"));
  EXPECT_EQ("txtTVSFileName", user.Focus());
  EXPECT_EQ("read-only", user.Look("txtTVSFileName"));
  EXPECT_EQ("grey", user.Look("cmdBrowse"));
  for (const QColor theme : {QColor(Qt::black), QColor(239, 239, 239)}) {
    OnWindows([&] { QApplication::setPalette(theme); });
    OnWindows([&] {
      const auto field = [&](const char* box) { return user.Find(box)->palette(); };
      EXPECT_EQ(theme, field("txtTVSFileName").color(QPalette::Base)) << "looks locked";
      EXPECT_EQ(QApplication::palette().color(QPalette::Base), field("txtUID").color(QPalette::Base));
      EXPECT_EQ(QApplication::palette().color(QPalette::Text), field("txtUID").color(QPalette::Text));
    });
  }
  user.Write("y");
  EXPECT_EQ("x.TVS", user.Text("txtTVSFileName"));
  user.Key(Qt::Key_Tab);
  EXPECT_EQ("txtUID", user.Focus());
  user.CloseBox();
  EXPECT_EQ("true Mars", user.Ended());
}

TEST(InboundWindow, BrowsesForAProject) {
  InboundWindow world;
  Dialog user("frmCfgInb", world.Configure(true, u""));
  for (const bool choose : {true, false}) {
    user.Click("cmdBrowse");
    ASSERT_TRUE(Eventually(
        [&] { return Visible<QFileDialog>() && Visible<QFileDialog>()->windowHandle()->isActive(); }));
    OnWindows([&] {
      EXPECT_EQ("Choose the Project File", Visible<QFileDialog>()->windowTitle().toStdString());
      auto* name = Visible<QFileDialog>()->findChild<QLineEdit*>("fileNameEdit");
      if (choose) name->setText(QString::fromStdString(Utf8(world.PathOf("Apollo.TVS"))));
      QTest::keyClick(name, choose ? Qt::Key_Return : Qt::Key_Escape);
    });
    ASSERT_TRUE(Eventually([&] { return !Visible<QFileDialog>(); }));
    EXPECT_EQ(Utf8(world.PathOf("Apollo.TVS")), user.Text("txtTVSFileName"));
  }
}

TEST(InboundWindow, OpensHelpByItsButtonItsKeyAndF1AndLivesWithoutIt) {
  InboundWindow world;
  Dialog user("frmCfgInb", world.Configure(true, u""));
  for (const char* control : {"txtTVSFileName", "cmdBrowse", "txtPwd", "cmdOK"}) {
    OnWindows([&] { user.Find(control)->setFocus(); });
    user.Key(Qt::Key_F1);
    EXPECT_EQ("Help: Talvane E-mail Setup", user.Help()) << control;
    user.Activate();
  }
  user.Key(Qt::Key_H, Qt::AltModifier);
  EXPECT_EQ("Help: Talvane E-mail Setup", user.Help());
  auto missing = std::async([&] {
    FormsToolkit& toolkit = world.Desktop();
    return toolkit.ShowHelp(0, "/lib/Missing.hlp >(w95sec)", 1, 160) &&
           toolkit.ShowTopic(u"help/missing.html");
  });
  for (const char* page : {"The help page 160 is in none of", "The help page missing.html is in none of"})
    EXPECT_PRED2(Holds, DesktopUser::AnswerBox(), page);
  EXPECT_TRUE(missing.get());
  EXPECT_EQ("(none)", user.Help());
  user.Activate();
  user.Key(Qt::Key_Escape);
  EXPECT_EQ("false ", user.Ended());
}

TEST(InboundWindow, TellsAScreenReaderWhatEachControlIs) {
  InboundWindow world;
  Dialog user("frmCfgInb", world.Configure(true, u""));
  user.Enter("txtPwd", "word");
  const auto says = [&](const char* control) {
    return OnWindows([&] {
      QAccessibleInterface* shown = QAccessible::queryAccessibleInterface(user.Find(control));
      return shown->text(QAccessible::Name).toStdString() + (shown->state().passwordEdit ? " secret" : "") +
             (shown->role() == QAccessible::EditableText ? " box" : "");
    });
  };
  EXPECT_EQ("Project Path box", says("txtTVSFileName"));
  EXPECT_EQ("User Name box", says("txtUID"));
  EXPECT_EQ("Password secret box", says("txtPwd"));
  EXPECT_EQ("Browse...", says("cmdBrowse"));
  EXPECT_EQ("****", OnWindows([&] { return user.Find<QLineEdit>("txtPwd")->displayText().toStdString(); }));
}

}  // namespace
}  // namespace Tests
