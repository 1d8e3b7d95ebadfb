// DeliveryStatus: reads a report that a mail couldn't be delivered (RFC 3464, RFC 6522).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

struct DeliveryStatus {
  // A report of more failures is cut there.
  static constexpr std::size_t kMostFailures = 100;

  // The Message-ID of the mail that wasn't delivered, with its angle brackets: of the returned mail or its
  // header, or else what the report answers. Empty if there is none.
  String MessageId;
  // The address in the field To of the returned mail or its header; empty unless that is a single one.
  String ReturnedTo;
  // For each recipient with "Action: failed", what the report says, for a person. A report of a delay or of a
  // success has none.
  struct Failure {
    String Recipient;   // the final one, or else the original one
    String Original;    // to whom the mail was sent, if it was forwarded; empty if that isn't said
    String Status;      // RFC 3463, such as "5.1.1"; may be empty
    String Diagnostic;  // what the mail server said; may be empty
  };
  std::vector<Failure> Failures;
};

// Nothing if the mail has no message/delivery-status outside of attached mails. Raises as ReadMail does for a
// mail beyond the limits. Any thread.
std::optional<DeliveryStatus> ReadDeliveryStatus(const std::string& bytes);

}  // namespace Mime
