#include "host/terminal/ToolkitChoice.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>

#include "platform/TerminalText.h"
#include "platform/Text.h"
#include "runtime/Process.h"

namespace Host {

using namespace Platform;

namespace {

constexpr StringView kPlugin = u"TalvaneDesktop.so";

bool IsSet(const char* variable) {
  const char* value = std::getenv(variable);
  return value != nullptr && *value != 0;
}

}  // namespace

void InstallDialogToolkit() {
  if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) return;
  const std::filesystem::path file(ToUtf8(Runtime::LibraryFolder() + u"/" + String(kPlugin)));
  std::error_code error;
  if (!std::filesystem::exists(file, error)) return;
  String reason;
  if (auto windows = Runtime::LoadToolkit(String(kPlugin), reason)) {
    Runtime::InstallToolkit(std::move(windows));
  } else {
    std::cerr << "tvmail: the dialog opens on the terminal, since it can't in a window: "
              << TerminalText(reason) << '\n';
  }
}

}  // namespace Host
