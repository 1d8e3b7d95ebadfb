// OptionToolkit: a forms toolkit that fills a dialog from the command line. It runs one function on the
// dialog that is shown, which types values and presses a button, and closes the dialog if it is still open
// then. Message boxes go to standard error. Used on one thread.
#pragma once

#include <exception>
#include <functional>

#include "platform/Forms/FormsToolkit.h"
#include "platform/Forms/UserInput.h"

namespace Host {

using namespace Platform;

class OptionToolkit : public FormsToolkit {
 public:
  // Fills the dialog and presses a button. A CommandError that it raises is raised again by Finish.
  using Act = std::function<void(Form& form, UserInput& input)>;

  explicit OptionToolkit(Act act) : act_(std::move(act)) {}

  // True if a dialog was shown and the function closed it.
  bool Accepted() const { return accepted_; }

  // The number of message boxes so far.
  std::size_t BoxCount() const { return boxCount_; }

  // To be called after the dialog. Raises the CommandError that the function raised.
  void Finish() const;

  void Load(Form& form) override;
  void ShowModal(Form& form) override;
  void Unload(Form&) override {}
  void MessageBox(StringView text, const std::optional<String>& title) override;
  std::optional<String> OpenFile(const OpenFileRequest&) override { return std::nullopt; }
  ScreenSize Screen() override { return {}; }
  void SetMousePointer(MousePointer) override {}
  void SetZOrder(Form&, ZOrder) override {}
  bool ShowHelp(std::intptr_t, const std::string&, std::uint32_t, std::uint32_t) override { return false; }
  bool ShowTopic(StringView) override { return false; }

 private:
  Act act_;
  bool accepted_ = false;
  std::size_t boxCount_ = 0;
  std::exception_ptr error_;
};

// Types a text given as an option. Raises a CommandError if the box is disabled, locked or too short for it;
// option is its name, as in "--host".
void TypeOption(Form& form, UserInput& input, StringView box, const std::string& option, const String& text);

}  // namespace Host
