// TerminalToolkit: shows any form as questions on the terminal, field by field in tab order, then its
// buttons.
//
// Without a terminal it reads the answers from standard input and writes to standard error. The end of the
// input closes the form, like its close box.
#pragma once

#include <optional>

#include "host/terminal/Terminal.h"
#include "platform/Forms/FormsToolkit.h"
#include "platform/Forms/UserInput.h"

namespace Host {

using namespace Platform;

class TerminalToolkit : public FormsToolkit {
 public:
  void Load(Form& form) override;
  void ShowModal(Form& form) override;
  void Unload(Form&) override {}
  void MessageBox(StringView text, const std::optional<String>& title) override;
  std::optional<String> OpenFile(const OpenFileRequest& request) override;
  ScreenSize Screen() override;
  void SetMousePointer(MousePointer) override {}
  void SetZOrder(Form&, ZOrder) override {}
  bool ShowHelp(std::intptr_t window, const std::string& file, std::uint32_t command,
                std::uint32_t number) override;
  bool ShowTopic(StringView topic) override;

 private:
  void ShowPage(const std::optional<std::string>& page);

  Terminal terminal_;
};

}  // namespace Host
