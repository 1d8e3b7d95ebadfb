#include "platform/NumberReader.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>

#include "platform/Failure.h"

namespace Platform {
namespace {

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

// Moves the digits before the point from text into plain, without their commas. False if a comma separates no
// group of three.
bool TakeWholeDigits(StringView& text, std::string& plain) {
  std::size_t group = 0;
  bool grouped = false;
  while (!text.empty() && (IsDigit(text[0]) || text[0] == u',')) {
    if (text[0] == u',') {
      if (group == 0 || group > 3 || (grouped && group != 3)) return false;
      grouped = true;
      group = 0;
    } else {
      plain += static_cast<char>(text[0]);
      ++group;
    }
    text.remove_prefix(1);
  }
  return !grouped || group == 3;
}

std::size_t TakeDigits(StringView& text, std::string& plain) {
  std::size_t count = 0;
  for (; !text.empty() && IsDigit(text[0]); text.remove_prefix(1), ++count)
    plain += static_cast<char>(text[0]);
  return count;
}

// The power of ten of the first digit that isn't 0, clamped far beyond a double's range.
long DecimalExponent(std::string_view plain) {
  constexpr long kBeyond = 1'000'000'000;
  const std::size_t mark = std::min(plain.find('e'), plain.size());
  const std::string_view digits = plain.substr(0, mark);
  long exponent = 0;
  if (mark < plain.size()) {
    std::string_view written = plain.substr(mark + 1);
    const bool negative = written.starts_with('-');
    if (negative || written.starts_with('+')) written.remove_prefix(1);
    const auto read = std::from_chars(written.data(), written.data() + written.size(), exponent);
    if (read.ec != std::errc() || exponent > kBeyond) exponent = kBeyond;
    if (negative) exponent = -exponent;
  }
  const auto point = static_cast<long>(std::min(digits.find('.'), digits.size()));
  const auto first = static_cast<long>(digits.find_first_of("123456789"));
  return exponent + (first < point ? point - first - 1 : point - first);
}

template <class Integer>
Integer Round(double value) {
  const double whole = value - std::remainder(value, 1.0);  // remainder ties to even
  if (!(whole >= std::numeric_limits<Integer>::min() && whole <= std::numeric_limits<Integer>::max())) {
    Raise(FailureNumber::Overflow);
  }
  return static_cast<Integer>(whole);
}

// A number as written in its text.
struct Decimal {
  bool Negative = false;
  std::string Plain;  // digits, with the point and with the exponent after "e", if there are any
};

std::optional<Decimal> ParseDecimal(StringView text) {
  const String trimmed = Trim(text);
  StringView rest = trimmed;
  Decimal decimal;
  std::string& plain = decimal.Plain;
  if (!rest.empty() && (rest[0] == u'-' || rest[0] == u'+')) {
    decimal.Negative = rest[0] == u'-';
    rest.remove_prefix(1);
  }
  if (!TakeWholeDigits(rest, plain)) return {};
  std::size_t digits = plain.size();
  if (!rest.empty() && rest[0] == u'.') {
    rest.remove_prefix(1);
    if (plain.empty()) plain += '0';
    plain += '.';
    const std::size_t fraction = TakeDigits(rest, plain);
    if (fraction == 0) plain += '0';
    digits += fraction;
  }
  if (digits == 0) return {};
  if (!rest.empty() && (rest[0] == u'E' || rest[0] == u'e')) {
    rest.remove_prefix(1);
    plain += 'e';
    if (!rest.empty() && (rest[0] == u'-' || rest[0] == u'+')) {
      plain += static_cast<char>(rest[0]);
      rest.remove_prefix(1);
    }
    if (TakeDigits(rest, plain) == 0) return {};
  }
  if (!rest.empty()) return {};
  return decimal;
}

// Rounds the digits themselves: a double would take 0.5000000000000000000001 for a tie.
std::int64_t Round(const Decimal& decimal) {
  constexpr long kMostDigits = 10;  // of a 32-bit number
  const std::string_view plain = decimal.Plain;
  std::string digits(plain.substr(0, plain.find('e')));
  std::erase(digits, '.');
  digits.erase(0, digits.find_first_not_of('0'));
  if (digits.empty()) return 0;
  const long wholeDigits = DecimalExponent(plain) + 1;
  if (wholeDigits < 0) return 0;
  if (wholeDigits > kMostDigits) Raise(FailureNumber::Overflow);
  const auto whole = static_cast<std::size_t>(wholeDigits);
  if (digits.size() < whole) digits.resize(whole, '0');
  std::int64_t value = 0;
  for (std::size_t i = 0; i < whole; ++i) value = value * 10 + (digits[i] - '0');
  const int againstHalf = std::string_view(digits).substr(whole).compare("5");
  const bool tie = digits.size() > whole && digits[whole] == '5' &&
                   digits.find_first_not_of('0', whole + 1) == std::string::npos;
  if (tie ? value % 2 == 1 : againstHalf > 0) ++value;
  return decimal.Negative ? -value : value;
}

template <class Integer>
Integer ReadInteger(StringView text) {
  const auto decimal = ParseDecimal(text);
  if (!decimal) Raise(FailureNumber::TypeMismatch, text.substr(0, 80));
  const std::int64_t value = Round(*decimal);
  if (value < std::numeric_limits<Integer>::min() || value > std::numeric_limits<Integer>::max())
    Raise(FailureNumber::Overflow);
  return static_cast<Integer>(value);
}

}  // namespace

std::optional<double> ReadNumber(StringView text) {
  const auto decimal = ParseDecimal(text);
  if (!decimal) return {};
  const std::string& plain = decimal->Plain;
  double value = 0;
  const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    // from_chars gives the same error for a value that is too large and for one too near 0.
    value = DecimalExponent(plain) < 0 ? 0.0 : std::numeric_limits<double>::infinity();
  }
  return decimal->Negative ? -value : value;
}

bool IsNumeric(StringView text) {
  return ParseDecimal(text).has_value();
}

std::int16_t RoundToInt16(double value) {
  return Round<std::int16_t>(value);
}
std::int32_t RoundToInt32(double value) {
  return Round<std::int32_t>(value);
}

std::int16_t ReadInt16(StringView text) {
  return ReadInteger<std::int16_t>(text);
}
std::int32_t ReadInt32(StringView text) {
  return ReadInteger<std::int32_t>(text);
}

}  // namespace Platform
