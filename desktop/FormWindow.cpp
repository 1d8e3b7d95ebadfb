#include "desktop/FormWindow.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QWindow>

#include "desktop/KeyCodes.h"
#include "desktop/Strings.h"
#include "desktop/TaskBar.h"

namespace Desktop {

using namespace Platform;

namespace {

// False for a widget that has no access key of its own.
bool PressAccessKey(QObject& widget) {
  if (const auto* label = qobject_cast<QLabel*>(&widget)) {
    // Qt would also press a button that is the label's buddy, as the OK button is after disabled fields.
    if (QWidget* buddy = label->buddy()) buddy->setFocus(Qt::ShortcutFocusReason);
    return true;
  }
  auto* button = qobject_cast<QAbstractButton*>(&widget);
  if (!button) return false;
  // Qt would click it after 0.1 s, and so after the user's next key.
  button->setFocus(Qt::ShortcutFocusReason);
  button->click();
  return true;
}

}  // namespace

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
    if (auto* list = qobject_cast<QComboBox*>(widget->Widget())) list->view()->installEventFilter(this);
    if (previous) setTabOrder(previous, widget->Widget());
    previous = widget->Widget();
    controls_.push_back(std::move(widget));
  }
}

ControlWidget::Report FormWindow::ReportFor(const String& name) {
  return [this, name](ControlWidget::Act act, std::optional<Echo> expected) {
    queue_->Put({[name, act = std::move(act)](UserInput& input) {
                   if (Control* control = input.Find(name)) act(input, *control);
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
  Place(left, top);
  for (const auto& control : controls_) {
    if (control->State().Visible && control->State().Enabled &&
        control->Widget()->focusPolicy() != Qt::NoFocus) {
      control->Widget()->setFocus(Qt::TabFocusReason);
      ReportFocus(control->State().Name, Qt::TabFocusReason);
      break;
    }
  }
  KeepFromTaskBar(*windowHandle());
  show();
  raise();
  activateWindow();
}

void FormWindow::Place(float left, float top) {
  const QPoint corner =
      ToPixels({left, top, 0, 0}, *this).topLeft() + QGuiApplication::primaryScreen()->geometry().topLeft();
  move(corner);
  // Before a widget is shown, Qt takes the place for that of its client area; the native window can be set to
  // take it for that of the frame.
  windowHandle()->setFramePosition(corner);
}

// The access key of a label moves the focus to the next control in tab order that takes it. The label's text
// is the accessible name of the fields after it, up to the next label.
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
  // The native window's own flag: a change of the widget's flag would hide the window and show it again.
  if (windowHandle()) windowHandle()->setFlag(Qt::WindowStaysOnTopHint, order == ZOrder::Topmost);
}

bool FormWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) {
    queue_->Put({[](UserInput& input) { input.Activate(); }});
  }
  return QDialog::event(event);
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const int key = static_cast<QKeyEvent*>(event)->key();
    auto* popup = QApplication::activePopupWidget();
    if (key == Qt::Key_F1 && popup) popup->close();  // an open list would cover the help and receive its keys
    ReportKey(key);
  } else if (event->type() == QEvent::Shortcut) {
    return PressAccessKey(*watched);
  } else if (event->type() == QEvent::FocusIn && watched->parent() == this &&
             !qobject_cast<QLineEdit*>(watched)) {  // text boxes report it themselves
    ReportFocus(FromQt(watched->objectName()), static_cast<QFocusEvent*>(event)->reason());
  }
  return QDialog::eventFilter(watched, event);
}

void FormWindow::ReportKey(int key) {
  const std::int32_t code = KeyCodeOf(key);
  if (code != 0) queue_->Put({[code](UserInput& input) { input.KeyDown(code); }});
}

// An activated window returns the focus to the control that had it, which is no change for the form.
void FormWindow::ReportFocus(const String& control, Qt::FocusReason reason) {
  if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) return;
  ReportFor(control)([](UserInput& input, Control& target) { input.Focus(target); }, Echo{control, {}});
}

void FormWindow::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() != QEvent::PaletteChange) return;
  for (const auto& control : controls_) control->ApplyColors();
}

void FormWindow::closeEvent(QCloseEvent* event) {
  event->ignore();  // the form's handlers decide; Ended hides the window
  queue_->Put({[](UserInput& input) { input.Close(); }});
}

void FormWindow::reject() {
  queue_->Put({[](UserInput& input) { input.Escape(); }});
}

}  // namespace Desktop
