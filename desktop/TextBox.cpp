#include "desktop/TextBox.h"

#include <QApplication>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QProxyStyle>
#include <QValidator>

#include <algorithm>
#include <utility>

namespace Desktop {
namespace {

// Removes control characters from what the user enters, and the separators of lines and paragraphs.
class OneLine : public QValidator {
 public:
  using QValidator::QValidator;
  State validate(QString& input, int& position) const override {
    const auto unwanted = [](QChar c) {
      return c.category() == QChar::Other_Control || c.category() == QChar::Separator_Line ||
             c.category() == QChar::Separator_Paragraph;
    };
    position -= static_cast<int>(std::count_if(input.cbegin(), input.cbegin() + position, unwanted));
    input.removeIf(unwanted);
    return Acceptable;
  }
};

// Shows a password with the character that the form asks for.
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
  setValidator(new OneLine(this));
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
    return;  // for the form, the focus has not moved
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
    return;  // a click with a small movement keeps the selection that the form has made
  }
  pressed_.reset();
  QLineEdit::mouseMoveEvent(event);
}

}  // namespace Desktop
