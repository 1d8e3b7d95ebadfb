// Pager: shows long output on a terminal page by page.
#pragma once

#include <functional>
#include <string_view>

#include "host/terminal/Terminal.h"

namespace Host {

// Takes the next piece of the output, which must be safe on a terminal.
using PageWriter = std::function<void(std::string_view utf8)>;

// Calls produce, and shows what it writes while it runs: on a terminal with the pager in PAGER, or less or
// more; otherwise, or if there is no pager, on standard output, for which produce may be called again. When
// the user quits the pager, the writer ends produce by an exception, which ends here.
void ShowPaged(const Terminal& terminal, const std::function<void(const PageWriter&)>& produce);

}  // namespace Host
