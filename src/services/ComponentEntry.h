// ComponentEntry: the description of the component, which its exports need.
//
// It is defined in mail/ComponentDescription.cpp, with the classes that can be created from outside.
#pragma once

#include "platform/Component.h"

namespace TvEmailServices {

extern const Platform::ComponentDescription ThisComponent;

}  // namespace TvEmailServices
