#include "gateway/delivery/MailboxFileName.h"

#include "gateway/delivery/Digest.h"

namespace Gateway {
namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

}  // namespace

std::string MailboxFileName(Platform::StringView mailbox) {
  constexpr std::size_t kLongestName = 200;  // file systems allow 255 bytes
  const std::string name = Platform::ToUtf8(Platform::FoldCase(mailbox));
  std::string encoded;
  for (const char c : name) {
    const bool plain =
        (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
    const auto byte = static_cast<unsigned char>(c);
    encoded += plain ? std::string{c} : std::string{'%', kDigits[byte >> 4], kDigits[byte & 15]};
  }
  // The sign between both is in no encoded name.
  if (encoded.size() > kLongestName)
    encoded = encoded.substr(0, kLongestName / 2) + "~" + Sha256({name}).substr(0, 32);
  return encoded;
}

Platform::String MailboxOfFileName(std::string_view name) {
  std::string decoded;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const std::size_t high = i + 2 < name.size() && name[i] == '%' ? kDigits.find(name[i + 1]) : kDigits.npos;
    const std::size_t low = high == kDigits.npos ? high : kDigits.find(name[i + 2]);
    if (low == kDigits.npos) {
      decoded += name[i];
    } else {
      decoded += static_cast<char>(high << 4 | low);
      i += 2;
    }
  }
  return Platform::FromUtf8(decoded);
}

}  // namespace Gateway
