// The commands of tvmail, by their exit codes and by what they print.
#include "platform/Json.h"
#include "platform/StoredNames.h"
#include "runtime/Database.h"
#include "tests/host/Commands.h"

namespace Tests {
namespace {

TEST_F(Commands, BeforeInitNameTheCommandToRunFirst) {
  for (const char* arguments :
       {"mailbox list", "mailbox delete x", "mailbox change x --host h", "outbound show", "outbound --enable",
        "project create p.TVS --name P --user ann --password-file password"}) {
    program.Expect({{arguments, 78, "", "run tvmail init"}});
  }
  EXPECT_FALSE(std::filesystem::exists(program.File("p.TVS")));
}

TEST_F(Commands, InitReportsAHomeThatCannotBeCreated) {
  WriteFile(program.File("home"), "a file");
  program.Expect({{"init", 73, "", "TALVANE_HOME"}});
  EXPECT_EQ("a file", ReadFile(program.File("home")));
}

TEST_F(MailboxCommands, WrongUseGives64AndSaysWhatIsWrong) {
  program.Expect(
      {{"", 64, "", "--help"},
       {"bogus", 64, "", "bogus"},
       {"mailbox bogus", 64, "", "bogus"},
       {"mailbox add", 64, "", "NAME"},
       {"mailbox add x" + kLogon + " --transport uucp", 64, "", "--transport"},
       {"mailbox add x --user ann --password-file password" + kSmtp, 64, "", "--project is missing"},
       {"mailbox add x --project apollo.TVS --password-file password" + kSmtp, 64, "", "--user"},
       {"mailbox add x --project apollo.TVS --user ann" + kSmtp, 64, "", "--password-file"},
       {"mailbox add x" + kLogon, 64, "", "--transport"},
       {"mailbox add x" + kLogon + " --transport smtp --host h", 64, "", "--address is missing"},
       {"mailbox add x" + kLogon + " --transport mapi", 64, "", "--profile is missing"},
       {"mailbox add x" + kLogon + kSmtp + " --profile P", 64, "", "--profile belongs"},
       {"mailbox add x --project '' --user ann --password-file password" + kSmtp, 64, "", "name the file"},
       {"mailbox add x --project apollo.TVS --user '' --password-file password" + kSmtp, 64, "",
        "--user is empty"},
       {"mailbox change Apollo --user '' --password-file password", 64, "", "--user is empty"},
       {"mailbox change Apollo --password-file ''", 64, "", "--password-file is empty"},
       {"project create p.TVS --name P --user ann --password-file ''", 64, "", "--password-file is empty"},
       {"mailbox change Apollo --project other.TVS", 64, "", "can't move to another project"},
       {"mailbox change Apollo --password secret", 64, "", "--password"},
       {"outbound --enable --disable", 64, "", "excludes"},
       {"outbound --enable --host h show", 64, "", "in front of a subcommand"},
       {"outbound --profile x add-profile q", 64, "", "in front of a subcommand"},
       {"project create p.TVS --name P", 64, "", "--user"},
       {"mailbox list --json extra", 64, "", "extra"}});
}

TEST_F(Commands, HelpAndVersionGoToStandardOutput) {
  program.Expect({{"--help", 0, "Exit codes", ""},
                  {"--version", 0, "9.1002.1.10", ""},
                  {"mailbox add --help", 0, "--password-file", ""},
                  {"outbound show --help", 0, "--json", ""}});
}

TEST_F(MailboxCommands, WhatIsRefusedChangesNothing) {
  const std::string before = program.Run("project show apollo.TVS --json").Output;
  WriteFile(program.File("text.TVS"), "hello");
  WriteFile(program.File("empty"), "\xEF\xBB\xBF\n");
  program.Expect(
      {{"project create apollo.TVS --name A --user ann --password-file password", 65, "", "exists already"},
       {"project create /sys/p.TVS --name A --user ann --password-file password", 73, "", "/sys"},
       {"project create none/p.TVS --name A --user ann --password-file password", 65, "", "none"},
       {"project create p.TVS --name A --user ann --password-file empty", 65, "", "empty"},
       {"project create p.TVS --name $'A\\nBcc: x' --user ann --password-file password", 65, "", "A Bcc: x"},
       {"project create $'\\x1B[31m.TVS' --name A --user ann --password-file password", 65, "",
        "\\u001B[31m"},
       {"mailbox change Apollo --host $'h\\r'", 65, "", "control character"},
       {"outbound --host h --address $'a@b\\xC2\\x85'", 65, "", "\\u0085"},
       {"outbound add-profile $'a\\tb'", 65, "", "control character"},
       {"outbound add-profile 'a\\b'", 65, "", "backslash"},
       {"outbound add-profile " + std::string(300, 'x'), 65, "", "255"},
       {"project create p.TVS --name 'a\\b' --user ann --password-file password", 65, "", "backslash"},
       {"project create p.TVS --name A --user ann --password-file nowhere", 65, "", "nowhere"},
       {"project create p.TVS --name A --user ann --password-file home", 65, "", "home"},
       {"project add-user apollo.TVS --name eve --email eve", 65, "", "no e-mail address"},
       {"project add-discussion none.TVS --title T", 65, "", "none.TVS"},
       {"project show text.TVS", 65, "", "text.TVS"},
       {"project show .", 65, "", "folder"}});
  EXPECT_FALSE(std::filesystem::exists(program.File("p.TVS")));
  EXPECT_EQ(before, program.Run("project show apollo.TVS --json").Output);
}

TEST_F(MailboxCommands, AMailboxIsListedWithTheAbsolutePathOfItsProjectAlsoAfterASecondInit) {
  program.Expect({{"init", 0, program.File("home").string(), ""}, {"mailbox list", 0, "Apollo", ""}});
  EXPECT_EQ("[{\"name\":\"Apollo\",\"projectPath\":\"" + program.File("apollo.TVS").string() +
                "\",\"userId\":\"ann\"}]\n",
            program.Run("mailbox list --json").Output);
}

TEST_F(MailboxCommands, AMailboxIsShownWithWhatIsMissing) {
  EXPECT_EQ("{\"name\":\"Apollo\",\"projectPath\":\"" + program.File("apollo.TVS").string() +
                "\",\"userId\":\"ann\",\"transport\":\"smtp\",\"profile\":\"\",\"command\":\"\",\"host\":"
                "\"mx.example.org\","
                "\"address\":\"talvane@example.org\",\"realName\":\"\",\"missing\":[],\"problem\":\"\"}\n",
            program.Run("mailbox show apollo --json").Output);
  program.Store(Hive::LocalMachine, String(RegistryPath::kMailBoxes) + u"\\Half", MailBoxValue::kProjectPath,
                {1, u"/none.TVS"});
  program.Expect({{"mailbox show Half", 0, "Missing:      userId, password: add", ""},
                  {"mailbox show Half", 0, "Problem:      /none.TVS", ""},
                  {"mailbox show none", 78, "", "none"}});
}

TEST_F(MailboxCommands, APathThroughALinkIsTheFileThatTheSystemOpens) {
  std::filesystem::create_directories(program.File("real/sub"));
  std::filesystem::create_symlink("real/sub", program.File("link"));
  program.Expect(
      {{"project create link/../b.TVS --name B --user ann --password-file password", 0, "real/b.TVS\n", ""},
       {"project create ./link//c.TVS --name C --user ann --password-file password", 0, "/link/c.TVS\n", ""},
       {"project create link/none/../d.TVS --name D --user ann --password-file password", 65, "", "none"}});
  EXPECT_TRUE(std::filesystem::exists(program.File("real/b.TVS")));
}

TEST_F(MailboxCommands, ARecordWithoutTextsIsIncompleteAndAffectsNoOther) {
  const String parent = u"Software\\Ostrand Software\\Email\\MailBoxes\\";
  program.Store(Hive::LocalMachine, parent + u"Bytes", u"TVSFilePath", {3, Bytes{1, 2}});
  program.Store(Hive::LocalMachine, parent + u"Half", u"TVSFilePath", {1, u"/none.TVS"});
  program.Expect(
      {{"mailbox list", 0, "Bytes           (incomplete: add it again", ""},
       {"mailbox list --postfix-map t.example.org", 0, "Apollo@t.example.org OK\n", "Half is not in"},
       {"mailbox list --postfix-map 'a b'", 64, "", "the domain"},
       {"mailbox change Apollo --host h", 0, "bound", ""},
       {"deliver Apollo /dev/null", 65, "1 refused", ""},
       {"mailbox change Bytes --host h", 65, "", "is incomplete: add it again"},
       {"mailbox change Half", 65, "", "is incomplete: add it again"},
       {"mailbox delete Half", 75, "", "--force"},
       {"mailbox delete Bytes", 0, "Bytes is deleted", "tvmail: "},
       {"mailbox list", 0, "Half    ", ""}});
}

TEST_F(MailboxCommands, ShowNoControlCharacters) {
  const String mailbox = String(RegistryPath::kMailBoxes) + u"\\B";
  program.Store(Hive::LocalMachine, mailbox, MailBoxValue::kProjectPath, {1, u"/\x1B[31m\u202E.TVS"});
  program.Expect(
      {{"mailbox list", 0, "\\u001B[31m\\u202E.TVS", ""}, {"mailbox $'\\x1B[31m'", 64, "", "\\u001B[31m"}});
}

TEST_F(MailboxCommands, ARefusedMailboxLeavesNoRecordAndNoSection) {
  program.Expect({{"mailbox delete apollo", 0, "Apollo is deleted", ""}});
  const std::string before = ReadFile(program.File("apollo.TVS"));
  WriteFile(program.File("blank"), "secret \n");
  const std::string user = " --user ann --password-file ";
  program.Expect({{"mailbox add x --project apollo.TVS" + user + "wrong" + kSmtp, 65, "", "can't be opened"},
                  {"mailbox add x --project apollo.TVS" + user + "blank" + kSmtp, 65, "", "blank"},
                  {"mailbox add x --project none.TVS" + user + "password" + kSmtp, 65, "", "none.TVS"},
                  {"mailbox add x --project home" + user + "password" + kSmtp, 65, "", "home"}});
  EXPECT_EQ("[]\n", program.Run("mailbox list --json").Output);
  EXPECT_EQ(before, ReadFile(program.File("apollo.TVS")));
}

TEST_F(MailboxCommands, APasswordComesFromStandardInputToo) {
  const std::string change = "mailbox change Apollo --password-file -";
  program.Expect({{change, 0, "bound", "", "secret\r\n"},
                  {change, 0, "bound", "", "\xEF\xBB\xBFsecret"},
                  {change, 65, "", "can't be opened", "secret\n\n"},
                  {change, 65, "", "is empty", "\n"}});
  std::filesystem::permissions(program.File("password"), std::filesystem::perms(0640));
  program.Expect(
      {{"mailbox change Apollo --password-file password", 0, "bound", "may read the password file"}});
}

TEST_F(MailboxCommands, ABoundProjectTakesNoSecondMailbox) {
  const std::string before = ReadFile(program.File("apollo.TVS"));
  const std::string other = " --transport mapi --profile P";
  program.Expect({{"mailbox add second" + kLogon + other, 65, "", "already has a mailbox"},
                  {"mailbox add APOLLO" + kLogon + other, 65, "", "mailbox change"}});
  EXPECT_EQ(before, ReadFile(program.File("apollo.TVS")));
}

TEST_F(MailboxCommands, AChangeKeepsWhatIsNotGiven) {
  const auto settings = [&] {
    const std::string text = ReadFile(program.File("apollo.TVS"));
    return text.substr(text.find("[EMail]"));
  };
  program.Expect({{"mailbox change apollo --host mx2.example.org", 0, "Mailbox Apollo is bound to", ""}});
  EXPECT_EQ(
      "[EMail]\nTransportID=2\nSMTPHostName=mx2.example.org\nRealName=\nEMailAddress=talvane@example.org\n",
      settings());
  program.Expect(
      {{"mailbox change Apollo --real-name 'Apollo Team' --password-file password", 0, "bound", ""}});
  EXPECT_PRED2(Holds, settings(), "SMTPHostName=mx2.example.org\nRealName=Apollo Team\n");
  const std::string before = settings();
  program.Expect({{"mailbox change Apollo --host mx3 --password-file wrong", 65, "", "can't be opened"},
                  {"mailbox change Apollo --host ''", 64, "", "--host is missing"},
                  {"mailbox change nobody --host mx3", 78, "", "no mailbox nobody"}});
  EXPECT_EQ(before, settings());
}

TEST_F(MailboxCommands, ADeletedMailboxFreesItsNameAndItsProject) {
  program.Expect(
      {{"mailbox delete APOLLO", 0, "Apollo is deleted", ""}, {"mailbox delete Apollo", 78, "", "Apollo"}});
  EXPECT_EQ(std::string::npos, ReadFile(program.File("apollo.TVS")).find("EMail"));
  program.Expect({{"mailbox add again" + kLogon + kSmtp, 0, "Mailbox Apollo is bound to", ""}});
}

TEST_F(MailboxCommands, AMailboxWhoseProjectIsGoneIsDeletedByForceAlone) {
  std::filesystem::remove(program.File("apollo.TVS"));
  program.Expect({{"mailbox delete Apollo", 75, "", "--force"},
                  {"mailbox list", 0, "Apollo", ""},
                  {"mailbox delete Apollo --force", 0, "deleted", "tvmail: "},
                  {"mailbox list", 0, "no mailbox", ""}});
}

TEST_F(Commands, OutboundSettingsAreStoredAsTheDialogTakesThem) {
  const std::string longText(256, 'x');
  program.Expect({{"init", 0, "Data folder", ""},
                  {"outbound show", 0, "isn't configured", ""},
                  {"outbound --transport mapi", 65, "", "add-profile"},
                  {"outbound --host mx.example.org", 65, "", "address"},
                  {"outbound --host " + longText + " --address a@x.org", 65, "", "255"},
                  {"outbound --host mx.example.org --address a@x.org --real-name Ann", 0, "smtp", ""},
                  {"outbound --real-name ''", 0, "Real name:    (none)", ""},
                  {"outbound --real-name Ann", 0, "Ann", ""}});
  // Without a host the dialog shows neither address nor name.
  program.Store(Hive::CurrentUser, RegistryPath::kOutbound, SendingValue::kHostName, {1, u""});
  program.Expect({{"outbound --host h --address a@x.org", 64, "", "\"Ann\" is stored"},
                  {"outbound --host mx.example.org --address a@x.org --real-name ''", 0, "(none)", ""},
                  {"outbound --profile Office", 64, "", "--transport mapi"},
                  {"outbound add-profile Office", 0, "Office", ""},
                  {"outbound --transport mapi --profile none", 65, "", "Office"},
                  {"outbound add-profile Home", 0, "Home", ""},
                  {"outbound --transport mapi --profile home", 0, "MAPI profile: Home", ""},
                  {"outbound --transport MAPI --profile OFFICE", 0, "MAPI profile: Office", ""},
                  {"outbound --host h", 64, "", "--transport smtp"},
                  {"outbound --disable", 0, "no", ""},
                  {"outbound --transport smtp", 64, "", "--enable"}});
  EXPECT_EQ(
      "{\"configured\":true,\"enabled\":false,\"transport\":\"mapi\",\"profile\":\"Office\",\"command\":\"\","
      "\"host\":"
      "\"mx.example.org\",\"address\":\"a@x.org\",\"realName\":\"\"}\n",
      program.Run("outbound show --json").Output);
}

TEST_F(MailboxCommands, AStoredTransportIsReadAsTheComponentReadsIt) {
  std::string project = ReadFile(program.File("apollo.TVS"));
  WriteFile(program.File("apollo.TVS"), project.replace(project.find("ID=2"), 4, "ID= 2.0 "));
  program.Expect({{"mailbox change Apollo --real-name Ann", 0, "bound", ""}});
  const struct {
    Runtime::RegistryValue Stored;
    const char* Shown;
  } cases[] = {{{1, u" 2 "}, "smtp"},  {{1, u"1.0"}, "mapi"},     {{4, 2}, "(none)"},
               {{1, u"9e99"}, "9e99"}, {{1, u"\x1B"}, "\\u001B"}, {{3, Bytes{2}}, "(none)"}};
  for (const auto& [stored, shown] : cases) {
    program.Store(Hive::CurrentUser, u"Software\\Ostrand Software\\Talvane\\4.0\\Email", u"TransportID",
                  stored);
    program.Expect({{"outbound show", 0, std::string("Transport:    ") + shown + "\n", ""}});
  }
}

TEST_F(MailboxCommands, AFullDiskAndADamagedProjectGiveTryAgainAndTheReason) {
  // A value of many pages, whose last write exceeds the limit of 32 kB.
  program.Store(Hive::CurrentUser, RegistryPath::kOutbound, SendingValue::kHostName,
                {1, String(500000, u'h')});
  program.Store(Hive::LocalMachine, String(RegistryPath::kMailBoxes) + u"\\Apollo", MailBoxValue::kUserId,
                {1, String(500000, u'u')});
  for (const char* line : {"outbound --host h --address a@x.org",
                           "mailbox change Apollo --user ann "
                           "--password-file password"}) {
    const Outcome outcome =
        program.Shell("(trap '' XFSZ; ulimit -f 32; exec tvmail " + std::string(line) + ") 2>&1 | cat");
    EXPECT_EQ(75, outcome.Exit) << line << outcome.Output;
    EXPECT_PRED2(Holds, outcome.Output, "at most 32768 bytes");
  }
  program.Expect(
      {{"mailbox change Apollo --user ann --password-file wrong", 65, "", "The project can't be opened"}});
  const std::string database = program.File("apollo.db").string();
  WriteFile(database, "damaged");
  program.Expect({{"mailbox change Apollo --user ann --password-file password", 75, "",
                   "\n" + database + " is no database; restore it"}});
  program.UseCopy();
  const std::string show = "tvmail project show apollo.TVS";
  const std::pair<std::string, const char*> rows[] = {
      {"LC_ALL=de_DE.UTF-8 " + show, "apollo.db ist keine Datenbank; stellen Sie"},
      {"LC_ALL=ja_JP.UTF-8 " + show, "apollo.db はデータベースではありません。"},
      {"LC_ALL=ja_JP.UTF-8 tvmail project show $(printf 'x%.0s' {1..300})", ": ファイル名が長すぎます"},
      {"LC_ALL=de_DE.UTF-8 tvmail mailbox change Apollo --project x", "kann nicht zu einem anderen Projekt"},
      // Without its catalogues the program has its English texts.
      {"rm $(dirname $(which tvmail))/../lib/TvMailRes.*; LC_ALL=ja_JP.UTF-8 " + show,
       "apollo.db is no database; restore it"},
  };
  for (const auto& [line, reason] : rows) EXPECT_PRED2(Holds, program.Shell(line).Errors, reason);
  // What a limit leaves unfinished is reported, and completed by the next call.
  for (const std::string limit : {"16", "32", "40"}) {
    const std::string home = "export TALVANE_HOME=$PWD/" + limit + "; ";
    const Outcome begun = program.Shell(home + "(ulimit -f " + limit + "; exec tvmail init) 2>&1 | cat");
    EXPECT_PRED2(Holds, begun.Output, "at most " + limit);
    EXPECT_EQ(limit == "16" ? 73 : 75, begun.Exit);
    EXPECT_PRED2(Holds, program.Shell(home + "tvmail init").Output, "(all registered)");
  }
}

TEST_F(Commands, AKeyStoreIsReadableByItsOwnerAlone) {
  program.Expect({{"init", 0, "Data folder", ""},
                  {"keystore create keys --label main --password-file password", 0, "main", ""},
                  {"keystore create keys --label main --password-file password", 65, "", "another label"},
                  {"keystore create keys --label more --password-file wrong", 65, "", "keys"},
                  {"keystore create wrong --label a --password-file wrong", 65, "", "isn't a key store"},
                  {"keystore create /dev/null --label a --password-file wrong", 65, "", "no ordinary file"},
                  {"keystore create keys --label a --password-file - <&-", 75, "", "input is closed"}});
  EXPECT_EQ(std::filesystem::perms(0600), std::filesystem::status(program.File("keys")).permissions());
}

TEST_F(Commands, AboutShowsTheSlotsOfBothInterfaces) {
  const std::string json = program.Run("about --json").Output;
  WriteFile(program.File("empty"), "");
  EXPECT_EQ(1,
            Runtime::Database(program.File("empty")).Number(("SELECT json_valid('" + json + "')").c_str()));
  std::size_t at = 0;
  for (const char* member : {"ConfigureOutBoundEmail", "Initialize", "HandleMessage", "Finalize", "Configure",
                             "MboxUpdate", "MboxDelete"}) {
    const auto found = json.find("\"name\":\"" + std::string(member) + "\"", at);
    ASSERT_NE(std::string::npos, found) << member;
    at = found;
  }
  program.Expect({{"about", 0, "AddMode: 16-bit integer by reference", ""},
                  {"about >/dev/full", 75, "", "can't be written"},
                  {"--help >/dev/full", 75, "", "can't be written"}});
}

TEST_F(MailboxCommands, ReportAMissingLibraryAndRecover) {
  const auto libraries = program.UseCopy();
  program.Expect({{"init", 0, "all registered", ""}});
  const struct {
    const char *Library, *Arguments, *Error;
  } cases[] = {
      {"Talvane40.so", "mailbox change Apollo --password-file password", "Talvane40.Dll"},
      {"TvGeneralServices.so",
       "mailbox add x --project apollo.TVS --user ann --password-file password --transport mapi --profile P",
       "TvGeneralServices.Dll"},
      {"TvResourceServices.so", "outbound --enable --host h --address a@b", "TvResourceServices.dll"},
      {"Talvane40.so", "project show apollo.TVS", "Talvane40.so"},
      {"TvGeneralServices.so", "outbound show", "TvGeneralServices"},
      {"TvEmailServices.so", "about", "TvEmailServices.so"}};
  for (const auto& [library, arguments, error] : cases) {
    std::filesystem::rename(libraries / library, program.File("away"));
    program.Expect({{arguments, 75, "", error}});
    std::filesystem::rename(program.File("away"), libraries / library);
  }
  program.Expect({{"mailbox change Apollo --password-file password", 0, "bound", ""},
                  {"outbound --enable --host h --address a@b", 0, "smtp", ""},
                  {"project show apollo.TVS", 0, "Apollo", ""}});
  std::filesystem::remove(libraries / "Talvane40.so");
  program.Expect({{"init", 75, "not all registered", "Talvane40.so isn't registered"}});
}

TEST(Json, EscapesWhatWouldBreakALineOrAReader) {
  const struct {
    Platform::String Text;
    const char* Expected;
  } cases[] = {{u"a\"b\\c/d", R"("a\"b\\c/d")"},
               {u"\t\r\n\x01\x7f\x9b\u202E", R"("\u0009\u000D\n\u0001\u007F\u009B\u202E")"},
               {u"é€", "\"é€\""},
               {u"\U0001F600", "\"\U0001F600\""},
               {{u'x', 0xD83D}, R"("x\uD83D")"},
               {{0xDE00, 0xD83D, u'y'}, R"("\uDE00\uD83Dy")"},
               {{0, u'z'}, R"("\u0000z")"}};
  for (const auto& [text, expected] : cases) EXPECT_EQ(expected, Platform::JsonValue(text).Text());
}

}  // namespace
}  // namespace Tests
