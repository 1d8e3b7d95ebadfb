// The mailbox dialog in its real window.
#include <QAccessible>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

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
  EXPECT_EQ(Utf8(LoadTvResourceString(10001)), Utf8(Trim(FromUtf8(user.AnswerBox()))));
  user.Activate();
  EXPECT_EQ("bad", user.Text("txtPwd"));
  EXPECT_EQ("ann", user.Text("txtUID"));
  user.Enter("txtPwd", "word");
  user.Key(Qt::Key_Return);
  EXPECT_EQ("true Apollo", result.get());
}

}  // namespace
}  // namespace Tests
