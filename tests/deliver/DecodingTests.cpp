// Decoding of mails: headers, charsets, flowed text, HTML and mboxes.
#include <span>

#include "gateway/delivery/MessageObject.h"
#include "gateway/sources/MailSource.h"
#include "mime/Charset.h"
#include "mime/FlowedText.h"
#include "mime/HeaderText.h"
#include "mime/HtmlText.h"
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

TEST(HeaderText, ReadsEncodedWordsAndFoldsAsTheirWritersMeantThem) {
  const Row rows[] = {
      {" Re: plan\r\n (Ostrand Talvane Project Apollo", "Re: plan (Ostrand Talvane Project Apollo"},
      {"a\n\tb", "a b"},
      {"a \r\n\tb", "a b"},
      {"a\r\n\t b", "a b"},
      {"a\n  b\tc", "a  b\tc"},
      {"=?utf-8?Q?a_b=3D?=", "a b="},
      {"=?UTF-8*de?b?w6Q=?= x =?utf-8?q?=C3=A4?=", "ä x ä"},
      {"=?utf-8?Q?=C3?=\r\n =?utf-8?B?pA==?=", "ä"},
      {"=?utf-8?B?w6Qg?= \t =?utf-8?Q?b?=", "ä b"},
      {"=?utf-8?B?w?= =?utf-8?B?6Q=?=", "ä"},
      {"=?iso-2022-jp?B?GyRCJWolag==?= =?ISO-2022-JP?B?ITwlOQ==?=", "リリース"},
      {"=?iso-2022-jp?B?GyRCJWolahsoQg==?= =?iso-2022-jp?B?GyRCITwlORsoQg==?=", "リリース"},
      {"=?utf-8?Q?" + std::string(5000, 'a') + "?=", std::string(5000, 'a')},
      {"=?utf-8?Q?never ended =?utf-8?Q?b?"
       "?=",
       "=?utf-8?Q?never ended b?"},
      {"=?iso-8859-1?Q?=E4?= =?koi8-r?Q?=C1?=", "äа"},
      {"=?iso-8859-1?Q?=93?=(=?windows-1252?Q?=94?=)", "“(”)"},
      {"=?utf-8?Q?=FF?=", "\xEF\xBF\xBD"},
      {"=?x-unknown?Q?=C3=A4=?=", "ä="},
      {"=?utf-8?Q?with blanks?=", "with blanks"},
      {"=? ?= =?utf-8?X?a?= =?utf-8?Q?open", "=? ?= =?utf-8?X?a?= =?utf-8?Q?open"},
      {"gr\xC3\xBC\xC3\x9F", "grüß"},
      {"gr\xFC\xDF", "grüß"},
      {"=?utf-8?Q?a=00b?=", "a\0b"s},
      {" \t ", ""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(Platform::ToUtf8(Mime::DecodeHeader(row.Input)), row.Expected) << row.Input;
}

TEST(Charset, TakesEveryByteForSomeCharacter) {
  const struct {
    std::string Label, Bytes, Expected;
  } rows[] = {
      {"utf-8", "a\xFF\xC3\xA4\xC3", "a\uFFFDä\uFFFD"},
      {"iso-8859-1", "\x93\xE4\x81", "“ä\u0081"},
      {"latin1", "\x80", "€"},
      {"us-ascii", "\xC3\xA4", "ä"},
      {"us-ascii", "\x80", "€"},
      {"", "\xE4", "ä"},
      {"no-such-charset", "\xC3\xA4", "ä"},
      {"koi8-r", "\xC1", "а"},
      {"gb2312", "\x81\x40", "丂"},
      {"euc-kr", "\x81\x41\x81", "갂\uFFFD"},
      {"shift_jis", "\x87\x40", "①"},
      {"gbk", "\x80 \xD6\xD0", "€ 中"},
      {"gb_2312-80", "\xD6\xD0", "中"},
      {"chinese", "\xD6\xD0", "中"},
      {"cn-big5", "\xA4\xA4\x87\x40", "中䏰"},
      {" 'CP949' ", "\x81\x41", "갂"},
      {"uhc", "\xB0\xA1", "가"},
      {"win-1250", "\x9A", "š"},
      {"iso-8859-16", "a\xAA", "aȘ"},
      {"iso-8859-8-i", "\xE0", "א"},
      {"x-sjis", "\x88\xC0", "安"},
      {"iso-2022-kr", "\x1B$)C\x0E\x30\x21\x0F.", "가."},
      {"iso-2022-jp", "\x1B$B\x1B(B\x1B$B$\"\x1B(B.", "あ."},
      {"ibm850", "\x84", "ä"},
      {"", "\x1B$B$\"\x1B(B.", "あ."},
      {"../icudt72l/x,y", "\xC3\xA4", "ä"},
      {"koi8-r", "\xEF\xBB\xBF\xC3\xA4", "ä"},
      {"utf-16", "h\0\xE9\0"s, "hé"},
      {"utf-16le", "\xFE\xFF\0h"s, "h"},
      {"utf-16be", "\xD8\x3D\xDE\x80\xDC\x00", "🚀\uFFFD"},
      {"utf-8", "a\0b"s, "a\0b"s},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Platform::ToUtf8(Mime::DecodeText(row.Bytes, row.Label)), row.Expected) << row.Label;
}

TEST(FlowedText, IsPutBackIntoItsParagraphs) {
  const struct {
    std::string Input;
    bool DeleteSpace;
    std::string Expected;
  } rows[] = {
      {"a \r\nb\r\nc\r\n", false, "a b\nc\n"},
      {"a \rb", false, "a b"},
      {"a \nb", true, "ab"},
      {" >no quote\n  two\n From me", false, ">no quote\n two\nFrom me"},
      {"> a \n> b\n>> c \n> d", false, "> a b\n>> c \n> d"},
      {"text \n-- \nme", false, "text \n-- \nme"},
      {"> x \n> -- \n> me", true, "> x\n> -- \n> me"},
      {"a\n\n \nb", false, "a\n\n\nb"},
      {">\n> ", false, ">\n>"},
      {"", false, ""},
  };
  for (const auto& row : rows)
    EXPECT_EQ(Platform::ToUtf8(Mime::UnflowText(Platform::FromUtf8(row.Input), row.DeleteSpace)),
              row.Expected)
        << row.Input;
}

TEST(HtmlText, ReadsLikeTheScreen) {
  const Row rows[] = {
      {"a <b>b</b>\n  c", "a b c"},
      {"<div>a</div><div><br></div><div>b</div>", "a\n\nb"},
      {"<div>a<br></div><div>b</div>", "a\nb"},
      {"<p>a</p><p>b</p>", "a\n\nb"},
      {"<p class=MsoNormal>a</p><p class=MsoNormal>b</p>", "a\nb"},
      {"<style>x</style><script>if (a<b) x()</script><title>t</title>a<!-- c -->b", "ab"},
      {"&lt;&amp;&#228;&#x1F680;&#150;&euro;&nbsp;&bogus;", "<&ä🚀–€ &bogus;"},
      {"<blockquote>reply<div>----- Reply above this line -----</div>old</blockquote>after",
       "reply\n----- Reply above this line -----\nold\n\nafter"},
      {"<pre>a\n  b</pre>", "a\n  b"},
      {"<ol><li>x<li>y</ol><ul><li>z</ul>", "1. x\n2. y\n\n* z"},
      {"<table><tr><td>a<td>b<tr><td>c</table>", "a b\nc"},
      {"<!doctype html><![if !vml]>a<![endif]><!--[if mso]>b<![endif]--><!-->c<!--->d<?xml?></>", "acd"},
      {"<!--[if !mso]><!-->a<!--<![endif]-->", "a"},
      {"<ol start=3><li>x<li value=7>y<li>z<ol><li>i</ol><li>n</ol>", "3. x\n7. y\n8. z\n1. i\n9. n"},
      {"<ol start=x><li value=99999>x<li>y</ol>", "99999. x\n* y"},
      {"<ul><li><p>a</p><p>b</p></li><li><div>c</div><li></ul>d", "* a\n\nb\n\n* c\n*\n\nd"},
      {"<p><br><div>&nbsp;</div>a<br><br>", "a"},
      {"<pre>\r\na\r\n\r\n b\n</pre><div style='white-space: pre-wrap'>c\n  d</div>e\nf",
       "a\n\n b\n\nc\n  d\ne f"},
      {"a <img alt='one &amp; two'><img alt=''><img src=x> b", "a one & two b"},
      {"<div hidden>x<div>y</div>z</div>a<p style='display : none'>x<p>b", "a\n\nb"},
      {"<span style='DISPLAY:NONE!important'>x</span>a<br><b style='visibility:hidden'><p>x</b>b</p>c",
       "a\nb\n\nc"},
      {"<span style='mso-hide:all'>x</span><div style='max-height:0px;overflow:hidden'>x</div>a", "a"},
      {"<table><tr style='display:none'><td>x<tr><td>a<td hidden>x<td>b</table>", "a b"},
      {"<div style='display:none;display:block'>a</div><select><option>x</select><template>x</template>b",
       "a\nb"},
      {"<a href=' http://a.b/c d\n'>click</a> <a href='https://a.b/'>a.b</a> <a "
       "href='mailto:x@y?subject=z'>X</a>",
       "click <http://a.b/c%20d> a.b X <x@y>"},
      {"<a href=#top>a</a> <a href='java\tscript:x'>b</a> <a href='cid:x'>c</a> <a href=x@y><img></a>",
       "a b c"},
      {"a&nbsp;&nbsp;&nbsp;<a href=//h/><br></a>b<pre>c     <a href=//h/>\n</a></pre>", "a\nb\n\nc"},
      {"<a href='http://x/?a=1&amp;b&copy=2'><div>a</div></a><a href=//h/>b<a href=http://H>h</a>",
       "a <http://x/?a=1&b&copy=2>\nb <//h/>h"},
      {"<div class=x_MsoNormal>a</div><p class=x_x_MsoNormal>b<p style='margin:0cm 0cm 0.0001pt'>c<p>d",
       "a\nb\nc\n\nd"},
      {"a\u00A0\u00A0b\u00A0<br>c\u00AD\u200B\uFEFFd<div>\u200B</div>e", "a  b\ncd\n\ne"},
      {"&notit; &NotEqualTilde; &#x110000;&#0;&#xD800; &ampx &lt &fjlig;&",
       "¬it; ≂̸ \uFFFD\uFFFD\uFFFD &x < fj&"},
      {"<title>x &amp; <p></title><textarea>\na <b></textarea><iframe>x</iframe><SCRIPT>'</scriptx>'</SCRIPT "
       ">c",
       "a <b>\nc"},
      {"<a title='>' title = \"x<y\" b='/'/>a</p >b<br/>c</br>d", "a\n\nb\nc\nd"},
      {"<blockquote><blockquote>a</blockquote>b</blockquote><q>c</q>", "a\n\nb\n\n“c”"},
      {"a\x01\0z"s, "a\uFFFD\uFFFDz"},
      {"no tags < at all & so", "no tags < at all & so"},
      {"<p>open <b>never closed", "open never closed"},
      {"", ""},
  };
  for (const Row& row : rows)
    EXPECT_EQ(Platform::ToUtf8(Mime::HtmlToText(Platform::FromUtf8(row.Input))), row.Expected) << row.Input;
}

// Each of these took minutes with a quadratic algorithm.
TEST(HtmlText, OfHostileDocumentsIsReadWhole) {
  const struct {
    std::string Repeated, Then, ThenRepeated, Expected;
  } rows[] = {
      {"<b>", "a", "</i>", "a"},
      {"<i><div>", "a", "</b></i>", "a"},
      {"<ul><div>", "a", "<li></li>", "a"},
      {"<div hidden>", "a", "</div>", ""},
      {"<table><td>", "a", "</table>", "a"},
      {"<p style='color:red;", "'>a", "&#13;", "a"},
      {"<!--", "-->a", "<![if ", "a"},
      {"<x y", ">a", "<title></titl", "a"},
      {"<a b=", ">a", "<z'", "a"},
      {"&#x93;", "", "<a href=x>", ""},
  };
  for (const auto& row : rows) {
    Platform::String html;
    for (int i = 0; i < 300000; ++i) html += Platform::FromUtf8(row.Repeated);
    html += Platform::FromUtf8(row.Then);
    for (int i = 0; i < 300000; ++i) html += Platform::FromUtf8(row.ThenRepeated);
    const Platform::String text = Mime::HtmlToText(html);
    EXPECT_LE(text.size(), html.size()) << row.Repeated;
    EXPECT_PRED2(Tests::Holds, Platform::ToUtf8(text), row.Expected) << row.Repeated;
  }
  std::string attributes = "<p ";
  for (int i = 0; i < 300000; ++i) attributes += "a" + std::to_string(i) + "=1 ";
  EXPECT_TEXT(u"a", Mime::HtmlToText(Platform::FromUtf8(attributes + ">a")));
}

TEST(HeaderText, KeepsAMegabyteOfBrokenWordsUnchanged) {
  std::string header;
  while (header.size() < (1 << 20)) header += "=?a?q?x";
  EXPECT_TEXT(Platform::FromUtf8(header), Mime::DecodeHeader(header));
}

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
    return true;
  });
  return messages;
}

TEST(Mbox, GivesEachMessageUnmaskedWhateverItsLineEnds) {
  const std::string separator = "From a@b Mon Jan 31 12:00:00 2022\n";
  const std::string mbox = separator + "Subject: 1\nContent-Length: 9999\n\n>From x\n>>From y\n> From z\n\n" +
                           separator + "Subject: 2\n\nno line end";
  for (const std::string_view lineEnd : {"\n", "\r\n", "\r"}) {
    const std::vector<std::string> messages = MessagesOf(Crossed(mbox, lineEnd));
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(messages[0],
              Crossed("Subject: 1\nContent-Length: 9999\n\nFrom x\n>From y\n> From z\n", lineEnd));
    EXPECT_TRUE(messages[1].ends_with("no line end")) << messages[1];
  }
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
