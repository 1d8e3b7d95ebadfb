// DurableFile: a small file that is read whole and replaced whole.
//
// Paths are UTF-8. Every refusal is a raised failure with the path and the reason: 5 for a path that can't be
// one, 76 for a file that isn't there, 57 for everything else. Any thread.
#pragma once

#include <functional>
#include <string>

namespace TvGeneralServices {

// The file's content. A folder, a device and a file of more than 1 MB are refused.
std::string ReadWhole(const std::string& path);

// Puts change(content) in the file's place: written beside it, made durable, and renamed over it, so that
// whoever reads finds the old content or the new one, also after a crash. The file keeps its owner and mode;
// of a symbolic link the target is replaced. Between reading and renaming, other writers that use this
// function wait, at most ten seconds. After a failure, one of change included, the old content stands.
void ReplaceWhole(const std::string& path, const std::function<std::string(const std::string&)>& change);

}  // namespace TvGeneralServices
