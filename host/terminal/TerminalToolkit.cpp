#include "host/terminal/TerminalToolkit.h"

#include "host/terminal/FormQuestions.h"
#include "runtime/HelpPages.h"

namespace Host {

namespace {

// A terminal has no size in twips; forms are centred on a common screen and never drawn.
constexpr float kScreenWidth = 1920 * 15, kScreenHeight = 1080 * 15;

}  // namespace

void TerminalToolkit::Load(Form& form) {
  form.TakeWindow(0, form.ClientWidth(), form.ClientHeight());
}

void TerminalToolkit::ShowModal(Form& form) {
  FormQuestions(form, *this, terminal_).Ask();
}

void TerminalToolkit::MessageBox(StringView text, const std::optional<String>& title) {
  const String heading = title && !title->empty() ? *title + u": " : String();
  terminal_.Write((terminal_.Interactive() ? u"\n" : u"tvmail: ") + heading + Trim(text) + u"\n");
}

std::optional<String> TerminalToolkit::OpenFile(const OpenFileRequest& request) {
  const String present = request.FileName.empty() ? String() : u" [" + request.FileName + u"]";
  auto answer = terminal_.ReadLine(request.Title + present + u": ");
  if (!answer || !answer->empty()) return answer;
  // Enter alone takes the file that stands there; without one it is a cancel.
  if (request.FileName.empty()) return std::nullopt;
  return request.FileName;
}

ScreenSize TerminalToolkit::Screen() {
  return {kScreenWidth, kScreenHeight};
}

bool TerminalToolkit::ShowHelp(std::intptr_t, const std::string& file, std::uint32_t, std::uint32_t number) {
  if (Tell(Runtime::FindHelpPage(file, number))) return true;
  terminal_.Write(u"There is no help page. Install the help pages of Talvane.\n");
  return false;
}

bool TerminalToolkit::ShowTopic(StringView topic) {
  return Tell(Runtime::FindHelpPage(topic));
}

bool TerminalToolkit::Tell(const std::optional<std::string>& helpPage) {
  if (helpPage) terminal_.Write(u"Help: " + FromUtf8(*helpPage) + u"\n");
  return helpPage.has_value();
}

}  // namespace Host
