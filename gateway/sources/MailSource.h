// MailSource: reads mails from a message file, an mbox, a Maildir, or standard input.
//
// The sender of a mail decides what its lines contain. So a line of a mail that was passed alone never
// separates two mails: standard input is one mail unless the caller says that it is an mbox, and a file of a
// Maildir always is one. Another file is an mbox if its first line is a separator.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "gateway/sources/Outcome.h"
#include "gateway/sources/StopSignal.h"
#include "mime/InputFile.h"

namespace Gateway {

// A mail, or the reason why it could not be read.
struct RawMail {
  std::string
      Source;  // the path; path:index for a message of an mbox, counted from 1; "-" for standard input
  std::string Bytes;
  // For people; empty if Bytes holds the mail. With a fault, Bytes is empty, or the header of a mail that is
  // too large.
  std::string Fault;
  Outcome FaultOutcome = Outcome::Retry;
  // The envelope's sender, empty for the null return path; nothing if the source doesn't know it. A file
  // knows it by the line "From sender time" that is dropped.
  std::optional<std::string> EnvelopeSender = {};
};

// What standard input contains.
enum class StandardInput { OneMail, Mbox };

// Receives one mail after the other, and returns its outcome. std::nullopt means that the mail was not
// handled and ends the reading.
using MailSink = std::function<std::optional<Outcome>(RawMail)>;

// True for "-", /dev/stdin, and any path that leads to the same pipe or device as standard input.
bool IsStandardInput(const std::string& path);

// Skips the line "From sender time" that a mail server writes in front of a mail, and notes its sender. Does
// nothing if there is no such line.
void TakeEnvelopeLine(Mime::InputFile& file, RawMail& mail);

// Passes each mail of a source to the sink, in the order of the mbox, or of the file names in the Maildir's
// folders new and cur together. What can't be read is passed as a fault and ends only its own source; no
// exception is raised except by the sink. Returns false if the sink ended the reading.
//
// The line "From sender time" in front of a single mail is dropped. A wait for input ends when stopWanted
// becomes true, which is asked every 0.2 s; so does the reading, as if the sink had ended it.
bool ReadMailSource(const std::string& path, StandardInput input, const MailSink& sink,
                    const std::function<bool()>& stopWanted = StopWanted);

}  // namespace Gateway
