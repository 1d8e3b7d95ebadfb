#include "desktop/TextBox.h"

#include <QFocusEvent>
#include <QMouseEvent>
#include <QProxyStyle>

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
  deselect();
  // Qt gives the focus before it tells of the press; a form is told of the press first.
  if (reason == Qt::MouseFocusReason) {
    pressTold_ = true;
    if (OnMouseDown) OnMouseDown();
  }
  if (OnFocus) OnFocus();
}

void TextBox::mousePressEvent(QMouseEvent* event) {
  if (!pressTold_ && OnMouseDown) OnMouseDown();
  pressTold_ = false;
  QLineEdit::mousePressEvent(event);
}

void TextBox::mouseMoveEvent(QMouseEvent* event) {
  if (OnMouseMove) OnMouseMove();
  QLineEdit::mouseMoveEvent(event);
}

}  // namespace Desktop
