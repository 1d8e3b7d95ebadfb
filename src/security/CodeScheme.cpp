#include "src/security/CodeScheme.h"

#include <utility>

#include "platform/CheckedArithmetic.h"

namespace TvEmailServices {
namespace {

constexpr std::int32_t kFillerDivisor = 8;
constexpr std::int32_t kTargetLength = 30;
constexpr char16_t kHighestSingleByteCode = 255;

char16_t CharacterAt(StringView text, std::int32_t position) {
  if (position < 1 || std::cmp_greater(position, text.size())) Raise(FailureNumber::InvalidArgument);
  return text[static_cast<std::size_t>(position) - 1];
}

// The code by which the character at a position of the encoded string is shifted.
std::int16_t KeyCode(StringView table, std::int32_t position, std::int32_t start) {
  const std::int32_t index = Multiply(Add(position, start), start);
  return CodeAt(table, index % Narrow<std::int32_t>(table.size()) + 1);
}

}  // namespace

std::int16_t CodeAt(StringView text, std::int32_t position) {
  const char16_t character = CharacterAt(text, position);
  if (character > kHighestSingleByteCode) Raise(FailureNumber::InvalidArgument);
  return static_cast<std::int16_t>(character);
}

void Substitute(String& text, char16_t code, char16_t by) {
  for (auto found = text.find(code); found != String::npos; found = text.find(code, found)) {
    const auto position = Narrow<std::int16_t>(found + 1);
    text[static_cast<std::size_t>(position) - 1] = by;
  }
}

std::int32_t LeadingFillers(std::int32_t start) {
  return start % kFillerDivisor;
}

std::int32_t TrailingFillers(std::int32_t start, std::size_t length) {
  return Subtract(kTargetLength - 2 - LeadingFillers(start), Narrow<std::int32_t>(length));
}

String CodeScheme::Begin(StringView table, std::int32_t start, std::size_t length) const {
  String output(1, CharacterAt(table, start));
  output += Shift(CodeAt(table, start + 1), Narrow<std::int32_t>(length));
  return output;
}

void CodeScheme::AppendBody(String& output, StringView table, std::int32_t start, StringView text) const {
  const auto before = Narrow<std::int16_t>(output.size());
  for (std::int16_t i = 1; std::cmp_less_equal(i, text.size()); i = Add(i, 1)) {
    output += Shift(CodeAt(text, i), KeyCode(table, i + before, start));
  }
}

String CodeScheme::Read(StringView encoded, StringView table) const {
  const auto start = Narrow<std::int32_t>(table.find(CharacterAt(encoded, 1)) + 1);  // 0 if it isn't there
  const std::int16_t lengthKey = CodeAt(table, start + 1);
  std::int16_t length = Unshift(CodeAt(encoded, 2), lengthKey);
  if (length < -1) length = Add(length, Modulus);

  const auto first = Narrow<std::int16_t>(LeadingFillers(start) + 3);
  const std::int16_t end = Add(first, length);
  String text;
  for (std::int16_t j = first; j < end; j = Add(j, 1)) {
    std::int16_t code = Unshift(CodeAt(encoded, j), KeyCode(table, j, start));
    while (code < Lowest) code = Add(code, Modulus);
    text += static_cast<char16_t>(code);
  }
  return text;
}

char16_t CodeScheme::Shift(std::int16_t code, std::int32_t by) const {
  return static_cast<char16_t>(Add(std::int32_t{code}, by) % Modulus + Offset);
}

// The remainder has the sign of the difference, so that the result may be below the lowest code.
std::int16_t CodeScheme::Unshift(std::int16_t code, std::int16_t by) const {
  return Narrow<std::int16_t>((code - by) % Modulus - Offset);
}

}  // namespace TvEmailServices
