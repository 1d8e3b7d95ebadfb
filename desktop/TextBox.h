// TextBox: a line of text. The form decides what is selected when it gets the focus. Line ends and other
// control characters that are typed, pasted or dropped are removed.
//
// Created and used on the windows' thread.
#pragma once

#include <QLineEdit>

#include <functional>
#include <optional>

namespace Desktop {

class TextBox : public QLineEdit {
 public:
  // Shows passwordChar for each character; 0: the text itself. parent owns the box.
  TextBox(char16_t passwordChar, QWidget* parent);

  // A mouse press is reported before the focus change that it causes, and both after the caret is set. A box
  // without a function reports nothing.
  std::function<void()> OnMouseDown;
  std::function<void()> OnMouseMove;
  std::function<void()> OnFocus;

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  bool focusByPress_ = false;  // the focus came by a press whose event follows
  std::optional<QPoint>
      pressed_;  // the place of that press; dragging from it selects once it has gone far enough
};

}  // namespace Desktop
