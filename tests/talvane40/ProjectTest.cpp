// Opening projects, their users and discussions, and setting them up, through the loaded library.
#include <sys/stat.h>

#include <algorithm>

#include "tests/talvane40/Projects.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

bool Holds(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

// The description of the failure that an act raises; empty if it raises none.
template <class Act>
std::string FailureOf(Act act) {
  try {
    act();
    return {};
  } catch (const Failure& failure) {
    return failure.what();
  }
}

TEST(OpenProject, GivesTheProjectForItsOwnerInAnyCaseOfTheName) {
  ProjectWorld world;
  const auto project = world.Open(world.Path, u"ANN");
  ASSERT_TRUE(project);
  EXPECT_TEXT(u"Apollo", project->GetName());
  EXPECT_TRUE(project->IsMailBoxAllowed());
  EXPECT_TEXT(u"", world.App->GetStatus()->GetFailureText());
}

TEST(OpenProject, LetsTheOwnerAloneBindAMailbox) {
  ProjectWorld world;
  world.Sql("UPDATE users SET password_hash = (SELECT password_hash FROM users WHERE name = 'Ann')");
  const auto project = world.Open(world.Path, u"ben");
  ASSERT_TRUE(project);
  EXPECT_FALSE(project->IsMailBoxAllowed());
}

TEST(OpenProject, TellsAnUnknownUserAndAWrongPasswordByOneText) {
  ProjectWorld world;
  const std::string refusal = world.Refusal(world.Path, u"Ann", u"Secret");
  EXPECT_EQ(refusal, "The user name or the password is wrong.");
  EXPECT_EQ(world.Refusal(world.Path, u"nobody", u"secret"), refusal);
  EXPECT_EQ(world.Refusal(world.Path, u"ben", u""), refusal) << "ben has no password";
}

TEST(OpenProject, GivesNothingAndAReasonForFilesThatAreNoProjects) {
  ProjectWorld world;
  const fs::path folder = world.Home.Path();
  const auto write = [&](const char* name, std::string_view bytes) { WriteFile(folder / name, bytes); };
  fs::create_directory(folder / "folder.TVS");
  write("empty.TVS", "");
  write("binary.TVS", std::string_view("[Project]\nFormat=1\nName=\0x\xFF\n", 29));
  write("other.TVS", "[Mail]\nFormat=1\n");
  write("newer.TVS", "[Project]\nFormat=2\nName=A\nDatabase=apollo.db\n");
  write("half.TVS", "[Project]\nFormat=1\nName=A\n");
  write("lost.TVS", "[Project]\nFormat=1\nName=A\nDatabase=lost.db\n");
  write("foreign.db", "");
  write("foreign.TVS", "[Project]\nFormat=1\nName=A\nDatabase=foreign.db\n");
  write("text.db", std::string(4096, 'x'));
  write("text.TVS", "[Project]\nFormat=1\nName=A\nDatabase=text.db\n");
  write("loop.TVS", "[Project]\nFormat=1\nName=A\nDatabase=folder.TVS\n");
  const std::pair<const char*, const char*> refusals[] = {
      {"absent.TVS", "doesn't exist"},         {"absent/a.TVS", "doesn't exist"},
      {"folder.TVS", "is a folder"},           {"empty.TVS", "is not a project file"},
      {"binary.TVS", "is not a project file"}, {"other.TVS", "is not a project file"},
      {"newer.TVS", "newer version"},          {"half.TVS", "is damaged"},
      {"lost.TVS", "lost.db is missing"},      {"foreign.TVS", "another program, or empty"},
      {"text.TVS", "text.db is no database"},  {"loop.TVS", "is not a file"},
  };
  for (const auto& [name, why] : refusals) {
    const std::string refusal = world.Refusal(world.PathOf(name));
    EXPECT_TRUE(Holds(refusal, why)) << name << ": " << refusal;
  }
  EXPECT_EQ(world.Refusal(u""), "No project path is given.");
  EXPECT_TRUE(Holds(world.Refusal(world.Path + String(1, u'\0')), "no proper name"));
  EXPECT_FALSE(world.App->OpenProject(world.Path, 2, u"Ann", u"secret", 0, 3));
}

TEST(OpenProject, RefusesADatabaseOfANewerVersionAndADamagedOne) {
  ProjectWorld world;
  world.Sql("PRAGMA user_version = 2");
  EXPECT_TRUE(Holds(world.Refusal(world.Path), "newer version of Talvane"));
  world.Sql("PRAGMA user_version = 1; DROP TABLE discussions");
  EXPECT_TRUE(Holds(world.Refusal(world.Path), "no such table: discussions"));
  std::string bytes = ReadFile(world.Database());
  std::fill(bytes.begin() + 100, bytes.end(), '\xAA');
  WriteFile(world.Database(), bytes);
  EXPECT_TRUE(Holds(world.Refusal(world.Path), "damaged"));
  EXPECT_EQ(ReadFile(world.Database()), bytes);
}

TEST(OpenProject, LeavesSectionsOfOthersAlone) {
  ProjectWorld world;
  const fs::path file = ToUtf8(world.Path);
  const std::string text =
      "\xEF\xBB\xBF; ours\r\n[EMail]\r\nName=x\r\n" + ReadFile(file) + "[Other]\nFormat=9\n";
  WriteFile(file, text);
  ASSERT_TRUE(world.Open());
  EXPECT_TEXT(u"Apollo", world.Open()->GetName());
  EXPECT_EQ(ReadFile(file), text);
}

TEST(Users, StandInTheOrderOfTheirKeysAndAreASnapshot) {
  ProjectWorld world;
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

TEST(Users, AreReadAgainOnlyAfterAUserChangedHoweverManyRepliesCome) {
  ProjectWorld world;
  world.Sql(
      "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 100000) "
      "INSERT INTO users (name, folded_name, email, mail_accepted, role) "
      "SELECT 'user' || i, 'user' || i, i || '@example.org', 1, 'member' FROM n");
  const auto project = world.Open();
  const auto elsewhere = world.Open();
  const auto users = project->GetUsers();
  EXPECT_EQ(users->Count(), 100002);
  for (int i = 0; i < 3; ++i) {
    Reply(*project, u"s", u"b");
    Reply(*elsewhere, u"s", u"b");
    EXPECT_EQ(project->GetUsers(), users);
  }
  world.Sql("UPDATE users SET email = 'new@example.org' WHERE name = 'user7'");
  EXPECT_NE(project->GetUsers(), users);
}

TEST(Replies, AreOfTheActingUserAndBeforeThatOfTheOneWhoOpenedTheProject) {
  ProjectWorld world;
  const auto project = world.Open();
  Reply(*project, u"first", u"a");
  EXPECT_TRUE(project->SetActingUser(world.Ben, 1, world.App->GetLogon()->GetLogonText()));
  Reply(*project, u"second", u"b");
  const Array replies = world.Replies();
  ASSERT_EQ(replies.size(), 2U);
  EXPECT_TEXT(u"Ann", replies[0].ToArray()[2].ToString());
  EXPECT_TEXT(u"second", replies[1].ToArray()[0].ToString());
  EXPECT_TEXT(u"ben", replies[1].ToArray()[2].ToString());
  const std::string at = Utf8(replies[1].ToArray()[3].ToString());
  EXPECT_TRUE(at.size() == 24 && at[10] == 'T' && at.back() == 'Z') << at;
}

TEST(Replies, KeepEveryCharacter) {
  ProjectWorld world;
  const String body =
      u"lone \xD800 surrogates \xDFFF, NUL " + String(1, u'\0') + u", \U0001F680 and\r\nends ";
  Reply(*world.Open(), u"Grüße \xDC00", body);
  EXPECT_EQ(world.Replies()[0].ToArray()[1].ToString(), body);
  EXPECT_EQ(world.Replies()[0].ToArray()[0].ToString(), u"Grüße \xDC00");
}

TEST(Replies, GoToDiscussionsThatExist) {
  ProjectWorld world;
  const auto project = world.Open();
  EXPECT_FALSE(project->GetDiscussion(2));
  EXPECT_FALSE(project->GetDiscussion(-1));
  EXPECT_THROW(CallWith(*project->GetDiscussion(1), u"Reply", {u"subject alone"}), Failure);
  EXPECT_THROW(CallWith(*project->GetDiscussion(1), u"Forward", {}), Failure);
}

TEST(ActingUser, IsRefusedUnlessTheUserAcceptsMailAndTheLogonTextIsTheApplicationsOwn) {
  ProjectWorld world;
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
  EXPECT_TEXT(u"Ann", world.Replies()[0].ToArray()[2].ToString());
}

TEST(Factory, GivesApplicationsThatOpenProjects) {
  ProjectWorld world;
  const auto factory = std::dynamic_pointer_cast<TalvaneApplicationFactory>(
      Platform::Services().CreateByName(u"Talvane40.TalvaneApplicationFactory"));
  ASSERT_TRUE(factory);
  Boolean shared = True;
  EXPECT_TRUE(factory->CreateApplication(shared)->OpenProject(world.Path, 1, u"ann", u"secret", 0, 3));
}

TEST(Administration, DescribesAProject) {
  ProjectWorld world;
  const Array project = world.Administer.Describe(world.Path);
  EXPECT_TEXT(u"Apollo", project[0].ToString());
  const Array ben = project[1].ToArray()[1].ToArray();
  EXPECT_EQ(ben[0].ToInt32(), world.Ben);
  EXPECT_TEXT(u"ben", ben[1].ToString());
  EXPECT_TEXT(u"ben@example.org", ben[2].ToString());
  EXPECT_TRUE(ben[3].ToBool());
  EXPECT_EQ(project[2].ToArray()[0].ToArray()[0].ToInt32(), 1);
  EXPECT_TEXT(u"Release plan", project[2].ToArray()[0].ToArray()[1].ToString());
}

TEST(Administration, RefusesWhatCantBeMeantAndChangesNothing) {
  ProjectWorld world;
  const Administration& administer = world.Administer;
  const String path = world.Path, fresh = world.PathOf("fresh.TVS");
  const auto create = [&](StringView name, StringView owner, StringView address) {
    return FailureOf([&] { administer.CreateProject(fresh, name, owner, address, u"secret"); });
  };
  const auto addUser = [&](StringView name, StringView address) {
    return FailureOf([&] { administer.AddUser(path, name, address); });
  };
  const auto contents = [&] {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(world.Home.Path()))
      names.push_back(entry.path().filename());
    std::ranges::sort(names);
    return names;
  };
  const auto before = contents();
  EXPECT_TRUE(Holds(create(u" ", u"Ann", u""), "must not be empty"));
  EXPECT_TRUE(Holds(create(u"A\nB", u"Ann", u""), "line ends"));
  EXPECT_TRUE(Holds(create(u"A\\B", u"Ann", u""), "backslash"));
  EXPECT_TRUE(Holds(create(String(256, u'x'), u"Ann", u""), "255 characters"));
  EXPECT_TRUE(Holds(create(u"A", u"", u""), "must not be empty"));
  EXPECT_TRUE(Holds(create(u"A", u"Ann", u"nowhere"), "no e-mail address"));
  EXPECT_TRUE(Holds(addUser(u"BEN", u"b@example.org"), "already has a user"));
  for (const StringView address : {u"", u"@example.org", u"a@", u"a@b@c", u"a b@c", u"<a@b>", u"a@b\r\n"}) {
    EXPECT_TRUE(Holds(addUser(u"dora", address), "no e-mail address")) << Utf8(address);
  }
  EXPECT_TRUE(Holds(FailureOf([&] { administer.AddDiscussion(path, u""); }), "must not be empty"));
  EXPECT_TRUE(Holds(FailureOf([&] { administer.AddDiscussion(fresh, u"x"); }), "doesn't exist"));
  EXPECT_EQ(contents(), before);
  EXPECT_EQ(administer.Describe(path)[1].ToArray().size(), 2U);
}

TEST(Creation, LeavesAFileThatExistsUntouched) {
  ProjectWorld world;
  const std::string before = ReadFile(ToUtf8(world.Path));
  EXPECT_TRUE(Holds(FailureOf([&] { world.Administer.CreateProject(world.Path, u"B", u"Bob", u"", u"x"); }),
                    "exists already"));
  EXPECT_EQ(ReadFile(ToUtf8(world.Path)), before);
  EXPECT_TRUE(world.Open());
}

TEST(Creation, FindsANameForTheDatabaseWhateverIsThereAndKeepsBothFilesPrivate) {
  ProjectWorld world;
  WriteFile(world.Home.Path() / "zeus.db-wal", "left behind");
  world.Administer.CreateProject(world.PathOf("zeus"), u"Zeus", u"Ann", u"", u"secret");
  EXPECT_EQ(ReadFile(world.Home.Path() / "zeus.db-wal"), "left behind");
  for (const char* name : {"zeus", "zeus-2.db"}) {
    struct stat status {};
    ASSERT_EQ(stat((world.Home.Path() / name).c_str(), &status), 0) << name;
    EXPECT_EQ(status.st_mode & 0777U, 0600U) << name;
  }
  EXPECT_TRUE(world.Open(world.PathOf("zeus")));
  world.Administer.CreateProject(world.PathOf(" odd\nname.TVS"), u"Odd", u"Ann", u"", u"secret");
  EXPECT_TRUE(world.Open(world.PathOf(" odd\nname.TVS")));
}

TEST(Passwords, AreStoredAsSaltedHashesOfASlowKind) {
  ProjectWorld world;
  const std::string bytes = ReadFile(world.Database());
  EXPECT_FALSE(Holds(bytes, "secret"));
  EXPECT_TRUE(Holds(bytes, "scrypt$"));
  world.Sql("UPDATE users SET password_hash = 'secret'");
  EXPECT_EQ(world.Refusal(world.Path), "The user name or the password is wrong.");
}

}  // namespace
}  // namespace Tests
