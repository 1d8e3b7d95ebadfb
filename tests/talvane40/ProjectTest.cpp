// Projects, users, discussions and their administration, through the loaded library.
#include <sys/stat.h>

#include <thread>

#include "tests/support/Processes.h"
#include "tests/talvane40/Projects.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

class Projects : public testing::Test {
 protected:
  ProjectWorld world;
};

TEST_F(Projects, OpenForTheirOwnerInAnyCaseOfTheNameAndWithBlanksAroundNameAndPath) {
  const auto project = world.Open(u"  " + world.Path + u" ", u" ANN ");
  ASSERT_TRUE(project);
  EXPECT_TEXT(u"Apollo", project->GetName());
  EXPECT_TRUE(project->IsMailBoxAllowed());
  EXPECT_TEXT(u"", world.App->GetStatus()->GetFailureText());
}

TEST_F(Projects, LetOnlyTheOwnerBindAMailbox) {
  world.Sql("UPDATE users SET password_hash = (SELECT password_hash FROM users WHERE name = 'Ann')");
  const auto project = world.Open(world.Path, u"ben");
  ASSERT_TRUE(project);
  EXPECT_FALSE(project->IsMailBoxAllowed());
}

TEST_F(Projects, GiveTheSameTextForAnUnknownUserAndAWrongPassword) {
  const std::string refusal = world.Refusal(world.Path, u"Ann", u"Secret");
  EXPECT_EQ(refusal, "The user name or the password is wrong.");
  EXPECT_EQ(world.Refusal(world.Path, u"nobody", u"secret"), refusal);
  EXPECT_EQ(world.Refusal(world.Path, u"ben", u""), refusal) << "ben has no password";
}

TEST_F(Projects, GiveNothingAndAReasonForFilesThatAreNoProjects) {
  const fs::path folder = world.Home.Path();
  fs::create_directory(folder / "folder.TVS");
  WriteFile(folder / "foreign.db", "");
  WriteFile(folder / "text.db", std::string(4096, 'x'));
  const std::string start = "[Project]\nFormat=1\nName=";
  const std::pair<std::string, const char*> texts[] = {
      {"", "is not a project file"},
      {start + std::string("\0x\xFF\n", 4), "is not a project file"},
      {"[Mail]\nFormat=1\n", "is not a project file"},
      {"[Project]\nFormat=2\nName=A\nDatabase=apollo.db\n", "newer version"},
      {start + "A\n", "is damaged"},
      {start + "A\nDatabase = lost.db \n", "/lost.db is missing"},
      {start + "A\nDatabase=foreign.db\n", "another program, or empty"},
      {start + "A\nDatabase=text.db\n", "text.db is no database"},
      {start + "A\nDatabase=folder.TVS\n", "is not a file"}};
  for (const auto& [text, why] : texts) {
    WriteFile(folder / "bad.TVS", text);
    EXPECT_PRED2(Holds, world.Refusal(world.PathOf("bad.TVS")), why) << text;
  }
  EXPECT_PRED2(Holds, world.Refusal(world.PathOf("absent.TVS")), "doesn't exist");
  EXPECT_PRED2(Holds, world.Refusal(world.PathOf("absent/a.TVS")), "doesn't exist");
  EXPECT_PRED2(Holds, world.Refusal(world.PathOf("folder.TVS")), "is a folder");
  EXPECT_EQ(world.Refusal(u""), "No project path is given.");
  EXPECT_PRED2(Holds, world.Refusal(world.Path + String(1, u'\0')), "no proper name");
  EXPECT_FALSE(world.App->OpenProject(world.Path, 2, u"Ann", u"secret", 0, 3));
}

TEST_F(Projects, RefuseAnEmptyOrMissingDatabaseWithALogAndChangeNeither) {
  // The writer ends without closing, so that the reply is only in the log.
  ASSERT_EQ(InAnotherProcess([&] { Reply(**new auto(world.Open()), u"kept", u"b"); }), 0);
  const std::string whole = ReadFile(world.Database()), log = ReadFile(world.Database().string() + "-wal");
  for (const bool missing : {false, true}) {
    missing ? void(fs::remove(world.Database())) : WriteFile(world.Database(), "");
    EXPECT_PRED2(Holds, world.Refusal(world.Path), "-wal still holds changes");
    EXPECT_TRUE(ReadFile(world.Database().string() + "-wal") == log);
  }
  WriteFile(world.Database(), whole);
  EXPECT_EQ(world.Replies().size(), 1U);
}

TEST_F(Projects, RefuseADatabaseOfANewerVersionAndADamagedOne) {
  world.Sql("PRAGMA user_version = 6");
  EXPECT_PRED2(Holds, world.Refusal(world.Path), "newer version of Talvane");
  world.Sql("PRAGMA user_version = 5; DROP TABLE discussions");
  EXPECT_PRED2(Holds, world.Refusal(world.Path), "no such table: discussions");
  std::string bytes = ReadFile(world.Database());
  std::fill(bytes.begin() + 100, bytes.end(), '\xAA');
  WriteFile(world.Database(), bytes);
  EXPECT_PRED2(Holds, world.Refusal(world.Path), "damaged");
  EXPECT_EQ(ReadFile(world.Database()), bytes);
}

TEST_F(Projects, IgnoreSectionsOfOtherPrograms) {
  const fs::path file = ToUtf8(world.Path);
  const std::string text =
      "\xEF\xBB\xBF; ours\r\n[EMail]\r\nName=x\r\n" + ReadFile(file) + "[Other]\nFormat=9\n";
  WriteFile(file, text);
  ASSERT_TRUE(world.Open());
  EXPECT_TEXT(u"Apollo", world.Open()->GetName());
  EXPECT_EQ(ReadFile(file), text);
}

TEST_F(Projects, UsersAreASnapshotOrderedByKey) {
  const auto project = world.Open();
  const auto users = project->GetUsers();
  world.Administer.AddUser(world.Path, u"cleo", u"cleo@example.org", false);
  ASSERT_EQ(users->Count(), 2);
  EXPECT_TEXT(u"ann@example.org", users->Item(1)->GetEMailAddress());
  EXPECT_EQ(users->Item(2)->GetUserKey(), world.Ben);
  EXPECT_THROW(users->Item(0), Failure);
  EXPECT_THROW(users->Item(3), Failure);

  const auto now = project->GetUsers();
  ASSERT_EQ(now->Count(), 3);
  EXPECT_FALSE(now->Item(3)->IsMailAccepted());
}

TEST_F(Projects, UsersAreReadAgainOnlyAfterAUserChangedAndNotAfterAReply) {
  const auto project = world.Open();
  const auto elsewhere = world.Open();
  const auto users = project->GetUsers();
  EXPECT_EQ(users->Count(), 2);
  for (int i = 0; i < 3; ++i) {
    Reply(*project, u"s", u"b");
    Reply(*elsewhere, u"s", u"b");
    EXPECT_EQ(project->GetUsers(), users);
  }
  world.Sql("UPDATE users SET email = 'new@example.org' WHERE name = 'ben'");
  EXPECT_NE(project->GetUsers(), users);
}

TEST_F(Projects, RepliesAreOfTheActingUserAndBeforeThatOfTheOneWhoOpenedTheProject) {
  const auto project = world.Open();
  Reply(*project, u"first", u"a");
  EXPECT_TRUE(project->SetActingUser(world.Ben, 1, world.App->GetLogon()->GetLogonText()));
  Reply(*project, u"second", u"b");
  const std::vector<DescribedReply> replies = world.Replies();
  ASSERT_EQ(replies.size(), 2U);
  EXPECT_TEXT(u"Ann", replies[0].UserName);
  EXPECT_TEXT(u"second", replies[1].Subject);
  EXPECT_TEXT(u"ben", replies[1].UserName);
  const std::string at = Utf8(replies[1].At);
  EXPECT_TRUE(at.size() == 24 && at[10] == 'T' && at.back() == 'Z') << at;
}

TEST_F(Projects, RepliesKeepEveryCharacter) {
  const String body =
      u"lone \xD800 surrogates \xDFFF, NUL " + String(1, u'\0') + u", \U0001F680 and\r\nends ";
  Reply(*world.Open(), u"Grüße \xDC00", body);
  EXPECT_EQ(world.Replies()[0].Body, body);
  EXPECT_EQ(world.Replies()[0].Subject, u"Grüße \xDC00");
}

TEST_F(Projects, WhatOthersChangeBetweenTwoRepliesIsSeenAtOnce) {
  const auto project = world.Open();
  const String logon = world.App->GetLogon()->GetLogonText();
  for (const bool there : {true, false, true, false}) {
    world.Sql(there ? "INSERT INTO discussions (number, title) VALUES (7, 't')"
                    : "DELETE FROM discussions WHERE number = 7");
    world.Sql(there ? "UPDATE users SET mail_accepted = 1 WHERE name = 'ben'"
                    : "UPDATE users SET mail_accepted = 0 WHERE name = 'ben'");
    for (int repeated = 0; repeated < 2; ++repeated) {
      EXPECT_EQ(project->GetDiscussion(7) != nullptr, there);
      EXPECT_EQ(bool(project->SetActingUser(world.Ben, 1, logon)), there);
      Reply(*project, u"s", u"b");
    }
  }
}

TEST_F(Projects, RepliesGoToDiscussionsThatExist) {
  const auto project = world.Open();
  EXPECT_FALSE(project->GetDiscussion(2));
  EXPECT_FALSE(project->GetDiscussion(-1));
}

TEST_F(Projects, TheActingUserIsRefusedUnlessTheUserAcceptsMailAndTheLogonTextIsTheApplicationsOwn) {
  const std::int32_t refused = world.Administer.AddUser(world.Path, u"cleo", u"cleo@example.org", false);
  const auto project = world.Open();
  const String logon = world.App->GetLogon()->GetLogonText();
  EXPECT_FALSE(project->SetActingUser(refused, 1, logon));
  EXPECT_FALSE(project->SetActingUser(4711, 1, logon));
  EXPECT_FALSE(project->SetActingUser(world.Ben, 2, logon));
  EXPECT_FALSE(project->SetActingUser(world.Ben, 1, u""));
  EXPECT_FALSE(
      project->SetActingUser(world.Ben, 1, ProjectWorld::NewApplication()->GetLogon()->GetLogonText()));
  Reply(*project, u"s", u"b");
  EXPECT_TEXT(u"Ann", world.Replies()[0].UserName);
}

TEST_F(Projects, OpenThroughTheApplicationsOfTheFactory) {
  const auto factory = std::dynamic_pointer_cast<TalvaneApplicationFactory>(
      Platform::Services().CreateByName(u"Talvane40.TalvaneApplicationFactory"));
  ASSERT_TRUE(factory);
  Boolean shared = True;
  EXPECT_TRUE(factory->CreateApplication(shared)->OpenProject(world.Path, 1, u"ann", u"secret", 0, 3));
}

TEST_F(Projects, TheAdministrationRefusesInvalidInputAndChangesNothing) {
  const ProjectAdministration& administer = world.Administer;
  const String path = world.Path, fresh = world.PathOf("fresh.TVS");
  const auto create = [&](StringView name, StringView owner, StringView address,
                          StringView password = u"secret") {
    return FailureText([&] { administer.CreateProject(fresh, name, owner, address, password); });
  };
  const auto addUser = [&](StringView name, StringView address) {
    return FailureText([&] { administer.AddUser(path, name, address, true); });
  };
  const auto files = [&] { return std::distance(fs::directory_iterator(world.Home.Path()), {}); };
  const auto before = files();
  EXPECT_PRED2(Holds, create(u" ", u"Ann", u""), "must not be empty");
  EXPECT_PRED2(Holds, create(u"A\nB", u"Ann", u""), "line ends");
  EXPECT_PRED2(Holds, create(u"A\\B", u"Ann", u""), "backslash");
  EXPECT_PRED2(Holds, create(String(256, u'x'), u"Ann", u""), "255 characters");
  EXPECT_PRED2(Holds, create(u"A", u"", u""), "must not be empty");
  EXPECT_PRED2(Holds, create(u"A", u"Ann", u"nowhere"), "no e-mail address");
  const std::pair<String, const char*> passwords[] = {
      {u"", "must not be empty"}, {String(98, u'p'), "97 characters"}, {u"a\rb", "printable"},
      {u"a}", "printable"},       {u"p\u00E4ss", "printable"},         {u"a ", "begin or end with a blank"}};
  for (const auto& [password, why] : passwords) EXPECT_PRED2(Holds, create(u"A", u"Ann", u"", password), why);
  for (const char16_t control : {u'\0', u'\t', u'\x1F', u'\x7F', u'\x85', u'\x9F', u'\u2028'})
    EXPECT_PRED2(Holds, addUser(String(u"d") + control + u"a", u"d@example.org"), "control characters");
  EXPECT_PRED2(Holds, addUser(u"BEN", u"b@example.org"), "already has a user");
  for (const StringView address :
       {u"", u"@example.org", u"a@", u"a@b@c", u"a b@c", u"a@b\r\n", u"a\u009B@b"}) {
    EXPECT_PRED2(Holds, addUser(u"dora", address), "no e-mail address") << Utf8(address);
  }
  EXPECT_PRED2(Holds, FailureText([&] { administer.AddDiscussion(path, u""); }), "must not be empty");
  EXPECT_PRED2(Holds, FailureText([&] { administer.AddDiscussion(fresh, u"x"); }), "doesn't exist");
  EXPECT_EQ(files(), before);
  EXPECT_EQ(administer.Describe(path).Users.size(), 2U);
}

TEST_F(Projects, TheirCreationFindsANameForTheDatabaseWhateverIsThereAndKeepsBothFilesPrivate) {
  WriteFile(world.Home.Path() / "zeus.db-wal", "left behind");
  world.Administer.CreateProject(world.PathOf("zeus"), u"Zeus", u"Ann", u"", u"secret");
  EXPECT_EQ(ReadFile(world.Home.Path() / "zeus.db-wal"), "left behind");
  for (const char* name : {"zeus", "zeus-2.db"}) {
    struct stat status {};
    ASSERT_EQ(stat((world.Home.Path() / name).c_str(), &status), 0) << name;
    EXPECT_EQ(status.st_mode & 0777U, 0600U) << name;
  }
  EXPECT_TRUE(world.Open(world.PathOf("zeus")));
  const String longest = String(96, u'|') + u'\x0E';  // the limit of a mailbox
  world.Administer.CreateProject(world.PathOf(" odd\nname.TVS"), u"Odd", u"Ann", u"", longest);
  EXPECT_TRUE(world.Open(world.PathOf(" odd\nname.TVS"), u"Ann", longest));
}

TEST_F(Projects, TheirPasswordsAreStoredAsSaltedScryptHashes) {
  world.Administer.CreateProject(world.PathOf("zeus.TVS"), u"Zeus", u"Ann", u"", u"secret");
  const std::string bytes = ReadFile(world.Home.Path() / "zeus.db");
  EXPECT_FALSE(Holds(bytes, "secret"));
  EXPECT_PRED2(Holds, bytes, "scrypt$8192$8$1$");
  world.Sql("UPDATE users SET password_hash = 'secret'");
  EXPECT_EQ(world.Refusal(world.Path), "The user name or the password is wrong.");
}

TEST_F(Projects, AProcessKilledWhileItCreatesAProjectLeavesAWholeProjectOrNone) {
  int whole = 0;
  for (int round = 0; round < 12; ++round) {
    const String path = world.PathOf("p" + std::to_string(round) + ".TVS");
    const pid_t child =
        StartProcess([&] { world.Administer.CreateProject(path, u"P", u"Ann", u"", u"secret"); });
    std::this_thread::sleep_for(std::chrono::milliseconds(4 * round));
    KillProcess(child);
    if (std::filesystem::exists(ToUtf8(path))) {
      ++whole;
      EXPECT_EQ(world.Administer.Describe(path).Users.size(), 1U);
    } else {
      world.Administer.CreateProject(path, u"P", u"Ann", u"", u"secret");
    }
  }
  EXPECT_LT(whole, 12);
}

TEST_F(Projects, AReplyThatADatabaseInUseOrAFullDiskRefusesIsRaisedAndLeavesNothing) {
  const auto project = world.Open();
  world.Sql("CREATE TRIGGER full BEFORE INSERT ON replies BEGIN SELECT RAISE(ABORT, 'no room'); END");
  EXPECT_THROW(Reply(*project, u"lost", u"b"), Failure);
  world.Sql("DROP TRIGGER full");
  Reply(*project, u"kept", u"b");
  EXPECT_EQ(world.Replies().size(), 1U);

  {
    Runtime::Database other(world.Database().string());
    other.Begin();
    Runtime::SetBusyTimeout(std::chrono::milliseconds(50));
    const auto hasty = world.Open();
    Runtime::SetBusyTimeout(std::chrono::seconds(10));
    EXPECT_PRED2(Holds, FailureText([&] { Reply(*hasty, u"late", u"b"); }), "in use by another program");
  }
  Reply(*project, u"next", u"b");
  const std::vector<DescribedReply> replies = world.Replies();
  ASSERT_EQ(replies.size(), 2U);
  EXPECT_TEXT(u"kept", replies[0].Subject);
  EXPECT_TEXT(u"next", replies[1].Subject);
}

}  // namespace
}  // namespace Tests
