// HelpServices: opens help for a dialog. Called on the dialog's thread.
#pragma once

#include <cstdint>

#include "platform/Text.h"
#include "platform/contracts/ResourceServices.h"

namespace TvEmailServices {

using namespace Platform;

// Opens the component's help file at a context number, for the window. The viewer's result is ignored; raises
// what the toolkit raises.
void ShowHelpContext(std::int32_t context, std::intptr_t window);

// Shows a topic by the thread's help object. The window isn't used. Raises as GetHelpObject and the object
// do.
void ShowHelpTopic(const String& topic, std::intptr_t window);

// The folder of the help file, with a separator at its end.
String GetHelpFolder();

// The help folder that belongs to a folder of the component.
String HelpFolderFor(const String& componentFolder);

// Trims path and appends a separator of the kind that it uses, if there is none at its end. Returns path.
String& EnsureTrailingSeparator(String& path);

// The thread's help object, created on first use and kept. Raises 429 if it can't be created.
Help GetHelpObject();

}  // namespace TvEmailServices
