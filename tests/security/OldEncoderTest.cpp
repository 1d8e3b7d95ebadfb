// EncryptOld and DecryptOld: the encoded string, and that they raise nothing.
#include "tests/security/SecurityWorld.h"

namespace Tests {
namespace {

constexpr int kLastStart = 97;

// A text with every code from 1 to 253, if it is long enough.
String Text(std::size_t length, std::size_t turn) {
  String text;
  for (std::size_t i = 0; i < length; ++i) text += static_cast<char16_t>(1 + (i * 7 + turn) % 253);
  return text;
}

class OldEncoder : public SecurityWorld {};

// Computed independently: the start character and a body character are vertical bars.
TEST_F(OldEncoder, WritesAndReadsTheStringThatEveryBuildWrites) {
  StartAt(53, kLastStart);
  String stored = u"\u00FF\u00CFPPPPP\u00B4\u00C6\u00FF!\u00D1\u00ECv\u0084" + String(15, u'S');
  EXPECT_TEXT(stored, security_.EncryptOld(u"Gr\u00FC\u00DFe| 1"));
  EXPECT_TEXT(u"Gr\u00FC\u00DFe| 1", security_.DecryptOld(stored));
}

TEST_F(OldEncoder, GivesEveryTextBackFromEveryStart) {
  for (int start = 1; start <= kLastStart; ++start) {
    for (std::size_t n = 0; n <= 252; n += n < 30 || n > 245 ? 1 : 9) {
      const String text = Text(n, n + static_cast<std::size_t>(start));
      const ForcedDraws& draws = StartAt(start, kLastStart);
      String encoded = security_.EncryptOld(text);
      const auto p = static_cast<std::size_t>(start % 8);
      ASSERT_EQ(encoded.size(), p + n <= 28 ? 30 : 2 + p + n) << start << " " << n;
      ASSERT_EQ(encoded.find(char16_t{124}), String::npos);
      ASSERT_EQ(draws.DrawsAfterSeed, std::vector<std::size_t>{1}) << "one seeding, one draw";
      ASSERT_EQ(draws.Seeds[0], 429);
      ASSERT_EQ(security_.DecryptOld(encoded), text) << start << " " << n;
    }
  }
}

TEST_F(OldEncoder, LosesWhatItsCodesAndItsLengthCharacterCannotHold) {
  for (int start = 1; start <= kLastStart; ++start) {
    StartAt(start, kLastStart);
    String encoded = security_.EncryptOld(String{0, 1, 253, 254, 255});
    ASSERT_EQ(security_.DecryptOld(encoded), (String{0, 1, 253, 0, 1})) << start;
    StartAt(start, kLastStart);
    encoded = security_.EncryptOld(Text(253, 0));
    ASSERT_EQ(encoded.size(), 2 + static_cast<std::size_t>(start % 8) + 253);
    ASSERT_EQ(security_.DecryptOld(encoded), String()) << start;
  }
}

TEST_F(OldEncoder, RoundsTheStartPositionToTheEvenNeighbour) {
  const String table = ComponentSecurityTestAccess::OldKeyTable();
  const std::pair<double, std::size_t> rows[] = {{0, 1},          {1 / 64.0, 2}, {1.001 / 64, 3},
                                                 {3 / 64.0, 6},   {5 / 64.0, 8}, {63 / 64.0, 96},
                                                 {62.9 / 64, 95}, {0.99999, 97}};
  for (const auto& [draw, start] : rows) {
    StartAt(1, kLastStart).First = draw;
    EXPECT_EQ(security_.EncryptOld(u"x")[0], table[start - 1] == 124 ? 255 : table[start - 1]) << draw;
  }
}

TEST_F(OldEncoder, GivesTheEmptyStringForWhatItCannotDo) {
  StartAt(13, kLastStart);
  EXPECT_TEXT(u"", security_.EncryptOld(u"caf\u00E9 \u0414"));
  EXPECT_TEXT(u"", security_.EncryptOld(String(32767, u'a')));
  for (const String& damaged : {String(), String(u"&"), String(u" "), String(u"&\u0414"), String(u"&zPP")}) {
    String encoded = damaged;
    EXPECT_TEXT(u"", security_.DecryptOld(encoded));
  }
  String encoded = u"\u00FF|\u00FF";
  security_.DecryptOld(encoded);
  EXPECT_TEXT(u"|||", encoded);
}

TEST_F(OldEncoder, NeverReadsOutsideACutOrChangedString) {
  for (const int start : {1, 13, 56, 97}) {
    for (const std::size_t n : std::initializer_list<std::size_t>{0, 9, 40, 252}) {
      StartAt(start, kLastStart);
      const String text = Text(n, 5);
      const String encoded = security_.EncryptOld(text);
      const std::size_t bodyEnd = 2 + static_cast<std::size_t>(start % 8) + n;
      for (std::size_t at = 0; at < encoded.size(); ++at) {
        String cut = encoded.substr(0, at);
        ASSERT_EQ(security_.DecryptOld(cut), at < bodyEnd ? String() : text)
            << start << " " << n << " " << at;
        for (int code = 0; code < 256; code += 3) {
          String changed = encoded;
          changed[at] = static_cast<char16_t>(code);
          const String read = security_.DecryptOld(changed);
          ASSERT_TRUE(at < 2 || read.size() == n);
          ASSERT_TRUE(at < bodyEnd || read == text);
        }
      }
    }
  }
}

}  // namespace
}  // namespace Tests
