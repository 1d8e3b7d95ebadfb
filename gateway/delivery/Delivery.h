// Delivery: hands the mails of sources to the component, one after the other, and reports each outcome.
#pragma once

#include <string>
#include <vector>

#include "gateway/delivery/DeliveryReport.h"
#include "gateway/sources/MailSource.h"

namespace Gateway {

// Delivers every mail of the sources, of which standard input may be an mbox, to the mailbox and tells the
// report of each. Gives the outcome of all. Ends between two mails when a stop signal has come. Raises 429
// where the component can't be had. Main thread.
Outcome Deliver(const String& mailBox, const std::vector<std::string>& sources, StandardInput input,
                DeliveryReport& report);

}  // namespace Gateway
