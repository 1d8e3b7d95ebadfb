// What stands when several processes write to one project, and when one is killed.
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <functional>
#include <thread>

#include "tests/talvane40/Projects.h"

namespace Tests {
namespace {

// A process that runs the act and ends with it. Nothing of the parent's SQLite is touched in it.
pid_t Spawn(const std::function<void()>& act) {
  const pid_t child = fork();
  if (child == 0) {
    act();
    _exit(0);
  }
  return child;
}

int Wait(pid_t child) {
  int status = 0;
  waitpid(child, &status, 0);
  return status;
}

std::vector<std::string> Subjects(const ProjectWorld& world) {
  std::vector<std::string> subjects;
  for (const Value& reply : world.Replies()) subjects.push_back(Utf8(reply.ToArray()[0].ToString()));
  std::ranges::sort(subjects);
  return subjects;
}

TEST(Durability, TwoProcessesWriteToOneProjectAtOnce) {
  ProjectWorld world;
  constexpr int kCount = 150;
  const auto writer = [&](char16_t name) {
    return Spawn([&world, name] {
      const auto project = world.Open();
      if (!project) _exit(1);
      for (int i = 0; i < kCount; ++i) Reply(*project, String(1, name) + FromUtf8(std::to_string(i)), u"b");
    });
  };
  const pid_t first = writer(u'a'), second = writer(u'b');
  EXPECT_EQ(Wait(first), 0);
  EXPECT_EQ(Wait(second), 0);
  const std::vector<std::string> subjects = Subjects(world);
  EXPECT_EQ(subjects.size(), 2U * kCount);
  EXPECT_EQ(std::adjacent_find(subjects.begin(), subjects.end()), subjects.end());
}

TEST(Durability, AKilledProcessLeavesEveryReplyThatItFinishedAndNoHalfOne) {
  ProjectWorld world;
  for (int round = 0; round < 8; ++round) {
    int pipes[2];
    ASSERT_EQ(pipe(pipes), 0);
    const pid_t child = Spawn([&] {
      const auto project = world.Open();
      for (int i = 0;; ++i) {
        Reply(*project, u"r", u"b");
        if (write(pipes[1], "x", 1) != 1) _exit(1);
      }
    });
    close(pipes[1]);
    char first;
    ASSERT_EQ(read(pipes[0], &first, 1), 1);
    std::this_thread::sleep_for(std::chrono::microseconds(300 * round));
    kill(child, SIGKILL);
    Wait(child);
    std::size_t finished = 1;
    for (char more[512]; const ssize_t count = read(pipes[0], more, sizeof more);) finished += count;
    close(pipes[0]);

    const std::size_t stored = world.Replies().size();
    EXPECT_GE(stored, finished);
    EXPECT_LE(stored, finished + 1);
    world.Sql("DELETE FROM replies");
  }
}

TEST(Durability, AProcessKilledWhileItCreatesAProjectLeavesAWholeProjectOrNone) {
  World world;
  const Administration administer;
  int whole = 0;
  for (int round = 0; round < 12; ++round) {
    const String path = world.PathOf("p" + std::to_string(round) + ".TVS");
    const pid_t child = Spawn([&] { administer.CreateProject(path, u"P", u"Ann", u"", u"secret"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(4 * round));
    kill(child, SIGKILL);
    Wait(child);
    if (std::filesystem::exists(ToUtf8(path))) {
      ++whole;
      EXPECT_EQ(administer.Describe(path)[1].ToArray().size(), 1U);
    } else {
      administer.CreateProject(path, u"P", u"Ann", u"", u"secret");
    }
  }
  EXPECT_LT(whole, 12);
}

TEST(Durability, AReplyThatADatabaseInUseOrAFullDiskRefusesIsRaisedAndLeavesNothing) {
  ProjectWorld world;
  const auto project = world.Open();
  world.Sql("CREATE TRIGGER full BEFORE INSERT ON replies BEGIN SELECT RAISE(ABORT, 'no room'); END");
  EXPECT_THROW(Reply(*project, u"lost", u"b"), Failure);
  world.Sql("DROP TRIGGER full");
  Reply(*project, u"kept", u"b");
  EXPECT_EQ(Subjects(world), std::vector<std::string>{"kept"});

  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(world.Database().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  try {
    Reply(*project, u"late", u"b");
    ADD_FAILURE() << "the database is locked";
  } catch (const Failure& failure) {
    EXPECT_NE(std::string(failure.what()).find("in use by another program"), std::string::npos);
  }
  sqlite3_close(other);
  Reply(*project, u"next", u"b");
  EXPECT_EQ(Subjects(world), (std::vector<std::string>{"kept", "next"}));
}

}  // namespace
}  // namespace Tests
