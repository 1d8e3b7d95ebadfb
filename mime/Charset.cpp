#include "mime/Charset.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <memory>
#include <utility>
#include <vector>

#include "mime/CharsetLabels.h"

namespace Mime {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLastResort = "windows-1252";
constexpr std::string_view kIso2022Jp = "iso-2022-jp";

struct CloseConverter {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

// Replaces damage with U+FFFD, since ICU substitutes U+001A for some single bytes. An empty escape segment is
// no damage. context is set for the converter in which the byte 80 is the euro sign.
void ReplaceDamage(const void* context, UConverterToUnicodeArgs* arguments, const char* bytes, int32_t length,
                   UConverterCallbackReason reason, UErrorCode* status) {
  if (reason > UCNV_IRREGULAR) return;
  const bool emptySegment = reason == UCNV_IRREGULAR;
  *status = U_ZERO_ERROR;
  if (emptySegment) return;
  const bool euro = context && length == 1 && static_cast<unsigned char>(bytes[0]) == 0x80;
  const UChar replacement = euro ? 0x20AC : 0xFFFD;
  ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, status);
}

Converter Open(const std::string& name) {
  UErrorCode status = U_ZERO_ERROR;
  Converter converter(ucnv_open(name.c_str(), &status));
  if (U_FAILURE(status)) return nullptr;
  static constexpr char kEuro = 1;
  ucnv_setToUCallBack(converter.get(), ReplaceDamage, name == kGbkConverter ? &kEuro : nullptr, nullptr,
                      nullptr, &status);
  return converter;
}

// This thread's converter of that name, reset; null if there is none.
UConverter* KeptConverter(std::string_view name) {
  constexpr std::size_t kMost = 8;
  thread_local std::vector<std::pair<std::string, Converter>> kept;
  for (const auto& [keptName, converter] : kept) {
    if (keptName != name) continue;
    ucnv_resetToUnicode(converter.get());
    return converter.get();
  }
  Converter opened = Open(std::string(name));
  if (!opened) return nullptr;
  if (kept.size() == kMost) kept.erase(kept.begin());
  return kept.emplace_back(name, std::move(opened)).second.get();
}

// ICU knows more charsets than ConverterOfLabel. Only names in its alias table are accepted: it would search
// for any other name as a file. SCSU and BOCU-1 are excluded: one byte of theirs may become four characters.
std::string_view ConverterOfIcu(std::string_view label) {
  const std::string name(label);
  UErrorCode status = U_ZERO_ERROR;
  if (name.size() >= UCNV_MAX_CONVERTER_NAME_LENGTH || name.find(',') != std::string::npos ||
      ucnv_countAliases(name.c_str(), &status) == 0 || U_FAILURE(status))
    return {};
  const char* canonical = ucnv_getAlias(name.c_str(), 0, &status);
  const std::string_view found = U_SUCCESS(status) && canonical ? canonical : "";
  return found == "US-ASCII" || found == "SCSU" || found == "BOCU-1" ? std::string_view() : found;
}

std::string_view ConverterFor(std::string_view label) {
  const std::optional<std::string_view> known = ConverterOfLabel(label);
  return known ? *known : ConverterOfIcu(label);
}

String DecodeLatin10(std::string_view bytes) {
  static constexpr StringView kUpper =
      u"\u00A0\u0104\u0105\u0141\u20AC\u201E\u0160\u00A7\u0161\u00A9\u0218\u00AB\u0179\u00AD\u017A\u017B"
      u"\u00B0\u00B1\u010C\u0142\u017D\u201D\u00B6\u00B7\u017E\u010D\u0219\u00BB\u0152\u0153\u0178\u017C"
      u"\u00C0\u00C1\u00C2\u0102\u00C4\u0106\u00C6\u00C7\u00C8\u00C9\u00CA\u00CB\u00CC\u00CD\u00CE\u00CF"
      u"\u0110\u0143\u00D2\u00D3\u00D4\u0150\u00D6\u015A\u0170\u00D9\u00DA\u00DB\u00DC\u0118\u021A\u00DF"
      u"\u00E0\u00E1\u00E2\u0103\u00E4\u0107\u00E6\u00E7\u00E8\u00E9\u00EA\u00EB\u00EC\u00ED\u00EE\u00EF"
      u"\u0111\u0144\u00F2\u00F3\u00F4\u0151\u00F6\u015B\u0171\u00F9\u00FA\u00FB\u00FC\u0119\u021B\u00FF";
  String text;
  text.reserve(bytes.size());
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += value < 0xA0 ? static_cast<char16_t>(value) : kUpper[value - 0xA0u];
  }
  return text;
}

String Convert(UConverter& converter, std::string_view bytes) {
  String text(bytes.size() + 16, u'\0');
  const char* source = bytes.data();
  std::size_t length = 0;
  for (;;) {
    UChar* target = text.data() + length;
    UErrorCode status = U_ZERO_ERROR;
    ucnv_toUnicode(&converter, &target, text.data() + text.size(), &source, bytes.data() + bytes.size(),
                   nullptr, true, &status);
    length = static_cast<std::size_t>(target - text.data());
    if (status != U_BUFFER_OVERFLOW_ERROR) break;
    text.resize(text.size() * 2);
  }
  text.resize(length);
  return text;
}

// Decodes by a converter's name; with GuessText if there is no such converter.
String ConvertBy(std::string_view name, std::string_view bytes) {
  if (name == kLatin10Converter) return DecodeLatin10(bytes);
  if (name == kUtf16Converter || name == "utf-16be") {
    const bool bigMark = bytes.starts_with("\xFE\xFF");
    const bool littleMark = bytes.starts_with("\xFF\xFE");
    if (bigMark || littleMark) bytes.remove_prefix(2);
    name = bigMark || (name == "utf-16be" && !littleMark) ? "utf-16be" : "utf-16le";
  }
  UConverter* converter = name.empty() ? nullptr : KeptConverter(name);
  if (converter) return Convert(*converter, bytes);
  return name == kLastResort || name == kIso2022Jp ? Platform::FromUtf8(bytes) : GuessText(bytes);
}

}  // namespace

String DecodeText(std::string_view bytes, std::string_view label) {
  if (bytes.starts_with(kUtf8Mark) && Platform::IsUtf8(bytes))
    return Platform::FromUtf8(bytes.substr(kUtf8Mark.size()));
  String text = ConvertBy(ConverterFor(label), bytes);
  if (text.starts_with(u'\uFEFF')) text.erase(0, 1);
  return text;
}

String GuessText(std::string_view bytes, std::string_view likely) {
  for (const std::string_view kanji : {"\x1B$B", "\x1B$@"}) {
    if (bytes.find(kanji) != std::string_view::npos) return ConvertBy(kIso2022Jp, bytes);
  }
  if (Platform::IsUtf8(bytes)) return Platform::FromUtf8(bytes);
  const std::string_view name = ConverterFor(likely);
  const bool eightBit = !name.empty() && !name.starts_with("utf") && !name.starts_with("iso-2022");
  return ConvertBy(eightBit ? name : kLastResort, bytes);
}

}  // namespace Mime
