#include "platform/Forms/UserHand.h"

#include "platform/Failure.h"

namespace Platform {

void UserHand::Act(const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    toolkit_.MessageBox(CurrentFailure().Description(), std::nullopt);
  }
}

bool UserHand::Usable(const Control& control, ControlKind kind) const {
  return control.Kind() == kind && control.CanFocus() && form_.IsShown();
}

Control* UserHand::Find(StringView name) {
  if (!form_.IsLoaded()) return nullptr;
  for (const auto& control : form_.Controls()) {
    if (control->Name() == name) return control.get();
  }
  return nullptr;
}

void UserHand::Activate() {
  Act([&] { form_.Fire({}, Event::Activate); });
}

bool UserHand::Focus(Control& control) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.MoveFocus(control); });
  return true;
}

bool UserHand::MouseDown(Control& control) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.Fire(control.Name(), Event::MouseDown); });
  return true;
}

bool UserHand::MouseMove(Control& control) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.Fire(control.Name(), Event::MouseMove); });
  return true;
}

bool UserHand::Type(Control& control, StringView text) {
  if (!Usable(control, ControlKind::TextBox) || control.Locked()) return false;
  control.SetText(String(text));
  return true;
}

bool UserHand::Check(Control& control, bool on) {
  if (!Usable(control, ControlKind::CheckBox)) return false;
  Act([&] { control.SetValue(on ? 1 : 0); });
  return true;
}

bool UserHand::Choose(Control& list, std::int32_t position) {
  if (!Usable(list, ControlKind::ComboBox)) return false;
  if (position < 0 || position >= static_cast<std::int32_t>(list.List().size())) return false;
  Act([&] { list.SetListIndex(position); });
  return true;
}

bool UserHand::KeyUp(Control& control, std::int32_t keyCode) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.Fire(control.Name(), Event::KeyUp, {keyCode}); });
  return true;
}

bool UserHand::Scroll(Control& list) {
  if (!Usable(list, ControlKind::ComboBox)) return false;
  Act([&] { form_.Fire(list.Name(), Event::Scroll); });
  return true;
}

bool UserHand::EntriesAreFit() {
  for (const auto& box : form_.Controls()) {
    if (!Usable(*box, ControlKind::TextBox) || box->Locked() || box->PasswordChar() != 0) continue;
    if (!HasControl(box->Text())) continue;
    Act([&] {
      form_.MoveFocus(*box);
      throw Failure(FailureNumber::RefusedInput, {},
                    u"An entry holds a line end or another control character. Remove it.");
    });
    return false;
  }
  return true;
}

bool UserHand::Press(Control& button) {
  if (!Usable(button, ControlKind::CommandButton)) return false;
  if (button.IsDefault() && !EntriesAreFit()) return true;
  Act([&] {
    form_.MoveFocus(button);
    form_.Fire(button.Name(), Event::Click);
  });
  return true;
}

// A key's button answers without taking the focus from the control that has it.
bool UserHand::PressWhere(bool (Control::*wanted)() const) {
  if (!form_.IsShown()) return false;
  for (const auto& control : form_.Controls()) {
    if (!(*control.*wanted)()) continue;
    if (!Usable(*control, ControlKind::CommandButton)) return false;
    if (control->IsDefault() && !EntriesAreFit()) return true;
    Act([&] { form_.Fire(control->Name(), Event::Click); });
    return true;
  }
  return false;
}

bool UserHand::Enter() {
  return PressWhere(&Control::IsDefault);
}
bool UserHand::Escape() {
  return PressWhere(&Control::IsCancel);
}

void UserHand::KeyDown(std::int32_t keyCode) {
  if (form_.KeyPreview()) Act([&] { form_.Fire({}, Event::KeyDown, {keyCode}); });
}

void UserHand::Close() {
  Act([&] { form_.Unload(); });
}

}  // namespace Platform
