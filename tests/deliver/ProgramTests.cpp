// tvmail deliver as a mail server and an administrator call it: the real program, stores and siblings.
#include <random>
#include <sstream>

#include "platform/Json.h"
#include "tests/deliver/Deliver.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

// The reply as "project show --json" gives it.
std::string ReplyText(std::string body, const std::string& subject, const std::string& user) {
  for (std::size_t at = body.find("\\n"); at != std::string::npos; at = body.find("\\n", at + 2))
    body.replace(at, 2, "\r\n");
  Platform::JsonObject reply;
  reply.Add("subject", Platform::FromUtf8(subject))
      .Add("body", Platform::FromUtf8(body))
      .Add("user", Platform::FromUtf8(user));
  const std::string text = reply.Text();
  return text.substr(0, text.size() - 1) + ",";
}

TEST_F(Deliver, TurnsEverySampleIntoItsExpectedReply) {
  std::istringstream expected(ReadFile(fs::path(SAMPLES) / "EXPECTED"));
  std::size_t samples = 0;
  std::vector<std::string> replies[2];
  for (std::string line; std::getline(expected, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::istringstream columns(line);
    std::string file, exit, options, discussion, user, subject, body;
    for (std::string* column : {&file, &exit, &options, &discussion, &user, &subject, &body})
      std::getline(columns, *column, '\t');
    const std::string deliver = "tvmail deliver Apollo " + (fs::path(SAMPLES) / file).string();
    const Outcome outcome = Run(deliver);
    EXPECT_EQ(std::to_string(outcome.Exit), exit) << file << outcome.Output << outcome.Errors;
    EXPECT_EQ(Run(options == "-" ? "true" : deliver + " " + options).Exit, 0) << file;
    ++samples;
    if (discussion == "-") continue;
    replies[discussion == "2"].push_back(
        ReplyText(body.substr(1, body.size() - 2), subject.substr(1, subject.size() - 2), user));
  }
  EXPECT_GE(samples, 14u);
  const std::string project = Project();
  const std::size_t second = project.find("\"number\":2,");
  const std::string discussions[] = {project.substr(0, second), project.substr(second)};
  for (const int i : {0, 1}) {
    EXPECT_EQ(CountOf(discussions[i], "\"body\":"), replies[i].size());
    for (const std::string& reply : replies[i])
      EXPECT_NE(discussions[i].find(reply), std::string::npos) << reply << discussions[i];
  }
}

TEST_F(Deliver, ReportsEachOutcomeByItsExitCodeAndReason) {
  WriteFile(Path("good"), Mail("b"));
  WriteFile(Path("nameless"), "From: alice@apollo.example" + Mail("b").substr(Mail("b").find("\nSubject")));
  WriteFile(Path("robot"), "Auto-Submitted: auto-replied\n" + Mail("b"));
  WriteFile(Path("unknown"), Mail("b", "nobody@x"));
  WriteFile(Path("long"), Mail(std::string(40000, 'x')));
  WriteFile(Path("huge number"), Mail("b", "alice@apollo.example", "99999999999"));
  WriteFile(Path("no number"), Mail("b", "alice@apollo.example", "one"));
  WriteFile(Path("other"), "From: alice@apollo.example\nSubject: Hello\n\nb");
  WriteFile(Path("steering"), "Message-ID: <\x1B]0;x\x07>\n" + Mail("b"));
  WriteFile(Path("below"), Mail("> ----- Reply above\n> this line -----\n\nb"));
  WriteFile(Path("sealed"), "Content-Type: multipart/encrypted; boundary=b\n" +
                                Mail("--b\nContent-Type: application/octet-stream\n\nx\n--b--"));
  WriteFile(Path("enveloped"), "Content-Type: application/pkcs7-mime; smime-type=enveloped-data\n" +
                                   Mail("MIAGCSqGSIb3DQEHA6CAMIACAQAxggI="));
  WriteFile(Path("punycode"), Mail("b", "jörg@xn--mnchen-3ya.example"));
  WriteFile(Path("unicode"), Mail("b", "\"kai\" <k@MÜNCHEN.example>"));
  WriteFile(Path("junk"), std::string("\0\x01\xFF\x1A", 4));
  fs::create_directories(Path("folder"));
  const struct {
    std::string Line;
    int Exit;
    std::string Output, Errors;
  } rows[] = {
      {"tvmail deliver Apollo good", 0, "good  <m@x>  delivered\n1 message: 1 delivered", ""},
      {"tvmail deliver Apollo good good; tvmail deliver Apollo --json <good", 0,
       "good  <m@x>  delivered\ngood  <m@x>  duplicate\n2 messages: 1 delivered, 1 duplicate, 0 refused, 0 "
       "to be "
       "tried again\n{\"source\":\"-\",\"messageId\":\"<m@x>\",\"outcome\":\"duplicate\",\"reason\":\"\","
       "\"replyStored\":false,\"failure\":\"\"}\n",
       ""},
      {"tvmail deliver Apollo nameless nameless < good", 0, "1 delivered, 1 duplicate", ""},
      {"tvmail deliver Apollo < good", 0, "-  <m@x>  delivered", ""},
      {"tvmail deliver apollo - < good", 0, "delivered", ""},
      {"(echo 'From x'; cat good) | tvmail deliver Apollo", 0, "-  <m@x>  delivered", ""},
      {"tvmail deliver Apollo --json good unknown", 65,
       "{\"source\":\"good\",\"messageId\":\"<m@x>\",\"outcome\":\"delivered\",\"reason\":\"\","
       "\"replyStored\":true,\"failure\":\"\"}\n{\"source\":"
       "\"unknown\"",
       ""},
      {"tvmail deliver Apollo --json --strangers post unknown", 0,
       "\"outcome\":\"delivered\",\"reason\":\"\",\"replyStored\":true,\"failure\":\"(Talvane had a problem",
       ""},
      {"tvmail deliver Apollo --hold robot good", 0, "1 delivered, 0 refused, 1 held, 0 to be tried again",
       ""},
      {"for i in 1 2; do tvmail deliver Apollo --hold --json <robot; done; cmp robot home/held/*/new/*; find "
       "home/held -type f -path '*/new/*' | wc -l",
       0, "\"outcome\":\"held\",\"reason\":\"The mail was sent by a program", ""},
      {"mv home/held away; touch home/held; tvmail deliver Apollo --hold robot; c=$?; rm home/held; mv away "
       "home/held; exit $c",
       75, "to be tried again: The mail was refused (The mail was sent by a program", ""},
      {"tvmail deliver Apollo robot; tvmail deliver Apollo --automatic post robot", 0,
       "1 refused, 0 to be tried again\nrobot  <m@x>  delivered", ""},
      {"tvmail deliver Apollo < <(echo 'From MAILER-DAEMON  Mon Jan 31 12:00:00 2022'; cat good)", 65,
       "refused: The mail has no return address", ""},
      {"tvmail deliver Apollo --mbox < <(echo 'From MAILER-DAEMON  Mon Jan 31 12:00:00 2022'; cat good)", 0,
       "1 delivered", ""},
      {"tvmail deliver Apollo --require-authenticated mx.example.org good", 65, "refused: The mail server",
       ""},
      {"tvmail deliver Apollo --size-limit 1 < <(cat good; head -c 1000000 /dev/zero | base64)", 65,
       "refused: The mail has", ""},
      {"tvmail deliver Apollo --size-limit 0", 64, "", "--size-limit"},
      {"tvmail deliver Apollo --size-limit 129", 64, "", "--size-limit"},
      {"tvmail deliver Apollo --strangers maybe", 64, "", "{refuse,post}"},
      {"tvmail deliver Apollo --require-authenticated ''", 64, "", "such as mx.example.org"},
      {"tvmail deliver Apollo below", 65, "refused: The reply is empty: ", ""},
      {"tvmail deliver Apollo --empty post below", 0,
       "delivered (The reply is empty: the mail has no text above the line \"----- Reply above this "
       "line "
       "-----\", and the text below it is not read. Write your reply above it.)\n1 message: 1 delivered (1 "
       "empty), 0 refused",
       ""},
      {"tvmail deliver Apollo sealed --empty post --json", 0,
       "\"reason\":\"The reply is empty: the mail is encrypted", ""},
      {"tvmail deliver Apollo enveloped --empty post", 0,
       "delivered (The reply is empty: the mail is encrypted", ""},
      {"LC_ALL=de_DE.UTF-8 tvmail deliver --empty post Apollo sealed", 0,
       "delivered (Die Antwort ist leer: ", ""},
      {"LC_ALL=de_DE.UTF-8 tvmail deliver Apollo missing", 75,
       "to be tried again: nicht lesbar: Die Datei oder der Ordner ist nicht vorhanden", ""},
      {"tvmail deliver Apollo < /dev/null", 65, "(no Message-ID)  refused: ", ""},
      {"tvmail deliver Apollo junk", 65, "refused: ", ""},
      {"tvmail deliver Apollo long", 65, "is too large for a reply.\n", ""},
      {"tvmail deliver Apollo 'huge number'", 65, "is too large for a reply.\n", ""},
      {"tvmail deliver Apollo 'no number'", 65, "refused: ", ""},
      {"tvmail deliver Apollo other", 65, "The subject isn't that of a reply to a discussion's notification.",
       ""},
      {"LC_ALL=de_DE.UTF-8 tvmail deliver Apollo other", 65,
       "refused: Der Betreff ist nicht der einer Antwort", ""},
      {"tvmail deliver Apollo other --json", 65, "Invalid argument\"}\n", ""},
      {"for l in de_DE.UTF-8 ja_JP.UTF-8; do LC_ALL=$l LANG=$l tvmail deliver Apollo unknown other; c=$?; "
       "[ $c = 65 ] || exit $c; done; exit 65",
       65, "2 refused, 0 to be tried again", ""},
      {"b=$(dirname $(command -v tvmail)); mkdir -p copy/bin && cp $b/tvmail copy/bin && cp -r $b/../lib "
       "copy && "
       "copy/bin/tvmail init && rm copy/lib/TvResourceServices.so && copy/bin/tvmail deliver Apollo unknown "
       "other good; "
       "c=$?; tvmail init; exit $c",
       75, "0 delivered, 0 refused, 3 to be tried again", ""},
      {"tvmail deliver Apollo steering", 0, "<\\u001B]0;x\\u0007>", ""},
      {"tvmail deliver Apollo missing folder unknown good", 75,
       "can't be read: No such file or directory\nfolder  (no Message-ID)  to be tried again: ", ""},
      {"tvmail deliver Apollo missing folder unknown good", 75,
       "4 messages: 1 delivered, 1 refused, 2 to be tried again", ""},
      {"truncate -s 130M big; tvmail deliver Apollo big && exit 1; tvmail deliver Apollo --hold < big", 65,
       "", "The mail is larger than 128 MB. Send it again without attachments.\n"},
      {"(cat good; head -c 25000000 /dev/zero | base64) | tvmail deliver Apollo --size-limit 128", 65,
       "is too large for a reply", ""},
      {"tvmail project add-user Apollo.TVS --name j --email jörg@münchen.example && tvmail project add-user "
       "Apollo.TVS --name k --email k@xn--mnchen-3ya.example && tvmail deliver Apollo punycode unicode",
       0, "2 delivered", ""},
      {"tvmail deliver Nobody good", 78, "", "mailbox"},
      {"tvmail deliver '' good", 78, "", "mailbox"},
      {"TALVANE_HOME=$PWD/nowhere tvmail deliver Apollo good", 75, "", "mount its disk"},
      {"TALVANE_HOME=home tvmail deliver Apollo good", 75, "", "absolute path"},
      {"LC_ALL=de_DE.UTF-8 TALVANE_HOME=home tvmail deliver Apollo good", 75, "", "ist home; geben Sie"},
      {"mkdir mine; mv home/user* mine; tvmail deliver Apollo good; c=$?; mv mine/* home; exit $c", 0,
       "delivered", ""},
      {"tvmail deliver", 64, "", "MAILBOX"},
      {"tvmail deliver Apollo --jsn good", 64, "", "--jsn"},
      {"tvmail deliver Apollo good >/dev/full", 0, "", "can't be written: No space left on device"},
      {"tvmail deliver Apollo unknown | true; exit ${PIPESTATUS[0]}", 65, "", ""},
      {"mv Apollo.TVS away; tvmail deliver Apollo unknown good; c=$?; mv away Apollo.TVS; exit $c", 75,
       "2 messages: 0 delivered, 0 refused, 2 to be tried again", ""},
  };
  for (const auto& row : rows) {
    const Outcome outcome = RunAnew(row.Line);
    EXPECT_EQ(outcome.Exit, row.Exit) << row.Line << "\n" << outcome.Output << outcome.Errors;
    EXPECT_NE(outcome.Output.find(row.Output), std::string::npos) << row.Line << "\n" << outcome.Output;
    EXPECT_NE(outcome.Errors.find(row.Errors), std::string::npos) << row.Line << "\n" << outcome.Errors;
  }
}

TEST_F(Deliver, ReadsAMaildirInTheOrderOfArrivalAndSkipsAFileThatVanished) {
  for (const char* part : {"new", "cur", "tmp"}) fs::create_directories(Path("Mail") / part);
  WriteFile(Path("Mail/cur/1.a:2,S"), Mail("first", "alice@apollo.example", "1", "1"));
  WriteFile(Path("Mail/new/2.b"), Mail("second", "alice@apollo.example", "1", "2"));
  fs::create_symlink("gone", Path("Mail/new/3.c"));
  WriteFile(Path("Mail/cur/4.d:2,"), Mail("third", "alice@apollo.example", "1", "4"));
  const Outcome outcome = Run("tvmail deliver Apollo Mail");
  EXPECT_EQ(outcome.Exit, 75);
  EXPECT_EQ(
      outcome.Output,
      "Mail/cur/1.a:2,S  <1@x>  delivered\nMail/new/2.b  <2@x>  delivered\nMail/new/3.c  (no Message-ID)  "
      "to be tried again: can't be read: No such file or directory\nMail/cur/4.d:2,  <4@x>  delivered\n"
      "4 messages: 3 delivered, 0 refused, 1 to be tried again\n");
}

TEST_F(Deliver, ProcessesAtOnceMakeEachReplyOnce) {
  constexpr std::size_t kCount = 150;
  WriteFile(Path("one"), Mbox(kCount, "one"));
  WriteFile(Path("two"), Mbox(kCount, "two"));
  const Outcome outcome = Run(
      "for files in 'one two' 'two one' one; do ((++i)); tvmail deliver Apollo $files >lines$i & done; wait "
      "-n && "
      "wait -n && wait -n; c=$?; cat lines*; exit $c");
  EXPECT_EQ(outcome.Exit, 0) << outcome.Output;
  EXPECT_EQ(CountOf(outcome.Output, ">  delivered\n"), 2 * kCount);
  EXPECT_EQ(CountOf(outcome.Output, ">  duplicate\n"), 3 * kCount);
  const std::string project = Project();
  for (std::size_t i = 0; i < kCount; ++i) {
    EXPECT_EQ(CountOf(project, "\"one-" + std::to_string(i) + "-end\""), 1u);
    EXPECT_EQ(CountOf(project, "\"two-" + std::to_string(i) + "-end\""), 1u);
  }
}

TEST_F(Deliver, TellsTheSenderOfOneMailInOneSentenceWhyItIsRefused) {
  WriteFile(Path("unknown"), Mail("b", "nobody@x"));
  const std::string english = "The project has no user with the address nobody@x. Reply from ";
  const struct {
    std::string Line, Errors;
    bool Output;
  } rows[] = {
      {"tvmail deliver Apollo <unknown", english, true},
      {"tvmail deliver Apollo /dev/stdin --json <unknown", english, true},
      {"tvmail deliver Apollo --quiet <unknown", english, false},
      {"LC_ALL=de_DE.UTF-8 tvmail deliver Apollo --quiet <unknown", "Das Projekt hat keinen Benutzer", false},
      {"tvmail deliver Apollo --quiet unknown", "", false}};
  for (const auto& row : rows) {
    const Outcome outcome = Run(row.Line);
    EXPECT_EQ(outcome.Exit, 65);
    EXPECT_TRUE(outcome.Errors.starts_with(row.Errors)) << outcome.Errors;
    EXPECT_EQ(CountOf(outcome.Errors, "\n"), row.Errors.empty() ? 0u : 1u) << outcome.Errors;
    EXPECT_EQ(outcome.Output.empty(), !row.Output) << outcome.Output;
  }
}

// Delivers the file in the background from a pipe that stays open, so that the last message is still
// incomplete, until this number of outcomes is printed. The shell then runs the next commands.
std::string InBackground(const std::string& file, std::size_t outcomes) {
  return ": >lines; rm -f pipe; mkfifo pipe; exec 3<>pipe; cat " + file +
         " >pipe 3>&- & tvmail deliver Apollo --mbox <pipe >lines 3>&- & wait_for_deliveries " +
         std::to_string(outcomes) + "; ";
}

TEST_F(Deliver, AskedToStopEndsBetweenTwoMessages) {
  WriteFile(Path("begun"), Mbox(2, "m"));
  const Outcome outcome = Run(InBackground("begun", 1) + "kill -TERM $!; wait $!; c=$?; cat lines; exit $c");
  EXPECT_EQ(outcome.Exit, 75) << outcome.Errors;
  EXPECT_NE(outcome.Output.find("1 delivered"), std::string::npos) << outcome.Output;
  EXPECT_NE(outcome.Output.find("stopped before the end"), std::string::npos) << outcome.Output;
  EXPECT_EQ(CountOf(Project(), "\"body\":"), 1u);
}

// A reply whose outcome wasn't printed any more is a duplicate later.
TEST_F(Deliver, KilledAtAnyMomentAndRepeatedStoresEachReplyOnce) {
  constexpr std::size_t kCount = 300;
  std::minstd_rand random(std::random_device{}());
  for (const std::size_t outcomes : {1u, 2u, 60u, 200u}) {
    const std::string name = "at" + std::to_string(outcomes);
    WriteFile(Path("mbox"), Mbox(kCount, name));
    const std::string pause = "sleep 0.000" + std::to_string(1000 + random() % 9000);
    const Outcome killed =
        Run(InBackground("mbox", outcomes) + pause + "; kill -KILL $!; wait $!; cat lines");
    const std::size_t printed = CountOf(killed.Output, "  delivered\n");
    EXPECT_GE(printed, outcomes);
    const std::size_t stored = CountOf(Project(), "\"" + name + "-");
    // So many mails at most wait for the disk together, which is before their lines are printed.
    EXPECT_GE(stored, printed);
    EXPECT_LE(stored, printed + 64);

    const Outcome repeated = Run("tvmail deliver Apollo mbox");
    EXPECT_EQ(repeated.Exit, 0) << repeated.Errors;
    EXPECT_EQ(CountOf(repeated.Output, ">  duplicate\n"), stored);
    EXPECT_EQ(CountOf(repeated.Output, ">  delivered\n"), kCount - stored);
    const std::string project = Project();
    for (std::size_t i = 0; i < kCount; ++i)
      EXPECT_EQ(CountOf(project, "\"" + name + "-" + std::to_string(i) + "-end\""), 1u);
  }
}

}  // namespace
}  // namespace Tests
