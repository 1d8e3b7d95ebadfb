// The texts of both dialogs in the language of the environment: whether they fit their fixed places, and
// whether the windows' own texts are in that language.
#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QFontMetrics>
#include <QLabel>
#include <QLibraryInfo>
#include <QPushButton>
#include <QTranslator>

#include "platform/StoredNames.h"
#include "runtime/Catalogue.h"
#include "runtime/Folders.h"
#include "runtime/Language.h"
#include "runtime/TextTemplate.h"
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

// The text of the catalogue in the language of the environment, which must have one.
QString TextOfCatalogue(std::int32_t number, const String& argument = {}) {
  Runtime::Languages languages;
  Runtime::LoadLanguages(Runtime::LibraryFolder() + u"\\TvDesktopRes.dll", languages);
  const String* text = languages.Own ? languages.Own->Find(number) : nullptr;
  return text ? QString::fromStdU16String(Runtime::Expand(*text, {&argument, 1})) : QString("no text");
}

// The text in Qt's own translation; in English if Qt has none.
QString TextOfQt(const char* text) {
  QTranslator translator;
  const auto file = "qtbase_" + QString::fromStdString(Runtime::UserLanguage());
  static_cast<void>(translator.load(file, QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
  const QString translated = translator.translate("QFileDialog", text);
  return translated.isEmpty() ? QString(text) : translated;
}

TEST(Captions, AreInTheUsersLanguageInTheFileDialogAndTheHelpsTitle) {
  DesktopWorld world;
  Dialog user("frmCfgInb", world.Configure(true, u""));
  user.Click("cmdBrowse");
  ASSERT_TRUE(Eventually([] { return Visible<QFileDialog>(); }));
  OnWindows([&] {
    auto* dialog = Visible<QFileDialog>();
    EXPECT_EQ(TextOfQt("Look in:"), dialog->findChild<QLabel*>("lookInLabel")->text());
    const QStringList filters = {TextOfCatalogue(TextNumber::kFilesOfKind, u"TVS") + " (*.TVS)",
                                 TextOfCatalogue(TextNumber::kAllFiles) + " (*)"};
    EXPECT_EQ(filters, dialog->nameFilters());
    dialog->reject();
  });
  user.Activate();
  user.Key(Qt::Key_F1);
  EXPECT_EQ(0u, user.Help().find(TextOfCatalogue(TextNumber::kHelpTitle).toStdString()));
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
