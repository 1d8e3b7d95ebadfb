// Help: shows help topics with the forms toolkit of the process. platform/contracts/ResourceServices.h is the
// contract.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"

namespace TvGeneralGuiServices {

using namespace Platform;

extern std::atomic<long> liveObjects;

class Help : public ObjectWithMembers<Help> {
 public:
  static const Table& Members();

 private:
  Value DisplayHelpTopic(std::span<Value> arguments);

  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralGuiServices
