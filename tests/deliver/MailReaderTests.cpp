// Whole mails: the messages of an mbox, and the sender, the subject and the text of a mail.
#include <span>

#include "gateway/delivery/MessageObject.h"
#include "gateway/sources/MailSource.h"
#include "mime/Mail.h"
#include "mime/Mbox.h"
#include "platform/contracts/HostObjects.h"
#include "runtime/MailAddress.h"
#include "tests/support/World.h"

namespace {

using namespace std::string_literals;

struct Row {
  std::string Input;
  std::string Expected;
};

TEST(Mbox, IsCutAtItsSeparatorsOnly) {
  const struct {
    std::string Line;
    bool BehindEmptyLine, Expected;
  } rows[] = {
      {"From alice@apollo.example Mon Jan 31 12:00:00 2022\r\n", false, true},
      {"From - Mon Jan  3 12:00 2022\n", false, true},
      {"From alice@apollo.example\n", true, true},
      {"From alice@apollo.example\n", false, false},
      {"From here on Mon we go\n", true, false},
      {"From Mon Tue Jan 3 1:00\n", false, true},
      {"From a Mon Jan 3 1:0 2022\n", false, false},
      {"From a Mon Jan x3 12:00 2022\n", false, false},
      {"From a Mon Jan 3 x2:00 2022\n", false, false},
      {"From a Mon Jan 3 12.00 2022\n", false, false},
      {"From alice@apollo.example twice\n", true, false},
      {">From alice@apollo.example Mon Jan 31 12:00:00 2022\n", true, false},
      {"From: alice@apollo.example\n", true, false},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Mime::IsMboxSeparator(row.Line, row.BehindEmptyLine), row.Expected) << row.Line;
  std::istringstream days("Mon Tue Wed Thu Fri Sat Sun mon Mo");
  for (std::string day, month; days >> day;) {
    std::istringstream months("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec jan Okt");
    for (const bool known = std::isupper(day[0]) && day.size() == 3; months >> month;)
      EXPECT_EQ(Mime::IsMboxSeparator("From a@b " + day + ' ' + month + " 31 12:00:00 2022\n", false),
                known && std::isupper(month[0]) && month != "Okt")
          << day << month;
  }
}

std::string Crossed(std::string text, std::string_view lineEnd) {
  std::string result;
  for (const char c : text) c == '\n' ? result += lineEnd : result += c;
  return result;
}

std::vector<std::string> MessagesOf(const std::string& bytes) {
  const Tests::TemporaryFolder folder;
  const std::string path = (folder.Path() / "mbox").string();
  Tests::WriteFile(path, bytes);
  std::vector<std::string> messages;
  Gateway::ReadMailSource(path, Gateway::StandardInput::OneMail, [&](Gateway::RawMail mail) {
    EXPECT_EQ(mail.Source, path + ":" + std::to_string(messages.size() + 1));
    messages.push_back(mail.Bytes + mail.Fault);
    return Gateway::Outcome::Delivered;
  });
  return messages;
}

TEST(Mbox, GivesEachMessageUnmaskedWhateverItsLineEnds) {
  const std::string separator = "From a@b Mon Jan 31 12:00:00 2022\n";
  const std::string mbox = separator + "Subject: 1\nContent-Length: 9999\n\n>From x\n>>From y\n> From z\n\n" +
                           separator + "Subject: 2\n\nno line end\n>>>";
  for (const std::string_view lineEnd : {"\n", "\r\n", "\r"}) {
    const std::vector<std::string> messages = MessagesOf(Crossed(mbox, lineEnd));
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0],
              Crossed("Subject: 1\nContent-Length: 9999\n\nFrom x\n>From y\n> From z\n", lineEnd));
    EXPECT_EQ(messages[1], Crossed("Subject: 2\n\nno line end\n>>>", lineEnd));
  }
}

TEST(InputFile, GivesTheFirstBytesOfEachLine) {
  const Tests::TemporaryFolder folder;
  const std::string path = (folder.Path() / "file").string();
  Tests::WriteFile(path, "x");
  std::string bytes;
  EXPECT_EQ(Mime::InputFile(path).TakeAll(bytes, 9), 1u);
  Tests::WriteFile(path, "abc\ndef");
  Mime::InputFile file(path);
  EXPECT_EQ(file.PeekLine('\n'), "abc\n");
  EXPECT_EQ(file.TakeLine(bytes, '\n', 3), 4u);
  EXPECT_EQ(file.TakeAll(bytes, 4), 3u);
  EXPECT_EQ(bytes, "xabd");
}

TEST(Mbox, PassesALineOfAMegabyteAndASeparatorAcrossTheBufferEnd) {
  const std::string separator = "From a@b Mon Jan 31 12:00:00 2022\n";
  const std::string longLine(1 << 20, 'x');
  for (std::size_t offset = 65500; offset < 65540; offset += 13) {
    const std::vector<std::string> messages =
        MessagesOf(separator + std::string(offset - separator.size(), 'a') + "\n\n" + separator + longLine);
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[1], longLine);
  }
}

TEST(MailReader, FindsTheTextAmongTheParts) {
  const std::string head = "From: a@b\nSubject: s\nMIME-Version: 1.0\n";
  const struct {
    std::string Bytes, From, Subject, Body;
  } rows[] = {
      {"", "(none)", "", ""},
      {"\x89PNG\r\n\x1A\n\0\0\0"s, "(none)", "", ""},
      {"From:\nSubject: s\n\nb", "(none)", "s", "b"},
      {"From: undisclosed-recipients:;\n\nb", "(none)", "", "b"},
      {"From: \"A, B\" <a@b>, c@d\n\nb", "a@b", "", "b"},
      {"From: List: x@y, z@y;\n\nb", "x@y", "", "b"},
      {"from: a@b\nSUBJECT: s\n\nb", "a@b", "s", "b"},
      {"From: a@b\nSubject: x\0y\n z\n\nb\0c"s, "a@b", "x\0y z"s, "b\0c"s},
      {"From: a@b\nSubject: one\nSubject: two\n\n", "a@b", "one", ""},
      {head + "Content-Type: junk\n\nb", "a@b", "s", "b"},
      {head + "Content-Type: text/plain; charset=nonsense\n\n\xE4", "a@b", "s", "ä"},
      {head + "Content-Type: text/plain\nContent-Transfer-Encoding: base64\n\nYWJj\nZG", "a@b", "s", "abcd"},
      {head + "Content-Type: text/html; charset=utf-8\n\n<p>\xC3\xA4", "a@b", "s", "ä"},
      {head + "Content-Type: text/html\n\n<meta charset=koi8-r><p>\xC1", "a@b", "s", "а"},
      {head +
           "Content-Type: multipart/mixed; boundary=x\n\n--x\nContent-Type: message/rfc822\n\nFrom: c@d\n\n"
           "inner\n--x\nContent-Type: text/html\n\n<p>h\n--x\n\nouter\n--x--\n",
       "a@b", "s", "h\nouter"},
      {head +
           "Content-Type: multipart/mixed; boundary=x\n\n--x\nContent-Type: text/plain; name=a.txt\n\nfile\n"
           "--x\nContent-Type: text/html\n\n<p>html\n--x--\n",
       "a@b", "s", "file\nhtml"},
      {head + "Content-Type: multipart/signed; boundary=x\n\n--x\nContent-Type: multipart/related; "
              "boundary=y\n\n--y\n\ndeep\n--y--\n--x\nContent-Type: application/pgp-signature\n\n-\n--x--\n",
       "a@b", "s", "deep"},
      {head + "Content-Type: multipart/mixed; boundary=x\n\n--x\n\ncut off", "a@b", "s", "cut off"},
      {head + "Content-Type: multipart/mixed; boundary=x\n\nno part at all\n", "a@b", "s",
       "no part at all\n"},
      {head + "Content-Type: application/pdf\n\n%PDF", "a@b", "s", ""},
      {head + "Content-Type: text/plain; format=Flowed; DelSp=YES\nContent-Transfer-Encoding: "
              "quoted-printable\n\na=20=\n\n b=20\nc",
       "a@b", "s", "abc"},
  };
  for (const auto& row : rows) {
    const Mime::Mail mail = Mime::ReadMail(row.Bytes);
    EXPECT_EQ(mail.FromAddress ? Platform::ToUtf8(Runtime::CanonicalAddress(*mail.FromAddress)) : "(none)",
              row.From)
        << row.Bytes;
    EXPECT_EQ(Platform::ToUtf8(mail.Subject), row.Subject) << row.Bytes;
    EXPECT_EQ(Platform::ToUtf8(mail.Body), row.Body) << row.Bytes;
  }
}

TEST(MailReader, FindsTheSenderInEverySpelling) {
  const Row rows[] = {
      {"John Doe [mailto:john@x.org]", "john@x.org"},
      {"<mailto:john@x.org>", "john@x.org"},
      {"'john@x.org'", "john@x.org"},
      {"John <\"john@x.org\">", "john@x.org"},
      {"=?utf-8?Q?John_=3Cjohn=40x.org=3E?=", "john@x.org"},
      {"=?utf-8?Q?John_=3Cjohn@x.org=3E?=", "john@x.org"},
      {"\u201Cjohn@x.org\u201D", "john@x.org"},
      {"John <\u200B\u00A0john@x.org>", "john@x.org"},
      {"<<john@x.org>> <->", "john@x.org"},
      {"a@b.org\nFrom: c@d.org", "a@b.org"},
      {"\"john\"@x.org", "john@x.org"},
      {"\"john doe\"@x.org", "\"john doe\"@x.org"},
      {"o'brien+tag@x.org", "o'brien+tag@x.org"},
      {"a@xn--mnchen-3ya.org", "a@münchen.org"},
      {"a@M\xC3\x9CNCHEN.org", "a@münchen.org"},
      {"J\xF6rg <j@x.org>", "j@x.org"},
      {"u@[IPv6:2001:db8::1]", "u@[IPv6:2001:db8::1]"},
      {"alice", "alice"},
      {"John Doe", "(none)"},
  };
  for (const Row& row : rows) {
    const Mime::Mail mail = Mime::ReadMail("From: " + row.Input + "\n\nb");
    EXPECT_EQ(mail.FromAddress ? Platform::ToUtf8(Runtime::CanonicalAddress(*mail.FromAddress)) : "(none)",
              row.Expected)
        << row.Input;
  }
}

// A part, or a mail without other fields, of the given type.
std::string Part(const std::string& type, const std::string& body) {
  return "Content-Type: " + type + "\n\n" + body;
}

std::string Multipart(const std::string& type, std::initializer_list<std::string> parts) {
  static int count = 0;
  const std::string boundary = "b" + std::to_string(++count);
  std::string text = "Content-Type: multipart/" + type + "; boundary=" + boundary + "\n\n";
  for (const std::string& part : parts) text += "--" + boundary + "\n" + part + "\n";
  return text + "--" + boundary + "--\n";
}

void ExpectBodies(std::span<const Row> rows) {
  for (const Row& row : rows)
    EXPECT_EQ(Platform::ToUtf8(Mime::ReadMail(row.Input).Body), row.Expected) << row.Input;
}

TEST(MailReader, JoinsTheTextThatAReaderSees) {
  const std::string html = Part("text/html", "<p>html"), picture = Part("image/png; name=p.png", "x");
  const std::string plain = Part("text/plain", "plain"), footer = Part("text/plain", "footer");
  const std::string blank = Part("text/plain", " \n\xC2\xA0\n"), pdf = Part("application/pdf", "%PDF");
  const std::string attached = "Content-Disposition: attachment; filename=a.txt\n" + plain;
  const std::string markdown = Part("text/markdown", "# md"), named = Part("text/plain; name=a", "named");
  const std::string cms = "Content-Transfer-Encoding: base64\n" +
                          Part("application/pkcs7-mime; name=smime.p7m; smime-type=signed-data",
                               "MC4GCSqGSIb3DQEHAqAhMB8CAQExADAWBgkqhkiG9w0BBwGgCQQHCnNpZ25lZDEA");
  const std::string report = Part("message/delivery-status", "Reporting-MTA: dns; x\n");
  const std::string page = Multipart("related", {html, picture, plain});
  ExpectBodies(std::vector<Row>{
      {Multipart("mixed", {plain, picture, footer}), "plain\nfooter"},
      {Multipart("mixed", {html, footer}), "html\nfooter"},
      {Multipart("mixed", {plain, named, attached}), "plain"},
      {Multipart("mixed", {named, footer}), "named\nfooter"},
      {Multipart("alternative", {plain, html}), "plain"},
      {Multipart("alternative", {blank, html}), "html"},
      {Multipart("alternative", {blank, page}), "html"},
      {Multipart("alternative", {plain, Multipart("mixed", {html, pdf, html})}), "plain"},
      {Multipart("alternative", {Multipart("mixed", {html, footer})}), "html\nfooter"},
      {Multipart("alternative", {markdown, html}), "html"},
      {Multipart("mixed", {Multipart("alternative", {plain, page}), pdf, footer}), "plain\nfooter"},
      {Multipart("mixed", {blank, html}), "html"},
      {page, "html"},
      {attached, "plain"},
      {Multipart("mixed", {blank, pdf, attached}), "plain"},
      {markdown, "# md"},
      {Part("text/x-own", "own"), "own"},
      {Multipart("report; report-type=delivery-status", {Multipart("alternative", {plain, html}), report}),
       "plain"},
      {Multipart("encrypted", {Part("application/pgp-encrypted", "Version: 1\n"), plain}), ""},
      {Part("text/plain", "\n-----BEGIN PGP MESSAGE-----\n\nx\n-----END PGP MESSAGE-----"), ""},
      {cms, "signed"},
      {Multipart("mixed", {cms, footer}), "signed\nfooter"},
      {Multipart("mixed", {cms, cms, cms, cms, cms, cms, cms, cms, cms, footer}),
       "signed\nsigned\nsigned\nsigned\nsigned\nsigned\nsigned\nsigned\nfooter"},
      {"Content-Transfer-Encoding: base64\n" +
           Part("application/pkcs7-mime; smime-type=enveloped-data", "MBEGCSqGSIb3DQEHA6AEMAICAQA="),
       ""},
      {Part("text/enriched",
            "<bold>Now</bold>\nis\n\n\na <<b> <nofill>1\n2</nofill><color><param>red</param>!</color>"),
       "Now is\n\na <b> 1\n2!"},
      {Part("text/plain", "a\nbegin 644 x.bin\n#86)C\n`\nend\nb\nbegin 644 y\nno file\nend\n"),
       "a\nb\nbegin 644 y\nno file\nend\n"},
  });
}

// A line end of the plain alternative is undone where the HTML has blanks, if its line had no room for a
// word.
TEST(MailReader, UndoesTheLineEndsThatAProgramPutIntoAPlainAlternative) {
  const std::string line(60, 'x'), more = line + " 123456789";
  const auto wrapped = [](const std::string& plain, const std::string& html) {
    return Multipart("alternative", {Part("text/plain", plain), Part("text/html", html)});
  };
  ExpectBodies(std::vector<Row>{
      {wrapped(more + "\nwords\nend", "<div>" + more + " words</div><div>end</div>"), more + " words\nend"},
      {wrapped("\n" + more + " \r\nw", "<p>" + more + "&nbsp; w</p>"), "\n" + more + "  w"},
      {wrapped(more + "\n" + more + "\nw", "<p>" + more + " " + more + " w"), more + " " + more + " w"},
      {wrapped("short\nw " + more + "\nw", "short w " + more + " w"), "short\nw " + more + " w"},
      {wrapped(more + "\n\nnew", more + " new"), more + "\n\nnew"},
      {wrapped(more + "\nown\n" + more + "\nb", more + " other<br>" + more + " b"),
       more + " own\n" + more + "\nb"},
      {wrapped("> " + more + "\n> words", more + " words"), "> " + more + "\n> words"},
      {wrapped(more + line + "\nw", more + line + " w"), more + line + "\nw"},
  });
}

TEST(MailReader, ForgivesWhatMailProgramsDeform) {
  const std::string quoted = "Content-Transfer-Encoding: quoted-printable",
                    base64 = "Content-Transfer-Encoding: base64";
  const std::string part = "--x\n\ntext\n--x--\n";
  ExpectBodies(std::vector<Row>{
      {"Content-Type: multipart/mixed boundary=x\n\n" + part, "text"},
      {"Content-Type: multipart/mixed\n\tboundary=\"x\"\n\n" + part, "text"},
      {"Content-Type: multipart/mixed; boundary=\"x\n\n" + part, "text"},
      {"Content-Type: multipart/mixed; boundary=x\nContent-Type: text/plain\n\n" + part, "text"},
      {"Content-Type: multipart/mixed; boundary=x\n\n--x\nContent-Type: text/html\nContent-Type: "
       "text/plain\n\n<p>a\n--x--\n",
       "a"},
      {"Content-Type: multipart/mixed; BOUNDARY = x\n\n--x \nContent-Type : text/html\nContent-Type: "
       "text/plain\n\n<p>a\n--x--\n",
       "a"},
      {"Content-Type: text/plain; name=\"a\\\" b\" charset=koi8-r\n\n\xC1", "а"},
      {"Content-Type: text/html;\n charset= koi8-r\nX: y\n\n<p>\xC1", "а"},
      {"Content-Type: text/plain; name=\"charset=x charset=y\";\n charset=koi8-r\n\n\xC1", "а"},
      {"Content-Type: multipart/mixed; boundary=x\r\n\r\nno part", "no part"},
      {"Content-Type: text/plain charset=koi8-r\n" + quoted + ";\n\n=C1", "а"},
      {"Content-Type: text/plain\n\nContent-Type: a\nContent-Type: b\n",
       "Content-Type: a\nContent-Type: b\n"},
      {quoted + "\n\na= \t\nb=20 \t\r\nc=3d=\n=G", "ab \r\nc==G"},
      {"Content-Transfer-Encoding: \"Quoted_Printable\" (x)\n\n=41", "A"},
      {"Content-Transfer-Encoding: base-64\n\nYWJj", "abc"},
      {"Content-Transfer-Encoding: x-uuencode\n\nbegin 644 a\n#86)C\n`\nend\n", "abc"},
      {base64 + "\n\nYWJj\nZA==\n____\nApollo list\n", "abcd"},
      {base64 + "\n\nYWJj\n____\nApollo\n", "abc"},
      {base64 + "\n\nYWJj\nThis is the list\n", "abc"},
      {base64 + "\n\nYQ==\nYmM=\nZA==ZWY=\n", "abcdef"},
      {base64 + "\n\nYW!J\nj\n", "abc"},
      {base64 + "\n\n  YWJj \n", "abc"},
      {base64 + "\n\nYWJj\n_\nZGVm\n", "abcdef"},
      {base64 + "\n\nYWJj\n==\nZGVm\n", "abcdef"},
      {base64 + "\n\nYWJj ZGVm\n", "abcdef"},
      {base64 + "\n\nYWJ\njZGVm\n", "abcdef"},
      {quoted + "\n\na=\n=4\n=41=4a\nb=", "a=4\nAJ\nb"},
      {"Content-Transfer-Encoding: X-Base64\n\nYWJj", "abc"},
      {"Content-Transfer-Encoding: base64; x=y\n\nYWJj", "abc"},
      {"Content-Transfer-Encoding: b64\n\nYWJj", "abc"},
      {"Content-Transfer-Encoding: qp\n\n=41", "A"},
      {"Content-Transfer-Encoding: x-quoted-printable\n\n=41", "A"},
      {"Content-Transfer-Encoding: x-uue\n\nx\nbegin 644 a\n#86)C\n`\nend\n", "abc"},
      {"Content-Transfer-Encoding: uue\n\nbegin 644 a\n#86)C\n`\nend\n", "abc"},
      {"Content-Transfer-Encoding: uuencode\n\nbegin 644 a\n#86)C\n`\nend\n", "abc"},
      {base64 + "\n\nNot encoded at all.\n", "Not encoded at all.\n"},
  });
}

TEST(MailReader, ReadsARawHeaderInTheCharsetOfTheText) {
  const Row rows[] = {
      {Part("text/plain; charset=koi8-r", "b"), "а"},
      {Multipart("mixed", {Part("application/pdf", "x"), Part("text/html; charset=koi8-r", "b")}), "а"},
      {Part("text/html", "<meta charset=koi8-r>b"), "а"},
      {Part("text/plain; charset=utf-8", "b"), "Á"},
      {Part("text/plain", "b"), "Á"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(Platform::ToUtf8(Mime::ReadMail("Subject: \xC1\n" + row.Input).Subject), row.Expected)
        << row.Input;
}

TEST(MailReader, ReadsLineEndsOfAnyKindAlike) {
  const std::string bytes =
      "From: a@b\nSubject: x\n y\nContent-Type: multipart/mixed; boundary=b\n\n--b\n\nbody\n--b--\n";
  for (const std::string_view lineEnd : {"\n", "\r\n", "\r", "\r\r\n"}) {
    const Mime::Mail mail = Mime::ReadMail(Crossed(bytes, lineEnd));
    EXPECT_EQ(mail.FromAddress, u"a@b");
    EXPECT_TEXT(u"x y", mail.Subject);
    EXPECT_TEXT(u"body", mail.Body);
  }
}

TEST(MailReader, GivesTheMessageObjectItsMembersAndNoFromWithoutAnAddress) {
  const Platform::MailMessage mail(Gateway::MakeMessageObject(Mime::ReadMail("Subject: s\n\nb")));
  EXPECT_FALSE(mail.HasFrom());
  EXPECT_TEXT(u"s", mail.Subject());
  EXPECT_TEXT(u"b", mail.Body());
}

}  // namespace
