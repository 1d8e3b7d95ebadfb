// Project files through the real library: content, refused input, and failed saves.
#include <sys/stat.h>

#include "platform/contracts/GeneralServices.h"
#include "tests/support/Processes.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

const std::string kPlain = "[Project]\nFormat=1\nName=Apollo\nDatabase=apollo.db\n";

class ProjectFiles : public testing::Test {
 protected:
  ProjectFiles() { Put(kPlain); }

  void Put(std::string_view text) const { WriteFile(path_, text); }
  std::string Text() const { return ReadFile(path_); }

  static Files NewFiles() { return Files(Services().CreateByName(u"TvGeneralServices.Files")); }
  ProjectFile Open() const { return NewFiles().RetrieveTVSFile(FromUtf8(path_.string())); }

  // The failure text of CheckTVSFilePath for a path; RetrieveTVSFile must refuse the same paths.
  static std::string Refusal(const String& path) {
    const std::string check = FailureText([&] { NewFiles().CheckTVSFilePath(path); });
    EXPECT_EQ(check.empty(), FailureText([&] { NewFiles().RetrieveTVSFile(path); }).empty());
    return check;
  }
  std::string Refusal() const { return Refusal(FromUtf8(path_.string())); }

  // 1 where nothing is left beside the project file.
  auto CountOfFiles() const { return std::distance(fs::directory_iterator(folder_.Path()), {}); }

  World world_;
  TemporaryFolder folder_;
  fs::path path_ = folder_.Path() / "Apollo.TVS";
};

TEST_F(ProjectFiles, APathThatIsNoProjectFileIsRefusedWithWhatItIs) {
  EXPECT_EQ(Refusal(), "");
  EXPECT_EQ(Refusal(u"  " + FromUtf8(path_.string()) + u" "), "");
  const String folder = FromUtf8(folder_.Path().string());
  const std::pair<String, const char*> paths[] = {{u"", "empty"},
                                                  {folder, "is a folder"},
                                                  {folder + u"/none.TVS", "doesn't exist"},
                                                  {folder + u"/Apollo.TVS/x", "doesn't exist"},
                                                  {folder + u"/Apollo.TVS" + String(u"\0x", 2), "NUL"},
                                                  {folder + u"/" + String(300, u'n'), "can't be read: "},
                                                  {u"/dev/null", "no ordinary file"}};
  for (const auto& [path, expected] : paths) EXPECT_PRED2(Holds, Refusal(path), expected);
  const std::pair<std::string, const char*> texts[] = {
      {"", "[Project]"},
      {"Format=1\n[Project]\n", "[Project]"},
      {"[Other]\nFormat=1\n[Project]\nFormat=1\n", "[Project]"},
      {"[Project]\nName=x\n", "Format"},
      {"[Project]\nFormat=2\n", "format 2"},
      {"[Project]\nFormat=1\nName=\xE4\n", "UTF-8"},
      {"[Project]\nFormat=1\n" + std::string(1, '\0'), "UTF-8"},
      {kPlain + std::string(2 << 20, ';'), "too large"}};
  for (const auto& [text, expected] : texts) {
    Put(text);
    EXPECT_PRED2(Holds, Refusal(), expected);
    EXPECT_EQ(Refusal().find(path_.string()), 0U) << Refusal();
  }
  Put(kPlain);
  if (geteuid() != 0) return;
  fs::permissions(path_, fs::perms::none);
  fs::permissions(folder_.Path(), fs::perms(0755));
  const Files files = NewFiles();
  EXPECT_EQ(InAnotherProcess([&] {
              if (setuid(65534) != 0) return;
              EXPECT_PRED2(Holds, FailureText([&] { files.CheckTVSFilePath(FromUtf8(path_.string())); }),
                           "Permission denied");
            }),
            0);
}

TEST_F(ProjectFiles, ARelativePathCanBeReadButNotStoredInARecord) {
  const fs::path before = fs::current_path();
  fs::current_path(folder_.Path());
  EXPECT_NO_THROW(NewFiles().RetrieveTVSFile(u"Apollo.TVS"));
  EXPECT_PRED2(Holds, FailureText([] { NewFiles().CheckTVSFilePath(u"Apollo.TVS"); }), "beginning with /");
  fs::current_path(before);
}

TEST_F(ProjectFiles, ASavedKeyChangesItsOwnLineAlone) {
  const std::string before =
      "\xEF\xBB\xBF; a comment\r\n[ProJect]\r\nFormat=1\r\n  Name = Apollo\r\n\r\n# of mail\r\n[Email]\r\n"
      "transportid =\t2\r\na line of another kind\r\n\r\n; of the last\r\n[Last]\nKey=Value";
  Put(before);
  const ProjectFile file = Open();
  EXPECT_TEXT(u"2", file.KeyValue(u"EMail", u"TransportID").ToString());
  EXPECT_TEXT(u"Value", file.KeyValue(u"LAST", u"key").ToString());
  EXPECT_TRUE(file.KeyValue(u"EMail", u"Absent").IsEmpty());
  EXPECT_TRUE(file.KeyValue(u"Absent", u"Key").IsEmpty());
  file.CreateKey(u"EMAIL", u"TransportID", u"1");
  file.CreateKey(u"EMAIL", u"MAPIProfile", u"Outlook");
  file.CreateKey(u"New", u"Key", u"");
  EXPECT_EQ(Text(), before);
  file.Save();
  std::string after = before;
  after.replace(after.find("\t2"), 2, "\t1");
  after.insert(after.find("\r\n; of the last"), "MAPIProfile=Outlook\r\n");
  EXPECT_EQ(Text(), after + "\r\n\r\n[New]\r\nKey=\r\n");
  EXPECT_FALSE(Open().KeyValue(u"New", u"Key").IsEmpty());
}

TEST_F(ProjectFiles, ARemovedSectionGoesWholeAndLeavesItsNeighbours) {
  Put(kPlain + "\n[EMail]\nA=1\nrubbish\n; inside\nB=2\n\n; of the next\n[Next]\nC=3\n[email]\nA=2\n");
  const ProjectFile file = Open();
  EXPECT_TRUE(file.HasSection(u"EMAIL"));
  EXPECT_TRUE(file.DeleteSection(u"EMail"));
  EXPECT_FALSE(file.HasSection(u"EMAIL"));
  EXPECT_TRUE(file.DeleteSection(u"EMail"));
  EXPECT_FALSE(file.DeleteSection(u"Project"));
  file.Save();
  EXPECT_EQ(Text(), kPlain + "\n\n; of the next\n[Next]\nC=3\n");
  for (int i = 0; i < 3; ++i) {
    const ProjectFile again = Open();
    again.CreateKey(u"EMail", u"A", u"1");
    again.Save();
    again.DeleteSection(u"EMail");
    again.Save();
  }
  EXPECT_EQ(Text(), kPlain + "\n\n; of the next\n[Next]\nC=3\n\n");
}

TEST_F(ProjectFiles, EveryValueAndNameReadsBackAsItWasSet) {
  const String texts[] = {u" both ends ",
                          u"\ttab\t",
                          u"a\r\nb\n",
                          u"\\n \\u0041 \\ \\\\",
                          u"C:\\new\\users",
                          u"\xD800",
                          u"\xDC00\xD800",
                          u"\U0001F600",
                          u"\uFEFF",
                          u"a\0b"s,
                          u"=[x];#",
                          u"[EMail]",
                          u"\"q\"",
                          u";c",
                          u"]",
                          u" "};
  const ProjectFile file = Open();
  for (const String& text : texts) {
    file.CreateKey(u"EMail", text, text);
    file.CreateKey(text, u"Key", text);
  }
  file.Save();
  EXPECT_EQ(Refusal(), "");
  const ProjectFile read = Open();
  for (const String& text : texts) {
    EXPECT_TEXT(text, read.KeyValue(u"EMail", text).ToString());
    EXPECT_TEXT(text, read.KeyValue(text, u"Key").ToString());
  }
  EXPECT_TEXT(u"Apollo", read.KeyValue(u"Project", u"Name").ToString());
  Put(kPlain + "[Typed]\nPath=C:\\Data\\x\n");
  EXPECT_TEXT(u"C:\\Data\\x", Open().KeyValue(u"Typed", u"Path").ToString());
}

TEST_F(ProjectFiles, ASaveKeepsWhatOthersSavedMeanwhile) {
  const ProjectFile first = Open(), second = Open();
  first.CreateKey(u"EMail", u"A", u"1");
  second.CreateKey(u"email", u"B", u"2");
  first.Save();
  second.Save();
  const ProjectFile read = Open();
  EXPECT_TEXT(u"1", read.KeyValue(u"EMail", u"A").ToString());
  EXPECT_TEXT(u"2", read.KeyValue(u"EMail", u"B").ToString());
  const auto writer = [&](char16_t name) {
    return [this, name] {
      for (int i = 0; i < 25; ++i) {
        const ProjectFile file = Open();
        file.CreateKey(u"Many", String(1, name) + FromUtf8(std::to_string(i)), u"x");
        file.Save();
      }
    };
  };
  const pid_t child = StartProcess(writer(u'c'));
  writer(u'p')();
  EXPECT_EQ(EndOf(child), 0);
  const std::string text = Text();
  EXPECT_EQ(std::count(text.begin(), text.end(), 'x'), 50);
}

TEST_F(ProjectFiles, ASaveKeepsModeAndOwnerAndTheLinkThatLedToTheFile) {
  fs::permissions(path_, fs::perms(0640));
  if (geteuid() == 0) {
    ASSERT_EQ(chown(path_.c_str(), 1234, 2345), 0);
  }
  const fs::path link = folder_.Path() / "link.TVS";
  fs::create_symlink("Apollo.TVS", link);
  const ProjectFile file = NewFiles().RetrieveTVSFile(FromUtf8(link.string()));
  file.CreateKey(u"EMail", u"A", u"1");
  file.Save();
  struct stat status {};
  ASSERT_EQ(stat(path_.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 07777, 0640U);
  if (geteuid() == 0) {
    EXPECT_EQ(status.st_uid, 1234U);
    EXPECT_EQ(status.st_gid, 2345U);
  }
  EXPECT_TRUE(fs::is_symlink(link));
  EXPECT_NE(Text().find("A=1"), std::string::npos);
  EXPECT_EQ(CountOfFiles(), 2);
}

TEST_F(ProjectFiles, AFailedSaveLeavesTheOldFileWholeAndCanBeTriedAgain) {
  const ProjectFile file = Open();
  file.CreateKey(u"EMail", u"A", String(100'000, u'x'));
  EXPECT_EQ(InAnotherProcess([&] {  // a disk that is full after 50 kB
              LimitFileSize(50'000);
              EXPECT_THROW(file.Save(), Failure);
            }),
            0);
  EXPECT_EQ(InAnotherProcess([&] {  // a folder and a file of somebody else
              if (geteuid() == 0 && setuid(65534) == 0) {
                EXPECT_THROW(file.Save(), Failure);
              }
            }),
            0);
  EXPECT_EQ(Text(), kPlain);
  EXPECT_EQ(CountOfFiles(), 1);
  Put("damaged");
  EXPECT_THROW(file.Save(), Failure);
  EXPECT_EQ(Text(), "damaged");
  fs::remove(path_);
  EXPECT_THROW(file.Save(), Failure);
  EXPECT_FALSE(fs::exists(path_));
  Put(kPlain);
  file.Save();
  EXPECT_EQ(Open().KeyValue(u"EMail", u"A").ToString().size(), 100'000U);
}

TEST_F(ProjectFiles, AKilledSaveLeavesOneOfTheTwoTextsAndTheNextSaveClearsUp) {
  for (int round = 0; round < 12; ++round) {
    const pid_t child = StartProcess([&] {
      const ProjectFile file = Open();
      for (int i = 0;; ++i) {
        file.CreateKey(u"EMail", u"A", String(20'000, static_cast<char16_t>(u'a' + i % 26)));
        file.Save();
      }
    });
    usleep(static_cast<useconds_t>(3000 + round * 1700));
    KillProcess(child);
    const String value = Open().KeyValue(u"EMail", u"A").ToString();
    EXPECT_TRUE(value.empty() || value == String(20'000, value[0]));
  }
  WriteFile(folder_.Path() / ".Apollo.TVS.new", "half");
  const ProjectFile file = Open();
  file.CreateKey(u"EMail", u"B", u"1");
  file.Save();
  EXPECT_EQ(CountOfFiles(), 1);
}

}  // namespace
}  // namespace Tests
