// Mbox: reads the messages of an mbox, one at a time.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "mime/InputFile.h"

namespace Mime {

inline constexpr std::string_view kMboxStart = "From ";

// True for a line that separates two messages: "From ", the sender and a time such as "Mon Jan 31 12:00:00
// 2022"; or, after an empty line, "From " and the sender's address alone. Any other line is text that its
// writer's program didn't mask. Lengths in headers are ignored.
bool IsMboxSeparator(std::string_view line, bool behindEmptyLine);

// The last character of the line ends of a file that wasn't read yet: LF, also for CR LF, or CR.
char LineEndOf(InputFile& file);

// True if the file, which wasn't read yet, begins with a separator.
bool BeginsAnMbox(InputFile& file);

// Skips the line "From sender time" that a mail server writes in front of a mail, and returns its sender,
// which is empty if the line has only a time. Nothing if there is no such line. A field "From :" is kept.
std::optional<std::string> SkipEnvelopeLine(InputFile& file);

// Reads an mbox. The first line decides whether lines end in LF, CR LF or CR.
class MboxReader {
 public:
  // Reads the first line, which must be a separator.
  explicit MboxReader(InputFile& file);

  // Reads the next message, without its separator and the empty line at its end; one level of ">From " is
  // unmasked. size is its full size; bytes holds at most kLargestMail of it. Returns false after the last
  // message. Raises std::system_error as InputFile does, and std::bad_alloc for a message that doesn't fit
  // into memory; reading can continue after it.
  bool Next(std::string& bytes, std::size_t& size);

  // The sender that the separator in front of that message names; empty if it has only a time.
  const std::string& Sender() const { return sender_; }

 private:
  // Adds lines of the buffer to a message, or, without any, a line that is longer than the buffer, which is
  // consumed. Returns false, and the message is lost, if there isn't enough memory.
  bool Add(std::string_view lines, std::string& bytes, std::size_t& size);

  // Consumes a separator that was returned by PeekLine, and notes its sender.
  void TakeSeparator(std::string_view line);

  InputFile& file_;
  char lineEnd_;
  bool more_ = false;
  std::string sender_, nextSender_;
};

}  // namespace Mime
