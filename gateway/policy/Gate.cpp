#include "gateway/policy/Gate.h"

#include "gateway/policy/Authentication.h"
#include "gateway/policy/AutomaticMail.h"
#include "gateway/policy/EmptyReply.h"
#include "gateway/policy/Strangers.h"

namespace Gateway {

std::optional<Refusal> RefusalOf(const GateFacts& facts, const PolicySettings& settings) {
  for (const auto rule : {RefuseAutomaticMail, RefuseUnauthenticated, RefuseStranger, RefuseEmptyReply}) {
    if (std::optional<Refusal> refusal = rule(facts, settings)) return refusal;
  }
  return std::nullopt;
}

}  // namespace Gateway
