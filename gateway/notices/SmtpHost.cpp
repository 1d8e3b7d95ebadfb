#include "gateway/notices/SmtpHost.h"

#include <arpa/inet.h>

#include <algorithm>
#include <charconv>
#include <string_view>

#include "runtime/MailAddress.h"

namespace Gateway {
namespace {

constexpr std::size_t kLongestName = 253;  // RFC 1035, in text
constexpr int kLargestPort = 65535;

bool IsAddress(int family, const std::string& text) {
  unsigned char bytes[sizeof(in6_addr)];
  return inet_pton(family, text.c_str(), bytes) == 1;
}

bool IsAlphanumeric(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z');
}

// Names with underscores aren't valid, but in use on private networks.
bool IsName(std::string_view name) {
  return !name.empty() && name.size() <= kLongestName && IsAlphanumeric(name.front()) &&
         name.find("..") == std::string_view::npos && std::ranges::all_of(name, [](char c) {
           return IsAlphanumeric(c) || c == '-' || c == '.' || c == '_';
         });
}

// The name in DNS; empty if it is none.
std::string NameOf(Platform::StringView text) {
  if (text.ends_with(u'.')) text.remove_suffix(1);
  std::string name = Platform::ToUtf8(Platform::FoldCase(text));
  if (!IsName(name)) name = Platform::ToUtf8(Runtime::AsciiDomain(text));
  return IsName(name) ? name : std::string();
}

// 0 for what is no port.
int PortOf(Platform::StringView text) {
  const std::string digits = Platform::ToUtf8(text);
  int port = 0;
  const char* const end = digits.data() + digits.size();
  const auto [rest, error] = std::from_chars(digits.data(), end, port);
  return error == std::errc() && rest == end && port > 0 && port <= kLargestPort ? port : 0;
}

}  // namespace

bool SmtpHost::IsThisMachine() const {
  return Name == "localhost" || Name == "::1" || (Name.starts_with("127.") && IsAddress(AF_INET, Name));
}

std::optional<SmtpHost> ParseSmtpHost(Platform::StringView untrimmed) {
  const Platform::String trimmed = Platform::Trim(untrimmed);
  Platform::StringView text = trimmed;
  SmtpHost host;
  if (const std::string whole = Platform::ToUtf8(text); IsAddress(AF_INET6, whole)) {
    host.Name = Platform::ToUtf8(Platform::FoldCase(text));
    return host;
  }
  const std::size_t colon = text.rfind(u':');
  if (colon != Platform::StringView::npos && !text.ends_with(u']')) {
    host.Port = PortOf(text.substr(colon + 1));
    if (host.Port == 0) return std::nullopt;
    text = text.substr(0, colon);
  }
  if (text.size() > 2 && text.front() == u'[' && text.back() == u']') {
    host.Name = Platform::ToUtf8(Platform::FoldCase(text.substr(1, text.size() - 2)));
    if (!IsAddress(AF_INET6, host.Name) && !IsAddress(AF_INET, host.Name)) return std::nullopt;
  } else {
    host.Name = NameOf(text);
  }
  if (host.Name.empty()) return std::nullopt;
  return host;
}

}  // namespace Gateway
