// MailHeader: the fields of a mail's own header, for rules that judge where a mail comes from.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

class ParsedMessage;

struct HeaderField {
  std::string Name;   // as it is written
  std::string Value;  // unfolded, with its comments; the bytes as they came
  bool Whole = true;  // false if the end of a longer value is missing
};

struct MailHeader {
  // A longer value is cut off. What rules look at is far shorter; the results of ten authentication methods
  // take 2 kB.
  static constexpr std::size_t kLongestValue = std::size_t{8} << 10;

  // In their order, but for those of the content, which are at the end. Some that are hidden from the parser
  // have an X in place of the first letter of their name: see CheckLimits and RepairHeaders. Their number and
  // size have limits: see MailLimits.
  std::vector<HeaderField> Fields;

  // The sender's address if the mail has exactly one From field, which names exactly one address as RFC 5322
  // demands, with one "@"; otherwise nothing. So every program that checks the mail's origin reads this
  // sender.
  std::optional<String> OnlySender;
};

// True if the field has the name, in any case.
bool IsNamed(const HeaderField& field, std::string_view name);

// The first field of the name; null without one.
const HeaderField* FirstField(const MailHeader& header, std::string_view name);

// Reads the header of the whole message. Raises only std::bad_alloc.
MailHeader HeaderOf(const ParsedMessage& message);

// The address of a From field, given its raw value, on the terms of MailHeader::OnlySender. Pure.
std::optional<String> OnlyAddress(std::string_view value);

// Replaces each comment (RFC 5322, section 3.2.2) with a blank, and removes the blanks at both ends. A
// parenthesis in a quoted string begins no comment; an unclosed comment reaches to the end. Linear at any
// depth; pure.
std::string WithoutComments(std::string_view value);

}  // namespace Mime
