#include "runtime/MailAddress.h"

#include <arpa/inet.h>
#include <unicode/uchar.h>
#include <unicode/uidna.h>
#include <unicode/unorm2.h>
#include <unicode/utf16.h>

#include <algorithm>
#include <array>

#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

namespace TextNumber = Platform::TextNumber;

// RFC 5321 section 4.5.3.1, in octets. Its limit for a path includes two brackets.
constexpr std::size_t kLongestLocalPart = 64;
constexpr std::size_t kLongestDomain = 255;
constexpr std::size_t kLongestAddress = 254;

constexpr StringView kAtomSigns = u"!#$%&'*+-/=?^_`{|}~";

struct Parts {
  StringView Local;
  StringView Domain;
};

// The last @ separates both parts: a quoted local part may hold others.
Parts Split(StringView address) {
  const std::size_t at = address.rfind(u'@');
  return at == StringView::npos ? Parts{address, {}} : Parts{address.substr(0, at), address.substr(at + 1)};
}

bool IsQuoted(StringView local) {
  return local.size() >= 2 && local.front() == u'"' && local.back() == u'"';
}

bool IsAtomCharacter(char16_t c) {
  return c >= 0x80 || (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') ||
         kAtomSigns.find(c) != StringView::npos;
}

bool IsDotString(StringView local) {
  return !local.empty() && local.front() != u'.' && local.back() != u'.' &&
         local.find(u"..") == StringView::npos &&
         std::ranges::all_of(local, [](char16_t c) { return c == u'.' || IsAtomCharacter(c); });
}

// The text within the quotes, without its backslashes. It ends at a quote without one; whole is then false.
String Unquoted(StringView local, bool& whole) {
  String text;
  const StringView inner = local.substr(1, local.size() - 2);
  whole = true;
  for (std::size_t i = 0; i < inner.size(); ++i) {
    if (inner[i] == u'\\' && i + 1 < inner.size()) {
      ++i;
    } else if (inner[i] == u'"' || inner[i] == u'\\') {
      whole = false;
    }
    text += inner[i];
  }
  return text;
}

// Control characters, the two line separators, lone surrogates, and characters that change the writing
// direction: they can make an address look like another one.
bool HasUnseenCharacter(StringView text) {
  constexpr StringView kTurning = u"\u061C\u200E\u200F\u202A\u202B\u202C\u202D\u202E\u2066\u2067\u2068\u2069";
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool pair = IsSurrogatePair(text, i);
    const auto category = pair ? U_UNASSIGNED : static_cast<UCharCategory>(u_charType(text[i]));
    if (category == U_CONTROL_CHAR || category == U_LINE_SEPARATOR || category == U_PARAGRAPH_SEPARATOR ||
        category == U_SURROGATE || kTurning.find(text[i]) != StringView::npos)
      return true;
    if (pair) ++i;
  }
  return false;
}

const UIDNA* Idna() {
  static const UIDNA* const idna = [] {
    UErrorCode status = U_ZERO_ERROR;
    return uidna_openUTS46(UIDNA_USE_STD3_RULES | UIDNA_CHECK_BIDI | UIDNA_CHECK_CONTEXTJ |
                               UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE,
                           &status);
  }();
  return idna;
}

using Convert = decltype(&uidna_nameToASCII);

// The domain in the other form; empty where it is no valid domain.
String ConvertDomain(StringView domain, Convert convert) {
  if (domain.empty() || domain.size() > kLongestDomain || !Idna()) return {};
  std::array<char16_t, 4 * kLongestDomain> buffer;
  UIDNAInfo info = UIDNA_INFO_INITIALIZER;
  UErrorCode status = U_ZERO_ERROR;
  const std::int32_t length =
      convert(Idna(), domain.data(), static_cast<std::int32_t>(domain.size()), buffer.data(),
              static_cast<std::int32_t>(buffer.size()), &info, &status);
  // Hyphens in the third and fourth place are allowed: hosts have such names.
  const auto faults = info.errors & ~static_cast<std::uint32_t>(UIDNA_ERROR_HYPHEN_3_4);
  if (U_FAILURE(status) || faults != 0) return {};
  return {buffer.data(), static_cast<std::size_t>(length)};
}

// An address in brackets: IPv4, "IPv6:" with one, or another tag with a content.
bool IsAddressLiteral(StringView domain) {
  constexpr StringView kIpv6 = u"IPv6:";
  const StringView inner = domain.substr(1, domain.size() - 2);
  unsigned char network[sizeof(in6_addr)];
  if (inner.empty() || !std::ranges::all_of(inner, [](char16_t c) {
        return c > u' ' && c < 0x7F && c != u'[' && c != u']' && c != u'\\';
      }))
    return false;
  if (EqualsIgnoreCase(inner.substr(0, kIpv6.size()), kIpv6))
    return inet_pton(AF_INET6, ToUtf8(inner.substr(kIpv6.size())).c_str(), network) == 1;
  if (inet_pton(AF_INET, ToUtf8(inner).c_str(), network) == 1) return true;
  const std::size_t colon = inner.find(u':');
  const StringView tag = inner.substr(0, colon);
  return colon != StringView::npos && colon > 0 && colon + 1 < inner.size() && tag.back() != u'-' &&
         std::ranges::all_of(tag, [](char16_t c) {
           return c == u'-' || (IsAtomCharacter(c) && kAtomSigns.find(c) == StringView::npos);
         });
}

bool IsLiteral(StringView domain) {
  return domain.size() >= 2 && domain.front() == u'[' && domain.back() == u']';
}

String LocalPartFault(StringView local) {
  if (local.empty()) return TextOf(TextNumber::kLocalPartMissing);
  if (ToUtf8(local).size() > kLongestLocalPart) return TextOf(TextNumber::kLocalPartTooLong);
  if (IsQuoted(local)) {
    bool whole = false;
    Unquoted(local, whole);
    return whole ? String() : TextOf(TextNumber::kLocalPartUnescaped);
  }
  return IsDotString(local) ? String() : TextOf(TextNumber::kLocalPartUnquoted);
}

String DomainFault(StringView domain) {
  if (domain.empty()) return TextOf(TextNumber::kDomainMissing);
  if (domain.front() == u'[')
    return IsLiteral(domain) && IsAddressLiteral(domain) ? String() : TextOf(TextNumber::kDomainLiteral);
  const String ascii = ConvertDomain(domain, uidna_nameToASCII);
  return !ascii.empty() && ascii.back() != u'.' ? String() : TextOf(TextNumber::kNoDomain);
}

bool IsAscii(StringView text) {
  return std::ranges::all_of(text, [](char16_t c) { return c < 0x80; });
}

String Composed(String text) {
  if (IsAscii(text)) return text;
  UErrorCode status = U_ZERO_ERROR;
  const UNormalizer2* nfc = unorm2_getNFCInstance(&status);
  String composed(text.size() * 3 + 1, u'\0');
  const std::int32_t length =
      unorm2_normalize(nfc, text.data(), static_cast<std::int32_t>(text.size()), composed.data(),
                       static_cast<std::int32_t>(composed.size()), &status);
  if (U_FAILURE(status)) return text;
  composed.resize(static_cast<std::size_t>(length));
  return composed;
}

}  // namespace

String AddressFault(StringView address) {
  if (HasUnseenCharacter(address)) return TextOf(TextNumber::kAddressWithControl);
  if (address.find(u'@') == StringView::npos) return TextOf(TextNumber::kAddressWithoutAt);
  const Parts parts = Split(address);
  if (String fault = LocalPartFault(parts.Local); !fault.empty()) return fault;
  if (String fault = DomainFault(parts.Domain); !fault.empty()) return fault;
  return ToUtf8(address).size() > kLongestAddress ? TextOf(TextNumber::kAddressTooLong) : String();
}

String CanonicalDomain(StringView domain) {
  if (domain.ends_with(u'.')) domain.remove_suffix(1);
  if (IsLiteral(domain) || (IsAscii(domain) && FoldCase(domain).find(u"xn--") == String::npos))
    return String(domain);
  String unicode = ConvertDomain(domain, uidna_nameToUnicode);
  return unicode.empty() ? String(domain) : unicode;
}

String AsciiDomain(StringView domain) {
  return ConvertDomain(domain, uidna_nameToASCII);
}

String CanonicalAddress(StringView address) {
  constexpr std::size_t kLongestToCompare = 4 * kLongestAddress;
  const Parts parts = Split(address);
  if (parts.Domain.empty() || address.size() > kLongestToCompare) return String(address);
  String local(parts.Local);
  if (IsQuoted(parts.Local)) {
    bool whole = false;
    String unquoted = Unquoted(parts.Local, whole);
    if (whole && IsDotString(unquoted)) local = std::move(unquoted);
  }
  return Composed(local) + u'@' + CanonicalDomain(parts.Domain);
}

}  // namespace Runtime
