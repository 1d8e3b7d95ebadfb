// Delivery: passes the mails of sources to the component, one after the other, and reports each outcome.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "gateway/delivery/DeliveryReport.h"
#include "gateway/delivery/MailProcessor.h"

namespace Gateway {

// Delivers every mail of the sources to the mailbox, adds its outcome to the report, and tells it to handled.
// input says what standard input is. Returns the outcome of all. Ends between two mails after a stop signal.
// Raises 429 if the component can't be created. Main thread.
Outcome Deliver(const String& mailBox, const DeliverySettings& settings,
                const std::vector<std::string>& sources, StandardInput input, DeliveryReport& report,
                const std::function<void(const MailResult&)>& handled);

}  // namespace Gateway
