// Whether every text of both dialogs has room in its fixed place, in the language of the environment.
#include <QCheckBox>
#include <QComboBox>
#include <QFontMetrics>
#include <QLabel>
#include <QPushButton>

#include "tests/desktop/DesktopWorld.h"

namespace Tests {
namespace {

// The caption's room is what the style leaves of the control's place.
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
