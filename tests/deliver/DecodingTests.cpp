// Decoding of texts: headers, charsets, flowed text and HTML.
#include "mime/Charset.h"
#include "mime/EnrichedText.h"
#include "mime/FlowedText.h"
#include "mime/HeaderText.h"
#include "mime/HtmlElements.h"
#include "mime/HtmlLink.h"
#include "mime/HtmlText.h"
#include "mime/UuencodedFiles.h"
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
      {"a\t\r\n\tb", "a b"},
      {"a\n\n\t\tb\rc\n\t", "a bc"},
      {"=?" + std::string(79, 'x') + "?Q?a?=", "a"},
      {"=?" + std::string(80, 'x') + "?Q?a?=", "=?" + std::string(80, 'x') + "?Q?a?="},
      {"=??Q?a?= =?a?Q =?a b?Q?x?= =?a=b?Q?x?=", "=??Q?a?= =?a?Q =?a b?Q?x?= =?a=b?Q?x?="},
      {"=?utf-8?Q?=4G=G4=4a=4?=", "=4G=G4J=4"},
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

TEST(Charset, KnowsALabelOfEachConverter) {
  const struct {
    std::string Labels, Expected, Bytes = "\xE3\xA4\xD0";
  } rows[] = {
      {"866 ibm866", "уд╨"},
      {"l2 latin-2", "ă¤Đ"},
      {"latin3", "\uFFFD¤\uFFFD"},
      {"latin4", "ã¤Đ"},
      {"cyrillic", "уЄа"},
      {"arabic", "ك¤ذ"},
      {"greek", "γ€Π"},
      {"latin6", "ãĪÐ"},
      {"iso-8859-13", "ć¤Š"},
      {"iso-8859-14", "ãĊŴ"},
      {"l9 latin-9", "ã€Ð"},
      {"koi8-u", "Цєп"},
      {"l10", "ă€Đ"},
      {"mac", "„§–"},
      {"tis-620 cp874", "ใคะ"},
      {"cp1250 ms-ee", "ă¤Đ"},
      {"cp1251 win-1251", "г¤Р"},
      {"cp1253 ms-greek", "γ¤Π"},
      {"l5 ms-turk", "ã¤Ğ"},
      {"cp1255 ms-hebr", "ד₪\u05C0"},
      {"cp1256 ms-arab", "م¤ذ"},
      {"cp1257 winbaltrim", "ć¤Š"},
      {"cp1258 win1258", "ă¤Đ"},
      {"x-mac-cyrillic", "г§–"},
      {"euc-jp ujis", "あ", "\xA4\xA2"},
      {"sjis cp932", "あ", "\x82\xA0"},
      {"jis", "あ", "\x1B$B$\"\x1B(B"},
      {"korean", "가", "\xB0\xA1"},
      {"big5 cp950", "中", "\xA4\xA4"},
      {"gb18030 cp936", "中", "\xD6\xD0"},
      {"hz-gb-2312", "中", "~{VP~}"},
      {"iso-2022-cn iso-2022-cn-ext", "中", "\x1B$)A\x0E\x56\x50\x0F"},
      {"utf-7", "中", "+Ti0-"},
      {"ucs-4", "中", "\0\0\x4E\x2D"s},
      {"ucs-2", "中", "\x2D\x4E"},
  };
  for (const auto& row : rows) {
    std::istringstream labels(row.Labels);
    for (std::string label; labels >> label;)
      EXPECT_EQ(Platform::ToUtf8(Mime::DecodeText(row.Bytes, label)), row.Expected) << label;
  }
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

TEST(EnrichedText, LosesItsCommands) {
  const std::string longest(60, 'b');
  const Row rows[] = {
      {"<NoFill>a\nb</noFILL>\nc", "a\nb c"},
      {"a\r\n\r\nb\r\nc\nd\n", "a\nb c d "},
      {"<param>x<Param>y</param>z</PARAM>a</param><nofill>\n", "a\n"},
      {"<" + longest + ">a<" + longest + "b>", "a<" + longest + "b>"},
      {"<>a<<<<", "<>a<<"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(Platform::ToUtf8(Mime::EnrichedToText(Platform::FromUtf8(row.Input))), row.Expected);
}

// [F] is a file.
TEST(UuencodedFiles, AreRemovedIfTheyAreComplete) {
  const Row rows[] = {
      {"a\n[F]b\n[F][F]c\n", "a\nb\nc\n"},
      {"begin 0644 x\r\n#86)C\r\n\r\nend\r\nb", "b"},
      {"begin 777 x\n#86)CX\n# `_\n&86)C\n``\nend\n", ""},
      {"begin 64 x\nend\n", "*"},
      {"begin 06444 x\nend\n", "*"},
      {"begin 648 x\nend\n", "*"},
      {"begin 64/ x\nend\n", "*"},
      {"begin 644 \nend\n", "*"},
      {"a begin 644 x\nend\n", "*"},
      {"begin 644 x\n#86)Cxy\nend\n", "*"},
      {"begin 644 x\n&86)\nend\n", "*"},
      {"begin 644 x\n'86)C\nend\n", "*"},
      {"begin 644 x\n```\nend\n", "*"},
      {"begin 644 x\n#86)a\nend\n", "*"},
      {"begin 644 x\n#86)\x1F\nend\n", "*"},
      {"begin 644 x\n#86)C\n", "*"},
      {"begin 644 x\nend ", "*"},
  };
  for (const Row& row : rows) {
    std::string input = row.Input;
    for (std::size_t at; (at = input.find("[F]")) != std::string::npos;)
      input.replace(at, 3, "begin 644 x\n#86)C\n`\nend\n");
    Platform::String text = Platform::FromUtf8(input);
    Mime::RemoveUuencodedFiles(text);
    EXPECT_EQ(Platform::ToUtf8(text), row.Expected == "*" ? input : row.Expected) << input;
  }
}

// [E] is the element's name.
TEST(HtmlText, KnowsTheEffectOfEachElement) {
  const struct {
    std::string Html, Expected, Elements;
  } rows[] = {
      {"a<[E]>b</[E]>c", "a\nb\nc",
       "address article aside body caption center dd details div dt fieldset figcaption figure footer form "
       "header "
       "hgroup html legend main nav search section summary table tbody tfoot thead tr"},
      {"a<[E]>b</[E]>c", "a\n\nb\n\nc", "blockquote h1 h2 h3 h4 h5 h6 p"},
      {"a<[E]><li>b</[E]>c", "a\n\n* b\n\nc", "dir menu ul"},
      {"a<[E]>\n b</[E]>c", "a\n\n b\n\nc", "listing pre xmp"},
      {"a<[E] hidden>b", "ab", "area base br col embed hr img input link meta param source track wbr"},
      {"a<[E]>b</[E]>c", "ac", "datalist iframe noembed noframes script select style template title xml"},
      {"a<[E]>b<i></[E]>c", "abc", "b i font span unknown unknowntags"},
      {"a<[E]>b</[E]>c", "a bc", "td th"},
      {"a<hr>b", "a\n\nb", "hr"},
  };
  for (const auto& row : rows) {
    std::istringstream elements(row.Elements);
    for (std::string element; elements >> element;) {
      std::string html = row.Html;
      for (std::size_t at; (at = html.find("[E]")) != std::string::npos;) html.replace(at, 3, element);
      EXPECT_EQ(Platform::ToUtf8(Mime::HtmlToText(Platform::FromUtf8(html))), row.Expected) << html;
    }
  }
}

TEST(HtmlText, ReadsC1CharactersAsTheirWritersMeantThem) {
  for (int c = 0x80; c < 0xA0; ++c)
    EXPECT_TEXT(Mime::DecodeText(std::string(1, static_cast<char>(c)), "windows-1252"),
                Mime::HtmlToText(Platform::String(1, static_cast<char16_t>(c))));
}

TEST(HtmlLink, IsShownOnceWithItsAddress) {
  const std::string longest = "http://" + std::string(8185, 'x');
  const Row addresses[] = {
      {longest, longest},     {longest + "x", ""},    {"tel: 1 2", "tel:12"},
      {"ftp://h", "ftp://h"}, {"mailto:a b?c", "ab"}, {"HTTPS://h d", "HTTPS://h%20d"},
      {"MailTo:a@b", "a@b"},  {"data:x", ""},         {"a/b:c", "a/b:c"},
      {"?b:c", "?b:c"},       {"\x1F<h>\x7F!", "h!"}, {"&#35;x", ""},
  };
  for (const Row& row : addresses)
    EXPECT_EQ(Platform::ToUtf8(Mime::LinkAddress(Platform::FromUtf8(row.Input))), row.Expected);
  for (const auto& [text, address] : {Row{" HTTP://A.b/\n", "a.B"}, Row{"1", "tel:1"}, Row{"h", "ftp://H/"}})
    EXPECT_TRUE(Mime::ShowsAddress(Platform::FromUtf8(text), Platform::FromUtf8(address))) << text;
  for (const auto& [text, address] : {Row{" ", "h"}, Row{"h//", "h"}, Row{"h", "hh"}})
    EXPECT_FALSE(Mime::ShowsAddress(Platform::FromUtf8(text), Platform::FromUtf8(address))) << text;
}

TEST(HtmlText, FindsTheCharsetOfItsMetaElement) {
  const std::string far(2048 - 18, ' ');
  const Row rows[] = {
      {"<META content='text/html; charset=Koi8-R'>", "koi8-r"},
      {"<meta charset = x>", ""},
      {"<meta charset=\"utf-8\">", "utf-8"},
      {"<meta charset=a;b>", "a"},
      {"<p charset=x>", ""},
      {"<meta charset='", ""},
      {far + "<meta charset=koi8-r>", "koi8"},
      {"<meta charset=a />", "a"},
  };
  for (const Row& row : rows) EXPECT_EQ(Mime::HtmlCharset(row.Input), row.Expected) << row.Input;
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
      {"<p style='margin:0 1px 0'>a<p style='margin-top:0px;margin-bottom:0.0pt'>b<p style='margin:0 0 "
       "5px'>c",
       "a\nb\n\nc"},
      {"<b style=opacity:0>x</b><b style=opacity:0.0>x</b><b style=opacity:0.5>a</b><b "
       "style=opacity:05>b</b>",
       "ab"},
      {"<b style='height:0;overflow:hidden'>x</b><b style='height:0'>a</b><b style='overflow:hidden'>b</b>",
       "ab"},
      {"<b style='visibility:collapse'>x</b><b style=mso-hide:none>a</b><b style='opacity:'>b</b>", "ab"},
      {"<i style='white-space:break-spaces'>a  b</i><i style='white-space:nowrap'>c  d</i>", "a  bc d"},
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

}  // namespace
