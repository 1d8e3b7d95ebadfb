// Mail that was refused and kept: its files, and the commands of tvmail held.
#include <chrono>

#include "gateway/delivery/HeldFolder.h"
#include "gateway/delivery/HeldList.h"
#include "gateway/delivery/HeldMail.h"
#include "platform/JsonReader.h"
#include "tests/deliver/Deliver.h"
#include "tests/support/Processes.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Gateway::HeldMail;
using Platform::String;

class HeldMails : public Deliver {
 protected:
  HeldMails() { setenv("TALVANE_HOME", Path("home").c_str(), 1); }
  ~HeldMails() override { unsetenv("TALVANE_HOME"); }

  static std::string Keep(const std::string& mail, StringView mailbox = u"Apollo") {
    return HeldMail(mailbox).Keep(mail, {.Rule = "strangers", .Reason = u"Who is\u001B[31m that?"});
  }

  static std::string Ids(const std::optional<String>& mailbox = {}) {
    std::string ids;
    for (const auto& place : Gateway::HeldMails(mailbox)) ids += place.Id + " ";
    return ids;
  }

  void Age(const fs::path& path, int days) const {
    fs::last_write_time(path, fs::file_time_type::clock::now() - std::chrono::hours(24 * days + 1));
  }

  void Expect(const std::string& command, int exit, const std::string& output, const std::string& errors) {
    const Outcome outcome = Run("tvmail held " + command);
    EXPECT_EQ(exit, outcome.Exit) << command << outcome.Output << outcome.Errors;
    EXPECT_EQ(output.empty(), outcome.Output.empty()) << command << outcome.Output;
    EXPECT_PRED2(Holds, outcome.Output, output) << command;
    EXPECT_EQ(errors.empty(), outcome.Errors.empty()) << command << outcome.Errors;
    EXPECT_PRED2(Holds, outcome.Errors, errors) << command;
  }
};

TEST_F(HeldMails, AreOneFileHoweverOftenTheyComeInAFolderOfTheirMailboxAlone) {
  const std::string mail = Mail("Hello") + std::string("\0\xFF\r\n", 4);
  const String names[] = {
      u"Apollo", u"../etc", u"..", u"a/b", u"a%2Fb", String(300, u'\u00FC'), String(299, u'\u00FC') + u"x"};
  std::set<std::string> folders;
  for (const String& name : names) {
    const std::string id = Keep(mail, name);
    EXPECT_EQ(id, Keep(mail, Platform::FoldCase(name)));
    const auto places = Gateway::HeldMails(name);
    ASSERT_EQ(1u, places.size()) << Utf8(name);
    EXPECT_EQ(mail, Gateway::BytesOf(places.front()));
    EXPECT_EQ(fs::perms::owner_all, fs::status(places.front().Folder).permissions());
    EXPECT_EQ(Path("home") / "held", fs::path(places.front().Folder).parent_path());
    folders.insert(places.front().Folder);
    // A mail program reads it.
    fs::rename(places.front().Path, places.front().Folder + "/cur/" + id + ":2,S");
    Keep(mail, name);
    EXPECT_EQ(id + " ", Ids(name));
    EXPECT_TRUE(Gateway::RemoveHeld(places.front()));
    EXPECT_FALSE(Gateway::RemoveHeld(places.front()));
    EXPECT_TRUE(fs::is_empty(places.front().Folder + "/reasons"));
  }
  EXPECT_EQ(std::size(names), folders.size());
}

TEST_F(HeldMails, AFullDiskLeavesNothingHalfKept) {
  const std::string known = Keep(Mail("known"));
  const std::string large = Mail(std::string(5000, 'x'));
  EXPECT_EQ(0, InAnotherProcess([&] {
              LimitFileSize(4096);
              EXPECT_PRED2(Holds, FailureText([&] { Keep(large); }), "can't be written");
            }));
  EXPECT_EQ(known + " ", Ids());
  const fs::path folder = Gateway::HeldFolder(u"Apollo");
  EXPECT_TRUE(fs::is_empty(folder / "tmp"));
  EXPECT_EQ(1, std::distance(fs::directory_iterator(folder / "reasons"), {}));
}

TEST_F(HeldMails, ExpireOnceADayWithWhatAnInterruptionLeft) {
  const std::string oldMail = Keep(Mail("old")), newMail = Keep(Mail("new"));
  const fs::path folder = Gateway::HeldFolder(u"Apollo");
  Age(folder / "new" / oldMail, 90);
  WriteFile(folder / "tmp" / ".talvane-x", "half");
  Age(folder / "tmp" / ".talvane-x", 3);
  HeldMail(u"Apollo").Expire(0);
  EXPECT_FALSE(fs::exists(folder / "tmp" / ".talvane-x"));
  EXPECT_EQ(oldMail + " " + newMail + " ", Ids());
  HeldMail(u"Apollo").Expire(90);  // not again on this day
  EXPECT_EQ(oldMail + " " + newMail + " ", Ids());
  Age(folder / "expired", 1);
  HeldMail(u"Apollo").Expire(91);
  EXPECT_EQ(oldMail + " " + newMail + " ", Ids());
  Age(folder / "expired", 1);
  HeldMail(u"Apollo").Expire(90);
  EXPECT_EQ(newMail + " ", Ids());
  EXPECT_FALSE(fs::exists(Gateway::PathOfReason(folder, oldMail)));
}

TEST_F(HeldMails, AreListedShownAndDropped) {
  Expect("list", 0, "No mail is held.", "");
  Expect("list --json", 0, "[]\n", "");
  Expect("list Nobody", 78, "", "Nobody");
  const std::string id = Keep(Mail("Hello\x1B[2J", "=?utf-8?Q?Z=C3=BC?= <eve@x.org>"));
  Age(fs::path(Gateway::HeldMails({}).front().Path), 1);
  const std::string unread = Keep(std::string(100000, 'x'));
  Expect("list apollo", 0,
         "  eve@x.org  Re: Plan (Ostrand Talvane Project Apollo, Ostrand Talvane Discussion 1)\n"
         "    Who is\\u001B[31m that?\n" +
             unread,
         "");
  Expect("list --json", 0, "[{\"id\":\"" + id + "\",\"mailbox\":\"Apollo\",\"received\":\"20", "");
  Expect("list --json", 0, "Z\",\"from\":\"eve@x.org\",\"subject\":\"Re: Plan", "");
  Expect("show " + id.substr(0, 6), 0, "Hello\x1B[2J\n", "");
  const std::string shown = Run("script -qec 'tvmail held show " + id + "' /dev/null").Output;
  EXPECT_PRED2(Holds, shown, "Apollo: Who is\\u001B[31m that?");
  EXPECT_PRED2(Holds, shown, "Hello\\u001B[2J");
  // A line is printed in pieces, of whole characters whatever precedes them.
  for (const std::string before : {"", "x"}) {
    const std::string wide = Keep(Mail(before + Repeated("\u00E4", 70'000)));
    EXPECT_PRED2(Holds, Run("script -qec 'tvmail held show " + wide + "' /dev/null").Output,
                 before + Repeated("\u00E4", 70'000));
    Expect("drop " + wide, 0, "dropped", "");
  }
  Expect("show 0123456789abcde", 65, "", "begins with 0123456789abcde");
  Expect("show ../../x", 64, "", "is no id");
  Expect("drop", 64, "", "ID");
  Expect("drop " + id + " ffffffffffffffff", 65, "", "ffffffffffffffff");
  Keep(std::string(100000, 'x'), u"Other");
  Expect("drop " + unread, 0, unread + "  Other  dropped\n", "");
  EXPECT_EQ(id + " ", Ids());
}

TEST_F(HeldMails, LeaveWhenARetryDeliversThem) {
  const auto mail = [](const std::string& body, const std::string& from,
                       const std::string& discussion = "1") {
    std::string text = Mail(body, from, discussion);
    return text.replace(text.find("<m@x>"), 5, "<" + body + "@x>");
  };
  const std::string good = Keep(mail("good", "alice@apollo.example"));
  const std::string strange = Keep(mail("strange", "eve@x.org"));
  const std::string lost = Keep(mail("lost", "alice@apollo.example", "99"));
  Expect("retry", 64, "", "--all");
  Expect("retry --all Apollo " + good, 64, "", "--all");
  Expect("retry " + good, 0, good + "  Apollo  delivered\n", "");
  EXPECT_EQ(good, Keep(mail("good", "alice@apollo.example")));
  Expect("retry " + good, 0, good + "  Apollo  duplicate\n", "");
  Expect("retry --all", 65, strange + "  Apollo  refused: The project has no user", "");
  Expect("list Apollo", 0, "    The project has no user with the address eve@x.org.", "");
  // Two at once store one reply.
  const Outcome both =
      Run("tvmail held retry --post --all apollo & tvmail held retry --post " + strange + "; wait $!");
  EXPECT_EQ(65, both.Exit) << both.Output << both.Errors;
  EXPECT_PRED2(Holds, both.Output, strange + "  Apollo  delivered\n");
  EXPECT_EQ(lost + " ", Ids());
  EXPECT_EQ(1u, CountOf(Project(), "strange"));
  EXPECT_EQ(1u, CountOf(Project(), "good"));

  // A mail that can't be read doesn't keep the others waiting. The sanitizers reserve terabytes of address
  // space.
  if (Run("ulimit -v 400000; tvmail --version").Exit != 0) return;
  const fs::path folder = Gateway::HeldFolder(u"Apollo");
  fs::resize_file(folder / "new" / lost, 600'000'000);
  const std::string next = Keep(mail("next", "alice@apollo.example"));
  const Outcome scarce = Run("ulimit -v 400000; LC_ALL=de_DE.UTF-8 tvmail held retry --all");
  EXPECT_EQ(75, scarce.Exit);
  EXPECT_PRED2(Holds, scarce.Output, lost + "  Apollo  to be tried again: Der Arbeitsspeicher reicht nicht");
  EXPECT_PRED2(Holds, scarce.Output, next + "  Apollo  delivered\n");
}

TEST(JsonReader, ReadsObjectsOfTextsAlone) {
  const auto texts = Platform::ReadJsonTexts(" {\"a\" : \"x\\n\\u00e4\\\"\\uD83D\\uDE00\" ,\"b\":\"\"} \n");
  ASSERT_TRUE(texts);
  EXPECT_TEXT(u"x\n\u00E4\"\U0001F600", texts->at("a"));
  EXPECT_TEXT(u"", texts->at("b"));
  EXPECT_TRUE(Platform::ReadJsonTexts("{}"));
  for (const char* json :
       {"", "{", "{\"a\":1}", "{\"a\":\"x}", "{\"a\":\"\\x\"}", "{\"a\":\"\\u00g0\"}", "[]", "{\"a\":\"x\"",
        "{\"a\":\"x\",}", "{} x", "{\"a\":\"x\",\"a\":\"y\"}", "{\"a\":\"\\"})
    EXPECT_FALSE(Platform::ReadJsonTexts(json)) << json;
}

}  // namespace
}  // namespace Tests
