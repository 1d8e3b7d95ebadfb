#include "tests/desktop/DesktopUser.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTextBrowser>

#include <chrono>
#include <thread>

namespace Tests {
namespace {

template <class Wanted>
QWidget* VisibleWindow(Wanted wanted) {
  for (QWidget* window : QApplication::topLevelWidgets()) {
    if (window->isVisible() && wanted(window)) return window;
  }
  return nullptr;
}

QMessageBox* Box() {
  return static_cast<QMessageBox*>(
      VisibleWindow([](QWidget* window) { return qobject_cast<QMessageBox*>(window) != nullptr; }));
}

}  // namespace

bool Eventually(const std::function<bool()>& holds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!OnWindows(holds)) {
    if (std::chrono::steady_clock::now() > until) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

QWidget* DesktopUser::Window() const {
  return VisibleWindow([this](QWidget* window) { return window->objectName() == form_; });
}

void DesktopUser::Write(const std::string& text) {
  OnWindows([&] {
    for (const char letter : text) QTest::keyClick(Window()->windowHandle(), letter);
  });
}

void DesktopUser::Enter(const char* box, const std::string& text) {
  Click(box);
  Key(Qt::Key_A, Qt::ControlModifier);
  if (text.empty()) Key(Qt::Key_Delete);
  Write(text);
}

void DesktopUser::Click(const char* control) {
  OnWindows([&] {
    const QWidget* widget = Find(control);
    const int across = qobject_cast<const QCheckBox*>(widget) ? 8 : widget->width() / 2;
    const QPoint at = widget->mapTo(Window(), QPoint(across, widget->height() / 2));
    QTest::mouseClick(Window()->windowHandle(), Qt::LeftButton, {}, at);
  });
}

void DesktopUser::MoveOver(const char* control) {
  OnWindows([&] {
    const QWidget* widget = Find(control);
    QTest::mouseMove(Window()->windowHandle(), widget->mapTo(Window(), QPoint(1, 1)));
    QTest::mouseMove(Window()->windowHandle(), widget->mapTo(Window(), widget->rect().center()));
  });
}

void DesktopUser::Activate() {
  OnWindows([&] { Window()->activateWindow(); });
  AwaitActive();
}

std::string DesktopUser::Text(const char* control) {
  return OnWindows([&]() -> std::string {
    QWidget* widget = Find(control);
    if (auto* box = qobject_cast<QLineEdit*>(widget)) return box->text().toStdString();
    if (auto* list = qobject_cast<QComboBox*>(widget)) return list->currentText().toStdString();
    if (auto* label = qobject_cast<QLabel*>(widget)) return label->text().toStdString();
    if (auto* button = qobject_cast<QAbstractButton*>(widget)) return button->text().toStdString();
    return "(none)";
  });
}

std::string DesktopUser::Focus() {
  return OnWindows([&]() -> std::string {
    const QWidget* focus = Window()->focusWidget();
    return focus ? focus->objectName().toStdString() : "(none)";
  });
}

std::string DesktopUser::Look(const char* control) {
  return OnWindows([&]() -> std::string {
    QWidget* widget = Find(control);
    if (!widget->isVisible()) return "hidden";
    if (!widget->isEnabled()) return "grey";
    auto* box = qobject_cast<QLineEdit*>(widget);
    return box && box->isReadOnly() ? "read-only" : "";
  });
}

bool DesktopUser::BoxIsOpen() {
  return OnWindows([] { return Box() != nullptr; });
}

std::string DesktopUser::AnswerBox() {
  if (!Eventually([] { return Box() && Box()->windowHandle()->isActive(); })) return "(no box)";
  return OnWindows([] {
    const std::string text = Box()->text().trimmed().toStdString();
    EXPECT_EQ(1, Box()->buttons().size());
    QTest::keyClick(Box()->windowHandle(), Qt::Key_Return);
    return text;
  });
}

std::string DesktopUser::Help() {
  return OnWindows([]() -> std::string {
    QWidget* window =
        VisibleWindow([](QWidget* other) { return other->findChild<QTextBrowser*>() != nullptr; });
    if (!window) return "(none)";
    window->close();
    return window->windowTitle().toStdString();
  });
}

}  // namespace Tests
