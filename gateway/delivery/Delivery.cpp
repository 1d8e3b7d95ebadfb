#include "gateway/delivery/Delivery.h"

#include <utility>

#include "gateway/delivery/ReadAhead.h"
#include "gateway/sources/StopSignal.h"

namespace Gateway {

Outcome Deliver(const String& mailBox, const DeliverySettings& settings,
                const std::vector<std::string>& sources, StandardInput input, DeliveryReport& report,
                const std::function<void(const MailResult&)>& handled) {
  MailProcessor processor(mailBox, settings);
  const bool all = ReadAhead(sources, input, settings.Policy, [&](PreparedMail mail) {
    if (StopWanted()) return false;
    const MailResult result = processor.Process(std::move(mail));
    report.Add(result);
    handled(result);
    return true;
  });
  return report.Finish(!all);
}

}  // namespace Gateway
