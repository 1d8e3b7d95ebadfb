#include "platform/Guid.h"

#include <algorithm>

#include "platform/Failure.h"
#include "platform/Hex.h"

namespace Platform {
namespace {

constexpr StringView kPattern = u"{00000000-0000-0000-0000-000000000000}";

}  // namespace

String ToText(const Guid& id) {
  String text = HexText(id.Bytes);
  for (const std::size_t dash : {8U, 13U, 18U, 23U}) text.insert(dash, 1, u'-');
  return u"{" + text + u"}";
}

Guid ParseGuid(StringView text) {
  if (text.size() != kPattern.size()) Raise(FailureNumber::TypeMismatch, text.substr(0, 80));
  String digits;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (kPattern[i] == u'0')
      digits += text[i];
    else if (text[i] != kPattern[i])
      Raise(FailureNumber::TypeMismatch, text);
  }
  const auto bytes = ParseHex(digits);
  if (!bytes) Raise(FailureNumber::TypeMismatch, text);
  Guid id;
  std::copy(bytes->begin(), bytes->end(), id.Bytes.begin());
  return id;
}

}  // namespace Platform
