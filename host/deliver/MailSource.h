// MailSource: the mails behind what the command line names: a message file, an mbox, a Maildir, or standard
// input.
#pragma once

#include <functional>
#include <string>

#include "host/Command.h"

namespace Host {

// A mail as it was found, or what kept it from being read.
struct RawMail {
  std::string
      Source;  // the path; path:index for a message of an mbox, counted from 1; "-" for standard input
  std::string Bytes;
  std::string Fault;  // in words; empty when the bytes are the mail
  ExitCode FaultCode = TryAgain;
};

// Takes one mail after the other; false ends the reading.
using MailSink = std::function<bool(RawMail)>;

// Larger mails are refused: no mail server lets them pass, and one in memory at a time is all that is kept.
inline constexpr std::size_t kLargestMail = std::size_t{128} << 20;

// Hands each mail of a source to the sink, in the order of the mbox, or of the file names of the Maildir's
// new and cur together. What can't be read is handed on as a fault and ends nothing but its own source; this
// raises nothing of its own. False if the sink ended it.
bool ReadMailSource(const std::string& path, const MailSink& sink);

}  // namespace Host
