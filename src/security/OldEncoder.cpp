// EncryptOld and DecryptOld, the older encoder. Neither raises a failure.
#include "src/security/CodeScheme.h"
#include "src/security/ComponentSecurity.h"
#include "src/security/RandomDraws.h"

namespace TvEmailServices {
namespace {

constexpr CodeScheme kOldScheme{.Modulus = 254, .Offset = 1, .Lowest = 0};
constexpr std::int32_t kStartScale = 96;
constexpr std::int32_t kStartOffset = 1;
constexpr char16_t kLeadingFiller = u'P';
constexpr char16_t kTrailingFiller = u'S';

// A vertical bar isn't allowed in an encoded string, and is replaced.
constexpr char16_t kVerticalBar = 124;
constexpr char16_t kForVerticalBar = 255;

void AppendFiller(String& output, std::int32_t count, char16_t filler) {
  if (count > 0) output.append(static_cast<std::size_t>(count), filler);
}

}  // namespace

// Neither characters nor the length are checked: codes 254 and 255 and texts of more than 252 characters
// can't be decoded.
String ComponentSecurity::EncryptOld(const String& text) {
  try {
    SeedFromHourMonthAndSecond();
    const std::int32_t start = DrawWholeNumber(kStartScale, kStartOffset);
    const String table = GetOldKeyTable();
    String output = kOldScheme.Begin(table, start, text.size());
    AppendFiller(output, LeadingFillers(start), kLeadingFiller);
    kOldScheme.AppendBody(output, table, start, text);
    AppendFiller(output, TrailingFillers(start, text.size()), kTrailingFiller);
    Substitute(output, kVerticalBar, kForVerticalBar);
    return output;
  } catch (...) {
    return {};
  }
}

String ComponentSecurity::DecryptOld(String& encoded) {
  try {
    const String table = GetOldKeyTable();
    Substitute(encoded, kForVerticalBar, kVerticalBar);
    return kOldScheme.Read(encoded, table);
  } catch (...) {
    return {};
  }
}

}  // namespace TvEmailServices
