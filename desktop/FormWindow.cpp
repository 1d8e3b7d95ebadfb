#include "desktop/FormWindow.h"

#include <QAbstractButton>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QWindow>

#include "desktop/KeyCodes.h"
#include "desktop/Strings.h"
#include "desktop/TaskBar.h"

namespace Desktop {

using namespace Platform;

FormWindow::FormWindow(const FormState& state, std::shared_ptr<EventQueue> queue)
    : QDialog(nullptr,
              Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint),
      queue_(std::move(queue)) {
  setObjectName(ToQt(state.Name));
  setWindowTitle(ToQt(state.Caption));
  setFixedSize(ToPixels({0, 0, state.ClientWidth, state.ClientHeight}, *this).size());
  QWidget* previous = nullptr;
  for (const ControlState& control : state.Controls) {
    auto widget = ControlWidget::Make(control, this, ReportFor(control.Name));
    if (!widget) continue;
    widget->Widget()->installEventFilter(this);
    if (previous) setTabOrder(previous, widget->Widget());
    previous = widget->Widget();
    controls_.push_back(std::move(widget));
  }
}

ControlWidget::Report FormWindow::ReportFor(const String& name) {
  return [this, name](ControlWidget::Act act, std::optional<Echo> expected) {
    queue_->Put({[name, act = std::move(act)](UserHand& hand) {
                   if (Control* control = hand.Find(name)) act(hand, *control);
                 },
                 std::move(expected)});
  };
}

ControlWidget* FormWindow::Find(const String& name) const {
  for (const auto& control : controls_) {
    if (control->State().Name == name) return control.get();
  }
  return nullptr;
}

void FormWindow::Open(const FormState& state, float left, float top) {
  setWindowTitle(ToQt(state.Caption));
  for (const ControlState& control : state.Controls) {
    if (ControlWidget* widget = Find(control.Name)) widget->ApplyAll(control);
  }
  LinkLabels();
  move(ToPixels({left, top, 0, 0}, *this).topLeft());
  for (const auto& control : controls_) {
    if (control->State().Visible && control->State().Enabled &&
        control->Widget()->focusPolicy() != Qt::NoFocus) {
      control->Widget()->setFocus(Qt::TabFocusReason);
      TellFocus(control->State().Name, Qt::TabFocusReason);
      break;
    }
  }
  KeepFromTaskBar(*windowHandle());
  show();
  raise();
  activateWindow();
}

// A label's access key moves the focus to the next control in tab order that can take it, and that box has
// the label's words for its name. A label may stand for several boxes of which one shows.
void FormWindow::LinkLabels() {
  std::vector<QLabel*> waiting;
  QString name;
  for (const auto& control : controls_) {
    const ControlState& state = control->State();
    if (QLabel* label = control->AsLabel()) {
      waiting.push_back(label);
      name = PlainCaption(state.Caption).remove(QLatin1Char(':'));
      continue;
    }
    if (state.Kind == ControlKind::TextBox || state.Kind == ControlKind::ComboBox)
      control->Widget()->setAccessibleName(name);
    if (!state.Visible || !state.Enabled) continue;
    for (QLabel* label : waiting) label->setBuddy(control->Widget());
    waiting.clear();
  }
}

void FormWindow::Apply(const ControlState& state, ControlProperty property) {
  ControlWidget* control = Find(state.Name);
  if (!control) return;
  control->Apply(state, property);
  if (property == ControlProperty::Visible || property == ControlProperty::Enabled ||
      property == ControlProperty::Caption) {
    LinkLabels();
  }
}

void FormWindow::FocusOn(const String& control) {
  if (ControlWidget* target = Find(control)) target->Widget()->setFocus(Qt::OtherFocusReason);
}

void FormWindow::SetZOrder(ZOrder order) {
  // The native window's own flag: the widget's would take the window away and show it again.
  if (windowHandle()) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, order == ZOrder::Topmost);
}

bool FormWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    queue_->Put({[](UserHand& hand) { hand.Activate(); }});
  }
  return QDialog::event(event);
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    if (const std::int32_t code = KeyCodeOf(static_cast<QKeyEvent*>(event)->key())) {
      queue_->Put({[code](UserHand& hand) { hand.KeyDown(code); }});
    }
  } else if (auto* button =
                 event->type() == QEvent::Shortcut ? qobject_cast<QAbstractButton*>(watched) : nullptr) {
    // At once: by itself it would look pressed for a while first, and the next key would come before the
    // click.
    button->setFocus(Qt::ShortcutFocusReason);
    button->click();
    return true;
  } else if (event->type() == QEvent::FocusIn &&
             !qobject_cast<QLineEdit*>(watched)) {  // boxes tell it themselves
    TellFocus(FromQt(watched->objectName()), static_cast<QFocusEvent*>(event)->reason());
  }
  return QDialog::eventFilter(watched, event);
}

// A window that comes to the front gives the focus back to where it was: for the form it never left.
void FormWindow::TellFocus(const String& control, Qt::FocusReason reason) {
  if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return;
  ReportFor(control)([](UserHand& hand, Control& target) { hand.Focus(target); }, Echo{control, {}});
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();  // the form decides, and the window goes when the form has ended
  queue_->Put({[](UserHand& hand) { hand.Close(); }});
}

void FormWindow::reject() {
  queue_->Put({[](UserHand& hand) { hand.Escape(); }});
}

}  // namespace Desktop
