// The upgrade of a project of version 1, which the program of that version has made.
#include "tests/support/Processes.h"
#include "tests/talvane40/Projects.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

// Everything that the project in the folder VERSION_1_FOLDER holds.
constexpr const char* kContent =
    "Apollo|1 Ann ann@example.org 1|2 ben ben@example.org 1|3 Cléo cleo@bücher.example 0|"
    "1 Release plan|Re: x  First reply ben 2026-11-23T05:29:44.797Z|"
    "Re: x  Zweite Antwort: Grüße Ann 2026-11-23T05:29:44.829Z|"
    "2 Überblick|Re: x  日本語 ben 2026-11-23T05:29:44.859Z";

class ProjectUpgrade : public testing::Test {
 protected:
  ProjectUpgrade() { CopyFiles(); }

  // Puts the project of version 1 into the world's folder, in place of what was there.
  void CopyFiles() const {
    for (const char* end : {".TVS", ".db", ".db-wal", ".db-shm"}) {
      const std::string name = std::string("version1") + end;
      fs::remove(world.Home.Path() / name);
      if (fs::exists(fs::path(VERSION_1_FOLDER) / name))
        fs::copy(fs::path(VERSION_1_FOLDER) / name, world.Home.Path());
    }
  }

  // Opens the project by its administration, which upgrades it.
  std::string Content() const {
    const ProjectDescription project = world.Administer.Describe(path);
    std::string text = Utf8(project.Name);
    for (const DescribedUser& user : project.Users)
      text += "|" + std::to_string(user.Key) + " " + Utf8(user.Name + u" " + user.Address) +
              (user.MailAccepted ? " 1" : " 0");
    for (const DescribedDiscussion& discussion : project.Discussions) {
      text += "|" + std::to_string(discussion.Number) + " " + Utf8(discussion.Title);
      for (const DescribedReply& reply : discussion.Replies)
        text += "|" + Utf8(reply.Subject + u" " + reply.Body + u" " + reply.UserName + u" " + reply.At);
    }
    return text;
  }

  std::int64_t Version() const { return Runtime::Database(database.string()).Number("PRAGMA user_version"); }

  std::string Refusal() const {
    return FailureText([&] { Content(); });
  }

  ProjectWorld world;
  const String path = world.PathOf("version1.TVS");
  const fs::path database = world.Home.Path() / "version1.db";
};

TEST_F(ProjectUpgrade, KeepsEverythingAndGivesTheTablesOfANewProject) {
  const auto tables = [](const fs::path& file) {
    Runtime::Database opened(file.string());
    Runtime::Statement select(opened, "SELECT group_concat(sql, ';') FROM (SELECT sql FROM sqlite_schema)");
    auto row = select({});
    return row.Next() ? std::string(row.Text(0)) : "";
  };
  ASSERT_EQ(Version(), 1);
  EXPECT_EQ(Content(), kContent);
  EXPECT_EQ(Version(), 5);
  EXPECT_EQ(tables(database), tables(world.Database()));
  EXPECT_EQ(Runtime::Database(database.string()).Number("SELECT count(*) FROM due_replies"), 0);
  Runtime::Database former(database.string());  // stores a reply as the former program did
  former.Run("INSERT INTO replies (discussion, subject, body, user, at) VALUES (1, 's', 'b', 1, '2026')");
  EXPECT_EQ(former.Number("SELECT count(*) FROM due_replies WHERE sender = -1"), 1);
  former.Run("DELETE FROM due_replies; DELETE FROM replies WHERE at = '2026'");
  EXPECT_TRUE(world.Open(path));
  EXPECT_EQ(Content(), kContent);
}

TEST_F(ProjectUpgrade, IsDoneOnceByProcessesThatOpenTheProjectAtOnce) {
  for (int round = 0; round < 8; ++round) {
    CopyFiles();
    std::vector<pid_t> processes;
    for (int i = 0; i < 4; ++i) processes.push_back(StartProcess([&] { EXPECT_EQ(Content(), kContent); }));
    for (const pid_t process : processes) EXPECT_EQ(EndOf(process), 0);
    EXPECT_EQ(Version(), 5);
  }
}

TEST_F(ProjectUpgrade, IsRefusedWithTheReasonForFilesThatMayNotBeWritten) {
  const std::string before = ReadFile(database);
  fs::permissions(world.PathOf("version1.TVS"), fs::perms(0644));
  fs::permissions(database, fs::perms(0444));
  for (const int folder : {0777, 0555}) {
    fs::permissions(world.Home.Path(), fs::perms(folder));
    EXPECT_EQ(InAnotherProcess([&] {
                if (geteuid() == 0 && setuid(65534) != 0) return;
                EXPECT_PRED2(Holds, Refusal(), "who owns the file and its folder");
              }),
              0);
    EXPECT_TRUE(ReadFile(database) == before);
  }
  fs::permissions(world.Home.Path(), fs::perms(0755));
}

// The limit lets a few pages of the upgrade into the log, until it lets all.
TEST_F(ProjectUpgrade, IsRefusedOnAFullDiskAtAnyPageAndChangesNothing) {
  std::string refusals;
  for (rlim_t pages = 0; pages < 32; pages += 4) {
    CopyFiles();
    const int logged = InAnotherProcess([&] {
      auto& writer = *new Runtime::Database(database.string());
      for (int i = 0; i < 12; ++i) writer.Run("UPDATE project SET users_version = users_version + 1");
    });
    ASSERT_EQ(logged, 0);
    const rlim_t limit = fs::file_size(database.string() + "-wal") + pages * 4120;
    const int code = InAnotherProcess([&] {
      LimitFileSize(limit);
      const std::string refusal = Refusal();
      if (refusal.empty()) return;
      EXPECT_PRED2(Holds, refusal, "is of a former version and can't be upgraded");
      EXPECT_PRED2(Holds, refusal, "can't be written");
      _exit(testing::Test::HasFailure() ? 1 : 3);
    });
    EXPECT_EQ(Version(), code == 3 ? 1 : 5) << code;
    refusals += code == 3 ? 'r' : code == 0 ? 'u' : '?';
    EXPECT_EQ(Content(), kContent);
  }
  EXPECT_TRUE(refusals.starts_with("rr") && refusals.ends_with("u")) << refusals;
}

}  // namespace
}  // namespace Tests
