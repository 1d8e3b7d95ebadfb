// Mails that come once, again, at the same time or to a process that is killed, through the loaded library.
#include "platform/contracts/MailIntake.h"

#include <sys/mman.h>

#include <atomic>
#include <random>
#include <set>
#include <thread>

#include "runtime/RegistryStore.h"
#include "tests/support/Processes.h"
#include "tests/talvane40/Projects.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

MailIntake NewIntake(StringView path) {
  MailIntake intake(Platform::Services().CreateByName(MailIntake::kName));
  intake.Open(path);
  return intake;
}

String KeyOf(int number) {
  const std::string digits = std::to_string(number);
  return FromUtf8(std::string(64 - digits.size(), 'a') + digits);
}

// A number that this process and its children count up.
class SharedCount {
 public:
  SharedCount()
      : count_(*new (mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0))
                   std::atomic<int>) {}
  ~SharedCount() { munmap(&count_, 4096); }
  std::atomic<int>& operator*() const { return count_; }

  // Ends after 20 s at the latest, if a process that counts has failed.
  void WaitFor(int count) const {
    const auto latest = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (count_ < count && std::chrono::steady_clock::now() < latest) std::this_thread::yield();
  }

 private:
  std::atomic<int>& count_;
};

IntakeResult Deliver(const MailIntake& intake, Project& project, StringView key, StringView subject = u"s") {
  intake.Begin(key);
  Reply(project, subject, u"b");
  return intake.End();
}

class Intake : public testing::Test {
 protected:
  ProjectWorld world;
  const MailIntake intake = NewIntake(world.Path);
  const std::shared_ptr<Project> project = world.Open();
};

TEST_F(Intake, StoresTheReplyOfAMailOnce) {
  EXPECT_FALSE(intake.IsStored(u"aB1"));
  EXPECT_EQ(Deliver(intake, *project, u"Ab1"), IntakeResult::Stored);
  EXPECT_EQ(intake.End(), IntakeResult::Nothing);
  EXPECT_TRUE(NewIntake(world.Path).IsStored(u"aB1"));
  EXPECT_EQ(Deliver(NewIntake(world.Path), *world.Open(), u"aB1"), IntakeResult::AlreadyStored);
  EXPECT_EQ(world.Replies().size(), 1U);
  intake.Begin(u"2");
  EXPECT_EQ(intake.End(), IntakeResult::Nothing);
  intake.Begin(u"2");
  Reply(*project, u"s", u"b");
  Reply(*project, u"the second of one mail", u"b");
  EXPECT_EQ(intake.End(), IntakeResult::Stored);
  EXPECT_EQ(world.Replies().size(), 2U);
}

TEST_F(Intake, RefusesAnotherAuthorThanTheExpectedOne) {
  intake.Begin(u"1", 2);
  EXPECT_PRED2(Holds, FailureText([&] { Reply(*project, u"s", u"b"); }), "Deliver the mail again");
  EXPECT_EQ(intake.End(), IntakeResult::Nothing);
  EXPECT_FALSE(intake.IsStored(u"1"));
  intake.Begin(u"1", 1);
  Reply(*project, u"s", u"b");
  EXPECT_EQ(intake.End(), IntakeResult::Stored);
}

TEST_F(Intake, AMailIsForgottenAtTheNextOneAndWithItsObjectAndConcernsNoOtherThread) {
  intake.Begin(u"1");
  EXPECT_EQ(Deliver(intake, *project, u"2"), IntakeResult::Stored);
  NewIntake(world.Path).Begin(u"3");
  Reply(*project, u"without a key", u"b");
  intake.Begin(u"4");
  std::thread([&] { Reply(*project, u"of another thread", u"b"); }).join();
  EXPECT_EQ(intake.End(), IntakeResult::Nothing);
  for (const auto& [key, stored] : {std::pair(u"1", false), {u"2", true}, {u"3", false}, {u"4", false}})
    EXPECT_EQ(intake.IsStored(key), stored) << Utf8(key);
  EXPECT_EQ(world.Replies().size(), 3U);
}

TEST_F(Intake, AReplyAndItsKeyAreOneTransaction) {
  for (const char* table : {"replies", "mails", "due_replies"}) {
    const std::string trigger = std::string("CREATE TRIGGER full AFTER INSERT ON ") + table +
                                " BEGIN SELECT RAISE(ABORT, 'no room'); END";
    world.Sql(trigger.c_str());
    intake.Begin(u"1");
    EXPECT_THROW(Reply(*project, u"s", u"b"), Failure) << table;
    EXPECT_EQ(intake.End(), IntakeResult::Nothing) << table;
    EXPECT_FALSE(intake.IsStored(u"1")) << table;
    EXPECT_EQ(world.Replies().size(), 0U) << table;
    world.Sql("DROP TRIGGER full");
  }
  EXPECT_EQ(Deliver(intake, *project, u"1"), IntakeResult::Stored);
}

TEST_F(Intake, RefusesKeysThatAreNoDigestAndWorkWithoutAProject) {
  EXPECT_FALSE(intake.IsStored(String(64, u'f')));
  for (const String& key : {String(), String(65, u'f'), String(u"g"), String(u"1 "), String(1, u'\0')}) {
    intake.Begin(u"1");
    EXPECT_PRED2(Holds, FailureText([&] { intake.IsStored(key); }), "1 to 64 hexadecimal digits");
    EXPECT_PRED2(Holds, FailureText([&] { intake.Begin(key); }), "1 to 64 hexadecimal digits");
    Reply(*project, u"s", u"b");
    EXPECT_EQ(intake.End(), IntakeResult::Nothing) << "the mail of before is forgotten";
  }
  EXPECT_PRED2(Holds, FailureText([&] { intake.Open(world.PathOf("lost.TVS")); }), "doesn't exist");
  EXPECT_PRED2(Holds, FailureText([&] { intake.IsStored(u"1"); }), "No project is open");
  EXPECT_PRED2(Holds, FailureText([&] { intake.FindSender(u"a@b"); }), "No project is open");
  EXPECT_PRED2(Holds, FailureText([&] { intake.Begin(u"1"); }), "No project is open");
}

TEST_F(Intake, AskToRunInitAgainIfTheRegistrationIsOlderThanTheClass) {
  Runtime::RegistryStore::DeleteKey(Hive::LocalMachine, u"Software\\Classes\\Talvane40.MailIntake");
  EXPECT_PRED2(Holds, FailureText([&] { NewIntake(world.Path); }),
               "Talvane40.MailIntake: it isn't registered; run \"tvmail init\", also after an update");
}

TEST_F(Intake, OpenNoticesThatAnotherDatabaseIsInPlace) {
  fs::copy(world.Database(), world.Database().string() + ".backup");
  EXPECT_EQ(Deliver(intake, *project, u"1"), IntakeResult::Stored);
  intake.Open(world.Path);
  EXPECT_TRUE(intake.IsStored(u"1"));
  for (const char* end : {"-wal", "-shm"}) fs::remove(world.Database().string() + end);
  fs::rename(world.Database().string() + ".backup", world.Database());
  intake.Open(world.Path);
  EXPECT_FALSE(intake.IsStored(u"1"));
}

TEST_F(Intake, OpenNoticesAChangedProjectFileAlsoIfItsSizeAndItsTimeStay) {
  const std::string file = ToUtf8(world.Path), text = ReadFile(file);
  while (intake.Open(world.Path)) {  // the file may be as young as the clock of its file system tells
  }
  for (const char* end : {"; a\n", "; b\n", "; c\n"}) {
    WriteFile(file, text + end);
    EXPECT_TRUE(intake.Open(world.Path)) << end;
  }
}

TEST_F(Intake, FindsTheUserThatTheComponentTakesForTheSender) {
  world.Administer.AddUser(world.Path, u"cleo", u"Cleo@xn--bcher-kva.example", false);
  world.Administer.AddUser(world.Path, u"second", u"BEN@example.org", false);
  world.Sql("UPDATE users SET email = '' WHERE name = 'Ann'");
  const std::tuple<StringView, std::int32_t, bool> rows[] = {{u"ben@example.org", 2, true},
                                                             {u"\"BEN\"@Example.ORG.", 2, true},
                                                             {u"cleo@bücher.example", 3, false},
                                                             {u"ann@example.org", 0, false},
                                                             {u"", 0, false},
                                                             {u"no address", 0, false}};
  for (const auto& [address, key, accepted] : rows) {
    const MailSender sender = intake.FindSender(address);
    EXPECT_EQ(sender.Found, key != 0) << Utf8(address);
    EXPECT_EQ(sender.UserKey, key) << Utf8(address);
    EXPECT_EQ(sender.MailAccepted, accepted) << Utf8(address);
  }
  world.Sql("UPDATE users SET mail_accepted = 0 WHERE name = 'ben'");
  EXPECT_FALSE(intake.FindSender(u"ben@example.org").MailAccepted);
}

// No database is open here when another process is started, which must not use it.
class IntakeOfProcesses : public testing::Test {
 protected:
  ProjectWorld world;
};

// Another connection holds the write lock until all writers of a mail wait for it.
TEST_F(IntakeOfProcesses, ThreadsAndProcessesWithTheSameMailAtTheSameTimeStoreItOnce) {
  constexpr int kMails = 10, kWriters = 3;
  const SharedCount locked, waiting, handled, stored;
  const auto deliverAll = [&](const MailIntake& by, Project& to) {
    for (int mail = 1; mail <= kMails; ++mail) {
      by.Begin(KeyOf(mail));
      locked.WaitFor(mail);
      ++*waiting;
      Reply(to, u"s", u"b");
      const IntakeResult result = by.End();
      EXPECT_NE(result, IntakeResult::Nothing);
      *stored += result == IntakeResult::Stored;
      ++*handled;
    }
  };
  const pid_t process = StartProcess([&] { deliverAll(NewIntake(world.Path), *world.Open()); });
  const MailIntake intakes[] = {NewIntake(world.Path), NewIntake(world.Path)};
  const std::shared_ptr<Project> projects[] = {world.Open(), world.Open()};
  std::thread threads[] = {std::thread([&] { deliverAll(intakes[0], *projects[0]); }),
                           std::thread([&] { deliverAll(intakes[1], *projects[1]); })};
  Runtime::Database holder(world.Database().string());
  for (int mail = 1; mail <= kMails; ++mail) {
    handled.WaitFor(kWriters * (mail - 1));
    const Runtime::Transaction lock(holder);
    ++*locked;
    waiting.WaitFor(kWriters * mail);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(EndOf(process), 0);
  EXPECT_EQ(*stored, kMails);
  EXPECT_EQ(world.Replies().size(), std::size_t{kMails});
}

TEST_F(IntakeOfProcesses, AProcessKilledAtAnyPointAndItsMailsDeliveredAgainStoreEachOnce) {
  constexpr int kMails = 400, kRounds = 25;
  const SharedCount shared;
  std::atomic<int>& delivered = *shared;  // by the process of this round
  const auto deliverAll = [&] {
    const MailIntake by = NewIntake(world.Path);
    const std::shared_ptr<Project> to = world.Open();
    for (delivered = 0; delivered < kMails; ++delivered)
      EXPECT_NE(Deliver(by, *to, KeyOf(delivered), KeyOf(delivered)), IntakeResult::Nothing);
  };
  std::minstd_rand random(42);
  for (int round = 0; round < kRounds; ++round) {
    delivered = 0;
    const pid_t process = StartProcess(deliverAll);
    shared.WaitFor(kMails * round / kRounds);
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 1000));
    KillProcess(process);
  }
  EXPECT_GE(world.Replies().size(), std::size_t{kMails} / 2);
  EXPECT_EQ(InAnotherProcess(deliverAll), 0);
  const std::vector<DescribedReply> replies = world.Replies();
  std::set<String> subjects;
  for (const DescribedReply& reply : replies) subjects.insert(reply.Subject);
  EXPECT_EQ(replies.size(), std::size_t{kMails});
  EXPECT_EQ(subjects.size(), std::size_t{kMails});
  EXPECT_EQ(Runtime::Database(world.Database().string()).Number("SELECT count(*) FROM due_replies"), kMails);
}

}  // namespace
}  // namespace Tests
