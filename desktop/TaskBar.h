// TaskBar: what the desktop's task bar lists.
#pragma once

class QWindow;

namespace Desktop {

// A window that stands in no task bar, as dialogs of another program's window don't. To be said each time
// before the window is shown. On displays that know no such wish it does nothing.
void KeepFromTaskBar(QWindow& window);

}  // namespace Desktop
