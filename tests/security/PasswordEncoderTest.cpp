// Encrypt and Decrypt: the encoded string, refused passwords, and damaged strings.
#include <algorithm>

#include "tests/security/SecurityWorld.h"

namespace Tests {
namespace {

constexpr int kLastStart = 81;

const std::string kIllegal =
    "10006|TvEmailServices.ComponentSecurity.Encrypt: -2147221504|Illegal character found.\r\nPasswords "
    "should contain only standard printable ASCII characters, excluding chars \"~\" and \"}\".";
const std::string kNotEncrypted =
    "10006|TvEmailServices.ComponentSecurity.Encrypt: -2147221504|Error encrypting data.";
const std::string kNotDeciphered =
    "10005|TvEmailServices.ComponentSecurity.Decrypt: -2147221504|Error deciphering encrypted data.";

// A password of accepted characters, different for each turn.
String Password(std::size_t length, std::size_t turn) {
  String password;
  for (std::size_t i = 0; i < length; ++i) password += static_cast<char16_t>(14 + (i * 5 + turn) % 111);
  return password;
}

class PasswordEncoder : public SecurityWorld {};

// A changed table would make stored strings unreadable.
TEST_F(PasswordEncoder, HasTheKeyTablesThatStoredTextsWereWrittenWith) {
  EXPECT_EQ(Fingerprint(ComponentSecurityTestAccess::KeyTable()), 0xed896a7a87ba5d4d);
  EXPECT_EQ(Fingerprint(ComponentSecurityTestAccess::OldKeyTable()), 0x87a998073fbc398f);
}

TEST_F(PasswordEncoder, HasKeyTablesFromWhichEveryStartReadsBack) {
  const struct {
    String Table;
    std::size_t Length, LastStart;
    String Rewritten;  // codes that decoding replaces before it looks for the start
  } rows[] = {{ComponentSecurityTestAccess::KeyTable(), 111, 81, u"\u007E\u007F"},
              {ComponentSecurityTestAccess::OldKeyTable(), 127, 97, u"\u00FF"}};
  for (const auto& [table, length, lastStart, rewritten] : rows) {
    ASSERT_EQ(table.size(), length);
    for (std::size_t start = 0; start < lastStart; ++start) EXPECT_EQ(table.find(table[start]), start);
    EXPECT_EQ(StringView(table).substr(0, lastStart).find_first_of(rewritten), StringView::npos);
    EXPECT_TRUE(std::all_of(table.begin(), table.end(), [](char16_t c) { return c > 0 && c < 256; }));
  }
}

// Computed independently. The start character is a semicolon, which no stored string holds.
TEST_F(PasswordEncoder, WritesAndReadsTheStringThatEveryBuildWrites) {
  StartAt(18, kLastStart).Others = [](std::size_t i) { return i < 2 ? 0.9999 : 0.0; };
  String stored = u"\u007E@}}GuP3k[RlvC" + String(16, char16_t{14});
  EXPECT_TEXT(stored, security_.Encrypt(u"Se;cr|et 1"));
  EXPECT_TEXT(u"Se;cr|et 1", security_.Decrypt(stored));
}

TEST_F(PasswordEncoder, GivesEveryPasswordBackFromEveryStart) {
  const String table = ComponentSecurityTestAccess::KeyTable();
  for (int start = 1; start <= kLastStart; ++start) {
    for (std::size_t n = 0; n <= 97; ++n) {
      const String password = Password(n, n * 7 + static_cast<std::size_t>(start));
      ForcedDraws& draws = StartAt(start, kLastStart);
      draws.Others = [n](std::size_t i) { return static_cast<double>((i * 29 + n) % 112) / 112; };
      String encoded = security_.Encrypt(password);
      const auto p = static_cast<std::size_t>(start % 8);
      ASSERT_EQ(encoded.size(), p + n <= 28 ? 30 : 2 + p + n) << start << " " << n;
      ASSERT_EQ(encoded.find_first_of(u"|;"), String::npos) << start << " " << n;
      ASSERT_EQ(security_.Decrypt(encoded), password) << start << " " << n;
      ASSERT_EQ(encoded[0], table[static_cast<std::size_t>(start) - 1]);
    }
  }
}

TEST_F(PasswordEncoder, RoundsTheStartPositionToTheEvenNeighbour) {
  const String table = ComponentSecurityTestAccess::KeyTable();
  const std::pair<double, std::size_t> rows[] = {{0, 1},       {0.00624, 1},  {0.00625, 2}, {0.01875, 2},
                                                 {0.01876, 3}, {0.99375, 80}, {0.99376, 81}};
  for (const auto& [draw, start] : rows) {
    StartAt(1, kLastStart).First = draw;
    char16_t expected = table[start - 1];
    if (expected == 124) expected = 127;
    if (expected == 59) expected = 126;
    EXPECT_EQ(security_.Encrypt(u"x")[0], expected) << draw;
  }
}

TEST_F(PasswordEncoder, SeedsFromHourMonthAndSecondAndThenFromTheMoment) {
  const std::pair<Moment, double> rows[] = {{{2026, 3, 22, 14, 5, 9, 0}, 429},
                                            {{2026, 3, 22, 14, 55, 9, 0}, 429},
                                            {{2026, 12, 31, 23, 59, 59, 0}, 27659},
                                            {{2026, 7, 1, 0, 30, 8, 0}, 8},
                                            {{2026, 1, 1, 10, 0, 0, 0}, 100}};
  std::set<double> secondSeeds;
  for (const auto& [now, seed] : rows) {
    world_.Services.Present = now;
    const ForcedDraws& draws = StartAt(13, kLastStart);
    security_.Encrypt(u"0123456789");
    ASSERT_EQ(draws.Seeds.size(), 2U);
    EXPECT_EQ(draws.Seeds[0], seed);
    secondSeeds.insert(draws.Seeds[1]);
    EXPECT_EQ(draws.DrawsAfterSeed, (std::vector<std::size_t>{1 + 5, 13}));
  }
  EXPECT_EQ(secondSeeds.size(), std::size(rows));
}

TEST_F(PasswordEncoder, RefusesCharactersOutsideItsCodesAndLengthsThatWouldNotReadBack) {
  std::vector<std::pair<String, std::string>> rows = {{u"\u000E|;", "none"},
                                                      {Password(97, 0), "none"},
                                                      {Password(32766, 0) + u'~', kIllegal},
                                                      {u'}' + Password(40000, 0), kIllegal}};
  for (const std::size_t n : std::initializer_list<std::size_t>{98, 109, 110, 111, 32767, 70000})
    rows.push_back({Password(n, 0), kNotEncrypted});
  for (const int code : {0, 10, 13, 125, 126, 127, 255, 256, 0x20 + 0x100, 0xD800, 0xFFFF})
    rows.push_back({u"ab" + String(1, static_cast<char16_t>(code)), kIllegal});
  for (const auto& row : rows) {
    const ForcedDraws& draws = StartAt(7, kLastStart);
    EXPECT_EQ(FailureOf([&] { security_.Encrypt(row.first); }), row.second) << Utf8(row.first).substr(0, 9);
    EXPECT_EQ(draws.Seeds.empty(), row.second != "none") << "a refused password draws nothing";
  }
}

// A blank is no start character: every key code is then that of the table's first character.
TEST_F(PasswordEncoder, DecodesOrRefusesDamagedStringsAndUndoesTheSubstitutionsInItsArgument) {
  const char16_t first = ComponentSecurityTestAccess::KeyTable()[0];
  const auto length = [&](int n) { return String{u' ', static_cast<char16_t>((first + n) % 111 + 14)}; };
  const char16_t x = static_cast<char16_t>((first + u'x') % 111 + 14);
  const std::pair<String, std::string> rows[] = {
      {u"", ""},
      {u"3", kNotDeciphered},
      {u" ", kNotDeciphered},
      {length(0), ""},
      {length(-1), ""},
      {length(1), kNotDeciphered},
      {length(1) + x, "x"},
      {length(2) + x, kNotDeciphered},
      {length(2) + x + x, "xx"},
      {length(2) + x + u'\u0414', kNotDeciphered},
      {length(1) + x + u'\u0414', "x"},
      {u" \u0414", kNotDeciphered},
      {u'\u0414' + length(1).substr(1) + x, "x"},
      {length(1) + x + String(40000, u'y'), "x"},
      {length(1) + x + String(40000, u'y') + u'\u007F', kNotDeciphered}};
  for (const auto& [stored, expected] : rows) {
    String encoded = stored;
    std::string password;
    const std::string failure = FailureOf([&] { password = Utf8(security_.Decrypt(encoded)); });
    EXPECT_EQ(failure == "none" ? password : failure, expected) << Utf8(stored).substr(0, 9);
  }
  String encoded = u"\u007F\u007E|;\u007E\u007F";
  FailureOf([&] { security_.Decrypt(encoded); });
  EXPECT_TEXT(u"|;|;;|", encoded);
}

// Cut: the password if the body is complete, otherwise the failure. Changed: filler doesn't count, a body
// character gives another one, a start or length character a wrong text or the failure.
TEST_F(PasswordEncoder, NeverReadsOutsideACutOrChangedString) {
  for (const int start : {1, 13, 18, 39, 80, 81}) {
    for (const std::size_t n : std::initializer_list<std::size_t>{0, 1, 10, 24, 97}) {
      const String password = Password(n, 3);
      StartAt(start, kLastStart);
      const String encoded = security_.Encrypt(password);
      const std::size_t bodyBegin = 2 + static_cast<std::size_t>(start % 8), bodyEnd = bodyBegin + n;
      for (std::size_t cut = 1; cut < encoded.size(); ++cut) {
        String rest = encoded.substr(0, cut);
        String read;
        const std::string failure = FailureOf([&] { read = security_.Decrypt(rest); });
        const bool whole = cut >= 2 && (n == 0 || cut >= bodyEnd);
        EXPECT_EQ(failure, whole ? "none" : kNotDeciphered) << start << " " << n << " " << cut;
        EXPECT_TEXT(whole ? password : String(), read);
      }
      for (std::size_t at = 0; at < encoded.size(); ++at) {
        for (char16_t code = 0; code < 256; ++code) {
          String changed = encoded;
          if (changed[at] == code) continue;
          changed[at] = code;
          String read;
          const std::string failure = FailureOf([&] { read = security_.Decrypt(changed); });
          if (at < 2 && failure == kNotDeciphered) continue;
          ASSERT_EQ(failure, "none");
          if (at < 2) continue;
          ASSERT_EQ(read.size(), n);
          const bool inBody = at >= bodyBegin && at < bodyEnd;
          const bool accepted = code >= 14 && code < 124 && code != 59;
          ASSERT_TRUE((read != password) == inBody || (inBody && !accepted));
        }
      }
    }
  }
}

}  // namespace
}  // namespace Tests
