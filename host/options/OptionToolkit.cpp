#include "host/options/OptionToolkit.h"

#include <iostream>

#include "host/CommandError.h"
#include "host/FailureReason.h"
#include "platform/TerminalText.h"

namespace Host {

void OptionToolkit::Load(Form& form) {
  form.TakeWindow(0, form.ClientWidth(), form.ClientHeight());
}

void OptionToolkit::ShowModal(Form& form) {
  UserInput input(form, *this);
  input.Activate();
  try {
    act_(form, input);
    accepted_ = !form.IsShown();
  } catch (const CommandError&) {
    error_ = std::current_exception();
  }
  if (form.IsShown()) input.Close();
  if (form.IsShown()) form.Hide();
}

void OptionToolkit::MessageBox(StringView text, const std::optional<String>&) {
  ++boxCount_;
  std::cerr << "tvmail: " << TerminalText(WithReason(text)) << '\n';
}

void OptionToolkit::Finish() const {
  if (error_) std::rethrow_exception(error_);
}

void TypeOption(Form& form, UserInput& input, StringView box, const std::string& option, const String& text) {
  Control& control = form[box];
  const std::int32_t limit = control.MaxLength();
  if (limit > 0 && text.size() > static_cast<std::size_t>(limit))
    throw CommandError(DataRefused, TextNumber::kOptionTooLong, FromUtf8(option),
                       FromUtf8(std::to_string(limit)));
  input.Focus(control);
  if (!input.Type(control, text)) throw CommandError(WrongUse, TextNumber::kOptionLocked, FromUtf8(option));
}

}  // namespace Host
