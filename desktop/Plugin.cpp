// The plug-in's one export, which Runtime::LoadToolkit calls.
#include <string>

#include "desktop/DesktopToolkit.h"
#include "desktop/DisplayProbe.h"

// A toolkit that the caller owns; null, with the reason for the user, without a display. All toolkits of a
// process share one thread for their windows. To be called on the main thread (see
// GuiThread::EndWithProcess).
extern "C" __attribute__((visibility("default"))) Platform::FormsToolkit* CreateFormsToolkit(
    std::string& reason) {
  if (!Desktop::CanOpenDisplay(reason)) return nullptr;
  return new Desktop::DesktopToolkit;
}
