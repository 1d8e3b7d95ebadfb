// The texts of both dialogs in the language of the environment: whether they fit their fixed places, and
// whether what the windows themselves say is in that language.
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>

#include "runtime/Language.h"
#include "tests/desktop/DesktopWorld.h"

namespace Tests {
namespace {

// A caption's place is that of its control without the style's decoration.
void ExpectRoom(const QWidget& window) {
  for (const QLabel* label : window.findChildren<QLabel*>()) {
    EXPECT_LE(label->sizeHint().width(), label->width()) << label->text().toStdString();
    EXPECT_LE(label->fontMetrics().height(), label->height()) << label->text().toStdString();
  }
  for (const QCheckBox* check : window.findChildren<QCheckBox*>())
    EXPECT_LE(check->sizeHint().width(), check->width()) << check->text().toStdString();
  for (const QPushButton* button : window.findChildren<QPushButton*>()) {
    const QSize text = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
    EXPECT_LE(text.width() + 4, button->width()) << button->text().toStdString();
    EXPECT_LE(text.height() + 4, button->height()) << button->text().toStdString();
  }
  for (const QComboBox* list : window.findChildren<QComboBox*>())
    EXPECT_LE(list->fontMetrics().height() + 4, list->height());
}

TEST(Captions, AreInTheUsersLanguageInTheFileDialogAndTheHelpsTitle) {
  const std::string language = Runtime::UserLanguage();
  const Strings wanted =
      language == "de" ? Strings{"Suchen in:", "TVS-Dateien (*.TVS)", "Alle Dateien (*)", "Hilfe: "}
      : language == "ja" ? Strings{"アドレス:", "TVS ファイル (*.TVS)", "すべてのファイル (*)", "ヘルプ: "}
                         : Strings{"Look in:", "TVS Files (*.TVS)", "All files (*)", "Help: "};
  DesktopWorld world;
  Dialog user("frmCfgInb", world.Configure(true, u""));
  user.Click("cmdBrowse");
  ASSERT_TRUE(Eventually([] { return Visible<QFileDialog>(); }));
  OnWindows([&] {
    auto* dialog = Visible<QFileDialog>();
    EXPECT_EQ(wanted[0], dialog->findChild<QLabel*>("lookInLabel")->text().toStdString());
    EXPECT_EQ(wanted[1] + wanted[2], dialog->nameFilters().join("").toStdString());
    dialog->reject();
  });
  user.Activate();
  user.Key(Qt::Key_F1);
  EXPECT_EQ(0u, user.Help().find(Utf8(Trim(FromUtf8(wanted[3])))));
}

TEST(Captions, HaveRoomInTheirPlaces) {
  DesktopWorld world;
  AddProfile(u"Home");
  Dialog inbound("frmCfgInb", world.Configure(true, u""));
  OnWindows([&] {
    ExpectRoom(*inbound.Window());
    const QFont font = inbound.Find("lblPWD")->font();
    EXPECT_EQ(9, font.pointSizeF());
  });

  Dialog outbound("frmCfgOut", world.ConfigureOutbound());
  OnWindows([&] { ExpectRoom(*outbound.Window()); });
  outbound.Key(Qt::Key_Tab);
  outbound.Key(Qt::Key_Down);
  EXPECT_EQ("", outbound.Look("txtHost"));
  OnWindows([&] { ExpectRoom(*outbound.Window()); });
}

}  // namespace
}  // namespace Tests
