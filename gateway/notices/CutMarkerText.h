// CutMarkerText: the text of the line above which the reader of a notice writes.
#pragma once

#include "platform/Text.h"

namespace Gateway {

// The text by which the component cuts a reply, equal in all languages. Raises 429 without the sibling
// TvResourceServices, and 76 or 57 if the catalogue can't be read. Any thread.
Platform::String LoadCutMarkerText();

}  // namespace Gateway
