// The mails that the project sends: valid for every reader, and answered by any mail program.
#include <algorithm>
#include <fstream>
#include <sstream>

#include "gateway/delivery/CutMarker.h"
#include "gateway/notices/NoticeMail.h"
#include "gateway/notices/NoticeText.h"
#include "mime/HtmlText.h"
#include "mime/Mail.h"
#include "mime/MailWriter.h"
#include "src/mail/DiscussionSubject.h"
#include "src/mail/ReplyBody.h"
#include "tests/notices/Answerers.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

constexpr const char* kMarker = "----- Reply above this line -----";

DueNotice Notice(const String& title = u"Plan", const String& body = u"Yes.") {
  DueNotice notice;
  notice.Recipient = {.Key = 2,
                      .Name = u"bob",
                      .Address = u"bob@x.org",
                      .MailAccepted = true,
                      .Owner = false,
                      .Language = u"en"};
  notice.MessageId = u"talvane.notice.1a2b3c4d.7.2.0123456789abcdef";
  notice.ThreadId = u"talvane.notice.1a2b3c4d.d.17";
  notice.EarlierIds = {u"talvane.notice.1a2b3c4d.5.2.0123456789abcdef"};
  notice.Discussion = 17;
  notice.Title = title;
  notice.Reply.UserName = u"Ann";
  notice.Reply.Body = body;
  return notice;
}

Gateway::NoticeSource Source(const String& project = u"Apollo") {
  return {.ProjectName = project,
          .MailboxAddress = u"desk@x.org",
          .FromName = {},
          .FromAddress = {},
          .CutMarker = FromUtf8(kMarker)};
}

// The value of a field as it is written, with its folds.
std::string Raw(const std::string& mail, const std::string& name) {
  const std::size_t begin = ("\n" + mail).find("\n" + name + ": ");
  if (begin == std::string::npos) return "(none)";
  std::size_t end = mail.find('\n', begin);
  while (mail[end + 1] == ' ') end = mail.find('\n', end + 1);
  return mail.substr(begin + name.size() + 2, end - begin - name.size() - 2);
}

void ExpectValid(const std::string& mail) {
  const std::string header = mail.substr(0, mail.find("\n\n") + 1);
  std::istringstream lines(mail);
  std::size_t at = 0;
  for (std::string line; std::getline(lines, line); at += line.size() + 1) {
    EXPECT_LE(line.size(), at < header.size() ? 998U : 76U) << line;
    EXPECT_TRUE(line.find("=?") == std::string::npos || at >= header.size() || line.size() <= 76) << line;
    EXPECT_FALSE(line.starts_with("From ") || line.starts_with(".") || line.ends_with(' ') ||
                 line.ends_with('\t'))
        << line;
  }
  EXPECT_TRUE(std::ranges::all_of(mail, [](char c) {
    return c == '\n' || c == '\t' || (c >= ' ' && c < 0x7F);
  })) << header;
}

TEST(NoticeMail, HasASubjectWhoseMarkersEveryAnswerKeeps) {
  const World world;
  const String longTitle = Tests::FromUtf8(
      "Why the launch of the second stage is late, and what we do about it: a very long title, which no mail "
      "program shows in full, with 255 characters in all, and the end of it is not needed to find the "
      "discussion again, since the number does it. The end....");
  const struct {
    String Title, Project = u"Apollo";
    std::string Start = {};  // of the subject, if it differs from the title
  } rows[] = {
      {u"Plan"},
      {longTitle, String(255, u'P'), "Why the launch"},
      {String(250, u'\u65E5'), String(255, u'\u672C'), "\u65E5\u65E5"},
      {u"Gr\u00FC\u00DFe (aus) [M\u00FCnchen]"},
      {u"Plan", u"B\u00FCro \u65E5\u672C"},
      {u"\u65E5\u672C\u8A9E\u306E\u984C\u540D", u"\u8A08\u753B \u3014A\u3015"},
      {FromUtf8("Launch \U0001F680\U0001F468\u200D\U0001F469\u200D\U0001F467 " + std::string(200, 'x')),
       u"\U0001F680", "Launch \U0001F680"},
      {String(u"a\xD800z\xDC00"), String(u"\xDBFF"), "a\uFFFDz\uFFFD"},
      {u"=?UTF-8?Q?x?= and =?", u"=?x?="},
      {u"a\tb\r\nBcc: eve@x.org\u2028c  d", u"A\nB", "a b Bcc: eve@x.org c d"},
      {u"", u"", "(Ostrand Talvane Project , Ostrand"},
      {u" \t ", u"A", "(Ostrand"},
      {u"Re: Ostrand Talvane Discussion 5) x", u"Ostrand Talvane Discussion 6)",
       "Re: Ostrand-Talvane-Discussion 5)"},
      {u"Ostrand Talvane Discussion", u"A", "Ostrand-Talvane-Discussion ("},
      {u"Ostrand  Talvane\u00A0Discussion 5)", u"A", "Ostrand-Talvane-Discussion 5)"},
      {u"(Ostrand Talvane Project x, Ostrand Talvane Discussion 5)", u"A", "(Ostrand-Talvane-Project x"},
      {u"Discussion 5) (Ostrand Talvane Project", u"A", "Discussion 5) (Ostrand-Talvane-Project (Ostrand"},
      {FromUtf8(std::string("About ") + kMarker), u"A", "About ----- Reply-above-this-line"},
      {u"\u202Eevil", u"A", "evil ("},
      {String(300, u'x'), u"A", "xxxxxxx"},
      {u"e" + String(300, u'\u0301'), u"A", "e\u0301"},
  };
  for (const auto& row : rows) {
    const std::string bytes = ComposeNotice(Notice(row.Title), Source(row.Project)).Bytes;
    ExpectValid(bytes);
    const std::string raw = Raw(bytes, "Subject"), read = Utf8(Mime::ReadMail(bytes).Subject);
    EXPECT_TRUE(read.starts_with(row.Start.empty() ? Utf8(row.Title) + " (" : row.Start)) << read;
    EXPECT_TRUE(read.ends_with(", Ostrand Talvane Discussion 17)")) << read;
    for (const auto& [name, answer] : kAnswerers) {
      const String line =
          Mime::ReadMail("Subject: " + answer(raw, read) + "\nFrom: bob@x.org\n\nYes.\n").Subject;
      std::int32_t number = 0;
      String subject, error;
      EXPECT_TRUE(TvEmailServices::ParseDiscussionSubject(line, number, subject, error))
          << name << ": " << Utf8(line);
      EXPECT_EQ(17, number) << name << ": " << Utf8(line);
    }
  }
}

TEST(NoticeMail, HasTheFieldsOfAThreadAndOfAProgram) {
  const World world;
  const struct {
    const char *Field, *Value;
  } rows[] = {
      {"From", "Ann <desk@x.org>"},
      {"Reply-To", "Apollo <desk@x.org>"},
      {"To", "bob <bob@x.org>"},
      {"Subject", "Plan (Ostrand Talvane Project Apollo, Ostrand Talvane Discussion 17)"},
      {"Message-ID", "<talvane.notice.1a2b3c4d.7.2.0123456789abcdef@x.org>"},
      {"In-Reply-To", "<talvane.notice.1a2b3c4d.5.2.0123456789abcdef@x.org>"},
      {"References",
       "<talvane.notice.1a2b3c4d.d.17@x.org>\n <talvane.notice.1a2b3c4d.5.2.0123456789abcdef@x.org>"},
      {"List-Id", "Apollo <1a2b3c4d.talvane.x.org>"},
      {"Auto-Submitted", "auto-generated"},
      {"X-Auto-Response-Suppress", "All"},
  };
  const Gateway::OutgoingMail mail = ComposeNotice(Notice(), Source());
  for (const auto& row : rows)
    EXPECT_EQ(row.Value, Replaced(Raw(mail.Bytes, row.Field), "\n (", " (")) << row.Field;
  EXPECT_EQ("desk@x.org bob@x.org", mail.Sender + " " + mail.Recipient);

  Gateway::NoticeSource posted = Source();
  posted.FromName = u"B\u00FCro, \"A\"\r\nBcc: x@y";
  posted.FromAddress = u"ann@b\u00FCro.example";
  DueNotice first = Notice();
  first.EarlierIds = {};
  first.Recipient.Address = u"\u65E5\u672C@\u4F8B.jp";
  const Gateway::OutgoingMail other = ComposeNotice(first, posted);
  EXPECT_EQ("ann@xn--bro-hoa.example \u65E5\u672C@xn--fsq.jp", other.Sender + " " + other.Recipient);
  EXPECT_EQ("<talvane.notice.1a2b3c4d.d.17@x.org>", Raw(other.Bytes, "In-Reply-To"));
  EXPECT_TRUE(Raw(other.Bytes, "From").ends_with("?= <ann@xn--bro-hoa.example>")) << Raw(other.Bytes, "From");
  EXPECT_EQ("(none)", Raw(other.Bytes, "Bcc"));

  for (const auto* address : {u"", u"ann", u"a@x.org\r\nBcc: b@y", u"a@x.org, b@y.org"}) {
    DueNotice notice = Notice();
    notice.Recipient.Address = address;
    EXPECT_PRED2(Holds, FailureText([&] { ComposeNotice(notice, Source()); }), "no e-mail address");
  }
}

const std::string kTexts[] = {
    "Yes.",
    "First\r\n\r\n  indented\ttab \r\nend  \r\n\r\n-- \r\nAnn",
    "From the start\r\n.\r\n.dot\r\n..\r\n>From quoted\r\n=20 =3D =",
    "\u65E5\u672C\u8A9E\r\n\U0001F680 Gr\u00FC\u00DFe",
    std::string("below:\r\n") + kMarker + "\r\n> quoted " + kMarker + "\r\n",
    "<script>alert(\"1\")</script> & </div> &amp; '",
    "bare\rcarriage\nreturns",
    std::string(5000, 'x') + "\r\n" + std::string(5000, ' ') + "y\r\n" + std::string(74, 'z') + " \r\n" +
        std::string(200, '.'),
    Replaced(std::string(45000, '!'), "!", "From a long one\r\n.word "),
};

// With LF, without blanks at the end of a line, and with one kind of blank: HTML needs others.
std::string Comparable(const std::string& text) {
  std::string lines = Replaced(Replaced(Replaced(text, "\r\n", "\n"), "\r", "\n"), "\u00A0", " ");
  lines = Replaced(lines, "\t", "    ");
  while (lines.find(" \n") != std::string::npos) lines = Replaced(lines, " \n", "\n");
  return lines;
}

TEST(NoticeMail, ShowsTheTextToTheLetterAndCutsWhatIsBelowItsMarker) {
  const World world;
  Gateway::CutMarker marker;
  for (const std::string& text : kTexts) {
    const std::string bytes = ComposeNotice(Notice(u"Plan", FromUtf8(text)), Source()).Bytes;
    ExpectValid(bytes);
    const std::string body = Replaced(Utf8(Mime::ReadMail(bytes).Body), "\r\n", "\n");
    const std::string expected =
        kMarker + std::string("\n\nAnn wrote in \"Plan\":\n\n") +
        Replaced(Replaced(text, "\r\n", "\n"), "\r", "\n") +
        "\n\n-- \nTo answer, reply to this mail and write above the line at its top.\n";
    EXPECT_EQ(expected.substr(0, 9000), body.substr(0, 9000));
    EXPECT_EQ(expected.size(), body.size());

    const Gateway::NoticeText notice{FromUtf8(kMarker), {u"<b>"}, FromUtf8(text), u"End"};
    const String html = notice.Html();
    const std::string shown = Comparable(Utf8(Mime::HtmlToText(html)));
    EXPECT_PRED2(Holds, shown.substr(0, 9000), Comparable(text).substr(0, 4000));
    EXPECT_TRUE(shown.starts_with(kMarker)) << shown.substr(0, 100);
    for (const char16_t* tag : {u"<script", u"<b>", u"\n\n</"}) EXPECT_EQ(String::npos, html.find(tag));

    if (text.size() > 20000) continue;
    const std::string typed = "Yes, I do.\n\n  And more:\n-- a\nend", sender = "Ann <desk@x.org>";
    const std::string answers[] = {
        typed + "\n\nOn Mon, 2 Nov 2026 at 10:00, " + sender + " wrote:\n> " + Replaced(body, "\n", "\n> "),
        typed + "\n\nOn Mon, 2 Nov 2026 at 10:00, " + sender + "\nwrote:\n\n> " +
            FoldedAt(Replaced(body, "\n", "\n> "), 20, "\n> "),
        typed + "\n\n-----Original Message-----\nFrom: " + sender +
            "\nSent: Monday, 2 November 2026 10:00\nTo: bob\nSubject: Plan\n\n" + body,
        typed + "\n\n" + body,
    };
    for (const std::string& answer : answers) {
      String reply = Mime::ReadMail("Content-Type: text/plain; charset=utf-8\n\n" + answer).Body, error;
      marker.Repair(reply);
      EXPECT_TRUE(TvEmailServices::ParseReplyBody(reply, error)) << Utf8(error);
      EXPECT_EQ(Replaced(typed, "\n", "\r\n"), Utf8(reply)) << answer.substr(0, 300);
    }
    const std::string page = Utf8(html);
    String reply =
               Mime::ReadMail(
                   "Content-Type: text/html; charset=utf-8\n\n<div>Yes.<br>No.</div><br><div "
                   "class=gmail_quote>On Mon, 2 Nov 2026, " +
                   Replaced(sender, "<", "&lt;") + " wrote:<br><blockquote>" + page + "</blockquote></div>")
                   .Body,
           error;
    marker.Repair(reply);
    EXPECT_TRUE(TvEmailServices::ParseReplyBody(reply, error));
    EXPECT_EQ("Yes.\r\nNo.", Utf8(reply));
  }
}

TEST(NoticeMail, AnswersASenderInTheSendersLanguage) {
  const World world;
  const struct {
    String Language, Subject, Id, Text;
    const char *SubjectRead, *InReplyTo, *Body;
  } rows[] = {
      {u"en", u"Re: Plan (x)", u"<a@b>", u"mine", "Re: Plan (x)", "<a@b>",
       "\n\nYour mail to the project Apollo was not stored as a reply, for this reason:\n\nToo "
       "large.\n\nThis is what you wrote:\n\nmine\n"},
      {u"de", u"Plan", u"<a@b\r\n>", u"", "Re: Plan", "(none)", "nicht als Antwort gespeichert"},
      {u"ja", u"", u"<a b@c>", u"\u6587", "\u30D7\u30ED\u30B8\u30A7\u30AF\u30C8 Apollo \u5B9B\u3066\u306E",
       "(none)", "\u6587"},
      {u"../x", u"a\r\nBcc: b@c", u"", u"", "Re: a  Bcc: b@c", "(none)", "Your mail to the project Apollo"},
      {u"en", String(20000, u'\u65E5'), u"<" + String(2000, u'a') + u"@b>", u"", "Re: \u65E5", "(none)",
       "Too large."},
  };
  for (const auto& row : rows) {
    DueNotice notice = Notice();
    notice.Kind = NoticeKind::Answer;
    notice.Recipient.Language = row.Language;
    notice.RefusedSubject = row.Subject;
    notice.RefusedId = row.Id;
    notice.RefusedText = row.Text;
    notice.Reason = u"Too large.";
    const std::string bytes = ComposeNotice(notice, Source()).Bytes;
    ExpectValid(bytes);
    const Mime::Mail mail = Mime::ReadMail(bytes);
    EXPECT_TRUE(Utf8(mail.Subject).starts_with(row.SubjectRead)) << Utf8(mail.Subject);
    EXPECT_EQ(row.InReplyTo, Raw(bytes, "In-Reply-To"));
    EXPECT_EQ(row.InReplyTo, Raw(bytes, "References"));
    EXPECT_EQ("auto-replied (none)", Raw(bytes, "Auto-Submitted") + " " + Raw(bytes, "List-Id"));
    EXPECT_EQ("Apollo <desk@x.org>", Raw(bytes, "From"));
    const std::string body = Replaced(Utf8(mail.Body), "\r\n", "\n");
    EXPECT_PRED2(Holds, body, row.Body);
    EXPECT_EQ(std::string::npos, body.find("-- \n"));
  }
}

TEST(MailWriter, KeepsTextsOfAnyContentWithinTheirFields) {
  const struct {
    Mime::Correspondent From;
    const char* Written;
  } rows[] = {
      {{u"ann", u"ann@x.org"}, "ann <ann@x.org>"},
      {{u"", u"ann@x.org"}, "<ann@x.org>"},
      {{u"Smith, \"A\" \\ (x) <y@z>", u"a@x.org"}, "\"Smith, \\\"A\\\" \\\\ (x) <y@z>\" <a@x.org>"},
      {{u"=?UTF-8?Q?a?=", u"a@x.org"}, "=?UTF-8?B?PT9VVEYtOD9RP2E/PQ==?= <a@x.org>"},
      {{u"A\nBcc: x", u"a@x\r\nBcc: b"}, "\"A Bcc: x\" <\"a@x  Bcc: b\"@invalid>"},
      {{u"", u"a b@x.org"}, "<\"a b@x.org\"@invalid>"},
      {{u"", u"\"a\\\"b\"@x.org"}, "<\"a\\\"b\"@x.org>"},
      {{u"", u"a>, <eve@x.org"}, "<\"a>, <eve@x.org\"@invalid>"},
      {{u"", u"ann"}, "<\"ann\"@invalid>"},
      {{u"", u"@"}, "<\"@\"@invalid>"},
      {{u"", u"a@[127.0.0.1]"}, "<a@[127.0.0.1]>"},
      {{u"", u"a@[x] <b@y>"}, "<\"a@[x] <b@y>\"@invalid>"},
      {{u"", u"a@xn--ls8h.la"}, "<a@xn--ls8h.la>"},
      {{u"", u"\u65E5@\u4F8B.jp"}, "<\u65E5@\u4F8B.jp>"},
  };
  for (const auto& row : rows)
    EXPECT_EQ(row.Written, Raw(Mime::WriteMail({.From = row.From}), "From")) << Utf8(row.From.Address);
  for (const std::size_t size : {std::size_t{6}, std::size_t{7}}) {  // a line of 76 characters, and one of 77
    const String last = u" " + String(size, u'b');
    EXPECT_EQ(String(60, u'a') + (size == 6 ? u"" : u"\n") + last,
              FromUtf8(Raw(Mime::WriteMail({.Subject = {String(60, u'a'), last}}), "Subject")));
  }
  const std::string mail =
      Mime::WriteMail({.From = {String(3000, u'\u65E5'), String(3000, u'a') + u"@x"},
                       .Subject = {String(2000, u'a'), u" " + String(900, u'b')},
                       .MessageId = "x\n@y",
                       .References = {"a@b", "<c@d>", "e@[1::2]", "f\r\nBcc: g@h", "@", "i@j."}});
  ExpectValid(mail);
  EXPECT_EQ("(none) (none)", Raw(mail, "Bcc") + " " + Raw(mail, "Message-ID"));
  EXPECT_EQ("<a@b> <e@[1::2]>", Raw(mail, "References"));
}

// Python's parser reports each departure from the standards.
TEST(NoticeMail, IsReadWithoutDefectsByAnotherParser) {
  if (std::system("python3 -c ''") != 0) GTEST_SKIP() << "python3 isn't installed";
  const World world;
  int count = 0;
  const auto write = [&](const DueNotice& notice, const String& project) {
    const std::string bytes = ComposeNotice(notice, Source(project)).Bytes;
    const fs::path file = world.Home.Path() / ("mail" + std::to_string(++count));
    const Mime::Mail mail = Mime::ReadMail(bytes);
    WriteFile(file.string() + ".eml", Replaced(bytes, "\n", "\r\n"));
    WriteFile(file.string() + ".txt", Utf8(mail.Subject) + "\n" + Replaced(Utf8(mail.Body), "\r\n", "\n"));
  };
  for (const String& title : {String(u"Plan"), String(u"Gr\u00FC\u00DFe"), String(250, u'\u65E5'),
                              String(u"=?a?="), String(300, u'x')})
    for (const String& project : {String(u"Apollo"), String(u"B\u00FCro, (1)"), String(255, u'\u672C')})
      write(Notice(title), project);
  for (const std::string& text : std::span(kTexts).first(8)) write(Notice(u"Plan", FromUtf8(text)), u"A");
  const std::string command =
      std::string("python3 ") + CHECK_MAILS + " " + world.Home.Path().string() + " > /dev/null";
  EXPECT_EQ(0, std::system(command.c_str())) << command;
}

}  // namespace
}  // namespace Tests
