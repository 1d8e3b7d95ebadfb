// The dialogs of tvmail on a terminal and from piped answers.
#include <csignal>

#include "tests/support/Program.h"

namespace Tests {
namespace {

class DialogTest : public testing::Test {
 protected:
  DialogTest() {
    program.SetUp();
    program.Expect({{"mailbox delete Apollo", 0, "deleted", ""}});
  }

  // Path, user and password, and Enter for the OK button.
  std::string Answers(const std::string& password) {
    return program.File("apollo.TVS").string() + "\nann\n" + password + "\n\n";
  }

  Program program;
};

TEST_F(DialogTest, AsksItsFieldsByTheirCaptionsInTabOrder) {
  const Outcome outcome = program.Run("mailbox add x" + kSmtp, Answers("secret"));
  EXPECT_EQ(0, outcome.Exit);
  EXPECT_PRED2(Holds, outcome.Output, "Mailbox Apollo is bound to");
  std::size_t at = 0;
  for (const char* prompt : {"Project Path: ", "User Name: ", "Password: ", "Cancel", "Help", "OK"}) {
    const auto found = outcome.Errors.find(prompt, at);
    ASSERT_NE(std::string::npos, found) << prompt;
    at = found;
  }
  EXPECT_EQ(std::string::npos, outcome.Errors.find('&'));
}

TEST_F(DialogTest, StaysOpenAfterARefusalWithAllEntries) {
  const Outcome outcome = program.Run("mailbox add x" + kSmtp, Answers("guess") + "\n\nsecret\n\n");
  EXPECT_EQ(0, outcome.Exit);
  for (const char* shown : {"can't be opened", "User Name [ann]: ", "Password [as typed]: "})
    EXPECT_PRED2(Holds, outcome.Errors, shown);
}

TEST_F(DialogTest, EndsWithTheInputOrItsCancelAndTakesNoPathFromThePresentFolder) {
  for (const std::string& answers :
       {std::string(), std::string("x\ny"), Answers("secret").substr(0, 5) + "\n\n\ncancel\n"}) {
    program.Expect({{"mailbox add x" + kSmtp, 75, "", "cancelled", answers}});
  }
  program.Expect({{"mailbox add x" + kSmtp, 75, "", "give the whole path, beginning with /",
                   "apollo.TVS\nann\nsecret\n\n"}});
  EXPECT_EQ("[]\n", program.Run("mailbox list --json").Output);
}

TEST_F(DialogTest, PostsTheTextThatTheEditorLeavesAndKeepsOneThatIsRefused) {
  program.Expect({{"project add-discussion apollo.TVS --title Plan", 0, "1", ""}});
  const std::string folder = std::filesystem::temp_directory_path().string();
  setenv("TMPDIR", program.File("").c_str(), 1);
  const struct {
    std::string Editor;
    int Exit;
    const char* Shown;
  } cases[] = {{"printf 'Hi' >", 0, "1\r\n"},
               {":", 75, "the text is empty: nothing was stored"},
               {"false", 75, "the editor failed"},
               {"printf '\\344' >", 65, "the text is kept in "}};
  for (const auto& [editor, exit, shown] : cases) {
    WriteFile(program.File("editor"), editor + " \"$1\"\n");
    setenv("VISUAL", ("sh " + program.File("editor").string()).c_str(), 1);
    EXPECT_PRED2(Holds, program.OnTerminal("project post apollo.TVS --discussion 1 --user ann", {}, exit),
                 shown);
  }
  unsetenv("VISUAL");
  setenv("TMPDIR", folder.c_str(), 1);
}

TEST_F(DialogTest, TakesAPasswordThatIsAHyphen) {
  WriteFile(program.File("hyphen"), "-");
  program.Expect({{"project create b.TVS --name B --user ann --password-file hyphen", 0, "Project B", ""},
                  {"mailbox add x" + kSmtp, 0, "B is bound",
                   "Password: ", program.File("b.TVS").string() + "\nann\n-\n\n"}});
}

TEST_F(DialogTest, ACancelledChangeChangesNothingAndEndsAsEveryCancelDoes) {
  program.Expect({{"mailbox add x" + kLogon + kSmtp, 0, "bound", ""}});
  const std::string before = ReadFile(program.File("apollo.TVS"));
  for (const char* answers : {"", "\nguess\n\n", "\nguess\n\n\n\ncancel\n"}) {
    program.Expect(
        {{"mailbox change Apollo", 75, "", "cancelled", answers}, {"outbound", 75, "", "cancelled"}});
  }
  EXPECT_EQ(before, ReadFile(program.File("apollo.TVS")));
  EXPECT_PRED2(Holds, program.Run("mailbox change Apollo", "\nsecret\n\n").Output, "is bound");
}

TEST_F(DialogTest, AcceptsNoAddressWithAControlCharacter) {
  const std::string refused = "y\nsmtp\nh\na@b\x7F\n\n\n";
  program.Expect({{"outbound", 75, "", "another control character", refused},
                  {"outbound", 0, "a@b\n", "another control character", refused + "\n\n\na@b\n\n\n"}});
}

TEST_F(DialogTest, ShowsItsPromptAgainAfterAStop) {
  ASSERT_EQ(0, program.Run("mailbox add x" + kLogon + kSmtp).Exit);
  const std::string shown = program.OnTerminal(
      "mailbox change Apollo --user ann",
      {{"Password of ann: ", kControlZ}, {"Password of ann: ", kControlZ}, {"Password of ann: ", "secret"}});
  EXPECT_PRED2(Holds, shown, "is bound to");
  setenv("TERM", "xterm", 1);
  program.OnTerminal(
      "mailbox change Apollo",
      {{"[ann]: ", "bo" + kControlF}, {"bo", kControlZ}, {"[ann]: bo", kControlZ}, {"[ann]: bo", kControlC}},
      128 + SIGINT);
  unsetenv("TERM");
}

TEST_F(DialogTest, IsLeftByCtrlCAtEveryPrompt) {
  program.Expect({{"mailbox add x" + kLogon + kSmtp, 0, "bound", ""}});
  for (const char* kind : {"dumb", "xterm"}) {
    setenv("TERM", kind, 1);
    for (const std::string password : {"", "secret"})
      program.OnTerminal("mailbox change Apollo", {{"[ann]: ", ""}, {"Password: ", password + kControlC}},
                         128 + SIGINT);
    program.OnTerminal("mailbox change Apollo", {{"[ann]: ", "bob" + kControlC}}, 128 + SIGINT);
    program.OnTerminal("mailbox change Apollo", {{"[ann]: ", ""}, {"Password: ", "x"}, {"[OK]: ", kControlC}},
                       128 + SIGINT);
  }
  unsetenv("TERM");
}

TEST_F(DialogTest, HidesAPasswordOnATerminalAndShowsALockedBox) {
  ASSERT_EQ(0, program.Run("mailbox add x" + kLogon + kSmtp).Exit);
  const std::string shown = program.OnTerminal(
      "mailbox change Apollo", {{"User Name [ann]: ", ""}, {"Password: ", "secret"}, {"[OK]: ", ""}});
  EXPECT_EQ(std::string::npos, shown.find("secret"));
  EXPECT_PRED2(Holds, shown, "apollo.TVS (can't be changed)");
  EXPECT_PRED2(Holds, shown, "is bound to");
}

// Buttons are named by number, by name or by its beginning; what names none or two of them is asked again.
TEST_F(DialogTest, TakesButtonsByNameNumberAndAbbreviation) {
  program.Expect({{"mailbox add x" + kLogon + kSmtp, 0, "bound", ""}});
  const struct {
    std::string Answer, Output;
  } rows[] = {{"OK", "is bound"},          {"o", "is bound"},        {"3", "is bound"},
              {"CANCEL", "cancelled"},     {"c", "cancelled"},       {"1", "cancelled"},
              {"h\nok", "is bound"},       {"x\n9\nok", "is bound"}, {"", "is bound"},
              {"edit\n\n\nc", "cancelled"}};
  for (const auto& [answer, output] : rows) {
    const Outcome outcome = program.Run("mailbox change Apollo", "\nsecret\n" + answer + "\n");
    EXPECT_PRED2(Holds, outcome.Output + outcome.Errors, output) << answer;
    EXPECT_EQ(answer.find('9') != std::string::npos, Holds(outcome.Errors, "Please answer with a number"));
    EXPECT_EQ(answer.find('h') != std::string::npos, Holds(outcome.Errors, "What happens on OK"));
  }
}

TEST_F(DialogTest, IsHeldInTheLanguageOfItsUser) {
  const struct {
    std::string Language, Answers;
    std::vector<std::string> Shown;
  } rows[] = {
      {"de_DE",
       "?\nnein\nok\n",
       {"E-Mail-Benachrichtigung einschalten (ja/nein) [ja]: ", "Ohne das Häkchen"}},
      {"ja_JP", "vielleicht\nno\n\n", {"(はい/いいえ) [いいえ]: ", "はい または いいえ で答えてください"}}};
  for (const auto& [language, answers, shown] : rows) {
    const Outcome outcome = program.Shell("LC_ALL=" + language + ".UTF-8 tvmail outbound", answers);
    EXPECT_EQ(0, outcome.Exit) << outcome.Errors;
    EXPECT_PRED2(Holds, outcome.Output, "send e-mail: no");
    for (const std::string& text : shown) EXPECT_PRED2(Holds, outcome.Errors, text);
  }
  const Outcome refused =
      program.Shell("LC_ALL=de_DE.UTF-8 tvmail mailbox add x" + kSmtp, "a.TVS\nann\nb\n\n");
  EXPECT_PRED2(Holds, refused.Errors, "a.TVS ist nicht der vollständige Pfad der Projektdatei");
  EXPECT_PRED2(Holds, refused.Errors, "Der Dialog wurde abgebrochen; es wurde nichts geändert.");
}

// Keys that move the cursor, delete and complete a path work; the sequences of others are dropped.
TEST_F(DialogTest, EditsALineOnATerminal) {
  setenv("TERM", "xterm", 1);
  const std::string shown = program.OnTerminal(
      "mailbox add x" + kSmtp, {{"Project Path: ", (program.File("apo\t\tT\t")).string()},
                                {"User Name: ", "nX\x1B[Hä\x1B[D\x1B[3~a\x1B[5~\x1B[F\x7Fn\x1B[A"},
                                {"Password: ", "se\x1B[Dcret"},
                                {"[OK]: ", ""}});
  EXPECT_PRED2(Holds, shown, "apollo.TVS  apollo.");
  EXPECT_PRED2(Holds, shown, "is bound to");
  EXPECT_PRED2(Holds, program.OnTerminal("mailbox delete Apollo", {}), "deleted");
  // Home, End, a word and a character back and forward, in the forms that terminals send.
  const std::string edited =
      "XYn\x1B[1~\x1B[3~\x1B[3~\x1B[4~n "
      "q\x1B[1;5D\x1B[3~\x1B[D\x1B[3~Z\x1B[7~a\x1B[C\x7Fn\x1B[1;5C\x7FZ\x1B[H\x1B[8~\x7F";
  const std::string browsed =
      program.OnTerminal("mailbox add x" + kSmtp, {{"Project Path: ", ""},
                                                   {"User Name: ", edited},
                                                   {"Password: ", "secret"},
                                                   {"[OK]: ", "browse"},
                                                   {"Choose the Project File: ", "./apollo.T\t"},
                                                   {"[OK]: ", "ok"}});
  EXPECT_PRED2(Holds, browsed, "is bound to " + program.File("apollo.TVS").string());
  unsetenv("TERM");
  EXPECT_PRED2(Holds, program.Run("mailbox list").Output, "Apollo");
}

TEST_F(DialogTest, ShowsHelpThroughThePager) {
  setenv("PAGER", "sed s/^/:/", 1);
  const std::string shown =
      program.OnTerminal("outbound", {{"[yes]: ", "?"}, {"[yes]: ", kControlC}}, 128 + SIGINT);
  EXPECT_PRED2(Holds, shown, ":What happens on OK");
  setenv("PAGER", "no-such-pager", 1);
  EXPECT_PRED2(Holds,
               program.OnTerminal("outbound", {{"[yes]: ", "?"}, {"[yes]: ", kControlC}}, 128 + SIGINT),
               "\nWhat happens on OK");
  unsetenv("PAGER");
}

TEST_F(DialogTest, AsksForTheTransportOnATerminalWhenNoneIsGiven) {
  setenv("TERM", "xterm", 1);
  program.OnTerminal("mailbox add x" + kLogon,
                     {{"[smtp]: ", "mapi"}, {"MAPI profile: ", "Z\u00FC\u20AC\U0001F600"}});
  unsetenv("TERM");
  EXPECT_PRED2(Holds, ReadFile(program.File("apollo.TVS")),
               "TransportID=1\nMAPIProfile=Z\u00FC\u20AC\U0001F600\n");
}

TEST_F(DialogTest, FollowsTheLayoutOfTheChosenTransport) {
  program.Expect({{"outbound add-profile 'Office 2'", 0, "Office", ""},
                  {"outbound add-profile Office", 0, "Office", ""}});
  // Enabled; transport SMTP by its name, which shows the host's box; host, address, name; OK.
  program.Expect({{"outbound", 0, "SMTP host:    mx.example.org", "E-mail address",
                   "y\nsmtp\nmx.example.org\na@x.org\n\n\n"}});
  program.Expect({{"outbound", 0, "e-mail: no", "E-mail protocol: SMTP (disabled)", "n\n\n"},
                  {"outbound", 75, "", "No host name is given", "y\n\n-\n\n\n\n"},
                  {"outbound", 0, "xxx", "Only the first 255 characters",
                   "y\n\n\n\n" + std::string(256, 'x') + "\n\n"}});
  // Enter keeps; number 1 is MAPI, which shows the list of profiles instead. A whole name counts before a
  // part.
  const Outcome mapi = program.Run("outbound", "\n1\noFFICE\n\n");
  EXPECT_EQ(0, mapi.Exit) << mapi.Errors;
  EXPECT_PRED2(Holds, mapi.Output, "Transport:    mapi");
  EXPECT_EQ(std::string::npos, mapi.Errors.find("E-mail address"));
}

TEST_F(DialogTest, ANewPasswordIsTypedTwice) {
  const std::string shown =
      program.OnTerminal("project create b.TVS --name B --user ann", {{"Password of ann: ", "one"},
                                                                      {"again: ", "two"},
                                                                      {"Password of ann: ", "three"},
                                                                      {"again: ", "three"}});
  EXPECT_PRED2(Holds, shown, "differ");
  WriteFile(program.File("three"), "three");
  program.Expect(
      {{"mailbox add x --project b.TVS --user ann --password-file three" + kSmtp, 0, "B is bound", ""}});
}

}  // namespace
}  // namespace Tests
