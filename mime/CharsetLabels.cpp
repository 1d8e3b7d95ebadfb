#include "mime/CharsetLabels.h"

#include <algorithm>
#include <string>
#include <unordered_map>

namespace Mime {
namespace {

struct Encoding {
  std::string_view
      Converter;            // ICU's name, or one of the names of the header; empty for labels without meaning
  std::string_view Labels;  // separated by blanks
};

// The table of the WHATWG Encoding Standard.
constexpr Encoding kStandard[] = {
    {"utf-8", "unicode-1-1-utf-8 unicode11utf8 unicode20utf8 utf-8 utf8 x-unicode20utf8"},
    {"ibm866", "866 cp866 csibm866 ibm866"},
    {"iso-8859-2",
     "csisolatin2 iso-8859-2 iso-ir-101 iso8859-2 iso88592 iso_8859-2 iso_8859-2:1987 l2 latin2"},
    {"iso-8859-3",
     "csisolatin3 iso-8859-3 iso-ir-109 iso8859-3 iso88593 iso_8859-3 iso_8859-3:1988 l3 latin3"},
    {"iso-8859-4",
     "csisolatin4 iso-8859-4 iso-ir-110 iso8859-4 iso88594 iso_8859-4 iso_8859-4:1988 l4 latin4"},
    {"iso-8859-5",
     "csisolatincyrillic cyrillic iso-8859-5 iso-ir-144 iso8859-5 iso88595 iso_8859-5 iso_8859-5:1988"},
    {"iso-8859-6",
     "arabic asmo-708 csiso88596e csiso88596i csisolatinarabic ecma-114 iso-8859-6 iso-8859-6-e iso-8859-6-i "
     "iso-ir-127 iso8859-6 iso88596 iso_8859-6 iso_8859-6:1987"},
    {"iso-8859-7",
     "csisolatingreek ecma-118 elot_928 greek greek8 iso-8859-7 iso-ir-126 iso8859-7 iso88597 iso_8859-7 "
     "iso_8859-7:1987 sun_eu_greek"},
    {"iso-8859-8",
     "csiso88598e csisolatinhebrew hebrew iso-8859-8 iso-8859-8-e iso-ir-138 iso8859-8 iso88598 iso_8859-8 "
     "iso_8859-8:1988 visual csiso88598i iso-8859-8-i logical"},
    {"iso-8859-10", "csisolatin6 iso-8859-10 iso-ir-157 iso8859-10 iso885910 l6 latin6"},
    {"iso-8859-13", "iso-8859-13 iso8859-13 iso885913"},
    {"iso-8859-14", "iso-8859-14 iso8859-14 iso885914"},
    {"iso-8859-15", "csisolatin9 iso-8859-15 iso8859-15 iso885915 iso_8859-15 l9"},
    {kLatin10Converter, "iso-8859-16"},
    {"koi8-r", "cskoi8r koi koi8 koi8-r koi8_r"},
    {"koi8-u", "koi8-ru koi8-u"},
    {"macintosh", "csmacintosh mac macintosh x-mac-roman"},
    {"windows-874", "dos-874 iso-8859-11 iso8859-11 iso885911 tis-620 windows-874"},
    {"windows-1250", "cp1250 windows-1250 x-cp1250"},
    {"windows-1251", "cp1251 windows-1251 x-cp1251"},
    {"windows-1252",
     "cp1252 cp819 csisolatin1 ibm819 iso-8859-1 iso-ir-100 iso8859-1 iso88591 iso_8859-1 iso_8859-1:1987 l1 "
     "latin1 windows-1252 x-cp1252"},
    {"", "ansi_x3.4-1968 ascii us-ascii x-user-defined replacement"},
    {"windows-1253", "cp1253 windows-1253 x-cp1253"},
    {"windows-1254",
     "cp1254 csisolatin5 iso-8859-9 iso-ir-148 iso8859-9 iso88599 iso_8859-9 iso_8859-9:1989 l5 latin5 "
     "windows-1254 x-cp1254"},
    {"windows-1255", "cp1255 windows-1255 x-cp1255"},
    {"windows-1256", "cp1256 windows-1256 x-cp1256"},
    {"windows-1257", "cp1257 windows-1257 x-cp1257"},
    {"windows-1258", "cp1258 windows-1258 x-cp1258"},
    {"x-mac-cyrillic", "x-mac-cyrillic x-mac-ukrainian"},
    {kGbkConverter, "chinese csgb2312 csiso58gb231280 gb2312 gb_2312 gb_2312-80 gbk iso-ir-58 x-gbk gb18030"},
    {"big5-hkscs", "big5 big5-hkscs cn-big5 csbig5 x-x-big5"},
    {"euc-jp", "cseucpkdfmtjapanese euc-jp x-euc-jp"},
    {"iso-2022-jp", "csiso2022jp iso-2022-jp"},
    {"windows-31j", "csshiftjis ms932 ms_kanji shift-jis shift_jis sjis windows-31j x-sjis"},
    {"windows-949",
     "cseuckr csksc56011987 euc-kr iso-ir-149 korean ks_c_5601-1987 ks_c_5601-1989 ksc5601 ksc_5601 "
     "windows-949"},
    {"hz-gb-2312", "hz-gb-2312"},
    {"iso-2022-kr", "csiso2022kr iso-2022-kr"},
    {"iso-2022-cn", "iso-2022-cn"},
    {"iso-2022-cn-ext", "iso-2022-cn-ext"},
    {"utf-16be", "unicodefffe utf-16be"},
    {kUtf16Converter, "csunicode iso-10646-ucs-2 ucs-2 unicode unicodefeff utf-16 utf-16le"},
};

// Other labels that mail programs write.
constexpr Encoding kOfMails[] = {
    {"utf-8", "utf_8 unicode-2-0-utf-8 utf-8n utf8mb4 cp65001 65001"},
    {"utf-7", "unicode-1-1-utf-7 csunicode11utf7 utf-7 utf7 x-unicode-2-0-utf-7 cp65000"},
    {"utf-32", "utf-32 ucs-4 iso-10646-ucs-4"},
    {"windows-1250", "win-1250 win1250 windows1250 ms-ee"},
    {"windows-1251", "win-1251 win1251 windows1251 ms-cyrl ansi-1251"},
    {"windows-1252", "win-1252 win1252 windows1252 ms-ansi 8859_1 latin-1 iso-latin-1 iso_8859_1 iso8859_1"},
    {"windows-1253", "win-1253 win1253 windows1253 ms-greek"},
    {"windows-1254", "win-1254 win1254 windows1254 ms-turk"},
    {"windows-1255", "win-1255 win1255 windows1255 ms-hebr"},
    {"windows-1256", "win-1256 win1256 windows1256 ms-arab"},
    {"windows-1257", "win-1257 win1257 windows1257 winbaltrim"},
    {"windows-1258", "win-1258 win1258 windows1258"},
    {"iso-8859-2", "latin-2 iso8859_2"},
    {"iso-8859-15", "latin-9 latin9 latin0 iso8859_15"},
    {kLatin10Converter, "iso8859-16 iso885916 iso-ir-226 latin10 l10"},
    {"windows-874", "cp874 ms874 tis620 tis-620.2533"},
    {kGbkConverter, "cp936 ms936 windows-936 gb-2312 gb2312-80 gb-18030 euc-cn x-euc-cn cn-gb"},
    {"big5-hkscs", "cp950 ms950 windows-950 x-big5 big-5 big5hkscs"},
    {"windows-31j", "cp932 windows-932 shiftjis x-ms-cp932 cswindows31j"},
    {"euc-jp", "eucjp euc_jp cp51932 ujis"},
    {"iso-2022-jp", "iso2022jp iso-2022-jp-ms cp50220 cp50221 cp50222 jis"},
    {"windows-949", "cp949 uhc ms949 x-windows-949 euckr euc_kr ks_c_5601 ks-c-5601-1987 ksc5601-1987 ksc"},
    {"",
     "unknown-8bit x-unknown unknown ansi_x3.4-1986 iso646-us us ibm367 cp367 csascii 7bit 8bit binary "
     "default"},
};

std::unordered_map<std::string_view, std::string_view> MakeTable() {
  std::unordered_map<std::string_view, std::string_view> table;
  const auto add = [&table](const Encoding& encoding) {
    for (std::string_view labels = encoding.Labels; !labels.empty();) {
      const std::size_t end = std::min(labels.find(' '), labels.size());
      table.emplace(labels.substr(0, end), encoding.Converter);
      labels.remove_prefix(std::min(end + 1, labels.size()));
    }
  };
  for (const Encoding& encoding : kStandard) add(encoding);
  for (const Encoding& encoding : kOfMails) add(encoding);
  return table;
}

}  // namespace

std::optional<std::string_view> ConverterOfLabel(std::string_view label) {
  static const std::unordered_map<std::string_view, std::string_view> table = MakeTable();
  constexpr std::string_view kAround = " \t\r\n\f\"';,";
  constexpr std::size_t kLongest = 40;
  const std::size_t first = label.find_first_not_of(kAround);
  if (first == std::string_view::npos) return "";
  label = label.substr(first, label.find_last_not_of(kAround) - first + 1);
  if (label.size() > kLongest) return std::nullopt;
  std::string folded(label);
  for (char& c : folded) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
  }
  const auto found = table.find(folded);
  if (found == table.end()) return std::nullopt;
  return found->second;
}

}  // namespace Mime
