// Mbox: the messages of an mbox, one after the other, without ever holding more than one of them.
#pragma once

#include <string>
#include <string_view>

#include "mime/InputFile.h"

namespace Mime {

inline constexpr std::string_view kMboxStart = "From ";

// True for a line that separates two messages. Behind "From " stands the sender and the time as in "Mon Jan
// 31 12:00:00 2022", or behind an empty line the sender's address alone; any other line is the text of a
// writer who didn't mask it. Lengths told in headers are not trusted.
bool IsMboxSeparator(std::string_view line, bool behindEmptyLine);

// Reads an mbox whose lines end in LF, CR LF or CR, as its first line does.
class MboxReader {
 public:
  explicit MboxReader(InputFile& file);

  // The next message without its separator, lines masked as ">From " unmasked by one level, and without the
  // empty line that ends it. size is its full size, of which bytes holds no more than kLargestMail. False
  // behind the last message. Raises std::system_error as InputFile does.
  bool Next(std::string& bytes, std::size_t& size);

 private:
  InputFile& file_;
  std::string line_;
  char lineEnd_ = '\n';
};

}  // namespace Mime
