// HelpPages: where the pages on the two dialogs lie, for a toolkit that has no viewer of its own.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/Text.h"

namespace Host {

using Platform::String;
using Platform::StringView;

// The page of a numbered context of a help file ("MailPump.hlp >(window)"), or of a topic by its path.
// Nothing where no folder holds it.
std::optional<String> FindHelpPage(const std::string& helpFile, std::uint32_t context);
std::optional<String> FindHelpPage(StringView topic);

}  // namespace Host
