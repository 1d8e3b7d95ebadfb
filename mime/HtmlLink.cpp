#include "mime/HtmlLink.h"

#include <algorithm>

#include "mime/HtmlElements.h"
#include "mime/HtmlEntities.h"

namespace Mime {
namespace {

// In characters. Web servers refuse longer addresses; links of this length contain data.
constexpr std::size_t kLongestAddress = 8192;

constexpr StringView kMailTo = u"mailto:";
constexpr StringView kSchemes[] = {u"http://", u"https://", u"ftp://", kMailTo, u"tel:"};

bool BeginsWith(StringView text, StringView lowerCase) {
  return EqualsIgnoreAsciiCase(text.substr(0, lowerCase.size()), lowerCase);
}

StringView WithoutScheme(StringView address) {
  for (const StringView scheme : kSchemes) {
    if (BeginsWith(address, scheme)) return address.substr(scheme.size());
  }
  return address;
}

// The part that is compared.
StringView Core(StringView address) {
  const std::size_t first = address.find_first_not_of(u" \n");
  if (first == StringView::npos) return {};
  address = address.substr(first, address.find_last_not_of(u" \n") - first + 1);
  address = WithoutScheme(address);
  if (address.ends_with(u'/')) address.remove_suffix(1);
  return address;
}

// The blanks of a web address are escaped; in a mail address or a telephone number they have no meaning.
String WithoutBlanks(StringView address) {
  const bool ofWeb = !BeginsWith(address, kMailTo) && !BeginsWith(address, u"tel:");
  String escaped;
  for (const char16_t c : address) {
    if (c != u' ') {
      escaped += c;
    } else if (ofWeb) {
      escaped += u"%20";
    }
  }
  return escaped;
}

}  // namespace

String LinkAddress(StringView href) {
  if (href.size() > kLongestAddress) return {};
  String address = DecodeHtmlAttribute(href);
  // Browsers remove control characters, too. A line end would also break the line in the text.
  std::erase_if(address, [](char16_t c) { return c < 0x20 || c == 0x7F || c == u'<' || c == u'>'; });
  address = WithoutBlanks(Platform::Trim(address));
  if (address.empty() || address.front() == u'#') return {};
  if (BeginsWith(address, kMailTo)) {
    address.erase(0, kMailTo.size());
    address.resize(std::min(address.find(u'?'), address.size()));
    return address;
  }
  const std::size_t colon = address.find_first_of(u":/?#");
  const bool hasScheme = colon != String::npos && address[colon] == u':';
  return hasScheme && WithoutScheme(address).size() == address.size() ? String() : address;
}

bool ShowsAddress(StringView text, StringView address) {
  const StringView shown = Core(text);
  const StringView wanted = Core(address);
  return std::equal(shown.begin(), shown.end(), wanted.begin(), wanted.end(),
                    [](char16_t a, char16_t b) { return LowerAscii(a) == LowerAscii(b); });
}

}  // namespace Mime
