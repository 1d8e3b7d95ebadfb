// MapiProfiles: the MAPI profiles of the current user, in the registry.
#pragma once

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// Sets the elements of collection, an array, to the profiles' names. False without a message if collection is
// no array, the general services are missing, or there is no such key; a raised failure is shown. Raises
// nothing.
bool GetMAPIProfiles(Value& collection);

}  // namespace TvEmailServices
