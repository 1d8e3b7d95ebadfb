#include "tests/desktop/DesktopUser.h"

#include <QCheckBox>
#include <QComboBox>
#include <QTextBrowser>

#include <chrono>
#include <thread>

namespace Tests {
bool Eventually(const std::function<bool()>& holds) {
  const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!OnWindows(holds)) {
    if (std::chrono::steady_clock::now() > until) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
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
  return OnWindows([&] {
    const QWidget* widget = Find(control);
    return widget->property(qobject_cast<const QComboBox*>(widget) ? "currentText" : "text")
        .toString()
        .toStdString();
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
    const QWidget* widget = Find(control);
    if (!widget->isVisible()) return "hidden";
    if (!widget->isEnabled()) return "grey";
    return widget->property("readOnly").toBool() ? "read-only" : "";
  });
}

std::string DesktopUser::AnswerBox() {
  if (!Eventually(
          [] { return Visible<QMessageBox>() && Visible<QMessageBox>()->windowHandle()->isActive(); }))
    return "(no box)";
  return OnWindows([] {
    auto* box = Visible<QMessageBox>();
    const std::string text = box->text().trimmed().toStdString();
    EXPECT_EQ(1, box->buttons().size());
    QTest::keyClick(box->windowHandle(), Qt::Key_Return);
    return text;
  });
}

std::string DesktopUser::Help() {
  return OnWindows([]() -> std::string {
    const auto* page = Visible<QTextBrowser>();
    if (!page) return "(none)";
    QWidget* window = page->window();
    QTest::keyClick(window->windowHandle(), Qt::Key_Escape);
    return window->isVisible() ? "(still open)" : window->windowTitle().toStdString();
  });
}

}  // namespace Tests
