// MapiProfiles: the MAPI profiles of the current user, as the operating system keeps them.
#pragma once

#include "platform/Value.h"

namespace TvEmailServices {

using namespace Platform;

// Puts the profiles' names into collection, an array. False where there are none to be had: no collection, no
// general services, or no such key on this machine, all without a word; a raised failure is shown.
bool GetMAPIProfiles(Value& collection);

}  // namespace TvEmailServices
