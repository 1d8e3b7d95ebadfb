// Font: the font of a form or a control.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Platform {

struct Font {
  String Name;               // empty: the toolkit's default
  double Size = 8.25;        // points
  std::int32_t Charset = 0;  // the number of a character set: 0 Western, 128 Shift-JIS
  friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace Platform
