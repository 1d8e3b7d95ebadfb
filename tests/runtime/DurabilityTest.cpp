// Durability of the stores: a completed change is on disk, and after a fault of any system call a store has
// its old or its new state, and no other file is left.
#include <sys/stat.h>

#include "platform/contracts/Cipher.h"
#include "platform/contracts/MailIntake.h"
#include "runtime/DurableFile.h"
#include "runtime/RegistryStore.h"
#include "tests/cipher/CheapKeyStore.h"
#include "tests/runtime/SystemCalls.h"
#include "tests/support/Processes.h"
#include "tests/talvane40/Projects.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Runtime::RegistryStore;

// An operation that changes a store.
struct Act {
  const char* Name;
  std::function<void(int)> Do;            // with a unique number
  std::function<std::string(int)> State;  // after that run: "old" or "new"
  int FilesMade = 0;
};

class Durability : public testing::Test {
 protected:
  static void CreateKey(const String& file, const String& label) {
    KeyStore(Platform::Services().CreateByName(u"OstrCipherCOM.KeyStore")).CreateKey(file, u"pw", label);
  }
  static std::string ReadKey(const String& file, const String& label) {
    const Cipher cipher(Platform::Services().CreateByName(u"OstrCipherCOM.OstrCipherCOM"));
    Bytes buffer(Cipher::KeyBufferSize);
    return cipher.Keywell_GetKSKey(file, u"pw", label, buffer).Number == 1 ? "new" : "old";
  }
  static String Numbered(StringView text, int number) {
    return String(text) + FromUtf8(std::to_string(number));
  }
  std::string FreshPath(const char* name, int number) const { return name + std::to_string(number); }

  // Without the log and index of an open database.
  int CountFiles() const {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(world_.Home.Path())) {
      const std::string name = entry.path().filename().string();
      count += name.ends_with("-wal") || name.ends_with("-shm") ? 0 : 1;
    }
    return count;
  }

  std::vector<Act> Acts() {
    const auto present = [](bool is) { return std::string(is ? "new" : "old"); };
    const String keys = world_.PathOf("keys");
    WriteCheapKeyStore(world_.Home.Path() / "keys");
    const auto projectFile = [this] {
      return Files(Platform::Services().CreateByName(u"TvGeneralServices.Files"))
          .RetrieveTVSFile(world_.Path);
    };
    return {
        {"save",
         [=](int n) {
           const ProjectFile file = projectFile();
           file.CreateKey(u"EMail", u"A", Numbered(u"", n));
           file.Save();
         },
         [=](int n) {
           return present(projectFile().KeyValue(u"EMail", u"A").ToString() == Numbered(u"", n));
         }},
        {"create a project",
         [this](int n) {
           world_.Administer.CreateProject(world_.PathOf(FreshPath("p", n) + ".TVS"), u"P", u"Ann", u"",
                                           u"pw");
         },
         [=, this](int n) {
           const String path = world_.PathOf(FreshPath("p", n) + ".TVS");
           return present(fs::exists(ToUtf8(path)) && world_.Open(path, u"Ann", u"pw"));
         },
         2},
        {"create a key store", [=, this](int n) { CreateKey(world_.PathOf(FreshPath("k", n)), u"mail"); },
         [=, this](int n) { return ReadKey(world_.PathOf(FreshPath("k", n)), u"mail"); }, 1},
        {"add a key", [=](int n) { CreateKey(keys, Numbered(u"label", n)); },
         [=](int n) { return ReadKey(keys, Numbered(u"label", n)); }},
        {"write to the registry",
         [](int n) { RegistryStore::CreateKey(Hive::LocalMachine, Numbered(u"Key", n)); },
         [=](int n) { return present(RegistryStore::KeyExists(Hive::LocalMachine, Numbered(u"Key", n))); }},
        {"reply", [this](int n) { Reply(*world_.Open(), Numbered(u"s", n), u"b"); },
         [=, this](int n) {
           const auto replies = world_.Replies();
           return present(!replies.empty() && replies.back().Subject == Numbered(u"s", n));
         }}};
  }

  ProjectWorld world_;
};

TEST_F(Durability, ACompletedChangeIsOnDisk) {
  for (const Act& act : Acts()) {
    SystemCalls calls(world_.Home.Path());
    act.Do(1);
    EXPECT_EQ(calls.NotOnDisk(), "") << act.Name;
    EXPECT_GT(calls.Count(), 1) << act.Name;
  }
}

TEST_F(Durability, RepliesToSeveralMailsAreOnDiskAfterOneSyncOfAll) {
  const MailIntake intake(Platform::Services().CreateByName(MailIntake::kName));
  intake.Open(world_.Path);
  intake.SyncLater();
  const auto project = world_.Open();
  SystemCalls calls(world_.Home.Path());
  const auto deliver = [&](StringView key) {
    intake.Begin(key);
    Reply(*project, key, u"b");
    EXPECT_EQ(intake.End(), IntakeResult::Stored);
  };
  for (const StringView key : {u"1", u"2", u"3"}) deliver(key);
  EXPECT_NE(calls.NotOnDisk(), "");
  intake.Sync();
  EXPECT_EQ(calls.NotOnDisk(), "");
  Reply(*project, u"of no mail", u"b");
  EXPECT_EQ(calls.NotOnDisk(), "");
  deliver(u"4");
  calls.Fail(calls.Count() + 1, EIO);
  for (int i = 0; i < 2; ++i) EXPECT_PRED2(Holds, FailureText([&] { intake.Sync(); }), "-wal");
}

TEST_F(Durability, AFaultOfAnyCallLeavesTheOldStateOrTheNewAndNoOtherFile) {
  for (const Act& act : Acts()) {
    int raised = 0;
    for (int number = 1;; ++number) {
      const int before = CountFiles();
      std::string failure;
      bool reached = false, ofNewContent = false;
      {
        SystemCalls calls(world_.Home.Path());
        calls.Fail(number, number % 2 == 0 ? EIO : ENOSPC);
        failure = FailureText([&] { act.Do(number); });
        reached = calls.HasFailed();
        ofNewContent = calls.FailedPath().ends_with(".new");
      }
      const bool isDone = failure.empty() || Holds(failure, "was saved");
      EXPECT_EQ(act.State(number), isDone ? "new" : "old") << act.Name << " " << number << ": " << failure;
      EXPECT_EQ(CountFiles(), before + (isDone ? act.FilesMade : 0)) << act.Name << " " << number;
      EXPECT_FALSE(ofNewContent && isDone)
          << act.Name << " " << number << ": a fault of the temporary file was ignored";
      raised += failure.empty() ? 0 : 1;
      if (!reached) break;
    }
    EXPECT_GE(raised, 2) << act.Name;
  }
}

TEST_F(Durability, AnUnsupportedCallIsToleratedAndADiskErrorIsNot) {
  for (const Act& act : Acts()) {
    const int before = CountFiles();
    SystemCalls calls(world_.Home.Path());
    calls.FailSyncsOfFolders(EINVAL);
    calls.FailRenamesThatReplaceNothing(EINVAL);
    EXPECT_EQ(FailureText([&] { act.Do(1); }), "") << act.Name;
    EXPECT_EQ(CountFiles(), before + act.FilesMade) << act.Name;
    EXPECT_EQ(act.State(1), "new") << act.Name;
    calls.FailSyncsOfFolders(EIO);
    const bool syncsFolder = StringView(u"reply") != FromUtf8(act.Name) && !Holds(act.Name, "registry");
    EXPECT_EQ(FailureText([&] { act.Do(2); }).empty(), !syncsFolder) << act.Name;
  }
}

TEST_F(Durability, AFileSizeLimitIsAWriteFailureThatNamesTheLimit) {
  const String large(200'000, u'x');
  const ProjectFile file =
      Files(Platform::Services().CreateByName(u"TvGeneralServices.Files")).RetrieveTVSFile(world_.Path);
  file.CreateKey(u"EMail", u"A", large);
  const auto project = world_.Open();
  EXPECT_EQ(InAnotherProcess([&] {
              LimitFileSize(50'000);
              for (const std::function<void()>& act : std::initializer_list<std::function<void()>>{
                       [&] { file.Save(); }, [&] { Reply(*project, u"s", large); },
                       [&] {
                         RegistryStore::CreateKey(Hive::LocalMachine, u"K"),
                             RegistryStore::Write(Hive::LocalMachine, u"K", u"v", {1, large});
                       }})
                EXPECT_PRED2(Holds, FailureText(act), "at most 50000 bytes");
            }),
            0);
  EXPECT_TRUE(world_.Replies().empty());
}

TEST_F(Durability, AWaitForALockEndsWithAReasonAfterTheTimeout) {
  const std::string folder = world_.Home.Path().string(), path = folder + "/apollo.TVS";
  const std::chrono::milliseconds none(0);
  const Runtime::LockedFile file(path, 1000, none);
  const Runtime::FolderLock held(folder, none);
  EXPECT_PRED2(Holds, FailureText([&] { Runtime::LockedFile(path, 1000, none); }), path + " is in use by");
  EXPECT_PRED2(Holds, FailureText([&] { Runtime::FolderLock(folder, none); }), folder + " is in use by");
  EXPECT_EQ(Runtime::BusyTimeout(), std::chrono::seconds(10));
}

TEST_F(Durability, AReplacedFileKeepsTheOwnerAndTheRightsThatItsWriterMayGive) {
  const std::string path = world_.Home.Path() / "rights", content(100, 'x');
  WriteFile(path, "x");
  SystemCalls calls(world_.Home.Path());
  for (const auto& [failures, mode] : {std::pair(0, 02664U), {1, 02664U}, {2, 0604U}}) {
    ASSERT_EQ(chmod(path.c_str(), 02664), 0);
    calls.FailOwnerChanges(failures);
    Runtime::LockedFile(path, 100, std::chrono::milliseconds(0)).Replace(content);
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, mode);
  }
  const Runtime::LockedFile file(path, 100, std::chrono::milliseconds(0));
  EXPECT_EQ(file.Read().Content, content);
  EXPECT_PRED2(Holds, FailureText([&] { file.Replace(content + "y"); }), "100");
  EXPECT_PRED2(Holds, FailureText([&] { Runtime::ReadSmallFile(path, 99); }), "99");
}

TEST_F(Durability, TwoProcessesThatAddKeysAtTheSameTimeLoseNone) {
  const String keys = world_.PathOf("together");
  const auto maker = [&](char16_t name) {
    return [&keys, name] {
      for (int i = 0; i < 2; ++i) CreateKey(keys, Numbered(String(1, name), i));
    };
  };
  const pid_t other = StartProcess(maker(u'c'));
  maker(u'p')();
  EXPECT_EQ(EndOf(other), 0);
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ReadKey(keys, Numbered(u"c", i)), "new");
    EXPECT_EQ(ReadKey(keys, Numbered(u"p", i)), "new");
  }
}

}  // namespace
}  // namespace Tests
