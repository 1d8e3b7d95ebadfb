// The commands that show, change and export a project.
#include "runtime/Database.h"
#include "tests/host/Commands.h"

namespace Tests {
namespace {

class ProjectCommands : public Commands {};
class BoundProjectCommands : public MailboxCommands {};

TEST_F(ProjectCommands, AProjectIsShownAsOneJsonObject) {
  program.Expect({{"init", 0, "Data folder", ""},
                  {"project create 'Grüße.TVS' --name 'Grüße \"1\"' --user ann --email ann@x.org "
                   "--password-file password",
                   0, "Grüße.TVS", ""},
                  {"project add-user 'Grüße.TVS' --name bob --email b@x.org --refuse-mail", 0, "2", ""},
                  {"project add-discussion 'Grüße.TVS' --title 'One'", 0, "1\n", ""},
                  {"project add-discussion 'Grüße.TVS' --title 'Two'", 0, "2\n", ""},
                  {"project show 'Grüße.TVS'", 0, "mail refused", ""},
                  {"project show 'Grüße.TVS' --discussion 2", 0, "Discussion 2: Two\n  (no replies)\n", ""},
                  {"project show 'Grüße.TVS' --discussion 3 --json", 65, "", "no discussion 3"}});
  EXPECT_EQ(
      "{\"name\":\"Grüße "
      "\\\"1\\\"\",\"users\":[{\"key\":1,\"name\":\"ann\",\"email\":\"ann@x.org\",\"mailAccepted\":true,"
      "\"owner\":true,\"language\":\"\"},{\"key\":2,\"name\":\"bob\",\"email\":\"b@x.org\","
      "\"mailAccepted\":false,\"owner\":false,\"language\":\"\"}],\"discussions\":["
      "{\"number\":1,\"title\":\"One\",\"replies\":[]},{\"number\":2,\"title\":\"Two\",\"replies\":[]}]}\n",
      program.Run("project show 'Grüße.TVS' --json").Output);
}

TEST_F(BoundProjectCommands, AUserIsChangedAndRemovedAndKeepsTheReplies) {
  const std::string project = " apollo.TVS --user ";
  program.Expect(
      {{"project add-user apollo.TVS --name bob --email b@x.org", 0, "2", ""},
       {"project create q.TVS --name Q --user q --password-file password", 0, "q.TVS", ""},
       {"project set-user q.TVS --user q --accept-mail", 65, "", "no e-mail address"},
       {"project set-user" + project + "BOB --name Bob --email bob@x.org --refuse-mail --language de", 0,
        "2  Bob <bob@x.org>  mail refused  de\n", ""},
       {"project set-user" + project + "bob", 64, "", "nothing to change"},
       {"project set-user" + project + "bob --name ANN", 65, "", "ANN"},
       {"project set-user" + project + "eve --refuse-mail", 65, "", "no user eve"},
       {"project set-user" + project + "bob --language ../de", 65, "", "no language"},
       {"project set-user" + project + "bob --accept-mail --refuse-mail", 64, "", "excludes"},
       {"project remove-user" + project + "ann", 65, "", "owner"},
       {"project set-password" + project + "bob --password-file /dev/null", 65, "", "empty"},
       {"project set-password" + project + "bob --password-file wrong", 0, "new password", ""},
       {"mailbox change Apollo --user bob --password-file wrong", 65, "", "the project's owner"},
       {"project set-password" + project + "Ann --password-file wrong", 0, "Ann", "mailbox Apollo opens"},
       {"project set-user" + project + "ann --name Ada", 0, "Ada", "as user ann, who"},
       {"mailbox change Apollo --user Ada --password-file wrong", 0, "bound", ""},
       {"project add-discussion apollo.TVS --title Plan", 0, "1", ""},
       {"project post" + project + "' BOB' --discussion 1 -", 0, "1\n", "no user is notified",
        "\xEF\xBB\xBF  Grüße\nB.\r\n \n"},
       {"project post" + project + "bob --discussion 1", 65, "", "empty", " \n"},
       {"project post" + project + "bob --discussion 1", 65, "", "UTF-8", "\xE4"},
       {"project post" + project + "bob --discussion 1", 65, "", "1000000", std::string(1000001, 'x')},
       {"project post" + project + "bob --discussion 2 password", 65, "", "no discussion 2"},
       {"project post" + project + "eve --discussion 1 password", 65, "", "no user eve"},
       {"project post" + project + "bob --discussion 1 none", 65, "", "none"},
       {"project remove-user" + project + "bob", 0, "replies of this user are kept", ""},
       {"project show apollo.TVS --json", 0, "\"body\":\"  Grüße\\u000D\\nB.\",\"user\":\"Bob\"", ""},
       {"project remove-user" + project + "bob", 65, "", "no user bob"},
       {"project add-user apollo.TVS --name bob --email b@y.org", 0, "3", ""}});
  EXPECT_EQ(
      "[{\"key\":1,\"name\":\"Ada\",\"email\":\"ann@example.org\",\"mailAccepted\":true,\"owner\":true,"
      "\"language\":\"\"},"
      "{\"key\":3,\"name\":\"bob\",\"email\":\"b@y.org\",\"mailAccepted\":true,\"owner\":false,\"language\":"
      "\"\"}]\n",
      program.Run("project list-users apollo.TVS --json").Output);
}

TEST_F(BoundProjectCommands, AnExportIsReadAgainAndShowsHostileTextsAsText) {
  program.Expect({{"project add-discussion apollo.TVS --title '</title><script>1</script>'", 0, "1", ""}});
  Runtime::Database(program.File("apollo.db").string())
      .Run(
          "INSERT INTO replies (discussion, subject, body, user, at) VALUES "
          "(1, 'Re: =?UTF-8?Q?a?=' || char(10) || 'Bcc: x', 'From ann' || char(13, 10) || '>From <b>', 1, "
          "'2024-05-01T09:30:00.000Z'), (1, 'Größe', 'ü日本', 1, '2024-05-01T09:31:00.000Z')");
  std::filesystem::create_directory(program.File("foreign"));
  WriteFile(program.File("foreign/letter.txt"), "dear");
  const std::string command = "project export apollo.TVS ";
  program.Expect({{command + "--mbox m", 0, "Replies: 2", ""},
                  {command + "--mbox m", 65, "", "--force"},
                  {command + "--mbox m --force --discussion 1", 0, "discussions: 1", ""},
                  {command + "--mbox m2 --discussion 9", 65, "", "no discussion 9"},
                  {command + "--html pages", 0, "Replies: 2", ""},
                  {command + "--html pages", 65, "", "--force"},
                  {command + "--html pages/ --force", 0, "Replies: 2", ""},
                  {command + "--html foreign --force", 65, "", "no export has written"},
                  {command + "--html none/pages", 75, "", "none/pages"},
                  {command, 64, "", "--html"}});
  const std::string mails = ReadFile(program.File("m")),
                    page = ReadFile(program.File("pages/discussion-1.html"));
  for (const char* part :
       {"From MAILER-DAEMON Wed May  1 09:30:00 2024\nDate: Wed, 01 May 2024 09:30:00 +0000\n",
        "\n\n=46rom ann\n>>From <b>\n\n", "\nFrom: ann <ann@example.org>\n",
        ".1.2@talvane.invalid>\nIn-Reply-To: <", "\n\nw7zml6XmnKwNCg==\n"})
    EXPECT_PRED2(Holds, mails, part);
  for (const char* part : {"\nBcc", "?Q?a?="}) EXPECT_EQ(std::string::npos, mails.find(part));
  EXPECT_PRED2(Holds, page, "<h1 lang=\"\" dir=\"auto\">&lt;/title&gt;&lt;script&gt;1&lt;/script&gt;</h1>");
  EXPECT_PRED2(Holds, page, "From ann\n&gt;From &lt;b&gt;</div>");
  EXPECT_PRED2(Holds, page, "default-src 'none'; style-src 'sha256-");
  EXPECT_EQ("dear", ReadFile(program.File("foreign/letter.txt")));
  EXPECT_EQ("", program.Shell("ls -A | grep -e .talvane -e m2").Output);
  program.Expect({{"deliver Apollo m --strangers post", 65, "2 refused", ""}});
}

}  // namespace
}  // namespace Tests
