// CharsetLabels: which converter reads the text under a charset's label.
#pragma once

#include <optional>
#include <string_view>

namespace Mime {

// The converter's name for a label in any case, with blanks or quotes around it; empty for a label that says
// nothing; none for one that isn't known. The labels are those of the WHATWG Encoding Standard and what mail
// programs write besides. Two readings are those of mail, not of the web: us-ascii says nothing, since 8-bit
// text is sent under it, and encodings with shift sequences, which a browser refuses, are read.
//
// Pure; any thread.
std::optional<std::string_view> ConverterOfLabel(std::string_view label);

// Converters that Charset.cpp reads in its own way: gb18030 with the byte 80 as the euro sign, UTF-16 whose
// byte order mark decides (without one the low byte comes first), and the one encoding that ICU doesn't have.
inline constexpr std::string_view kGbkConverter = "gb18030";
inline constexpr std::string_view kUtf16Converter = "utf-16";
inline constexpr std::string_view kLatin10Converter = "iso-8859-16";

}  // namespace Mime
