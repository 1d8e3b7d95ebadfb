#include "platform/Value.h"

#include <charconv>
#include <string>
#include <utility>

#include "platform/CheckedArithmetic.h"
#include "platform/Failure.h"
#include "platform/NumberReader.h"
#include "platform/Object.h"

namespace Platform {
namespace {

template <class... F>
struct Overloaded : F... {
  using F::operator()...;
};
template <class... F>
Overloaded(F...) -> Overloaded<F...>;

[[noreturn]] void Mismatch() {
  Raise(FailureNumber::TypeMismatch);
}

template <class Number>
String InDecimal(Number number) {
  char digits[40];
  const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
  return String(digits, end);
}

}  // namespace

Value::~Value() = default;

double Value::ToDouble() const {
  return std::visit(Overloaded{[](std::monostate) { return 0.0; },
                               [](Boolean value) { return static_cast<double>(value.Word); },
                               [](std::int16_t value) { return static_cast<double>(value); },
                               [](std::int32_t value) { return static_cast<double>(value); },
                               [](double value) { return value; },
                               [](const String& text) {
                                 const auto number = ReadNumber(text);
                                 if (!number)
                                   Raise(FailureNumber::TypeMismatch, StringView(text).substr(0, 80));
                                 return *number;
                               },
                               [](const auto&) -> double { Mismatch(); }},
                    content_);
}

bool Value::ToBool() const {
  if (IsString()) {
    if (EqualsIgnoreCase(std::get<String>(content_), u"True")) return true;
    if (EqualsIgnoreCase(std::get<String>(content_), u"False")) return false;
  }
  return ToDouble() != 0;
}

std::int16_t Value::ToInt16() const {
  return IsString() ? ReadInt16(std::get<String>(content_)) : RoundToInt16(ToDouble());
}
std::int32_t Value::ToInt32() const {
  return IsString() ? ReadInt32(std::get<String>(content_)) : RoundToInt32(ToDouble());
}

String Value::ToString() const {
  return std::visit(
      Overloaded{[](std::monostate) { return String(); },
                 [](Boolean value) { return String(value ? u"True" : u"False"); },
                 [](std::int16_t value) { return InDecimal(value); },
                 [](std::int32_t value) { return InDecimal(value); },
                 [](double value) { return InDecimal(value); }, [](const String& text) { return text; },
                 [](const auto&) -> String { Mismatch(); }},
      content_);
}

ObjectRef Value::ToObject() const {
  if (IsEmpty()) return nullptr;
  if (const auto* object = std::get_if<ObjectRef>(&content_)) return *object;
  Mismatch();
}

const Array& Value::ToArray() const {
  if (const auto* array = std::get_if<Array>(&content_)) return *array;
  Mismatch();
}

Array& Value::ToArray() {
  return const_cast<Array&>(std::as_const(*this).ToArray());
}

Bytes Value::ToBytes() const {
  if (const auto* bytes = std::get_if<Bytes>(&content_)) return *bytes;
  Bytes bytes;
  if (const auto* text = std::get_if<String>(&content_)) {
    for (const char16_t c : *text) {
      bytes.push_back(static_cast<std::uint8_t>(c & 0xFF));
      bytes.push_back(static_cast<std::uint8_t>(c >> 8));
    }
  } else {
    for (const Value& element : ToArray()) bytes.push_back(Narrow<std::uint8_t>(element.ToInt32()));
  }
  return bytes;
}

}  // namespace Platform
