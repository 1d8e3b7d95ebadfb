// GMimeReference: owns one reference to an object of GMime.
#pragma once

#include <gmime/gmime.h>

#include <memory>

namespace Mime {

struct Unreference {
  void operator()(void* object) const { g_object_unref(object); }
};

// For results that GMime's functions document as "transfer full". The destructor releases the reference.
template <class Type>
using Owned = std::unique_ptr<Type, Unreference>;

}  // namespace Mime
