// NumberReader: conversion of a text to a number, for the whole system.
//
// A number is an optional sign, digits, an optional point with digits after it, an optional exponent (E,
// sign, digits), and blanks at both ends. Digits before the point may be grouped in threes by commas: "1,234"
// is a number, "1,5" isn't. Pure; any thread.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/Text.h"

namespace Platform {

// The value of the text; nullopt if it isn't numeric; infinity for a value beyond a double's range.
std::optional<double> ReadNumber(StringView text);

bool IsNumeric(StringView text);

// The nearest whole number; a tie goes to the even one. Raises 6 if it doesn't fit, and for NaN.
std::int16_t RoundToInt16(double value);
std::int32_t RoundToInt32(double value);

// The whole number nearest to the number in the text; a tie goes to the even one. All decimal digits count,
// also those that a double can't hold. Raises 13 if the text isn't numeric, 6 if its value doesn't fit.
std::int16_t ReadInt16(StringView text);
std::int32_t ReadInt32(StringView text);

}  // namespace Platform
