// NoticeText: the text of a mail that the project sends, as plain text and as HTML.
#pragma once

#include <vector>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

struct NoticeText {
  String CutMarker;
  std::vector<String> Introduction;  // paragraphs
  String Text;                       // what a user wrote; may be empty
  String Footer;                     // may be empty

  // Both begin with the cut marker, and are the same to a reader: all texts are shown to the letter, with
  // their line ends and blanks. Linear. Any thread.
  String Plain() const;
  String Html() const;
};

}  // namespace Gateway
