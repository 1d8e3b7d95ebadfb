// HtmlLines: the lines that a walk through an HTML document puts on the screen.
#pragma once

#include <algorithm>

#include "platform/Text.h"

namespace Mime {

using Platform::String;
using Platform::StringView;

// Puts characters, blanks and line ends together so that lines have no blanks at their ends, the text none of
// both at its ends, and at most one blank or one empty line comes from markup.
class HtmlLines {
 public:
  // The text stays within the number of characters, so that it is never copied to grow.
  explicit HtmlLines(std::size_t limit) : limit_(limit) { text_.reserve(limit); }

  void Put(char16_t c);                             // any but a line end or a blank that markup may swallow
  void Blank() { blankWaits_ = true; }              // one, if something is on the line and more comes
  void BreakLine();                                 // ends the line, empty or not
  void EndLine();                                   // ends the line if something is on it
  void EmptyLine() { emptyLineWaits_ = !atMark_; }  // one, in front of what comes next

  // The mark of a list's item, behind which the item's first block begins: EndLine and EmptyLine have no
  // effect until something follows it, or until EndMark. A longer mark than the limit has room for is "*".
  void PutMark(StringView mark);
  void EndMark() { atMark_ = false; }

  // Puts a text on the last line that has something on it, behind a blank.
  void PutBehind(StringView text);

  std::size_t Size() const { return text_.size(); }

  // What was put behind a position that Size gave. The end of a line may have cut blanks in front of it.
  StringView From(std::size_t position) const {
    return StringView(text_).substr(std::min(position, text_.size()));
  }

  // The whole text. To be called once.
  String Take();

 private:
  void BeginLine();
  void CutBlanks();

  String text_;
  std::size_t limit_;
  bool lineOpen_ = false;  // something is on the line, though it may be a character that nobody sees
  bool blankWaits_ = false;
  bool emptyLineWaits_ = false;
  bool atMark_ = false;
};

}  // namespace Mime
