// ResourceObjects: creates the objects that give numbered texts. Shows no message and raises no failure.
//
// Message boxes (modMain) need these texts; modComponents reports a missing service by a message box. Called
// on the thread that uses the object.
#pragma once

#include "platform/contracts/ResourceServices.h"

namespace TvEmailServices {

using namespace Platform;

// The file that modComponents reports as missing.
inline constexpr StringView ResourceServicesFile = u"TvResourceServices.Dll";

// A new object with the component's own texts; empty if it can't be created. If the texts can't be loaded the
// object is given without them.
Resource CreateResourceObject();

// The same with the texts shared with the project library.
Resource CreateComResourceObject();

}  // namespace TvEmailServices
