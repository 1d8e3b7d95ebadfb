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

// The last character of the line ends of a file, of which nothing was taken: LF, also where it stands for CR
// LF, or CR.
char LineEndOf(InputFile& file);

// True where the file, of which nothing was taken, begins with a separator.
bool BeginsAnMbox(InputFile& file);

// Drops the line "From sender time" that a mail server writes in front of a mail that it hands over. A field
// "From :" stays.
void SkipEnvelopeLine(InputFile& file);

// Reads an mbox whose lines end in LF, CR LF or CR, as its first line does.
class MboxReader {
 public:
  // Takes the first line, which is a separator.
  explicit MboxReader(InputFile& file);

  // The next message without its separator, lines masked as ">From " unmasked by one level, and without the
  // empty line that ends it. size is its full size, of which bytes holds no more than kLargestMail. False
  // behind the last message. Raises std::system_error as InputFile does, and std::bad_alloc for a message
  // that has no room in memory, behind which it goes on.
  bool Next(std::string& bytes, std::size_t& size);

 private:
  // Takes a line of a message and appends it. False, with nothing appended, where there is no memory.
  bool TakeLine(std::string& bytes, std::size_t& size);

  InputFile& file_;
  char lineEnd_;
  bool more_;
};

}  // namespace Mime
