// Systemd: what the service tells a service manager, and the journal.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace Gateway {

// Tells the service manager a state, as sd_notify(3) lists them, such as "READY=1". No effect without a
// manager that listens. Any thread.
void NotifyManager(const std::string& state);

// The state that a reload begins with; READY=1 ends it.
std::string ReloadingState();

// The longest time between two messages "WATCHDOG=1"; nothing if the manager expects none. Main thread.
std::optional<std::chrono::microseconds> WatchdogTime();

// True if standard error leads to the journal, so that fields can be sent to it.
bool ErrorsGoToJournal();

// Sends an entry of "NAME=value" fields; values may hold any bytes. Returns false if the journal doesn't take
// it. Any thread.
bool SendToJournal(const std::vector<std::string>& fields);

}  // namespace Gateway
