#include "gateway/sources/ImapFolderName.h"

#include <cstdint>

#include "platform/Text.h"

namespace Gateway {
namespace {

constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+,";

// The characters in base 64 without padding, from "&" to "-".
std::string Shifted(Platform::StringView text) {
  std::string shifted = "&";
  std::uint32_t bits = 0;
  int count = 0;
  for (const char16_t unit : text) {
    bits = bits << 16 | unit;
    for (count += 16; count >= 6; count -= 6) shifted += kDigits[bits >> (count - 6) & 63];
  }
  if (count > 0) shifted += kDigits[bits << (6 - count) & 63];
  return shifted + "-";
}

}  // namespace

std::string ImapFolderName(const std::string& name) {
  const Platform::String text = Platform::FromUtf8(name);
  std::string encoded;
  for (std::size_t at = 0; at < text.size();) {
    if (text[at] >= 0x20 && text[at] < 0x7F) {
      encoded += static_cast<char>(text[at]);
      if (text[at++] == '&') encoded += '-';
      continue;
    }
    const std::size_t begin = at;
    while (at < text.size() && (text[at] < 0x20 || text[at] >= 0x7F)) ++at;
    encoded += Shifted(Platform::StringView(text).substr(begin, at - begin));
  }
  return encoded;
}

}  // namespace Gateway
