// The catalogues that are shipped: every language has every text, with the same places for arguments.
#include <algorithm>
#include <map>
#include <regex>
#include <set>

#include "tests/support/World.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

using Texts = std::map<int, std::string>;

Texts ReadCatalogue(const std::string& file) {
  const std::string bytes = ReadFile(fs::path(SOURCE_FOLDER) / "resources" / file);
  EXPECT_TRUE(IsUtf8(bytes)) << file;
  Texts texts;
  static const std::regex line("(?:^|\n)(\\d+) = ([^\n]*)");
  for (std::sregex_iterator i(bytes.begin(), bytes.end(), line), end; i != end; ++i) {
    texts[std::stoi((*i)[1])] = (*i)[2];
  }
  return texts;
}

std::multiset<std::string> Matches(const std::string& text, const char* pattern) {
  std::multiset<std::string> found;
  const std::regex expression(pattern);
  for (std::sregex_iterator i(text.begin(), text.end(), expression), end; i != end; ++i)
    found.insert(i->str());
  return found;
}

class Catalogue : public testing::TestWithParam<const char*> {
 protected:
  Texts Component() const { return ReadCatalogue(std::string("TvEmailServicesRes.") + GetParam() + ".txt"); }
};

TEST_P(Catalogue, HasTheNumbersAndTheArgumentPlacesOfEnglish) {
  for (const std::string stem : {"TvEmailServicesRes.", "TvComRes."}) {
    const Texts english = ReadCatalogue(stem + "en.txt"), own = ReadCatalogue(stem + GetParam() + ".txt");
    ASSERT_FALSE(english.empty());
    EXPECT_EQ(english.size(), own.size());
    for (const auto& [number, text] : english) {
      ASSERT_TRUE(own.contains(number)) << number;
      EXPECT_FALSE(own.at(number).empty()) << number;
      EXPECT_EQ(Matches(text, "%.|\\\\."), Matches(own.at(number), "%.|\\\\.")) << number;
    }
  }
}

TEST_P(Catalogue, KeepsTheTextsThatStoresAndSentMailsHold) {
  for (const int number : {9100, 9101}) {
    EXPECT_EQ(Component().at(number), ReadCatalogue("TvEmailServicesRes.en.txt").at(number));
  }
  EXPECT_EQ(ReadCatalogue(std::string("TvComRes.") + GetParam() + ".txt"), ReadCatalogue("TvComRes.en.txt"));
}

TEST_P(Catalogue, GivesEachCaptionOfADialogAnAccessKeyOfItsOwn) {
  const Texts texts = Component();
  const std::vector<int> dialogs[] = {{1000, 1002, 1003, 1004, 1005, 8002},
                                      {1001, 1002, 1003, 1004, 1005, 8002},
                                      {1006, 1007, 1008, 8002, 8003}};
  for (const auto& dialog : dialogs) {
    std::set<std::string> keys;
    for (const int number : dialog) {
      const auto marked = Matches(texts.at(number), "&[A-Za-z]");
      ASSERT_EQ(marked.size(), 1U) << number;
      EXPECT_TRUE(keys.insert(Utf8(FoldCase(FromUtf8(*marked.begin())))).second) << number;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Shipped, Catalogue, testing::Values("en", "de", "ja"));

TEST(English, HasTheCaptionsOfTheDialogs) {
  const Texts texts = ReadCatalogue("TvEmailServicesRes.en.txt");
  std::string captions;
  for (const int number :
       {1001, 1002, 1003, 1004, 1005, 1006, 1007, 1008, 8000, 8001, 8002, 8003, 9000, 9002})
    captions += texts.at(number) + "|";
  EXPECT_EQ(
      captions,
      "&Profile:|E-&mail protocol:|&E-mail address:|&Real Name:|Enable e-mail &notification|Pass&word:|"
      "&Project Path:|&User Name:|OK|Cancel|&Help|&Browse...|E-mail Configuration|Talvane E-mail Setup|");
  EXPECT_NE(texts.at(9100), texts.at(9101));
}

TEST(English, HasExactlyTheNumbersThatTheComponentUses) {
  std::set<int> used;
  for (const auto& file : fs::recursive_directory_iterator(fs::path(SOURCE_FOLDER) / "src")) {
    if (!file.is_regular_file()) continue;
    for (const std::string& number :
         Matches(ReadFile(file), "\\b(100\\d|2057|2166|800[0-3]|900[0-2]|910[0-2]|100[0-6]\\d)\\b")) {
      used.insert(std::stoi(number));
    }
  }
  std::set<int> there;
  for (const char* file : {"TvEmailServicesRes.en.txt", "TvComRes.en.txt"}) {
    for (const auto& [number, text] : ReadCatalogue(file)) there.insert(number);
  }
  EXPECT_EQ(there, used);
}

}  // namespace
}  // namespace Tests
