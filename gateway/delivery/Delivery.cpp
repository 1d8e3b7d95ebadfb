#include "gateway/delivery/Delivery.h"

#include <algorithm>
#include <utility>

#include "gateway/sources/StopSignal.h"

namespace Gateway {

Outcome Deliver(const String& mailBox, const DeliverySettings& settings,
                const std::vector<std::string>& sources, StandardInput input, DeliveryReport& report,
                const std::function<void(const MailResult&)>& handled) {
  MailProcessor processor(mailBox, settings);
  const auto handle = [&](RawMail raw) -> std::optional<Outcome> {
    if (StopWanted()) return std::nullopt;
    const MailResult result = processor.Process(std::move(raw));
    report.Add(result);
    handled(result);
    return result.Result;
  };
  const bool all = std::all_of(sources.begin(), sources.end(), [&](const std::string& source) {
    return ReadMailSource(source, input, handle);
  });
  return report.Finish(!all);
}

}  // namespace Gateway
