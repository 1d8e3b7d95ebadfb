// TextBox: a line of text that leaves it to the form what is selected when the focus comes.
#pragma once

#include <QLineEdit>

#include <functional>
#include <optional>

namespace Desktop {

class TextBox : public QLineEdit {
 public:
  TextBox(char16_t passwordChar, QWidget* parent);

  // A press is told before the focus that it brings, and both after the press has set the caret.
  std::function<void()> OnMouseDown;
  std::function<void()> OnMouseMove;
  std::function<void()> OnFocus;

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  bool focusByPress_ = false;      // the press that brought the focus is still to come
  std::optional<QPoint> pressed_;  // where it came; until the pointer is dragged away, it selects nothing
};

}  // namespace Desktop
