// DesktopToolkit: forms, message boxes and help in real windows.
//
// The contract is that of FormsToolkit. The windows live on a thread of their own, so forms of several
// threads may be open at once; a form's handlers run on the thread that called ShowModal.
#pragma once

#include <map>
#include <memory>
#include <mutex>

#include "desktop/GuiThread.h"
#include "platform/Forms/FormsToolkit.h"

namespace Desktop {

using namespace Platform;

class FormSession;
class FormWindow;
class HelpWindow;

class DesktopToolkit : public FormsToolkit {
 public:
  DesktopToolkit() { GuiThread::EndWithProcess(); }
  ~DesktopToolkit() override;

  void Load(Form& form) override;
  void ShowModal(Form& form) override;
  void Unload(Form& form) override;
  void MessageBox(StringView text, const std::optional<String>& title) override;
  std::optional<String> OpenFile(const OpenFileRequest& request) override;
  ScreenSize Screen() override;
  void SetMousePointer(MousePointer pointer) override;
  void SetZOrder(Form& form, ZOrder order) override;
  bool ShowHelp(std::intptr_t window, const std::string& file, std::uint32_t command,
                std::uint32_t number) override;
  bool ShowTopic(StringView topic) override;

 private:
  std::shared_ptr<FormSession> SessionOf(const Form& form);

  // The window of the form that the calling thread shows; null without one.
  FormWindow* FrontWindow();

  // Shows the file in the help window. Without a file, or if it can't be read, a message box says that the
  // page of that name is missing. Returns when the window is open or the box is closed.
  void ShowPage(const std::optional<std::string>& file, StringView name);

  GuiThread& gui_ = GuiThread::Instance();
  HelpWindow* help_ = nullptr;  // owned; used on the windows' thread
  std::mutex mutex_;
  std::map<const Form*, std::shared_ptr<FormSession>> sessions_;
};

}  // namespace Desktop
