// NumberReader: the one place that takes a text for a number.
//
// A number is digits with an optional sign in front, an optional fraction behind a point, an optional
// exponent (E, sign, digits), and blanks at either end. Digits in front of the point may be grouped by
// commas, in threes: "1,234" is a number, and "1,5", which half of the world reads otherwise, is none. Pure;
// any thread.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/Text.h"

namespace Platform {

// The value of the text, or nothing if it isn't numeric. A value beyond a double's range comes as infinity:
// it is numeric, and its conversion overflows.
std::optional<double> ReadNumber(StringView text);

bool IsNumeric(StringView text);

// The nearest whole number; a value exactly between two goes to the even one. Raises 6 if it doesn't fit.
std::int16_t RoundToInt16(double value);
std::int32_t RoundToInt32(double value);

// The whole number that is nearest to the number in the text, rounded on its decimal digits, so that no digit
// is lost, however many there are; a value exactly between two goes to the even one. Raises 13 if the text
// isn't numeric, 6 if its value doesn't fit.
std::int16_t ReadInt16(StringView text);
std::int32_t ReadInt32(StringView text);

}  // namespace Platform
