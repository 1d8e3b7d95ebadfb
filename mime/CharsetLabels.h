// CharsetLabels: the converter for a charset's label.
#pragma once

#include <optional>
#include <string_view>

namespace Mime {

// The converter's name for a label in any case, with blanks or quotes around it; empty for a label without
// meaning; nothing for an unknown label. The labels are those of the WHATWG Encoding Standard and others that
// mail programs write. Two rules differ from that standard: us-ascii has no meaning, since 8-bit text is sent
// under it, and encodings with shift sequences, which a browser refuses, are decoded.
//
// Pure; any thread.
std::optional<std::string_view> ConverterOfLabel(std::string_view label);

// Converters that Charset.cpp implements in a special way: gb18030 with the byte 80 as the euro sign, UTF-16
// whose byte order mark decides (without one, little-endian), and ISO-8859-16, which ICU lacks.
inline constexpr std::string_view kGbkConverter = "gb18030";
inline constexpr std::string_view kUtf16Converter = "utf-16";
inline constexpr std::string_view kLatin10Converter = "iso-8859-16";

}  // namespace Mime
