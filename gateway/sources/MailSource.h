// MailSource: the mails behind what the command line names: a message file, an mbox, a Maildir, or standard
// input.
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

// Takes one mail after the other; false ends the reading.
using MailSink = std::function<bool(RawMail)>;

// Hands each mail of a source to the sink, in the order of the mbox, or of the file names of the Maildir's
// new and cur together. What can't be read is handed on as a fault and ends nothing but its own source; this
// raises nothing of its own. False if the sink ended it.
bool ReadMailSource(const std::string& path, const MailSink& sink);

}  // namespace Gateway
