// HelpPages: where the pages on the dialogs lie, for every toolkit. A page in another language than English
// lies in a sub folder that carries the language's name, such as "de".
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace Runtime {

using Platform::StringView;

// The folders in which pages are searched, in this order, installed or not. Absolute, in UTF-8.
std::vector<std::string> HelpFolders();

// The file of the page on a numbered context of a help file ("x/MailPump.hlp >(window)"), or on a topic by
// its path ("x/r_topic.html"), whose folders don't count. In the user's language, or in English where that
// has no such page; nothing where no folder holds it. Any thread.
std::optional<std::string> FindHelpPage(const std::string& helpFile, std::uint32_t context);
std::optional<std::string> FindHelpPage(StringView topic);

}  // namespace Runtime
