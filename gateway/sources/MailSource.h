// MailSource: the mails behind what the command line names: a message file, an mbox, a Maildir, or standard
// input.
//
// Whoever sends a mail decides what its lines are, so that a line of a mail that was handed over alone never
// separates two: standard input is one mail unless the caller knows it to be an mbox, and a file of a Maildir
// always is. A file that a person names is an mbox where its first line is a separator.
#pragma once

#include <functional>
#include <string>

#include "gateway/sources/Outcome.h"

namespace Gateway {

// A mail as it was found, or what kept it from being read.
struct RawMail {
  std::string
      Source;  // the path; path:index for a message of an mbox, counted from 1; "-" for standard input
  std::string Bytes;
  std::string Fault;  // in words; empty when the bytes are the mail
  Outcome FaultOutcome = Outcome::Retry;
};

// What standard input holds.
enum class StandardInput { OneMail, Mbox };

// Takes one mail after the other; false ends the reading.
using MailSink = std::function<bool(RawMail)>;

// Hands each mail of a source to the sink, in the order of the mbox, or of the file names of the Maildir's
// new and cur together. What can't be read is handed on as a fault and ends nothing but its own source; this
// raises nothing of its own. False if the sink ended it.
//
// "-" is standard input, and so are /dev/stdin and any path that leads to the same pipe or device. The line
// "From sender time" in front of a single mail is dropped.
bool ReadMailSource(const std::string& path, StandardInput input, const MailSink& sink);

}  // namespace Gateway
