// HelpPages: finds the help pages of the dialogs, for every toolkit. A page in a language other than English
// is in a sub folder with the language's name, such as "de". Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace Runtime {

using Platform::StringView;

// The folders that are searched, in this order, whether they exist or not. Absolute, in UTF-8.
std::vector<std::string> HelpFolders();

// The full path of the page for a numbered context of a help file ("x/MailPump.hlp >(window)"), or for a
// topic ("x/r_topic.html"); folders in these names are ignored. The page is in the user's language if there
// is one, otherwise in English. Nothing if no folder holds it.
std::optional<std::string> FindHelpPage(const std::string& helpFile, std::uint32_t context);
std::optional<std::string> FindHelpPage(StringView topic);

}  // namespace Runtime
