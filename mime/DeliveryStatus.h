// DeliveryStatus: reads a report that a mail couldn't be delivered (RFC 3464, RFC 6522).
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace Mime {

using Platform::String;

struct DeliveryStatus {
  // The Message-ID of the mail that wasn't delivered, with its angle brackets; from the returned mail or its
  // header.
  String MessageId;
  // For each recipient with "Action: failed": what the report says, for a person.
  struct Failure {
    String Recipient;
    String Status;      // RFC 3463, such as "5.1.1"; may be empty
    String Diagnostic;  // may be empty
  };
  std::vector<Failure> Failures;
};

// Nothing if the mail is no delivery report. Raises as ReadMail does for a mail beyond the limits.
std::optional<DeliveryStatus> ReadDeliveryStatus(const std::string& bytes);

}  // namespace Mime
