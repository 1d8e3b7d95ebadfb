// ComponentEntry: what the library's entry needs to know of the component, which is this one constant.
//
// The entry knows no class. Whoever owns the classes that can be created from outside defines the constant.
#pragma once

#include "platform/Component.h"

namespace TvEmailServices {

extern const Platform::ComponentDescription ThisComponent;

}  // namespace TvEmailServices
