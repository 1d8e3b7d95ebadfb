// Hostile mail and endless input have no effect beyond their own outcome.
#include <functional>
#include <new>

#include "mime/AddressDepth.h"
#include "mime/LimitCheck.h"
#include "mime/Mail.h"
#include "mime/MemoryNeed.h"
#include "runtime/Texts.h"
#include "tests/deliver/Deliver.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

std::string Nested(std::size_t count, const std::string& boundary) {
  std::string mail;
  for (std::size_t i = 0; i < count; ++i) {
    const std::string name = boundary + std::to_string(i);
    mail.append("Content-Type: multipart/mixed; boundary=").append(name).append("\n\n--").append(name) +=
        '\n';
  }
  return mail;
}

TEST(MemoryNeed, IsRefusedInsteadOfEndingTheProgramLater) {
  Mime::RequireMemoryFor(1);
  EXPECT_THROW(Mime::RequireMemoryFor(std::size_t{1} << 50), std::bad_alloc);
  EXPECT_THROW(Mime::RequireMemoryFor(std::size_t{1} << 50), std::bad_alloc);
}

TEST(LimitCheck, ReadsAMailAtALimitAndRefusesOneBeyondWithTheReason) {
  const Mime::MailLimits limits;
  const std::string list = "Content-Type: multipart/mixed; boundary=b\n\n";
  const auto fields = [](std::size_t count) { return Repeated("X: y\n", count); };
  const struct {
    std::size_t Limit;
    std::function<std::string(std::size_t)> Make;
    std::string Reason;
  } rows[] = {
      {limits.Depth, [](std::size_t n) { return Nested(n, "b"); }, "its parts are nested more than 100 deep"},
      {limits.Depth, [](std::size_t n) { return Repeated("Content-Type: message/rfc822\n\n", n); },
       "nested more"},
      {limits.Depth - 1,
       [](std::size_t n) {
         return "Content-Type: multipart/digest; boundary=b\n\n--b\n\n" + Nested(n - 1, "c");
       },
       "nested more"},
      // A line like a delimiter in front of each type ends no part.
      {limits.Depth - 1,
       [&](std::size_t n) {
         std::string mail = list + "--b\n" + Nested(n, "c");
         for (std::size_t at = 0; (at = mail.find("\n--c", at)) != std::string::npos; ++at)
           mail.insert(mail.find('\n', at + 1) + 1, at % 2 == 0 ? "--b\n" : "X: y\n--b\n");
         return mail;
       },
       "nested more"},
      {limits.Parts, [&](std::size_t n) { return list + Repeated("--b\n\n", n); },
       "it has more than 5000 parts"},
      {limits.Parts, [&](std::size_t n) { return list + Repeated("--b \t\r\n\r\n", n); }, "5000 parts"},
      {limits.HeaderFields, fields, "a header of it has more than 1000 fields"},
      {limits.Fields,
       [&](std::size_t n) {
         std::string mail = list;
         for (std::size_t left = n - 1; left > 0; left -= std::min<std::size_t>(left, 500))
           mail += "--b\n" + fields(std::min<std::size_t>(left, 500)) + "\n";
         return mail;
       },
       "its headers have more than 30000 fields"},
      {limits.FieldSize, [](std::size_t n) { return "To: " + std::string(n - 4, 'x') + "\n"; },
       "a field of its header has more than 256 KB"},
      {limits.FieldSize,
       [](std::size_t n) {
         return "To: " + Repeated("x\n ", (n - 4) / 3) + std::string((n - 4) % 3, 'x') + "\n";
       },
       "more than 256 KB"},
      {limits.HeaderSize,
       [](std::size_t n) {
         constexpr std::size_t kEach = 100'000;
         return Repeated("X:" + std::string(kEach - 2, 'x') + "\n", n / kEach) +
                "X:" + std::string(n % kEach - 2, 'x') + "\n";
       },
       "a header of it has more than 1024 KB"},
      {limits.Parameters,
       [&](std::size_t n) {
         const std::string part = "--b\nContent-Type: text/plain";
         return list + Repeated(part + Repeated("; a=b", 200) + "\n\n", n / 200 - 1) + part +
                Repeated("; a=b", 199) + "\n\n" + part + Repeated("; a=b", n % 200) + "\n\n";
       },
       "it has more than 10000 parameters"},
      {limits.ContentFieldSize, [](std::size_t n) { return "Content-Type:" + std::string(n, 'x') + "\n"; },
       "more than 8 KB"},
      {limits.FieldParameters,
       [](std::size_t n) { return "Content-Type: text/plain" + Repeated("; a=b", n) + "\n"; },
       "more than 200 parameters"},
      {limits.ContentFieldComments,
       [](std::size_t n) { return "content-disposition: inline" + Repeated("(", n) + "\n"; },
       "more than 50 comments"},
      {limits.ContentFieldWords,
       [](std::size_t n) { return "Content-Type: text/plain; n=\"" + Repeated("=?", n) + "\"\n"; },
       "more than 25 encoded words"},
      {limits.SubjectSize, [](std::size_t n) { return "Subject:" + std::string(n, 'x') + "\n"; },
       "its Subject field has more than 16 KB"},
      {limits.FromSize, [](std::size_t n) { return "From:" + std::string(n, 'x') + "\n"; }, "more than 8 KB"},
      {limits.AddressDepth, [](std::size_t n) { return "From:" + Repeated("a:", n) + "\n"; },
       "its addresses are nested more than 100 deep"},
      {limits.AddressDepth, [](std::size_t n) { return "From:" + std::string(n, '(') + "\n"; }, "nested"},
  };
  for (const auto& row : rows) {
    EXPECT_NO_THROW(Mime::ReadMail(row.Make(row.Limit))) << row.Reason;
    try {
      Mime::ReadMail(row.Make(row.Limit + 1));
      ADD_FAILURE() << row.Reason;
    } catch (const Mime::LimitExceeded& limit) {
      const std::string reason =
          Utf8(Runtime::TextOf(limit.Text(), Platform::FromUtf8(std::to_string(limit.Limit()))));
      EXPECT_NE(reason.find(row.Reason), std::string::npos) << reason;
    }
  }
  EXPECT_THROW(Mime::ReadMail("From: " + Repeated("a:", 45000) + "\n\n"), Mime::LimitExceeded);
}

TEST(LimitCheck, AcceptsTheContentOfRealMail) {
  std::string patch = "From: a@b\nContent-Type: multipart/mixed; boundary=b\n\n--b\n\n";
  patch += Repeated("--- a/file\n+++ b/file\nkey: value\n", 20000) + "--b--\n";
  const std::string mails[] = {
      patch,
      "From: a@b\nTo: " + Repeated("\"Doe, John (Sales): x\" <john.doe@example.org>,\n ", 5000) + "c@d\n\nx",
      "From: a@b\nTo: " + Repeated("<mailto:a@b>, c@[IPv6:::1], List: d@e;, mailto:f@g, ", 1500) + "\n\nx",
      "From: a@b\nContent-Type: multipart/mixed; boundary=b\n\n" +
          Repeated("--b\nContent-Type: message/rfc822\n\n" + Repeated("X-Y: z\n", 90) + "\nx\n", 300) +
          "--b--\n",
      "From: a@b\nContent-Type: multipart/mixed; boundary=b\n\n--b\nContent-Type: image/png\n" +
          Repeated("iVBORw0KGgo\n", 100000) + "--b--\n",
  };
  for (const std::string& mail : mails)
    EXPECT_EQ(Mime::ReadMail(mail).FromAddress, u"a@b") << mail.substr(0, 80);
}

TEST(LimitCheck, CountsNestedGroupsAndComments) {
  const struct {
    std::string Value;
    std::size_t Depth;
  } rows[] = {
      {"a:b:c", 2},   {"a:b;c:d;", 1}, {"\"a:b:(\"", 0}, {"((a)(b))", 2}, {"\\(\\:", 0}, {"<a:b:c>d:", 1},
      {"[a:b]:c", 1}, {"<a, b:", 1},   {");;a:", 1},     {"(\"a:b)", 1},  {"(a:b:c", 1}, {"\"\\\":\"", 0},
      {"<a]:>", 0},   {"\"\"a:", 1},   {"(", 1},         {"a:(b", 1},     {"", 0},
  };
  for (const auto& row : rows) EXPECT_EQ(row.Depth, Mime::AddressDepth(row.Value)) << row.Value;
}

// It would decode each of them in a time that grows with the square of its length.
TEST(LimitCheck, HidesFromTheParserWhatNobodyReads) {
  const std::string longest = "Content-Transfer-Encoding:" + std::string(998, 'x') + "\n";
  const std::string longer = longest.substr(0, 30) + "x" + longest.substr(30);
  std::string fields, hidden;
  for (const std::string name : {"Date", "Content-ID", "Content-Description", "Content-Location",
                                 "Content-MD5", "To", "Cc", "Bcc", "Sender", "Reply-To"}) {
    fields += name + ": x\n";
    hidden += "X" + name.substr(1) + ": x\n";
  }
  const std::string read = "Subject: s\nMessage-ID: m\nContent-Type: message/rfc822\n\n";
  std::string mail = longest + longer + fields + read + "Content-Transfer-Encoding: 8bit\n" + fields +
                     "From: f\nSubject: s\nMessage-ID: m\n";
  Mime::CheckLimits(mail);
  EXPECT_EQ(mail, longest + "X" + longer.substr(1) + hidden + read + "Content-Transfer-Encoding: 8bit\n" +
                      hidden + "Xrom: f\nXubject: s\nXessage-ID: m\n");
  std::string senders = Repeated("From: a@b\n", Mime::MailLimits().FromFields);
  Mime::CheckLimits(senders);
  EXPECT_THROW(Mime::CheckLimits(senders += "From: a@b\n"), Mime::LimitExceeded);
}

struct Row {
  std::string Line;
  int Exit;
  std::string Output;
};

class HostileInput : public Deliver {
 protected:
  void Expect(const std::vector<Row>& rows) const {
    for (const Row& row : rows) {
      const Outcome outcome = RunAnew(row.Line);
      EXPECT_EQ(outcome.Exit, row.Exit) << row.Line << "\n" << outcome.Output << outcome.Errors;
      EXPECT_NE((outcome.Output + outcome.Errors).find(row.Output), std::string::npos)
          << row.Line << "\n"
          << outcome.Output << outcome.Errors;
    }
  }
};

TEST_F(HostileInput, OneMailStaysOneMailWhateverItsLinesSay) {
  const std::string separator = "From mallory@x Mon Jan 31 12:00:00 2022\n";
  const auto forged = [&](const std::string& id) {
    return Mail("first\n>From here\n\n" + separator + Mail("forged", "bob@apollo.example") + "last",
                "alice@apollo.example", "1", id);
  };
  WriteFile(Path("plain"), forged("p"));
  WriteFile(Path("piped"), separator + forged("m"));
  const std::string obsolete = forged("o");
  WriteFile(Path("obsolete"), "From : alice@apollo.example\n" + obsolete.substr(obsolete.find('\n') + 1));
  WriteFile(Path("noseparator"), "From here on\n" + forged("n"));
  for (const char* part : {"new", "cur", "tmp"}) fs::create_directories(Path("Mail") / part);
  for (const char* name : {"plain", "piped", "obsolete"}) fs::copy_file(Path(name), Path("Mail/new") / name);
  const std::string one = "\n1 message: 1 delivered";
  Expect({{"tvmail deliver Apollo <plain", 0, "-  <p@x>  delivered" + one},
          {"tvmail deliver Apollo <piped", 0, "-  <m@x>  delivered" + one},
          {"cat piped | tvmail deliver Apollo /dev/stdin", 0, one},
          {"sed 's/$/\\r/' piped | tvmail deliver Apollo", 0, one},
          {"tvmail deliver Apollo - <obsolete", 0, one},
          {"tvmail deliver Apollo plain obsolete noseparator", 0, "3 messages: 3 delivered"},
          {"tvmail deliver Apollo Mail", 0, "3 messages: 3 delivered"},
          {"ln -s Mail/new/piped link; tvmail deliver Apollo link", 0, "link  <m@x>  delivered" + one}});
  const std::string project = Project();
  EXPECT_EQ(CountOf(project, "first\\u000D\\n>From here\\u000D\\n\\u000D\\nFrom mallory@x"), 1u) << project;
  EXPECT_EQ(CountOf(project, "last"), 1u);

  WriteFile(Path("mbox"), Tests::Mbox(2, "m"));
  Expect({{"tvmail deliver Apollo mbox", 0, "2 messages: 2 delivered"},
          {"tvmail deliver Apollo --mbox <mbox", 0, "-:2  <m1@x>  delivered"},
          {"tvmail deliver Apollo --mbox </dev/null", 0, "no messages found"},
          {"tvmail deliver Apollo --mbox <plain", 65, "is no mbox"},
          {"tvmail deliver Apollo --mbox mbox", 64, "--mbox"},
          {"tvmail deliver Apollo <&-", 75, "standard input is closed"},
          {"tvmail deliver Apollo /dev/stdin <&-", 75, "standard input is closed"},
          {"tvmail deliver Apollo /dev/stdin <mbox", 0, one},
          {"tvmail deliver Apollo <&- >&-", 75, ""}});
}

TEST_F(HostileInput, BadMailEndsNeitherABatchNorAnMbox) {
  const std::string groups = "From: " + Repeated("a:", 45000) + "\n\n";
  const std::string parts = "Content-Type: multipart/mixed; boundary=b\n\n" + Repeated("--b\n\n", 100000);
  WriteFile(Path("groups"), groups);
  WriteFile(Path("parts"), parts);
  WriteFile(Path("good"), Mail("b"));
  const std::string separator = "From a@b Mon Jan 31 12:00:00 2022\n";
  WriteFile(Path("mbox"), separator + groups + "\n" + separator + parts + "\n" + separator + Mail("b"));
  for (const char* part : {"new", "cur"}) fs::create_directories(Path("Mail") / part);
  for (int i = 0; i < 200; ++i)
    WriteFile(Path("Mail/new") / std::to_string(i),
              i % 20 == 0 ? Mail("b", "alice@apollo.example", "1", std::to_string(i)) : parts);
  Expect({{"tvmail deliver Apollo groups parts good", 65, "1 delivered, 2 refused, 0 to be"},
          {"tvmail deliver Apollo mbox", 65,
           "mbox:2  (no Message-ID)  refused: The mail was not read, since it exceeds a limit (it has more "
           "than 5000 "
           "parts). Write"},
          {"LC_ALL=de_DE.UTF-8 tvmail deliver Apollo parts", 65, "(sie hat mehr als 5000 Teile)"},
          {"(ulimit -n 24; tvmail deliver Apollo Mail)", 65, "200 messages: 10 delivered, 190 refused"}});
  // The sanitizers reserve terabytes of address space.
  const std::string scarce = "ulimit -v 400000; ";
  if (Run(scarce + "tvmail --version").Exit != 0) return;
  const std::string large = "(cat mbox; head -c 100000000 /dev/zero | tr '\\0' x; echo; cat mbox) >big; ";
  Expect({{large + scarce + "tvmail deliver Apollo --size-limit 128 big good", 75,
           "big:3  (no Message-ID)  to be tried again: "},
          {scarce + "tvmail deliver Apollo --size-limit 128 big good", 75,
           "big:6  <m@x>  delivered\ngood  <m@x>  duplicate"}});
}

TEST_F(HostileInput, SIGTERMEndsEndlessInputAndOutputThatNobodyReads) {
  const std::string ended =
      " & p=$!; until (( 0x$(sed -n 's/SigCgt:\\s*//p' /proc/$p/status) & 0x4000 )); do sleep 0.01; done; "
      "sleep 0.1; kill -TERM $p; for i in {1..500}; do kill -0 $p 2>/dev/null || break; sleep 0.02; done; "
      "kill -KILL $p 2>/dev/null && exit 1; wait $p";
  Expect({{"mkfifo pipe; exec 3<>pipe; tvmail deliver Apollo <pipe" + ended, 75, "stopped before the end"},
          {"tvmail deliver Apollo </dev/zero" + ended, 75, "stopped before the end"},
          {"tvmail deliver Apollo < <(yes)" + ended, 75, "stopped before the end"},
          {"tvmail deliver Apollo --mbox < <(echo 'From a@b'; cat /dev/zero)" + ended, 75,
           "stopped before the end"},
          {"mkfifo full; exec 3<>full; head -c 65536 /dev/zero >full; tvmail deliver Apollo "
           "$(yes /dev/null | head -n 300) >full" +
               ended,
           75,
           "refused, 0 to be tried again; stopped before the end: the other messages were not tried; the "
           "last"}});
}

}  // namespace
}  // namespace Tests
