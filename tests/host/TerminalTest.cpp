// Texts for and from a terminal: escape sequences, wrapped lines and completed paths.
#include "host/terminal/HelpText.h"
#include "host/terminal/PathCompletion.h"
#include "host/terminal/TypedText.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

TEST(TypedText, LosesTheEscapeSequencesOfKeys) {
  const struct {
    StringView Typed, Text;
  } rows[] = {
      {u"\x1B[Aa\x1B[1;5Db\x1B[?~c", u"abc"},
      {u"\x1BOPa\x1BO", u"a"},
      {u"a\x1B", u"a"},
      {u"a\x1B[12", u"a"},
      {u"\x1B[\x7F", u"\x7F"},
      {u"\x1B[@a\x1B[~b", u"ab"},
      {u"\x1Bxa[O", u"xa[O"},
      {u"\x1B[\x1F", u"\x1F"},
      {u"\x1B[ /0?n", u""},
  };
  for (const auto& row : rows) EXPECT_TEXT(row.Text, Host::WithoutEscapes(row.Typed));
}

TEST(HelpText, IsWrappedAtBlanksAndBetweenWideCharacters) {
  const struct {
    StringView Text, Wrapped;
  } rows[] = {
      {u"abcd ef gh", u"abcd\nef gh\n"},
      {u"abcdefgh", u"abcde\nfgh\n"},
      {u"ab cd", u"ab cd\n"},
      {u"a\n\nb\n", u"a\n\nb\n"},
      {u"ab cdef", u"ab\ncdef\n"},
      {u"\u3042\u3044\u3046", u"\u3042\u3044\n\u3046\n"},
      {u"a\u3042\u3044\u3046", u"a\u3042\u3044\n\u3046\n"},
      {u"\u3042 abc", u"\u3042\nabc\n"},
      {u"", u""},
  };
  for (const auto& row : rows) EXPECT_TEXT(row.Wrapped, Host::Wrapped(row.Text, 5));
  EXPECT_TEXT(u"\u3042\na\n", Host::Wrapped(u"\u3042a", 1));
  for (const char16_t wide : StringView(u"\u1100\u115F\u2E80\uD7FF\uF900\uFAFF\uFF00\uFF60"))
    EXPECT_EQ(4u, Host::Wrapped(String(2, wide), 3).size()) << static_cast<int>(wide);
  for (const char16_t narrow : StringView(u"\u10FF\u1160\u2E7F\uE000\uF8FF\uFB00\uFEFF\uFF61"))
    EXPECT_EQ(3u, Host::Wrapped(String(2, narrow), 3).size()) << static_cast<int>(narrow);
}

TEST(PathCompletion, GivesTheCommonPartAndTheChoices) {
  const TemporaryFolder folder;
  const std::string home = folder.Path().string();
  for (const char* name : {"ab\u00E4", "ab\u00F6", ".hidden", "x\xFF", "sub"}) {
    std::string(name) == "sub" ? void(std::filesystem::create_directory(folder.Path() / name))
                               : WriteFile(folder.Path() / name, "");
  }
  const struct {
    std::string Typed, Path;
    std::vector<std::string> Choices;
  } rows[] = {
      {"/a", "/ab", {"ab\u00E4", "ab\u00F6"}},
      {"/s", "/sub/", {"sub/"}},
      {"/.", "/.hidden", {".hidden"}},
      {"/", "/", {"ab\u00E4", "ab\u00F6", "sub/"}},
      {"/x", "/x", {}},
      {"/none/a", "/none/a", {}},
  };
  for (const auto& row : rows) {
    const Host::Completion completion = Host::CompletePath(home + row.Typed);
    EXPECT_EQ(home + row.Path, completion.Path);
    EXPECT_EQ(row.Choices, completion.Choices) << row.Typed;
  }
  for (const char* path : {"/", "~/", "./a", "../"}) EXPECT_TRUE(Host::LooksLikePath(path)) << path;
  for (const char* other : {"", "a/b", "~a", ".", "..a"}) EXPECT_FALSE(Host::LooksLikePath(other)) << other;
  const std::string before = std::getenv("HOME") ? std::getenv("HOME") : "";
  setenv("HOME", "/h", 1);
  EXPECT_EQ("/h/a", Host::WholePath("~/a"));
  setenv("HOME", "", 1);
  const std::string here = std::filesystem::current_path().string();
  EXPECT_EQ(here + "/~/a", Host::WholePath("~/a"));
  setenv("HOME", before.c_str(), 1);
  EXPECT_EQ(here + "/b", Host::WholePath("./a/../b"));
  EXPECT_EQ("/a/../b", Host::WholePath("/a/../b"));
  EXPECT_EQ("", Host::WholePath(""));
}

}  // namespace
}  // namespace Tests
