#include "gateway/policy/Gate.h"

#include "gateway/policy/EmptyReply.h"
#include "gateway/policy/Strangers.h"

namespace Gateway {

std::optional<Refusal> RefusalOf(const GateFacts& facts, const PolicySettings& settings) {
  for (const auto rule : {RefuseStranger, RefuseEmptyReply}) {
    if (std::optional<Refusal> refusal = rule(facts, settings)) return refusal;
  }
  return std::nullopt;
}

}  // namespace Gateway
