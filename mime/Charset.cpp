#include "mime/Charset.h"

#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>

#include <memory>

namespace Mime {
namespace {

struct CloseConverter {
  void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

// ICU's own substitution gives U+001A for some single bytes, which nobody would recognise as damage.
void ReplaceDamage(const void*, UConverterToUnicodeArgs* arguments, const char*, int32_t,
                   UConverterCallbackReason reason, UErrorCode* status) {
  if (reason > UCNV_IRREGULAR) return;
  *status = U_ZERO_ERROR;
  const UChar replacement = 0xFFFD;
  ucnv_cbToUWriteUChars(arguments, &replacement, 1, 0, status);
}

struct Reading {
  const char* Label;
  const char* ReadAs;  // null: the label tells nothing
};

// Labels whose mails hold more than the standard behind the label allows.
constexpr Reading kReadings[] = {
    {"us-ascii", nullptr},
    {"ascii", nullptr},
    {"iso-8859-1", "windows-1252"},
    {"latin1", "windows-1252"},
    {"iso-8859-9", "windows-1254"},
    {"iso-8859-11", "windows-874"},
    {"tis-620", "windows-874"},
    {"gb2312", "gb18030"},
    {"gbk", "gb18030"},
    {"euc-kr", "windows-949"},
    {"ks_c_5601-1987", "windows-949"},
    {"big5", "windows-950"},
    {"unicode-1-1-utf-7", "utf-7"},
};

// The converter for a label, or none. Any alias of an entry above counts as the entry.
Converter OpenConverter(const std::string& label) {
  if (label.empty() || label.size() >= UCNV_MAX_CONVERTER_NAME_LENGTH) return nullptr;
  UErrorCode status = U_ZERO_ERROR;
  const char* standardName = ucnv_getStandardName(label.c_str(), "MIME", &status);
  const char* name = U_SUCCESS(status) && standardName ? standardName : label.c_str();
  for (const Reading& reading : kReadings) {
    if (ucnv_compareNames(name, reading.Label) != 0 && ucnv_compareNames(label.c_str(), reading.Label) != 0)
      continue;
    if (!reading.ReadAs) return nullptr;
    name = reading.ReadAs;
    break;
  }
  status = U_ZERO_ERROR;
  Converter converter(ucnv_open(name, &status));
  if (U_FAILURE(status)) return nullptr;
  ucnv_setToUCallBack(converter.get(), ReplaceDamage, nullptr, nullptr, nullptr, &status);
  return converter;
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

}  // namespace

String DecodeText(std::string_view bytes, const std::string& label) {
  const Converter converter = OpenConverter(label);
  return converter ? Convert(*converter, bytes) : GuessText(bytes);
}

String GuessText(std::string_view bytes) {
  if (Platform::IsUtf8(bytes)) return Platform::FromUtf8(bytes);
  return DecodeText(bytes, "windows-1252");
}

}  // namespace Mime
