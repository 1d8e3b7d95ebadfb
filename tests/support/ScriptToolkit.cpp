#include "tests/support/ScriptToolkit.h"

namespace Tests {

std::vector<std::string> ScriptToolkit::TakeBoxes() {
  std::vector<std::string> texts;
  for (const Box& box : Boxes) texts.push_back(ToUtf8(box.Text));
  Boxes.clear();
  return texts;
}

void ScriptToolkit::Load(Form& form) {
  Log.push_back("load " + ToUtf8(form.Name()));
  form.TakeWindow(Window, form.ClientWidth(), form.ClientHeight());
  if (OnLoad) OnLoad(form);
}

void ScriptToolkit::ShowModal(Form& form) {
  Log.push_back("show " + ToUtf8(form.Name()));
  UserInput input(form, *this);
  input.Activate();
  if (!Scripts.empty()) {
    const Script script = std::move(Scripts.front());
    Scripts.pop_front();
    script(form, input);
  }
  if (form.IsShown()) input.Close();
}

void ScriptToolkit::Unload(Form& form) {
  Log.push_back("unload " + ToUtf8(form.Name()));
  if (OnUnload) OnUnload(form);
}

void ScriptToolkit::MessageBox(StringView text, const std::optional<String>& title) {
  Boxes.push_back({title, String(text)});
}

std::optional<String> ScriptToolkit::OpenFile(const OpenFileRequest& request) {
  FileRequests.push_back(request);
  if (Files.empty()) return {};
  auto answer = std::move(Files.front());
  Files.pop_front();
  return answer;
}

void ScriptToolkit::SetMousePointer(MousePointer pointer) {
  Log.push_back("pointer " + std::to_string(static_cast<int>(pointer)));
}

void ScriptToolkit::SetZOrder(Form&, ZOrder order) {
  Log.push_back("z-order " + std::to_string(static_cast<int>(order)));
}

bool ScriptToolkit::ShowHelp(std::intptr_t window, const std::string& file, std::uint32_t command,
                             std::uint32_t number) {
  HelpWindows.push_back(window);
  Log.push_back("help " + file + " " + std::to_string(command) + " " + std::to_string(number));
  return HelpOpens;
}

bool ScriptToolkit::ShowTopic(StringView topic) {
  Log.push_back("topic " + ToUtf8(topic));
  return HelpOpens;
}

}  // namespace Tests
