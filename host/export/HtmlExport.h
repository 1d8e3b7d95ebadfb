// HtmlExport: writes discussions as static HTML pages: index.html, and discussion-N.html for each.
#pragma once

#include "platform/contracts/ProjectAdministration.h"

namespace Host {

using namespace Platform;

// True for the name of a file that WriteHtml writes.
bool IsHtmlExportFile(const std::string& name);

// Writes the pages into an empty folder, and returns the number of replies. The pages need no script and no
// other file; their content security policy (W3C CSP Level 3) allows nothing but their own style. Texts of
// users are escaped, and control characters in them become U+FFFD. Fixed words are in the user's language.
// Raises 57 and more as StagedFile does.
std::size_t WriteHtml(const std::string& folder, const ProjectAdministration& projects, const String& path,
                      const ProjectDescription& project);

}  // namespace Host
