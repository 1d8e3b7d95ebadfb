// The library's start procedure and its four exports, each of which calls the run time.
#include "src/services/ComponentEntry.h"

namespace {

// Nothing is to be done when the library is loaded.
[[gnu::constructor]] void StartLibrary() {}

}  // namespace

PLATFORM_COMPONENT_EXPORTS(TvEmailServices::ThisComponent)
