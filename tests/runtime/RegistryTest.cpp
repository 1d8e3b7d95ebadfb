// The registry store: content, refused input, and durability.
#include "runtime/RegistryStore.h"

#include <fcntl.h>

#include <thread>

#include "runtime/ClassLookup.h"
#include "runtime/Database.h"
#include "tests/support/Processes.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using Runtime::RegistryStore;
using Runtime::RegistryValue;

constexpr Hive kUser = Hive::CurrentUser;
constexpr Hive kMachine = Hive::LocalMachine;

class Registry : public testing::Test {
 protected:
  Registry() {
    setenv("TALVANE_HOME", home_.Path().c_str(), 1);
    RegistryStore::Create(kMachine);
    RegistryStore::Create(kUser);
    RegistryStore::CreateKey(kMachine, u"A\\B");
  }

  std::filesystem::path File(Hive hive = kMachine) const { return ToUtf8(RegistryStore::FileOf(hive)); }

  TemporaryFolder home_;
};

// The description of the failure 57 that the work raises; another result in parentheses or as its number.
std::string RefusalOf(const std::function<void()>& act) {
  try {
    act();
    return "(nothing was raised)";
  } catch (const Failure& failure) {
    return failure.Number() == FailureNumber::DeviceFailed ? failure.what()
                                                           : "number " + std::to_string(failure.Number());
  }
}

void WriteText(StringView path, StringView name, StringView text) {
  ASSERT_TRUE(RegistryStore::Write(kMachine, path, name, {1, text}));
}

std::string TextAt(StringView path, StringView name) {
  const auto value = RegistryStore::Read(kMachine, path, name);
  return value ? Utf8(value->Content.ToString()) : "(none)";
}

TEST_F(Registry, NamesMatchInAnyCaseAndKeepTheSpellingOfTheirCreation) {
  RegistryStore::CreateKey(kMachine, u"Software\\\u00c4pfel \xD800");
  RegistryStore::CreateKey(kMachine, u"SOFTWARE\\\u00e4PFEL \xD800\\Sub");
  EXPECT_TRUE(RegistryStore::KeyExists(kMachine, u"software\\\u00e4pfel \xD800\\SUB"));
  const auto names = RegistryStore::SubKeys(kMachine, u"software");
  ASSERT_EQ(names.size(), 1U);
  EXPECT_TEXT(u"\u00c4pfel \xD800", names[0]);
  WriteText(u"a\\b", u"N\u00c4me", u"one");
  WriteText(u"A\\B", u"n\u00e4ME", u"two");
  EXPECT_EQ(TextAt(u"A\\B", u"N\u00c4ME"), "two");
  EXPECT_FALSE(RegistryStore::KeyExists(kUser, u"A\\B"));
}

TEST_F(Registry, WhatAnotherConnectionChangesIsReadAtOnce) {
  WriteText(u"A\\B", u"v", u"old");
  Runtime::Database other(File().string());
  for (const std::string text : {"first", "second", "third"}) {
    other.Run(("UPDATE value SET content='" + text + "'").c_str());
    EXPECT_EQ(TextAt(u"A\\B", u"v"), text);
    EXPECT_EQ(TextAt(u"a\\b", u"V"), text);
  }
  EXPECT_FALSE(RegistryStore::KeyExists(kMachine, u"A\\C"));
  other.Run("DELETE FROM value; UPDATE key SET path='a\\c', name='C' WHERE path='a\\b'");
  EXPECT_TRUE(RegistryStore::KeyExists(kMachine, u"A\\C"));
  EXPECT_FALSE(RegistryStore::KeyExists(kMachine, u"A\\B"));
  EXPECT_EQ(TextAt(u"A\\C", u"v"), "(none)");
  WriteText(u"A\\C", u"v", u"own");
  EXPECT_EQ(TextAt(u"A\\C", u"v"), "own");
}

// What another process does to the database between two reads of this one.
const std::function<void(std::optional<Runtime::Database>& other, const std::string& file)> kSteps[] = {
    [](auto&, auto&) {},
    [](auto& other, auto&) { other->Run("PRAGMA wal_checkpoint(PASSIVE)"); },
    [](auto& other, auto&) { other->Run("PRAGMA wal_checkpoint(TRUNCATE)"); },
    [](auto& other, auto&) { other->Run("VACUUM"); },
    [](auto& other, auto&) { other.reset(); },
    [](auto&, auto& file) {  // as a writer does that is killed in the middle of a commit
      const int index = open((file + "-shm").c_str(), O_RDWR);
      EXPECT_EQ(pwrite(index, "half", 4, 64), 4);
      close(index);
    }};

TEST_F(Registry, WhatAnotherProcessChangesIsReadAtOnceAlsoAfterItsLogWasEmptiedOrDamaged) {
  WriteText(u"A\\B", u"v", u"0");
  int asks[2], answers[2];
  ASSERT_EQ(pipe(asks) + pipe(answers), 0);
  const pid_t child = StartProcess([&] {
    close(asks[1]);
    std::optional<Runtime::Database> other;
    for (int round = 0; read(asks[0], &round, sizeof round) == sizeof round;) {
      if (!other) other.emplace(File().string());
      other->Run(("UPDATE value SET content='" + std::to_string(round) + "'").c_str());
      kSteps[static_cast<std::size_t>(round) % std::size(kSteps)](other, File().string());
      EXPECT_EQ(write(answers[1], &round, sizeof round), ssize_t{sizeof round});
    }
  });
  close(asks[0]);
  const Runtime::ClassLookupScope scope;
  for (int round = 1; round < 60; ++round) {
    EXPECT_EQ(TextAt(u"A\\B", u"v"), std::to_string(round - 1));
    ASSERT_EQ(write(asks[1], &round, sizeof round), ssize_t{sizeof round});
    ASSERT_EQ(read(answers[0], &round, sizeof round), ssize_t{sizeof round});
    EXPECT_EQ(TextAt(u"A\\B", u"v"), std::to_string(round));
  }
  close(asks[1]);
  EXPECT_EQ(EndOf(child), 0);
}

TEST_F(Registry, EveryContentReadsBackAsItWas) {
  const String texts[] = {
      u"", u" \t\r\n", String(u"a\0b", 3), u"\xDC00 \xD800", u"\uFEFF", String(300000, u'\u20ac')};
  for (const String& text : texts) {
    WriteText(u"A", text, text);
    EXPECT_EQ(TextAt(u"A", text), Utf8(text)) << Utf8(text).substr(0, 20);
  }
  for (const double number : {0.0, -1.0, 2147483647.0, 4294967296.0, 0.1, 1e300}) {
    ASSERT_TRUE(RegistryStore::Write(kMachine, u"A", u"n", {4, number}));
    const auto read = RegistryStore::Read(kMachine, u"A", u"n");
    EXPECT_EQ(read->Content.ToDouble(), number);
    EXPECT_FALSE(read->Content.IsString());
  }
  ASSERT_TRUE(RegistryStore::Write(kMachine, u"A", u"b", {3, Bytes{0, 255, 0}}));
  EXPECT_EQ(RegistryStore::Read(kMachine, u"A", u"b")->Content.ToBytes(), (Bytes{0, 255, 0}));
  EXPECT_THROW(RegistryStore::Write(kMachine, u"A", u"b", {2, u""}), Failure);
  EXPECT_EQ(RegistryStore::Read(kMachine, u"A", u"b")->Type, 3);
  EXPECT_FALSE(RegistryStore::Write(kMachine, u"Absent", u"b", {1, u""}));
}

TEST_F(Registry, DeletingAKeyTakesAllBelowItAndNothingBeside) {
  for (const StringView path : {u"K\\Sub\\Deep", u"K-", u"K]", u"Kk"})
    RegistryStore::CreateKey(kMachine, path);
  WriteText(u"K\\Sub\\Deep", u"v", u"old");
  WriteText(u"K", u"v", u"old");
  EXPECT_TRUE(RegistryStore::DeleteKey(kMachine, u"k"));
  EXPECT_FALSE(RegistryStore::DeleteKey(kMachine, u"k"));
  EXPECT_FALSE(RegistryStore::KeyExists(kMachine, u"K\\Sub\\Deep"));
  EXPECT_EQ(RegistryStore::SubKeys(kMachine, u""), (std::vector<String>{u"A", u"K-", u"K]", u"Kk"}));
  RegistryStore::CreateKey(kMachine, u"K\\Sub\\Deep");
  EXPECT_EQ(TextAt(u"K\\Sub\\Deep", u"v"), "(none)");
  EXPECT_EQ(TextAt(u"K", u"v"), "(none)");
  EXPECT_THROW(RegistryStore::DeleteKey(kMachine, u""), Failure);
}

TEST_F(Registry, AnInvalidPathHasNoKeyAndCanNotBeCreated) {
  for (const String& path : {String(u"\\"), String(u"A\\"), String(u"\\A"), String(u"A\\\\B"),
                             String(u"A\0", 2), String(256, u'x')}) {
    EXPECT_FALSE(RegistryStore::KeyExists(kMachine, path)) << Utf8(path);
    EXPECT_THROW(RegistryStore::CreateKey(kMachine, path), Failure) << Utf8(path);
  }
  RegistryStore::CreateKey(kMachine, String(255, u'x'));
  EXPECT_EQ(RegistryStore::SubKeys(kMachine, u"").size(), 2U);
}

TEST_F(Registry, OnlyTheOwnerMayUseTheFiles) {
  for (const auto& entry : std::filesystem::directory_iterator(home_.Path()))
    EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry.path();
}

TEST_F(Registry, AMissingStoreIsReportedAndARestoredOneIsRead) {
  WriteText(u"A", u"v", u"kept");
  const auto away = home_.Path() / "away";
  ASSERT_EQ(InAnotherProcess([] {}), 0);  // a fork closes the store, so that its file is complete
  std::filesystem::rename(File(), away);
  for (const auto& refusal : {RefusalOf([] { RegistryStore::KeyExists(kMachine, u"A"); }),
                              RefusalOf([] { WriteText(u"A", u"v", u"lost"); })}) {
    EXPECT_PRED2(Holds, refusal, "tvmail init");
    EXPECT_PRED2(Holds, refusal, File().string());
  }
  EXPECT_FALSE(std::filesystem::exists(File()));
  std::filesystem::rename(away, File());
  EXPECT_EQ(TextAt(u"A", u"v"), "kept");
  const Runtime::ClassLookupScope scope;
  std::filesystem::rename(File(), away);
  std::this_thread::sleep_for(Runtime::RegistryScope::kLookInterval);
  EXPECT_PRED2(Holds, RefusalOf([] { RegistryStore::KeyExists(kMachine, u"A"); }), "tvmail init");
}

TEST_F(Registry, AnInvalidStoreIsRefusedAndNotChanged) {
  for (int i = 0; i < 80; ++i)
    RegistryStore::CreateKey(kMachine, u"Many\\" + String(200, u'k') + FromUtf8(std::to_string(i)));
  ASSERT_EQ(InAnotherProcess([] {}), 0);
  const std::string good = ReadFile(File());
  std::string newer = good, foreign = good, damaged = good;
  newer[63] = 2;     // the low byte of the user version
  foreign[71] ^= 1;  // the low byte of the application's number
  damaged.replace(damaged.size() / 4, damaged.size() / 2, damaged.size() / 2, '\xA5');
  const std::pair<const char*, std::string> rows[] = {
      {"a text",
       "This is a text, long enough to be taken for the first page of a database that isn't one.\n"},
      {"newer", newer},
      {"foreign", foreign},
      {"cut", good.substr(0, good.size() / 2)},
      {"damaged", damaged}};
  for (const auto& [name, bytes] : rows) {
    WriteFile(File(), bytes);
    for (const auto& refusal : {RefusalOf([] { RegistryStore::SubKeys(kMachine, u"Many"); }),
                                RefusalOf([] { RegistryStore::DeleteKey(kMachine, u"Many"); })})
      EXPECT_EQ(refusal.find(File().string()), 0U) << name << ": " << refusal;
    RefusalOf([] { RegistryStore::Create(kMachine); });
    EXPECT_TRUE(ReadFile(File()) == bytes) << name;
  }
  WriteFile(File(), good);
  EXPECT_EQ(RegistryStore::SubKeys(kMachine, u"Many").size(), 80U);
}

TEST_F(Registry, AMissingOrEmptyStoreWithALogIsNotCreatedAgain) {
  // The writer ends without closing, so that its changes are only in the log.
  ASSERT_EQ(InAnotherProcess([] { WriteText(u"A", u"v", u"kept"); }), 0);
  const std::string main = ReadFile(File());
  const std::string log = ReadFile(File().string() + "-wal");
  ASSERT_FALSE(log.empty());
  for (const bool missing : {false, true}) {
    missing ? void(std::filesystem::remove(File())) : WriteFile(File(), "");
    EXPECT_PRED2(Holds, RefusalOf([] { RegistryStore::KeyExists(kMachine, u"A"); }), "-wal");
    EXPECT_PRED2(Holds, RefusalOf([] { RegistryStore::Create(kMachine); }), "-wal");
    EXPECT_TRUE(ReadFile(File().string() + "-wal") == log);
  }
  WriteFile(File(), main);
  EXPECT_EQ(TextAt(u"A", u"v"), "kept");
}

TEST_F(Registry, AnInterruptedCreationIsCompletedByTheNext) {
  std::filesystem::remove_all(home_.Path());
  std::filesystem::create_directory(home_.Path());
  WriteFile(File(), "");
  EXPECT_NE(RefusalOf([] { RegistryStore::KeyExists(kMachine, u""); }).find("tvmail init"),
            std::string::npos);
  RegistryStore::Create(kMachine);
  RegistryStore::Create(kMachine);
  EXPECT_TRUE(RegistryStore::KeyExists(kMachine, u""));
}

TEST_F(Registry, ThreadsAndProcessesLoseNoUpdateOfEachOther) {
  const auto work = [](char16_t name) {
    for (int i = 0; i < 60; ++i) {
      RegistryStore::CreateKey(kMachine, u"W\\" + String(1, name) + FromUtf8(std::to_string(i)));
      WriteText(u"W\\" + String(1, name) + FromUtf8(std::to_string(i)), u"v", u"x");
    }
  };
  // Forked before the threads start: a child inherits the locks that other threads hold and waits for them
  // forever.
  const pid_t child = StartProcess([&] { work(u'p'); });
  std::thread first([&] { work(u'a'); }), second([&] { work(u'b'); });
  for (std::thread* thread : {&first, &second}) thread->join();
  EXPECT_EQ(EndOf(child), 0);
  EXPECT_EQ(RegistryStore::SubKeys(kMachine, u"W").size(), 180U);
}

TEST_F(Registry, AKilledWriterLeavesEveryWriteThatItFinished) {
  for (int round = 0; round < 5; ++round) {
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = StartProcess([&] {
      for (std::int32_t i = 0;; ++i) {
        RegistryStore::Write(kMachine, u"A", u"n", {4, i});
        if (write(ends[1], &i, sizeof i) < 0) _exit(1);
      }
    });
    close(ends[1]);
    std::int32_t last = 0;
    while (last < 20 + round * 7 && read(ends[0], &last, sizeof last) == sizeof last) {
    }
    KillProcess(child);
    while (read(ends[0], &last, sizeof last) == sizeof last) {
    }
    close(ends[0]);
    const std::int32_t stored = RegistryStore::Read(kMachine, u"A", u"n")->Content.ToInt32();
    EXPECT_TRUE(stored == last || stored == last + 1) << stored << " after " << last;
  }
}

TEST_F(Registry, AFullDiskFailsAWriteAndLeavesTheOldContent) {
  WriteText(u"A", u"v", u"old");
  EXPECT_EQ(InAnotherProcess([] {
              LimitFileSize(150'000);
              EXPECT_PRED2(Holds, RefusalOf([] { WriteText(u"A", u"v", String(400'000, u'n')); }),
                           "machine.registry");
              EXPECT_EQ(TextAt(u"A", u"v"), "old");
            }),
            0);
  EXPECT_EQ(TextAt(u"A", u"v"), "old");
  WriteText(u"A", u"v", u"new");
}

TEST_F(Registry, AStoreThatMayNotBeWrittenRefusesWritesWithAReason) {
  std::filesystem::permissions(home_.Path(), std::filesystem::perms(0755));
  if (geteuid() != 0) std::filesystem::permissions(File(), std::filesystem::perms(0400));
  EXPECT_EQ(InAnotherProcess([&] {
              if (geteuid() == 0 && setuid(65534) != 0) return;
              EXPECT_PRED2(Holds, RefusalOf([] { WriteText(u"A", u"v", u"x"); }), "who owns the file");
            }),
            0);
}

TEST_F(Registry, AStoreOrFolderThatAnotherUserMayWriteIsRefusedAlsoWhileItIsOpen) {
  namespace fs = std::filesystem;
  WriteText(u"A", u"v", u"kept");
  const auto read = [] { return RefusalOf([] { RegistryStore::KeyExists(kMachine, u"A"); }); };
  const auto expectRefusal = [&](const fs::path& path, const std::string& why) {
    for (const std::string& refusal : {read(), RefusalOf([] { RegistryStore::Create(kMachine); })}) {
      EXPECT_EQ(refusal.find(path.string()), 0U) << refusal;
      EXPECT_PRED2(Holds, refusal, why);
    }
  };
  for (const auto& [path, modes] : {std::pair(File(), std::pair(0620, 0602)), {home_.Path(), {0770, 0707}}}) {
    const fs::perms before = fs::status(path).permissions();
    for (const int mode : {modes.first, modes.second}) {
      fs::permissions(path, static_cast<fs::perms>(mode));
      ASSERT_EQ(InAnotherProcess([] {}),
                0);  // closes the store, since its folder is checked when it is opened
      expectRefusal(path, "chmod go-w");
      fs::permissions(path, before);
      EXPECT_EQ(TextAt(u"A", u"v"), "kept");
    }
    if (geteuid() != 0) continue;
    ASSERT_EQ(chown(path.c_str(), 54321, static_cast<gid_t>(-1)), 0);
    ASSERT_EQ(InAnotherProcess([] {}), 0);
    expectRefusal(path, "belongs to the user #54321");
    ASSERT_EQ(chown(path.c_str(), 0, static_cast<gid_t>(-1)), 0);
  }
  EXPECT_EQ(TextAt(u"A", u"v"), "kept");
  fs::permissions(File(), fs::perms(0620));
  EXPECT_PRED2(Holds, read(), "chmod go-w");
  fs::permissions(File(), fs::perms(0600));
  fs::remove_all(home_.Path());
  fs::create_directory(home_.Path());
  fs::permissions(home_.Path(), fs::perms(0777));
  EXPECT_PRED2(Holds, RefusalOf([] { RegistryStore::Create(kMachine); }), "chmod go-w");
  EXPECT_TRUE(fs::is_empty(home_.Path()));
}

}  // namespace
}  // namespace Tests
