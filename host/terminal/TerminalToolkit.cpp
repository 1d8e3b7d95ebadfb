#include "host/terminal/TerminalToolkit.h"

#include "host/terminal/FormQuestions.h"
#include "host/terminal/HelpText.h"
#include "host/terminal/PathCompletion.h"
#include "platform/ProgramTexts.h"
#include "runtime/HelpPages.h"
#include "runtime/Texts.h"

namespace Host {

namespace {

// A terminal has no size in twips. Forms are centred on a screen of this size, which has no visible effect.
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
  const auto answer = terminal_.ReadLine(request.Title + present + u": ");
  if (!answer) return std::nullopt;
  if (!answer->empty()) return FromUtf8(WholePath(ToUtf8(*answer)));
  // Enter alone accepts the present file; without one it cancels.
  if (request.FileName.empty()) return std::nullopt;
  return request.FileName;
}

ScreenSize TerminalToolkit::Screen() {
  return {kScreenWidth, kScreenHeight};
}

bool TerminalToolkit::ShowHelp(std::intptr_t, const std::string& file, std::uint32_t, std::uint32_t number) {
  ShowPage(Runtime::FindHelpPage(file, number));
  return true;
}

bool TerminalToolkit::ShowTopic(StringView topic) {
  ShowPage(Runtime::FindHelpPage(topic));
  return true;
}

// Reports a missing page in the user's language; the caller takes that as success.
void TerminalToolkit::ShowPage(const std::optional<std::string>& page) {
  if (page && ShowHelpText(terminal_, *page)) return;
  terminal_.Write(Runtime::TextOf(TextNumber::kHelpMissing) + u"\n");
}

}  // namespace Host
