// NoticeLock: that one object at a time sends a project's notices.
#pragma once

#include <string>

#include "runtime/DurableFile.h"

namespace Talvane40 {

// Takes the lock of a project's database: an exclusive lock (flock) on the file DATABASE-notices, which is
// created with the database's owner and mode, and stays. It isn't on the database itself, since SQLite loses
// its locks on a file when the process closes another descriptor of it. Nothing if another object, in any
// process, holds the lock. It lasts as long as the descriptor, which programs that this process starts don't
// inherit. Raises 57 with the reason if the file can't be opened or locked.
Runtime::Descriptor TakeNoticeLock(const std::string& database);

}  // namespace Talvane40
