// HeaderWriter: writes the header fields of a mail (RFC 5322, RFC 2047).
#pragma once

#include <ctime>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// A person or a program with an address. Both may be any text.
struct Correspondent {
  String Name;
  String Address;  // empty for nobody
};

// The text in UTF-8, with U+FFFD for each lone surrogate.
std::string WellFormedUtf8(StringView text);

// All that it writes is printable ASCII, but for an address beyond ASCII, which is UTF-8 (RFC 6532). Line
// ends and other control characters become blanks, so that no text can add a field. No line has more than 998
// bytes. One thread.
class HeaderWriter {
 public:
  // The fields that were written, with LF as line ends.
  const std::string& Text() const { return text_; }

  // A text in pieces, which are written one after the other. A line of more than 76 characters is folded in
  // front of a piece that begins with a blank, and nowhere else. What can't be written as it is becomes
  // encoded words, from one such piece to the next: a piece is divided between two words only if it is too
  // long for one, so that a reader who joins words wrongly finds it whole.
  void AddText(std::string_view name, std::span<const String> pieces);

  // A value of ASCII characters, written as it is.
  void AddWord(std::string_view name, std::string_view value);

  // Nothing is written for a correspondent without an address. An address that is none becomes one: what
  // doesn't belong into its local part is quoted, and what doesn't into its domain is replaced.
  void AddCorrespondent(std::string_view name, const Correspondent& correspondent);

  // List-Id (RFC 2919).
  void AddList(StringView listName, std::string_view id);

  // In UTC.
  void AddDate(std::string_view name, std::time_t time);

  // Message-IDs without angle brackets. Those that RFC 5322 doesn't allow are omitted, and the field too if
  // none is left.
  void AddIds(std::string_view name, std::span<const std::string> ids);

 private:
  void Begin(std::string_view name);
  void End() { text_ += '\n'; }
  std::size_t Column() const { return text_.size() - lineStart_; }
  void Fold();
  void AddEncoded(std::span<const std::string> pieces);
  void AddPhrase(StringView phrase);

  // Appends a word behind a blank, or behind a fold if the line would be too long.
  void AddFolded(std::string_view word);

  std::string text_;
  std::size_t lineStart_ = 0;
};

}  // namespace Mime
