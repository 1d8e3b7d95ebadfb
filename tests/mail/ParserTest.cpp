// The results for subject lines and bodies, and their refusals.
#include "platform/Failure.h"
#include "src/mail/DiscussionSubject.h"
#include "src/mail/ReplyBody.h"
#include "tests/services/NumberedTexts.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace TvEmailServices;

String DescriptionOf(std::int32_t number) {
  return FromUtf8(FailureText([&] { Raise(number); }));
}

// Replaces [P], [D] and [M] by the project marker, the discussion marker and the cut marker.
String Written(StringView text) {
  String written(text);
  for (const auto& [sign, marker] :
       {std::pair(u"[P]", u"(Ostrand Talvane Project "), std::pair(u"[D]", u"Ostrand Talvane Discussion "),
        std::pair(u"[M]", u"-- cut here --")}) {
    for (auto at = written.find(sign); at != String::npos; at = written.find(sign)) {
      written.replace(at, 3, marker);
    }
  }
  return written;
}

class ParserTest : public testing::Test {
 protected:
  ParserTest() { CutAt(Written(u"[M]")); }

  void CutAt(const String& marker) {
    world.Services.Instead["TvResourceServices.Resource"] = [marker] {
      return std::make_shared<NumberedTexts>(std::map<std::int32_t, String>{{2166, marker}});
    };
  }

  World world;
};

constexpr std::int32_t kUnset = -77;

TEST_F(ParserTest, ASubjectLineGivesItsNumberAndTheTextInFrontOfTheProject) {
  const String invalid = DescriptionOf(FailureNumber::InvalidArgument);
  const String overflow = DescriptionOf(FailureNumber::Overflow);
  const struct {
    const char16_t* Line;
    std::int32_t Number;
    const char16_t* Subject;
    String Error;
  } rows[] = {
      {u"Re: Release plan [P]Apollo, [D]17)", 17, u"Re: Release plan ", u""},
      {u"Plan [P]Discussion Group) ([D]8) end", 8, u"Plan ", u""},
      {u"Discussion 9) [P]Apollo)", 9, u"Discussion 9) ", u""},
      {u"[P]Apollo) [D]5)", 5, u"", u""},
      {u"Re: Plan [P]Apollo, [D]0)", kUnset, u"Re: Plan ", u"T10005"},
      {u"Re: Plan [P]Apollo, [D]x7)", kUnset, u"Re: Plan ", u"T10005"},
      {u"re: discussion 7) [P]Apollo)", kUnset, u"re: discussion 7) ", u"T10005"},
      {u"Re: Plan [P]Apollo, [D]17", kUnset, u"-", invalid},
      {u"Re: Plan [D]17)", kUnset, u"-", invalid},
      {u"Discussion) [P]Apollo)", kUnset, u"-", invalid},
      {u"", kUnset, u"-", invalid},
      {u"12) [P]Apollo)", kUnset, u"-", invalid},  // its first blank is after the bracket
      {u"x\t\r\n[P]A, Ostrand Tal\r\nvane\t Discussion 3)", 3, u"x", u""},
      {u"x [P]A, Ostrand\r\n  Talvane Discussion 3)", 3, u"x ", u""},  // the word alone is enough
      {u"x [P]A, [D]3) [D]4)", 3, u"x ", u""},
      {u"x [D]3) y [P]A)", 3, u"x Ostrand Talvane Discussion 3) y ", u""},
      {u"x [P]A, [D]12.5)", 12, u"x ", u""},
      {u"x [P]A, [D]13.5)", 14, u"x ", u""},
      {u"x [P]A, [D]0.6)", 1, u"x ", u""},
      {u"x [P]A, [D]1.49999999999999999999)", 1, u"x ", u""},
      {u"x [P]A, [D]0.50000000000000000000001)", 1, u"x ", u""},
      {u"x [P]A, [D]2147483647.49999999999999999999)", 2147483647, u"x ", u""},
      {u"x [P]A, [D] 1e2 )", 100, u"x ", u""},
      {u"x [P]A, [D]1,234)", 1234, u"x ", u""},
      {u"x [P]A, [D]0.4)", kUnset, u"x ", u"T10005"},
      {u"x [P]A, [D]2147483647)", 2147483647, u"x ", u""},
      {u"x [P]A, [D]2147483648)", kUnset, u"x ", overflow},
      {u"x [P]A, [D]-1e999)", kUnset, u"x ", overflow},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(Utf8(row.Line));
    std::int32_t number = kUnset;
    String subject = u"-", error;
    EXPECT_EQ(ParseDiscussionSubject(Written(row.Line), number, subject, error), row.Error.empty());
    EXPECT_EQ(number, row.Number);
    EXPECT_TEXT(row.Subject, subject);
    EXPECT_TEXT(row.Error, error);
  }
}

TEST_F(ParserTest, ABodyIsCutAndItsLineEndsBecomeCrLf) {
  const struct {
    const char16_t *Before, *After;
  } rows[] = {{u"  a\r\nb\n\n[M]\nc", u"a\r\nb"},
              {u"a\rb\nc", u"a\r\nb\r\nc"},
              {u"a\r\r\nb", u"a\r\n\r\nb"},
              {u"a\n\rb", u"a\r\n\r\nb"},
              {u"a \r\n", u"a "},
              {u"\r\n a", u"\r\n a"},
              {u"[M]a", u""},
              {u"", u""},
              {u"\r\n \r\n", u"\r\n "},
              {u"\ta\t ", u"\ta\t"},
              {u"a -- cut -- cut here -- b", u"a -- cut"},
              {u"a -- cut here -", u"a -- cut here -"},
              {u"a[M]b[M]c", u"a"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(Utf8(row.Before));
    String body = Written(row.Before), error = u"earlier";
    EXPECT_TRUE(ParseReplyBody(body, error));
    EXPECT_TEXT(row.After, body);
    EXPECT_TEXT(u"earlier", error);
  }
}

// The cleaning, character by character.
String CleanedSimply(StringView body) {
  String output, previous;
  for (std::size_t i = 0; i < body.size(); ++i) {
    const String c(1, body[i]), next(body.substr(i + 1, 1));
    output += (c == u"\r" && next != u"\n") || (c == u"\n" && previous != u"\r") ? u"\r\n" : c;
    previous = c;
  }
  output = Trim(output);
  while (!output.empty() && (output.back() == u'\r' || output.back() == u'\n')) output.pop_back();
  return output;
}

TEST_F(ParserTest, AnyMixtureOfLineEndsAndBlanksIsCleanedAsByTheSimpleAlgorithm) {
  std::uint32_t state = 1;
  for (int round = 0; round < 3000; ++round) {
    String body;
    const std::size_t length = static_cast<std::size_t>(round) % 300;
    while (body.size() < length) {
      state = state * 1664525 + 1013904223;
      const std::uint32_t rareness = round % 3 ? 64 : 8;
      body += u"\r\n a"[std::min<std::uint32_t>(state >> 20 & (rareness - 1), 3)];
    }
    String cleaned = body, error;
    ASSERT_TRUE(ParseReplyBody(cleaned, error));
    ASSERT_TEXT(CleanedSimply(body), cleaned) << Utf8(body);
  }
}

TEST_F(ParserTest, LengthsAndPositionsEndAtSixteenBits) {
  const String marker = Written(u"[M]");
  const auto letters = [](std::size_t count) { return String(count, u'a'); };
  const struct {
    const char* What;
    String Body;
    bool Good;
    std::size_t LengthAfter;
  } rows[] = {{"the longest body", letters(32766), true, 32766},
              {"one more", letters(32767), false, 32767},
              {"a marker at the last position", letters(32766) + marker + letters(50000), true, 32766},
              {"a marker one further", letters(32767) + marker, false, 32767 + marker.size()},
              {"an output that fills its limit", String(1, u'\n') + letters(32765), true, 32767},
              {"an output one longer", String(2, u'\n') + letters(32764), false, 32766},
              {"the same, cut before", String(2, u'\n') + letters(32764) + marker, false, 32766},
              {"blanks that make it short enough", String(2, u'\n') + letters(32763) + u' ', true, 32767},
              {"line ends don't, since they go later", letters(27000) + String(3000, u'\n'), false, 30000},
              {"an empty reply", String(32766, u' '), true, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    String body = row.Body, error;
    EXPECT_EQ(ParseReplyBody(body, error), row.Good);
    EXPECT_EQ(body.size(), row.LengthAfter);
    EXPECT_TEXT(row.Good ? String() : DescriptionOf(FailureNumber::Overflow), error);
  }
}

TEST_F(ParserTest, TheCutMarkerIsTheTextOfTheResource) {
  const auto cleaned = [](String body) {
    String error;
    EXPECT_TRUE(ParseReplyBody(body, error));
    return body;
  };
  CutAt(u"");
  EXPECT_TEXT(u"", cleaned(u"all of it goes"));
  CutAt(u"=");
  EXPECT_TEXT(u"a", cleaned(u"a = b = c"));
  world.Services.Missing.insert("TvResourceServices.Resource");
  EXPECT_TEXT(u"nothing is cut = here", cleaned(u"nothing is cut = here"));
}

}  // namespace
}  // namespace Tests
