// Texts, addresses, numbers, values and identifiers.
#include <limits>
#include <random>

#include "platform/CheckedArithmetic.h"
#include "platform/Guid.h"
#include "platform/NumberReader.h"
#include "platform/Object.h"
#include "runtime/MailAddress.h"
#include "tests/support/Texts.h"

namespace Tests {
namespace {

using namespace Platform;
using namespace std::string_literals;

// The number of the failure that the act raises; 0 if it raises none.
template <class Act>
int FailureOf(Act act) {
  try {
    act();
    return 0;
  } catch (const Failure& failure) {
    return failure.Number();
  }
}

TEST(Text, AnyCodeUnitsComeBackFromUtf8) {
  std::mt19937 random(1);
  const StringView pool =
      u"a\u00e4\u20ac\U0001F600\xD800\xDBFF\xDC00\xDFFF\xFEFF\xFFFF\0 "
      "z";
  for (int round = 0; round < 5000; ++round) {
    String text;
    for (std::size_t length = random() % 9; text.size() < length;)
      text += pool[static_cast<std::size_t>(random()) % pool.size()];
    const std::string bytes = ToUtf8(text);
    ASSERT_TRUE(IsUtf8(bytes));
    ASSERT_TRUE(FromUtf8(bytes) == text) << round;
  }
}

TEST(MailAddress, IsValidByTheStandardsOrHasAFaultWithTheReason) {
  const String label(62, u'x');
  const String longest = label + u'.' + label + u'.' + label + u'.' + label + u"x";  // 252 characters
  const struct {
    String Address;
    std::string Fault;
  } rows[] = {
      {u"ann@example.org", ""},
      {u"a+b.c'd=e/f@b", ""},
      {u"\"a b@c\\\"\"@example.org", ""},
      {u"jörg.中@münchen.example", ""},
      {u"a@xn--mnchen-3ya.example", ""},
      {u"a@r3---sn.example", ""},
      {u"a@[192.0.2.1]", ""},
      {u"a@[IPv6:2001:db8::1]", ""},
      {u"a@[x400:c=de]", ""},
      {String(64, u'x') + u"@b.c", ""},
      {u"", "has no @"},
      {u"@example.org", "before the @ is missing"},
      {u"a@", "domain after the @ is missing"},
      {u"a b@c", "need quotes"},
      {u".a@b", "need quotes"},
      {u"a..b@c", "need quotes"},
      {u"<a@b>", "need quotes"},
      {u"\"a\"b\"@c", "backslash"},
      {u"a@b..c", "no domain"},
      {u"a@-b.c", "no domain"},
      {u"a@b_c.d", "no domain"},
      {u"a@b.", "no domain"},
      {u"a@xn--\u00FC.example", "no domain"},
      {u"a@[999.0.2.1]", "no network address"},
      {u"a@[IPv6:x]", "no network address"},
      {u"a@[ipv6:::1]", ""},
      {u"a@[x-1:~]", ""},
      {u"a@[]", "no network address"},
      {u"a@[", "no network address"},
      {u"a@[:x]", "no network address"},
      {u"a@[x:]", "no network address"},
      {u"a@[x-:y]", "no network address"},
      {u"a@[x!:y]", "no network address"},
      {u"a@[x: ]", "no network address"},
      {u"a@[x:\\]", "no network address"},
      {u"a.@b", "need quotes"},
      {u"\"@b", "need quotes"},
      {u"\"a\\\"@b", "backslash"},
      {u"\"\"@b", ""},
      {u"a\u2028@b", "control character"},
      {u"a\r\n@b", "control character"},
      {u"a\u0085@b", "control character"},
      {u"a\u202E@b", "control character"},
      {u"a\xD800@b", "control character"},
      {String(65, u'x') + u"@b.c", "longer than 64"},
      {u"a@" + longest, ""},
      {u"ab@" + longest, "longer than 254"},
      {u"a@" + String(64, u'x') + u".c", "no domain"},
  };
  for (const auto& row : rows) {
    const std::string fault = ToUtf8(Runtime::AddressFault(row.Address));
    EXPECT_EQ(fault.empty(), row.Fault.empty()) << ToUtf8(row.Address) << ": " << fault;
    EXPECT_NE(fault.find(row.Fault), std::string::npos) << ToUtf8(row.Address) << ": " << fault;
  }
}

TEST(MailAddress, HasOneSpellingForOneMailbox) {
  const struct {
    String Address, Canonical;
  } rows[] = {
      {u"Ann@Example.org", u"Ann@Example.org"},
      {u"a@xn--mnchen-3ya.example", u"a@münchen.example"},
      {u"a@M\u00DCNCHEN.example", u"a@münchen.example"},
      {u"a@mu\u0308nchen。example.", u"a@münchen.example"},
      {u"a@X\u200DY.example", u"a@X\u200DY.example"},  // no joiner may stand there
      {u"a@xn--\x7F", u"a@xn--\x7F"},
      {u"\"a.b\"@c", u"a.b@c"},
      {u"\"a\\b c\"@d", u"\"a\\b c\"@d"},
      {u"jo\u0308rg@c", u"jörg@c"},
      {u"a@[192.0.2.1]", u"a@[192.0.2.1]"},
      {u"no address", u"no address"},
  };
  for (const auto& row : rows) EXPECT_TEXT(row.Canonical, Runtime::CanonicalAddress(row.Address));
}

TEST(Text, EachStrayByteBecomesOneReplacementCharacter) {
  const struct {
    std::string Bytes;
    String Expected;
  } rows[] = {{"a\xFFz", u"a\uFFFDz"},
              {"a\xC3", u"a\uFFFD"},
              {"\xC0\x80", u"\uFFFD\uFFFD"},
              {"\xE4z", u"\uFFFDz"},
              {"\xE2\x82z", u"\uFFFD\uFFFDz"},
              {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"},
              {"\xF5z", u"\uFFFDz"},
              {"\xE0\x9F\xBF", u"\uFFFD\uFFFD\uFFFD"},
              {"\x80\xC3\xA4", u"\uFFFD\u00e4"}};
  for (const auto& row : rows) {
    EXPECT_TEXT(row.Expected, FromUtf8(row.Bytes));
    EXPECT_FALSE(IsUtf8(row.Bytes)) << row.Bytes;
  }
}

TEST(Text, CaseIsFoldedBeyondAsciiOneCharacterWithOne) {
  const struct {
    String Left, Right;
    bool Equal;
  } rows[] = {{u"EMail", u"Email", true},
              {u"\u00c4\u00d6\u0416\u03a9", u"\u00e4\u00f6\u0436\u03c9", true},
              {u"\u03a3\u03a3", u"\u03c3\u03c2", true},  // both small sigmas
              {u"\U00010400", u"\U00010428", true},      // beyond the first plane
              {u"\u0130", u"i", false},                  // dotted capital I
              {u"\u00df", u"ss", false},
              {u"\xD800", u"\xD801", false},
              {u"a", u"a ", false}};
  for (const auto& row : rows) {
    EXPECT_EQ(EqualsIgnoreCase(row.Left, row.Right), row.Equal) << Utf8(row.Left) << " " << Utf8(row.Right);
    EXPECT_EQ(FoldCase(row.Left) == FoldCase(row.Right), row.Equal) << Utf8(row.Left);
  }
}

TEST(Text, TrimmingTakesSpacesAlone) {
  EXPECT_TEXT(u"\ta b\n", Trim(u"  \ta b\n "));
  EXPECT_TEXT(u"", Trim(u"   "));
  EXPECT_TEXT(u"\u00a0", Trim(u" \u00a0 "));
}

TEST(NumberReader, TakesNumbersAsThisFieldWritesThem) {
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    const char16_t* Text;
    std::optional<double> Expected;
  } rows[] = {{u"1", 1},
              {u"  -7 ", -7},
              {u"+3", 3},
              {u"1.5", 1.5},
              {u".5", 0.5},
              {u"5.", 5},
              {u"1e3", 1000},
              {u"1E-2", 0.01},
              {u"1,234", 1234},
              {u"12,345,678", 12345678},
              {u"1,234.5", 1234.5},
              {u"-0", -0.0},
              {u"1e999", infinity},
              {u"1e-999", 0},
              {u"", {}},
              {u" ", {}},
              {u"-", {}},
              {u".", {}},
              {u"1,5", {}},
              {u"1234,567", {}},
              {u"1,2345", {}},
              {u",123", {}},
              {u"1e", {}},
              {u"0x10", {}},
              {u"1 2", {}},
              {u"inf", {}},
              {u"nan", {}},
              {u"\t1", {}},
              {u"\uff11", {}},
              {u"1.2.3", {}}};
  for (const auto& row : rows) {
    EXPECT_EQ(ReadNumber(row.Text), row.Expected) << Utf8(row.Text);
    EXPECT_EQ(IsNumeric(row.Text), row.Expected.has_value()) << Utf8(row.Text);
  }
  // Long runs of digits leave a double's range at either end.
  const String zeros(400, u'0');
  EXPECT_EQ(ReadNumber(u"00." + zeros + u"1"), 0);
  EXPECT_EQ(ReadNumber(u"0." + zeros + u"1e+900"), infinity);
  EXPECT_EQ(ReadNumber(u"1" + zeros + u"e-10"), infinity);
  EXPECT_EQ(ReadNumber(u"1e99999999999999999999"), infinity);
}

TEST(NumberReader, RoundsTiesToEvenAndOverflowsAtTheEdges) {
  const struct {
    double From;
    int To;
  } rows[] = {{0.5, 0}, {1.5, 2}, {2.5, 2}, {-0.5, 0}, {-1.5, -2}, {32767.4, 32767}, {-32768.5, -32768}};
  for (const auto& row : rows) EXPECT_EQ(RoundToInt16(row.From), row.To) << row.From;
  for (const double out : {32767.5, -32768.6, 1e300, std::numeric_limits<double>::quiet_NaN()})
    EXPECT_EQ(FailureOf([&] { RoundToInt16(out); }), FailureNumber::Overflow) << out;
  const String zeros(400, u'0');
  const struct {
    String Text;
    std::int32_t Expected;
  } texts[] = {{u"2147483647.4999999999999", 2147483647},
               {u"-2147483648.5", -2147483648},
               {u"0.5", 0},
               {u"-1.5", -2},
               {u"2.5" + zeros, 2},
               {u"2.5" + zeros + u"1", 3},
               {u"2.4" + String(400, u'9'), 2},
               {u"9.5", 10},
               {u"0.05e1", 0},
               {u"0.051e1", 1},
               {u"0.049", 0},
               {u"123e-2", 1},
               {u"12,345e1", 123450},
               {zeros + u"7", 7},
               {u"7" + zeros + u"e-400", 7},
               {u"0." + zeros + u"6e401", 6},
               {u"6e-99999999999999999999", 0},
               {u"0e99999999999999999999", 0}};
  for (const auto& row : texts) {
    EXPECT_EQ(ReadInt32(row.Text), row.Expected) << Utf8(row.Text);
    EXPECT_EQ(Value(row.Text).ToInt32(), row.Expected) << Utf8(row.Text);
  }
  for (const StringView out : {u"2147483647.5", u"-2147483648.51", u"1e10", u"1e99999999999999999999"})
    EXPECT_EQ(FailureOf([&] { ReadInt32(out); }), FailureNumber::Overflow) << Utf8(out);
  EXPECT_EQ(FailureOf([] { Value(u"32767.5").ToInt16(); }), FailureNumber::Overflow);
  EXPECT_EQ(FailureOf([] { ReadInt32(u"two"); }), FailureNumber::TypeMismatch);
}

TEST(CheckedArithmetic, RaisesWhereTheWidthEnds) {
  EXPECT_EQ(Multiply<std::int16_t>(181, 181), 32761);
  EXPECT_EQ(FailureOf([] { Multiply<std::int16_t>(182, 182); }), FailureNumber::Overflow);
  EXPECT_EQ(FailureOf([] { Add<std::int16_t>(32767, 1); }), FailureNumber::Overflow);
  EXPECT_EQ(FailureOf([] { Subtract<std::int32_t>(std::numeric_limits<std::int32_t>::min(), 1); }),
            FailureNumber::Overflow);
  EXPECT_EQ(FailureOf([] { Narrow<std::uint8_t>(-1); }), FailureNumber::Overflow);
}

TEST(Value, ConvertsAsItsContentAllows) {
  EXPECT_TEXT(u"True", Value(true).ToString());
  EXPECT_TEXT(u"-1", Value(Value(true).ToInt16()).ToString());
  EXPECT_TEXT(u"1.5", Value(1.5).ToString());
  EXPECT_TEXT(u"", Value().ToString());
  EXPECT_EQ(Value().ToInt32(), 0);
  EXPECT_EQ(Value(u"2.5").ToInt32(), 2);
  EXPECT_TRUE(Value(u"tRUE").ToBool());
  EXPECT_FALSE(Value(u"0").ToBool());
  EXPECT_EQ(Value().ToObject(), nullptr);
  EXPECT_EQ(Value(u"a\u0142").ToBytes(), (Bytes{'a', 0, 0x42, 1}));
  EXPECT_EQ(Value(Array{Value(1), Value(u"255")}).ToBytes(), (Bytes{1, 255}));
  const struct {
    const char* Name;
    void (*Act)();
    int Number;
  } refusals[] = {{"text as number", [] { Value(u"x").ToInt32(); }, FailureNumber::TypeMismatch},
                  {"text as truth", [] { Value(u"").ToBool(); }, FailureNumber::TypeMismatch},
                  {"wide number", [] { Value(40000).ToInt16(); }, FailureNumber::Overflow},
                  {"wide byte", [] { Value(Array{Value(256)}).ToBytes(); }, FailureNumber::Overflow},
                  {"object as text", [] { Value(ObjectRef()).ToString(); }, FailureNumber::TypeMismatch},
                  {"text as array", [] { Value(u"x").ToArray(); }, FailureNumber::TypeMismatch},
                  {"array as object", [] { Value(Array()).ToObject(); }, FailureNumber::TypeMismatch}};
  for (const auto& row : refusals) EXPECT_EQ(FailureOf(row.Act), row.Number) << row.Name;
}

TEST(Guid, ComesBackFromItsText) {
  constexpr Guid id = "{0123ABCD-4567-89EF-0011-223344556677}"_guid;
  EXPECT_TEXT(u"{0123ABCD-4567-89EF-0011-223344556677}", ToText(id));
  EXPECT_EQ(ParseGuid(u"{0123abcd-4567-89ef-0011-223344556677}"), id);
  for (const StringView wrong :
       {u"", u"0123ABCD-4567-89EF-0011-223344556677", u"{0123ABCD-4567-89EF-0011-22334455667G}",
        u"{0123ABCD-4567-89EF-0011+223344556677}"})
    EXPECT_EQ(FailureOf([&] { ParseGuid(wrong); }), FailureNumber::TypeMismatch) << Utf8(wrong);
}

}  // namespace
}  // namespace Tests
