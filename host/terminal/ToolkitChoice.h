// ToolkitChoice: selects the toolkit for a dialog whose values weren't given as options.
#pragma once

#include <memory>

#include "host/FailureReason.h"
#include "platform/Forms/FormsToolkit.h"

namespace Host {

using namespace Platform;

// A toolkit that forwards everything to another one, with the reason of a failure in a message box, and
// records how the dialog ended, which the component doesn't report.
class RecordingToolkit : public FormsToolkit {
 public:
  explicit RecordingToolkit(std::shared_ptr<FormsToolkit> toolkit) : toolkit_(std::move(toolkit)) {}

  // True if a dialog was shown and has ended.
  bool Shown() const { return shown_; }

  // True if the last dialog was hidden, as the mailbox dialog is after it accepted its entries; otherwise the
  // dialog was unloaded.
  bool Hidden() const { return hidden_; }

  void Load(Form& form) override { toolkit_->Load(form); }
  void ShowModal(Form& form) override {
    toolkit_->ShowModal(form);
    shown_ = true;
    hidden_ = form.IsLoaded();
  }
  void Unload(Form& form) override { toolkit_->Unload(form); }
  void MessageBox(StringView text, const std::optional<String>& title) override {
    toolkit_->MessageBox(WithReason(text), title);
  }
  std::optional<String> OpenFile(const OpenFileRequest& request) override {
    return toolkit_->OpenFile(request);
  }
  ScreenSize Screen() override { return toolkit_->Screen(); }
  void SetMousePointer(MousePointer pointer) override { toolkit_->SetMousePointer(pointer); }
  void SetZOrder(Form& form, ZOrder order) override { toolkit_->SetZOrder(form, order); }
  bool ShowHelp(std::intptr_t window, const std::string& file, std::uint32_t command,
                std::uint32_t number) override {
    return toolkit_->ShowHelp(window, file, command, number);
  }
  bool ShowTopic(StringView topic) override { return toolkit_->ShowTopic(topic); }

 private:
  std::shared_ptr<FormsToolkit> toolkit_;
  bool shown_ = false;
  bool hidden_ = false;
};

// Installs the desktop's windows if there are a display and the plug-in, otherwise the terminal. If there is
// a display without windows, the reason goes to standard error.
std::shared_ptr<RecordingToolkit> InstallChosenToolkit();

}  // namespace Host
