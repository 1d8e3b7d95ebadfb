#include "platform/Forms/Form.h"

#include "platform/Failure.h"
#include "platform/Forms/FormsToolkit.h"
#include "platform/Services.h"

namespace Platform {

FormObserver::~FormObserver() = default;

Form::Form(FormDesign design, std::vector<ControlDesign> controls) : design_(std::move(design)) {
  controls_.reserve(controls.size());
  for (ControlDesign& control : controls)
    controls_.push_back(std::make_unique<Control>(*this, std::move(control)));
  window_ = design_.Place;
}

Form::~Form() {
  if (!loaded_) return;
  try {
    Services().Toolkit().Unload(*this);
  } catch (const std::exception&) {
    // The process has no toolkit any more.
  }
}

void Form::LoadOnce() {
  if (loaded_) return;
  loaded_ = true;  // so that the toolkit can read the form
  try {
    Services().Toolkit().Load(*this);
  } catch (...) {
    loaded_ = false;
    throw;
  }
  Fire({}, Event::Load);
}

const String& Form::Caption() {
  LoadOnce();
  return design_.Caption;
}

void Form::SetCaption(String caption) {
  LoadOnce();
  design_.Caption = std::move(caption);
  if (observer_) observer_->FormChanged(FormProperty::Caption);
}

const Font& Form::Font() {
  LoadOnce();
  return font_;
}

void Form::SetFont(Platform::Font font) {
  LoadOnce();
  font_ = std::move(font);
  if (observer_) observer_->FormChanged(FormProperty::Font);
}

Place Form::Place() {
  LoadOnce();
  return window_;
}

void Form::Move(float left, float top) {
  LoadOnce();
  window_.Left = left;
  window_.Top = top;
  if (observer_) observer_->FormChanged(FormProperty::Place);
}

std::span<const std::unique_ptr<Control>> Form::Controls() {
  LoadOnce();
  return controls_;
}

Control& Form::operator[](StringView name) {
  LoadOnce();
  for (const auto& control : controls_) {
    if (control->Name() == name) return *control;
  }
  Raise(FailureNumber::NoSuchMember, name);
}

void Form::SetKeyPreview(bool preview) {
  LoadOnce();
  keyPreview_ = preview;
}

void Form::ClearIcon() {
  LoadOnce();
  icon_ = false;
  if (observer_) observer_->FormChanged(FormProperty::Icon);
}

std::intptr_t Form::WindowHandle() {
  LoadOnce();
  return windowHandle_;
}

void Form::TakeWindow(std::intptr_t handle, float width, float height) {
  windowHandle_ = handle;
  window_.Width = width;
  window_.Height = height;
}

void Form::ShowModal() {
  LoadOnce();
  shown_ = true;
  try {
    Services().Toolkit().ShowModal(*this);
  } catch (...) {
    shown_ = false;
    throw;
  }
  shown_ = false;
}

void Form::End() {
  if (!shown_) return;
  shown_ = false;
  if (observer_) observer_->Ended();
}

void Form::Hide() {
  End();
}

void Form::Unload() {
  if (!loaded_) return;
  End();
  Fire({}, Event::Unload);
  loaded_ = false;
  activeControl_ = nullptr;
  Services().Toolkit().Unload(*this);
}

void Form::Handle(StringView control, Event event, Handler handler) {
  handlers_[{String(control), event}] = std::move(handler);
}

void Form::Fire(StringView control, Event event, const EventArgs& arguments) {
  const auto found = handlers_.find({String(control), event});
  if (found != handlers_.end()) found->second(arguments);
}

void Form::MoveFocus(Control& control) {
  if (activeControl_ == &control) return;
  activeControl_ = &control;
  if (observer_) observer_->FocusMoved(control);
  Fire(control.Name(), Event::GotFocus);
}

}  // namespace Platform
