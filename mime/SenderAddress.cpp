#include "mime/SenderAddress.h"

#include <algorithm>

#include "mime/Charset.h"
#include "mime/HeaderText.h"

namespace Mime {
namespace {

using Platform::StringView;

// True for what the parser takes for an address where a whole field was encoded: "=?utf-8?Q?ann@x.org?=".
bool IsEncodedWord(std::string_view address) {
  return address.starts_with("=?") && address.ends_with("?=");
}

// The first mailbox of an address list, groups included, whose address has an "@" or, without withAt, is not
// empty.
const char* FirstAddress(InternetAddressList* list, bool withAt) {
  const int count = list ? internet_address_list_length(list) : 0;
  for (int i = 0; i < count; ++i) {
    InternetAddress* address = internet_address_list_get_address(list, i);
    const char* found =
        INTERNET_ADDRESS_IS_MAILBOX(address)
            ? internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address))
            : FirstAddress(internet_address_group_get_members(INTERNET_ADDRESS_GROUP(address)), withAt);
    if (found && *found &&
        (!withAt || (std::string_view(found).find('@') != std::string_view::npos && !IsEncodedWord(found))))
      return found;
  }
  return nullptr;
}

// The content of the last angle brackets with an "@"; empty without any.
StringView InBrackets(StringView field) {
  for (std::size_t close = field.rfind(u'>'); close != StringView::npos && close > 0;) {
    const std::size_t open = field.rfind(u'<', close);
    if (open == StringView::npos) return {};
    const StringView content = field.substr(open + 1, close - open - 1);
    if (content.find(u'@') != StringView::npos) return content;
    close = open == 0 ? StringView::npos : field.rfind(u'>', open);
  }
  return {};
}

// The only word with an "@"; empty if there is none or more than one.
StringView OnlyWordWithAt(StringView field) {
  constexpr StringView kBetween = u" \t\r\n,;<>()[]\"";
  StringView found;
  while (!field.empty()) {
    const std::size_t end = std::min(field.find_first_of(kBetween), field.size());
    const StringView word = field.substr(0, end);
    if (word.find(u'@') != StringView::npos) {
      if (!found.empty()) return {};
      found = word;
    }
    field.remove_prefix(std::min(end + 1, field.size()));
  }
  return found;
}

// Removes what surrounds an address: blanks, quotes of all kinds, characters without width and "mailto:". A
// straight quote can be part of an address, so it is removed only from both sides.
StringView Bare(StringView address) {
  constexpr StringView kMailto = u"mailto:";
  constexpr StringView kAround =
      u" \u00A0\u200B\u200C\u200D\u200E\u200F\u2060\uFEFF\u2018\u2019\u201A\u201C\u201D\u201E\u00AB\u00BB";
  for (;;) {
    const StringView before = address;
    address.remove_prefix(std::min(address.find_first_not_of(kAround), address.size()));
    address = address.substr(0, address.find_last_not_of(kAround) + 1);
    const char16_t last = address.empty() ? u'\0' : address.back();
    const bool quoted = address.size() > 1 && (last == u'\'' || last == u'"') &&
                        (address.front() == last || (address.front() == u'`' && last == u'\''));
    if (quoted) address = address.substr(1, address.size() - 2);
    if (Platform::EqualsIgnoreCase(address.substr(0, kMailto.size()), kMailto))
      address.remove_prefix(kMailto.size());
    if (address == before) return address;
  }
}

}  // namespace

std::optional<String> SenderAddress(const ParsedMessage& message, std::string_view likelyCharset) {
  String address;
  if (const char* found = FirstAddress(message.From(), true)) {
    address = GuessText(found, likelyCharset);
  } else {
    const String field = DecodeHeader(message.Field("From"), likelyCharset);
    const StringView inBrackets = InBrackets(field);
    address = inBrackets.empty() ? OnlyWordWithAt(field) : inBrackets;
    const char* nameless = address.empty() ? FirstAddress(message.From(), false) : nullptr;
    if (nameless) address = GuessText(nameless, likelyCharset);
  }
  address = Bare(address);
  if (address.empty()) return std::nullopt;
  return address;
}

}  // namespace Mime
