// DesktopUser: sends keys and clicks to the real windows, and reads what they show.
//
// Used on a test's thread while another thread is in a modal call. Every act runs on the windows' thread, and
// its events take the same way as those of the display.
#pragma once

#include <gtest/gtest.h>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QMetaObject>
#include <QTest>
#include <QWindow>

#include <functional>
#include <string>
#include <type_traits>

namespace Tests {

template <class Work>
auto OnWindows(Work work) {
  using Result = std::invoke_result_t<Work>;
  if constexpr (std::is_void_v<Result>) {
    QMetaObject::invokeMethod(qApp, work, Qt::BlockingQueuedConnection);
  } else {
    Result result{};
    QMetaObject::invokeMethod(
        qApp, [&] { result = work(); }, Qt::BlockingQueuedConnection);
    return result;
  }
}

// The visible widget of a kind, of any name where none is given; null without one. On the windows' thread.
template <class Kind = QWidget>
Kind* Visible(const char* name = nullptr) {
  for (QWidget* widget : QApplication::allWidgets()) {
    auto* found = qobject_cast<Kind*>(widget);
    if (found && found->isVisible() && (!name || found->objectName() == name)) return found;
  }
  return nullptr;
}

// Waits until the condition, which runs on the windows' thread, holds. False after 20 s.
bool Eventually(const std::function<bool()>& holds);

class DesktopUser {
 public:
  // Waits until the form's window is the active one.
  explicit DesktopUser(const char* form) : form_(form) { AwaitActive(); }

  void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    OnWindows([&] { QTest::keyClick(Window()->windowHandle(), key, modifiers); });
  }
  void Write(const std::string& text);                   // into the control that has the focus
  void Enter(const char* box, const std::string& text);  // replaces the text
  void Click(const char* control);
  void MoveOver(const char* control);
  void CloseBox() {
    OnWindows([&] { Window()->close(); });
  }
  void Activate();  // brings the window to the front again

  std::string Text(const char* control);  // of a box, a list, a button or a label
  std::string Selected(const char* control) {
    return OnWindows([&] { return Find<QLineEdit>(control)->selectedText().toStdString(); });
  }
  std::string Focus();                    // the control that has the focus
  std::string Look(const char* control);  // "hidden", "grey", "read-only" or ""

  // Waits for a message box, reads it and presses its OK.
  static std::string AnswerBox();
  static bool BoxIsOpen() {
    return OnWindows([] { return Visible<QMessageBox>() != nullptr; });
  }

  // The title of the help window, which Escape closes afterwards; "(none)" where none is open.
  static std::string Help();

  template <class Widget = QWidget>
  Widget* Find(const char* control) const {  // on the windows' thread
    return Window()->findChild<Widget*>(QString::fromLatin1(control));
  }
  QWidget* Window() const { return Visible(form_); }  // on the windows' thread; null if it isn't visible

 private:
  void AwaitActive() {
    EXPECT_TRUE(Eventually([this] { return Window() && Window()->windowHandle()->isActive(); })) << form_;
  }
  const char* form_;
};

}  // namespace Tests
