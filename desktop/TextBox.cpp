#include "desktop/TextBox.h"

#include <QApplication>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QProxyStyle>

#include <utility>

namespace Desktop {
namespace {

// Draws the echo of a secret with the character that the form asks for.
class EchoStyle : public QProxyStyle {
 public:
  explicit EchoStyle(char16_t echo) : echo_(echo) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_LineEdit_PasswordCharacter ? echo_ : QProxyStyle::styleHint(hint, option, widget, data);
  }

 private:
  char16_t echo_;
};

}  // namespace

TextBox::TextBox(char16_t passwordChar, QWidget* parent) : QLineEdit(parent) {
  setMouseTracking(true);
  if (passwordChar == 0) return;
  setEchoMode(QLineEdit::Password);
  auto* style = new EchoStyle(passwordChar);
  style->setParent(this);
  setStyle(style);
}

void TextBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  const auto reason = event->reason();
  if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason)
    return;  // it never left the form
  if (reason == Qt::MouseFocusReason) {
    focusByPress_ = true;
    return;
  }
  deselect();
  if (OnFocus) OnFocus();
}

void TextBox::mousePressEvent(QMouseEvent* event) {
  QLineEdit::mousePressEvent(event);
  pressed_.reset();
  if (OnMouseDown) OnMouseDown();
  if (!std::exchange(focusByPress_, false)) return;
  pressed_ = event->pos();
  if (OnFocus) OnFocus();
}

void TextBox::mouseMoveEvent(QMouseEvent* event) {
  if (OnMouseMove) OnMouseMove();
  if (pressed_ && event->buttons() != Qt::NoButton &&
      (event->pos() - *pressed_).manhattanLength() < QApplication::startDragDistance()) {
    return;  // a hand that trembles keeps what the form has selected
  }
  pressed_.reset();
  QLineEdit::mouseMoveEvent(event);
}

}  // namespace Desktop
