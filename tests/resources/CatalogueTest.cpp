// The catalogues that are shipped: every language has every text, with the same places for arguments.
#include <algorithm>
#include <cerrno>
#include <map>
#include <regex>
#include <set>
#include <span>
#include <system_error>

#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "platform/ReasonTexts.h"
#include "runtime/SystemReason.h"
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

class Catalogue : public testing::TestWithParam<std::string> {
 protected:
  Texts Component() const { return ReadCatalogue("TvEmailServicesRes." + GetParam() + ".txt"); }
};

TEST_P(Catalogue, HasExactlyTheTextsThatTheComponentUses) {
  std::vector<TextNumber::CatalogueText> programs(std::begin(TextNumber::kProgramTexts),
                                                  std::end(TextNumber::kProgramTexts));
  programs.insert(programs.end(), std::begin(TextNumber::kReasonTexts), std::end(TextNumber::kReasonTexts));
  programs.insert(programs.end(), std::begin(TextNumber::kNoticeTexts), std::end(TextNumber::kNoticeTexts));
  const std::pair<std::string, std::span<const TextNumber::CatalogueText>> catalogues[] = {
      {"TvEmailServicesRes.", TextNumber::kComponentTexts},
      {"TvComRes.", TextNumber::kSharedTexts},
      {"TvDesktopRes.", TextNumber::kDesktopTexts},
      {"TvMailRes.", programs}};
  for (const auto& [stem, listed] : catalogues) {
    const Texts english = ReadCatalogue(stem + "en.txt"), own = ReadCatalogue(stem + GetParam() + ".txt");
    EXPECT_EQ(listed.size(), own.size());
    for (const auto& [number, arguments] : listed) {
      ASSERT_TRUE(english.contains(number) && own.contains(number)) << number;
      EXPECT_FALSE(own.at(number).empty()) << number;
      EXPECT_EQ(Matches(own.at(number), "%[1-9]").size(), static_cast<std::size_t>(arguments)) << number;
      EXPECT_EQ(Matches(english.at(number), "%.|\\\\."), Matches(own.at(number), "%.|\\\\.")) << number;
    }
  }
}

TEST_P(Catalogue, KeepsTheTextsThatStoresAndSentMailsHold) {
  for (const int number : {9100, 9101}) {
    EXPECT_EQ(Component().at(number), ReadCatalogue("TvEmailServicesRes.en.txt").at(number));
  }
  EXPECT_EQ(ReadCatalogue("TvComRes." + GetParam() + ".txt"), ReadCatalogue("TvComRes.en.txt"));
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

INSTANTIATE_TEST_SUITE_P(Shipped, Catalogue, testing::ValuesIn(CatalogueLanguages()));

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

TEST(English, GivesTheSystemsErrorsTheirUsualTexts) {
  for (const int error :
       {ENOSPC, EACCES, EROFS, ENOENT, ENOTDIR, EISDIR, EIO, EDQUOT, EBUSY, EMFILE, ENAMETOOLONG})
    EXPECT_EQ(Runtime::SystemReason(error), std::generic_category().message(error));
}

}  // namespace
}  // namespace Tests
