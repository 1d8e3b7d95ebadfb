// ScriptToolkit: a forms toolkit whose user is a test. It records all output to the user.
#pragma once

#include <deque>
#include <functional>
#include <vector>

#include "platform/Forms/UserInput.h"

namespace Tests {

using namespace Platform;

class ScriptToolkit : public FormsToolkit {
 public:
  using Script = std::function<void(Form& form, UserInput& input)>;

  struct Box {
    std::optional<String> Title;
    String Text;
  };

  // The user's input to each modal show, in order. A form that is still shown after it is closed.
  std::deque<Script> Scripts;

  // The user's answers to open-file dialogs, in order; none left or an empty one is a cancel.
  std::deque<std::optional<String>> Files;

  ScreenSize Size{15360, 11520};
  bool HelpOpens = true;
  std::intptr_t Window = 0;                         // the handle that a form gets when it is loaded
  std::function<void(Form&form)> OnLoad, OnUnload;  // called before a form's Load and after its Unload

  std::vector<Box> Boxes;
  std::vector<OpenFileRequest> FileRequests;
  std::vector<std::intptr_t> HelpWindows;  // for which the viewer was opened
  // "load NAME", "show NAME", "unload NAME", "pointer N", "z-order N", "help FILE COMMAND NUMBER", "topic
  // NAME".
  std::vector<std::string> Log;

  // The texts of all boxes since the last call.
  std::vector<std::string> TakeBoxes();

  void Load(Form& form) override;
  void ShowModal(Form& form) override;
  void Unload(Form& form) override;
  void MessageBox(StringView text, const std::optional<String>& title) override;
  std::optional<String> OpenFile(const OpenFileRequest& request) override;
  ScreenSize Screen() override { return Size; }
  void SetMousePointer(MousePointer pointer) override;
  void SetZOrder(Form& form, ZOrder order) override;
  bool ShowHelp(std::intptr_t window, const std::string& file, std::uint32_t command,
                std::uint32_t number) override;
  bool ShowTopic(StringView topic) override;
};

}  // namespace Tests
