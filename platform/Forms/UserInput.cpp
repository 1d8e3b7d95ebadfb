#include "platform/Forms/UserInput.h"

#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "platform/Services.h"
#include "platform/contracts/ResourceServices.h"

namespace Platform {

namespace {

// In the user's language, or in English if the catalogue of the programs can't be loaded.
String RefusedEntryText() {
  static const char kHere = 0;
  try {
    const Resource texts(Services().CreateByName(u"TvResourceServices.Resource"));
    texts.LoadResources(Services().FolderOf(&kHere) + u"\\TvMailRes.dll", u"TvMail");
    return texts.ResourceString(TextNumber::kEntryWithControl);
  } catch (const std::exception&) {
    return u"An entry holds a line end or another control character. Remove it.";
  }
}

}  // namespace

void UserInput::Act(const std::function<void()>& act) {
  try {
    act();
  } catch (...) {
    toolkit_.MessageBox(CurrentFailure().Description(), std::nullopt);
  }
}

bool UserInput::Usable(const Control& control, ControlKind kind) const {
  return control.Kind() == kind && control.CanFocus() && form_.IsShown();
}

Control* UserInput::Find(StringView name) {
  if (!form_.IsLoaded()) return nullptr;
  for (const auto& control : form_.Controls()) {
    if (control->Name() == name) return control.get();
  }
  return nullptr;
}

void UserInput::Activate() {
  Act([&] { form_.Fire({}, Event::Activate); });
}

bool UserInput::Focus(Control& control) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.MoveFocus(control); });
  return true;
}

bool UserInput::MouseDown(Control& control) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.Fire(control.Name(), Event::MouseDown); });
  return true;
}

bool UserInput::MouseMove(Control& control) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.Fire(control.Name(), Event::MouseMove); });
  return true;
}

bool UserInput::Type(Control& control, StringView text) {
  if (!Usable(control, ControlKind::TextBox) || control.Locked()) return false;
  control.SetText(String(text));
  return true;
}

bool UserInput::Check(Control& control, bool on) {
  if (!Usable(control, ControlKind::CheckBox)) return false;
  Act([&] { control.SetValue(on ? 1 : 0); });
  return true;
}

bool UserInput::Choose(Control& list, std::int32_t position) {
  if (!Usable(list, ControlKind::ComboBox)) return false;
  if (position < 0 || position >= static_cast<std::int32_t>(list.List().size())) return false;
  Act([&] { list.SetListIndex(position); });
  return true;
}

bool UserInput::KeyUp(Control& control, std::int32_t keyCode) {
  if (!control.CanFocus() || !form_.IsShown()) return false;
  Act([&] { form_.Fire(control.Name(), Event::KeyUp, {keyCode}); });
  return true;
}

bool UserInput::Scroll(Control& list) {
  if (!Usable(list, ControlKind::ComboBox)) return false;
  Act([&] { form_.Fire(list.Name(), Event::Scroll); });
  return true;
}

bool UserInput::EntriesAreFit() {
  for (const auto& box : form_.Controls()) {
    if (!Usable(*box, ControlKind::TextBox) || box->Locked() || box->PasswordChar() != 0) continue;
    if (!HasControl(box->Text())) continue;
    Act([&] {
      form_.MoveFocus(*box);
      throw Failure(FailureNumber::RefusedInput, {}, RefusedEntryText());
    });
    return false;
  }
  return true;
}

bool UserInput::Press(Control& button) {
  if (!Usable(button, ControlKind::CommandButton)) return false;
  if (button.IsDefault() && !EntriesAreFit()) return true;
  Act([&] {
    form_.MoveFocus(button);
    form_.Fire(button.Name(), Event::Click);
  });
  return true;
}

// Unlike a click, the key leaves the focus where it is.
bool UserInput::PressWhere(bool (Control::*wanted)() const) {
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

bool UserInput::Enter() {
  return PressWhere(&Control::IsDefault);
}
bool UserInput::Escape() {
  return PressWhere(&Control::IsCancel);
}

void UserInput::KeyDown(std::int32_t keyCode) {
  if (form_.KeyPreview()) Act([&] { form_.Fire({}, Event::KeyDown, {keyCode}); });
}

void UserInput::Close() {
  Act([&] { form_.Unload(); });
}

}  // namespace Platform
