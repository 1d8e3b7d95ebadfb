// HelpServices: the road from a dialog to the help viewer and the help component.
#pragma once

#include <cstdint>

#include "platform/Text.h"
#include "platform/contracts/ResourceServices.h"

namespace TvEmailServices {

using namespace Platform;

// Opens a context number of the component's help file for the window. Whether it opened isn't looked at; any
// other failure passes.
void ShowHelpContext(std::int32_t context, std::intptr_t window);

// Shows a topic through the thread's help object. The window isn't used. A failure passes.
void ShowHelpTopic(const String& topic, std::intptr_t window);

// The folder of the help file, with a separator at its end.
String GetHelpFolder();

// The same for a given folder of the component.
String HelpFolderFor(const String& componentFolder);

// The path with a separator of its own kind at its end, blanks at either end gone. Changes and gives path.
String& EnsureTrailingSeparator(String& path);

// The thread's help object, created at its first use and kept. A failed creation passes.
Help GetHelpObject();

}  // namespace TvEmailServices
