// DialogToolkit: the toolkit in which a dialog opens when its values weren't given as options.
#pragma once

namespace Host {

// Installs the desktop's windows where there is a display and the plug-in, and leaves the terminal's toolkit
// in force otherwise. The reason for doing without windows on a display goes to standard error.
void InstallDialogToolkit();

}  // namespace Host
