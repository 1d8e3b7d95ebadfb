// TextBox: a line of text that leaves it to the form what is selected when the focus comes.
#pragma once

#include <QLineEdit>

#include <functional>

namespace Desktop {

class TextBox : public QLineEdit {
 public:
  TextBox(char16_t passwordChar, QWidget* parent);

  std::function<void()> OnMouseDown;
  std::function<void()> OnMouseMove;
  std::function<void()> OnFocus;

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  bool pressTold_ = false;  // the press that brought the focus has been told already
};

}  // namespace Desktop
