// TaskBar: keeps windows out of the desktop's task bar.
#pragma once

class QWindow;

namespace Desktop {

// Asks the window manager to leave the window out of the task bar and the pager. To be called on the windows'
// thread, each time before the window is shown. Does nothing on a display that isn't X11.
void KeepFromTaskBar(QWindow& window);

}  // namespace Desktop
