// Texts by number, and help topics, through the loaded libraries.
#include <stdlib.h>

#include "platform/contracts/ResourceServices.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

// A world whose language the test chooses, with catalogues of its own.
class Resources : public testing::Test {
 protected:
  ~Resources() override { Speak("", "", ""); }

  static void Speak(const char* all, const char* messages, const char* lang) {
    setenv("LC_ALL", all, 1);
    setenv("LC_MESSAGES", messages, 1);
    setenv("LANG", lang, 1);
  }

  void Write(const std::string& name, std::string_view text) { WriteFile(world.Home.Path() / name, text); }

  static Resource New() {
    return Resource(Platform::Services().CreateByName(u"TvResourceServices.Resource"));
  }

  Resource Load(std::string_view stem) {
    const Resource resource = New();
    resource.LoadResources(FromUtf8(world.Home.Path().string() + "\\" + std::string(stem) + ".dll"),
                           u"Tests");
    return resource;
  }

  World world;
};

TEST_F(Resources, AreOfTheEnvironmentsLanguageWithEnglishAsFallback) {
  Write("A.en.txt", "1 = one\n2 = two\n");
  Write("A.de.txt", "1 = eins\n");
  const struct {
    const char *All, *Messages, *Lang;
    const char16_t* One;
  } rows[] = {{"", "", "", u"one"},      {"", "", "de_DE.UTF-8", u"eins"}, {"", "de", "ja_JP", u"eins"},
              {"C", "de", "de", u"one"}, {"DE_at@euro", "", "", u"eins"},  {"ja_JP.UTF-8", "", "", u"one"},
              {"POSIX", "", "", u"one"}, {"../A.de", "", "", u"one"},      {"C.UTF-8", "de", "", u"one"},
              {"", "", "de", u"eins"}};
  for (const auto& row : rows) {
    Speak(row.All, row.Messages, row.Lang);
    const Resource resource = Load("A");
    EXPECT_TEXT(row.One, resource.ResourceString(1)) << row.All << "," << row.Messages << "," << row.Lang;
    EXPECT_TEXT(u"two", resource.ResourceString(2));
  }
}

TEST_F(Resources, TextsTakeTheirArgumentsOnce) {
  Write("B.en.txt",
        "\xEF\xBB\xBF# comment\r\n\r\n1 = %2 before %1\r\n2=100%% of %1\n3 = key %1 gone\n4 = "
        "\\sa\\tb\\nc\\\\d\\s\n");
  const Resource resource = Load("B");
  EXPECT_TEXT(u"b%1 before a%2", resource.ResourceStrings(1, u"a%2", u"b%1"));
  EXPECT_TEXT(u"100% of 7", resource.ResourceStringV(2, {Value(7)}));
  EXPECT_TEXT(u"key Email gone", resource.ResourceStringV(3, {Value(u"Email")}));
  EXPECT_TEXT(u"key gone", resource.ResourceStringV(3, {Value(u"")}));
  EXPECT_TEXT(u"key gone", resource.ResourceString(3));
  EXPECT_TEXT(u" a\tb\nc\\d ", resource.ResourceString(4));
}

TEST_F(Resources, ANumberWithoutATextNamesItself) {
  Write("C.en.txt", "1 = one\n");
  EXPECT_TEXT(u"(no text for message 10099)", Load("C").ResourceString(10099));
  EXPECT_TEXT(u"(no text for message -1)", New().ResourceStrings(-1, u"a", u"b"));
}

TEST_F(Resources, ACatalogueIsReadOnceInAProcess) {
  Write("D.en.txt", "1 = first\n");
  EXPECT_TEXT(u"first", Load("D").ResourceString(1));
  Write("D.en.txt", "1 = second\n");
  EXPECT_TEXT(u"first", Load("D").ResourceString(1));
}

TEST_F(Resources, AMissingOrDamagedCatalogueIsRaisedByFileAndLineAndReadAfterItsRepair) {
  const std::pair<const char*, const char*> damages[] = {
      {"1 = a\n1 = b\n", "line 2: the number 1 is used twice"},
      {"1 = a\n\nhello\n", "line 3"},
      {"x = a\n", "line 1: \"x\" is no number"},
      {"99999999999 = a\n", "line 1"},
      {"1 = \xFF\n", "line 1: the line is not UTF-8"},
      {"1 = 50%\n", "line 1: a percent sign"},
      {"1 = a\\x\n", "line 1: a backslash"},
      {"1 = a\\\n", "line 1: a backslash"}};
  EXPECT_THROW(Load("E"), Failure);
  for (const auto& [text, why] : damages) {
    Write("E.en.txt", text);
    const std::string refusal = FailureText([&] { Load("E"); });
    EXPECT_PRED2(Holds, refusal, "E.en.txt, ") << text;
    EXPECT_PRED2(Holds, refusal, why) << text;
  }
  Write("E.en.txt", "1 = repaired\n");
  EXPECT_TEXT(u"repaired", Load("E").ResourceString(1));
}

TEST_F(Resources, ADamagedCatalogueLeavesEnglishInUse) {
  Write("F.en.txt", "1 = one\n");
  Write("F.de.txt", "broken\n");
  Speak("de", "", "");
  const Resource resource = New();
  EXPECT_THROW(resource.LoadResources(world.PathOf("F.dll"), u"Tests"), Failure);
  EXPECT_TEXT(u"one", resource.ResourceString(1));
}

TEST_F(Resources, TheFontIsThatOfTheCatalogue) {
  Write("G.en.txt", "font =\n");
  Write("G.ja.txt", "font = MS UI Gothic\n");
  EXPECT_TEXT(u"", Load("G").GetFontName());
  Speak("", "ja_JP.UTF-8", "");
  EXPECT_TEXT(u"MS UI Gothic", Load("G").GetFontName());
}

TEST_F(Resources, ShippedTextsAreCorrectWithTheirArguments) {
  const Resource resource = New();
  resource.LoadResources(world.Services.FolderOf(nullptr) + u"\\TvEmailServicesRes.dll", u"TvEmailServices");
  EXPECT_TEXT(
      u"The registry can't be used. Check that it has been set up on this machine and that you may read it.",
      resource.ResourceStringV(10014, {Value(u"")}));
  EXPECT_TEXT(u"The project /p.TVS can't be opened. ", resource.ResourceStrings(10030, u"/p.TVS", u""));
  EXPECT_TEXT(u"The file Talvane40.Dll can't be found or used. Locate and register it.",
              resource.ResourceStrings(10044, u"Talvane40.Dll", u""));
}

TEST(Help, ShowsTheTopicAndRaisesWhereNoViewerDoes) {
  World world;
  const Platform::Help help(Platform::Services().CreateByName(u"TvGeneralGuiServices.Help"));
  help.DisplayHelpTopic(u"folder/page.html");
  EXPECT_EQ(world.Toolkit.Log.back(), "topic folder/page.html");
  world.Toolkit.HelpOpens = false;
  EXPECT_THROW(help.DisplayHelpTopic(u"folder/page.html"), Failure);
}

}  // namespace
}  // namespace Tests
