// The one door of the plug-in: it gives a toolkit, or says why there can be none.
#include <string>

#include "desktop/DesktopToolkit.h"
#include "desktop/DisplayProbe.h"

// A toolkit that the caller has to delete; null, with the reason, without a display. All toolkits of a
// process share one thread for their windows.
extern "C" __attribute__((visibility("default"))) Platform::FormsToolkit* CreateFormsToolkit(
    std::string& reason) {
  if (!Desktop::CanOpenDisplay(reason)) return nullptr;
  return new Desktop::DesktopToolkit;
}
