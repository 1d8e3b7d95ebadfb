#include "desktop/FormSession.h"

#include <QStyle>

#include "desktop/Strings.h"

namespace Desktop {

using namespace Platform;

namespace {

Echo EchoOf(const Control& control, ControlProperty property) {
  Echo change{control.Name(), property};
  if (property == ControlProperty::Text) change.Text = control.Text();
  if (property == ControlProperty::Value) change.Number = control.Value();
  if (property == ControlProperty::ListIndex) change.Number = control.ListIndex();
  return change;
}

}  // namespace

FormSession::FormSession(GuiThread& gui, Form& form)
    : gui_(gui), form_(form), queue_(std::make_shared<EventQueue>(gui)) {
  struct Opened {
    FormWindow* Window;
    WId Handle;
    double Height;
  };
  const Opened opened = gui_.Run([state = FormState(form), queue = queue_] {
    auto* window = new FormWindow(state, queue);
    // The frame isn't known before the window is shown, so its height is that of the style's title bar.
    const double bar =
        window->style()->pixelMetric(QStyle::PM_TitleBarHeight) * 1440.0 / window->logicalDpiY();
    return Opened{window, window->winId(), state.ClientHeight + bar};
  });
  window_ = opened.Window;
  form.TakeWindow(static_cast<std::intptr_t>(opened.Handle), form.ClientWidth(),
                  static_cast<float>(opened.Height));
}

FormSession::~FormSession() {
  if (form_.Observer() == this) form_.SetObserver(nullptr);
  // Posted, since the window may be handling the event that caused this.
  gui_.Post([window = window_] {
    window->hide();
    window->deleteLater();
  });
}

void FormSession::Show(FormsToolkit& toolkit) {
  queue_->Open();
  OpenWindow();
  form_.SetObserver(this);
  shown_ = true;
  UserInput input(form_, toolkit);
  while (form_.IsShown()) {
    const UserAct act = queue_->Take();
    expected_ = act.Expected;
    act.Run(input);
    if (const auto refused = std::exchange(expected_, std::nullopt)) TakeBack(*refused);
    queue_->Done();
  }
  shown_ = false;
  queue_->Close();
}

void FormSession::OpenWindow() {
  gui_.Run([window = window_, state = FormState(form_), place = form_.Place()] {
    window->Open(state, place.Left, place.Top);
  });
}

void FormSession::SetZOrder(ZOrder order) {
  gui_.Post([window = window_, order] { window->SetZOrder(order); });
}

bool FormSession::IsEcho(const Echo& change) {
  if (expected_ != change) return false;
  expected_.reset();
  return true;
}

void FormSession::TakeBack(const Echo& change) {
  if (!change.Property || !form_.IsShown()) return;
  const Control& control = form_[change.Control];
  if (EchoOf(control, *change.Property) != change) ControlChanged(control, *change.Property);
}

void FormSession::ControlChanged(const Control& control, ControlProperty property) {
  if (IsEcho(EchoOf(control, property))) return;
  gui_.Post([window = window_, state = ControlState(control), property] { window->Apply(state, property); });
}

void FormSession::FormChanged(FormProperty property) {
  if (property == FormProperty::Caption) {
    gui_.Post([window = window_, caption = form_.Caption()] { window->setWindowTitle(ToQt(caption)); });
  } else if (property == FormProperty::Place) {
    const Place place = form_.Place();
    gui_.Post([window = window_, place] { window->Place(place.Left, place.Top); });
  }
}

void FormSession::FocusMoved(const Control& control) {
  if (IsEcho({control.Name(), {}})) return;
  gui_.Post([window = window_, name = control.Name()] { window->FocusOn(name); });
}

void FormSession::Ended() {
  gui_.Post([window = window_] { window->hide(); });
}

}  // namespace Desktop
