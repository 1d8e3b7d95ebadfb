// ResourceObjects: the objects that give numbered texts, made without a word to anybody.
//
// They stand below the messages, which need their texts, and below modComponents, which reports a missing
// service by such a message. No failure leaves these functions. Called on the thread that uses the object.
#pragma once

#include "platform/contracts/ResourceServices.h"

namespace TvEmailServices {

using namespace Platform;

// The file that a report of the missing service names.
inline constexpr StringView ResourceServicesFile = u"TvResourceServices.Dll";

// A new object with the component's own texts, or nothing where the service can't be had. It is given also
// when its texts couldn't be loaded.
Resource CreateResourceObject();

// The same with the texts shared with the project library.
Resource CreateComResourceObject();

}  // namespace TvEmailServices
