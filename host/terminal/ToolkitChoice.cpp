#include "host/terminal/ToolkitChoice.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "host/terminal/TerminalToolkit.h"
#include "platform/ProgramTexts.h"
#include "platform/TerminalText.h"
#include "platform/Text.h"
#include "runtime/Folders.h"
#include "runtime/Libraries.h"
#include "runtime/ProcessServices.h"
#include "runtime/Texts.h"

namespace Host {

using namespace Platform;

namespace {

constexpr StringView kPlugin = u"TalvaneDesktop.so";

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != 0;
}

// Returns nothing without a display or the plug-in, or if the plug-in can't be used.
std::shared_ptr<FormsToolkit> LoadWindows() {
  if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) return nullptr;
  const std::filesystem::path file(ToUtf8(Runtime::LibraryFolder() + u"/" + String(kPlugin)));
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return nullptr;
  String reason;
  auto windows = Runtime::LoadToolkit(String(kPlugin), reason);
  if (!windows)
    std::cerr << "tvmail: " << TerminalText(Runtime::TextOf(TextNumber::kDialogOnTerminal, reason)) << '\n';
  return windows;
}

}  // namespace

std::shared_ptr<RecordingToolkit> InstallChosenToolkit() {
  std::shared_ptr<FormsToolkit> toolkit = LoadWindows();
  if (!toolkit) toolkit = std::make_shared<TerminalToolkit>();
  const auto installed = std::make_shared<RecordingToolkit>(std::move(toolkit));
  Runtime::InstallToolkit(installed);
  return installed;
}

}  // namespace Host
