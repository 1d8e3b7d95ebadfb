// The one door of the plug-in: it gives the toolkit, or says why there can be none.
#include <cstdlib>
#include <memory>
#include <string>

#include "desktop/DesktopToolkit.h"
#include "desktop/DisplayProbe.h"

namespace {

// Ends with the process, but before the libraries that it stands on do.
std::unique_ptr<Desktop::DesktopToolkit>& Toolkit() {
  static auto* toolkit = new std::unique_ptr<Desktop::DesktopToolkit>;
  return *toolkit;
}

}  // namespace

// The toolkit of the process, which stays the plug-in's own; null, with the reason, without a display.
extern "C" __attribute__((visibility("default"))) Platform::FormsToolkit* CreateFormsToolkit(
    std::string& reason) {
  auto& toolkit = Toolkit();
  if (toolkit) return toolkit.get();
  if (!Desktop::CanOpenDisplay(reason)) return nullptr;
  toolkit = std::make_unique<Desktop::DesktopToolkit>();
  std::atexit([] { Toolkit().reset(); });
  return toolkit.get();
}
