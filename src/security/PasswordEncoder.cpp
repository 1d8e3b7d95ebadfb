// Encrypt and Decrypt, the encoder of mailbox records.
#include <utility>

#include "platform/CheckedArithmetic.h"
#include "src/security/CodeScheme.h"
#include "src/security/ComponentSecurity.h"
#include "src/security/RandomDraws.h"

namespace TvEmailServices {
namespace {

constexpr CodeScheme kScheme{.Modulus = 111, .Offset = 14, .Lowest = 14};
constexpr char16_t kLowestCode = 14;
constexpr char16_t kHighestCode = 124;
constexpr std::int32_t kStartScale = 80;
constexpr std::int32_t kStartOffset = 1;

// The longest password whose length can be decoded for every start position. The length is encoded modulo
// 111.
constexpr std::size_t kLongestPassword = 97;

// Characters that aren't allowed in a stored string, and those that replace them.
constexpr char16_t kVerticalBar = 124;
constexpr char16_t kForVerticalBar = 127;
constexpr char16_t kSemicolon = 59;
constexpr char16_t kForSemicolon = 126;

bool HasIllegalCharacter(const String& password) {
  for (std::int16_t i = 1; std::cmp_less_equal(i, password.size()); i = Add(i, 1)) {
    const char16_t character = password[static_cast<std::size_t>(i) - 1];
    if (character < kLowestCode || character > kHighestCode) return true;
  }
  return false;
}

void AppendRandomFiller(String& output, std::int32_t count) {
  for (; count > 0; --count) {
    output += static_cast<char16_t>(DrawWholeNumber(kScheme.Modulus, kScheme.Offset));
  }
}

}  // namespace

String ComponentSecurity::Encrypt(const String& password) {
  String failureText;
  try {
    if (HasIllegalCharacter(password)) {
      failureText =
          u"Illegal character found.\r\nPasswords should contain only standard printable ASCII characters, "
          u"excluding chars \"~\" and \"}\".";
      Raise(FailureNumber::InvalidArgument);
    }
    if (password.size() > kLongestPassword) Raise(FailureNumber::Overflow);

    SeedFromHourMonthAndSecond();
    const std::int32_t start = DrawWholeNumber(kStartScale, kStartOffset);
    const String table = GetKeyTable();
    String output = kScheme.Begin(table, start, password.size());
    AppendRandomFiller(output, LeadingFillers(start));
    kScheme.AppendBody(output, table, start, password);
    SeedFromPresentMoment();
    AppendRandomFiller(output, TrailingFillers(start, password.size()));
    Substitute(output, kVerticalBar, kForVerticalBar);
    Substitute(output, kSemicolon, kForSemicolon);
    return output;
  } catch (...) {
    throw Failure(SecurityFailure::kNotEncrypted, u"TvEmailServices.ComponentSecurity.Encrypt: -2147221504",
                  failureText.empty() ? u"Error encrypting data." : failureText);
  }
}

String ComponentSecurity::Decrypt(String& encoded) {
  try {
    if (encoded.empty()) return {};
    const String table = GetKeyTable();
    Substitute(encoded, kForVerticalBar, kVerticalBar);
    Substitute(encoded, kForSemicolon, kSemicolon);
    return kScheme.Read(encoded, table);
  } catch (...) {
    throw Failure(SecurityFailure::kCipher, u"TvEmailServices.ComponentSecurity.Decrypt: -2147221504",
                  u"Error deciphering encrypted data.");
  }
}

}  // namespace TvEmailServices
