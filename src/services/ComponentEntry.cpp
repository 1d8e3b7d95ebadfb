// The library's start procedure and its four exports, each of which hands straight over to the run time.
#include "src/services/ComponentEntry.h"

namespace {

// Loading the library runs none of its logic.
[[gnu::constructor]] void StartLibrary() {}

}  // namespace

PLATFORM_COMPONENT_EXPORTS(TvEmailServices::ThisComponent)
