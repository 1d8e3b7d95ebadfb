#include "desktop/FormSession.h"

#include <QStyle>

#include "desktop/Strings.h"

namespace Desktop {

using namespace Platform;

FormSession::FormSession(GuiThread& gui, Form& form) : gui_(gui), form_(form) {
  struct Made {
    FormWindow* Window;
    WId Handle;
    double Height;
  };
  const Made made = gui_.Run([state = FormState(form), queue = queue_] {
    auto* window = new FormWindow(state, queue);
    // The frame isn't known before the window is seen; the style's title bar stands for it.
    const double bar =
        window->style()->pixelMetric(QStyle::PM_TitleBarHeight) * 1440.0 / window->logicalDpiY();
    return Made{window, window->winId(), state.ClientHeight + bar};
  });
  window_ = made.Window;
  form.TakeWindow(static_cast<std::intptr_t>(made.Handle), form.ClientWidth(),
                  static_cast<float>(made.Height));
}

FormSession::~FormSession() {
  if (form_.Observer() == this) form_.SetObserver(nullptr);
  gui_.Post([window = window_] { delete window; });
}

void FormSession::Show(FormsToolkit& toolkit) {
  gui_.Run([window = window_, state = FormState(form_), place = form_.Place()] {
    window->Open(state, place.Left, place.Top);
  });
  form_.SetObserver(this);
  shown_ = true;
  UserHand hand(form_, toolkit);
  while (form_.IsShown()) {
    const UserAct act = queue_->Take();
    expected_ = act.Expected;
    act.Run(hand);
    expected_.reset();
  }
  shown_ = false;
}

void FormSession::SetStanding(Standing standing) {
  gui_.Post([window = window_, standing] { window->SetStanding(standing); });
}

bool FormSession::IsEcho(const Echo& change) {
  if (expected_ != change) return false;
  expected_.reset();
  return true;
}

void FormSession::ControlChanged(const Control& control, ControlProperty property) {
  Echo change{control.Name(), property};
  if (property == ControlProperty::Text) change.Text = control.Text();
  if (property == ControlProperty::Value) change.Number = control.Value();
  if (property == ControlProperty::ListIndex) change.Number = control.ListIndex();
  if (IsEcho(change)) return;
  gui_.Post([window = window_, state = ControlState(control), property] { window->Apply(state, property); });
}

void FormSession::FormChanged(FormProperty property) {
  if (property == FormProperty::Caption) {
    gui_.Post([window = window_, caption = form_.Caption()] { window->setWindowTitle(ToQt(caption)); });
  } else if (property == FormProperty::Place) {
    const Place place = form_.Place();
    gui_.Post([window = window_, place] { window->move(ToPixels(place, *window).topLeft()); });
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
