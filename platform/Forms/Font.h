// Font: how a form or a control wants its text drawn.
#pragma once

#include <cstdint>

#include "platform/Text.h"

namespace Platform {

struct Font {
  String Name;               // empty: the toolkit's own
  double Size = 8.25;        // points
  std::int32_t Charset = 0;  // the platform's number of a character set; 0 is Western, 128 Shift-JIS
  friend bool operator==(const Font&, const Font&) = default;
};

}  // namespace Platform
