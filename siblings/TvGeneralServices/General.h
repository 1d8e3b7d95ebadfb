// General: facts about the operating system. platform/contracts/GeneralServices.h is the contract.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"
#include "siblings/TvGeneralServices/LiveObjects.h"

namespace TvGeneralServices {

using namespace Platform;

class General : public ObjectWithMembers<General> {
 public:
  static const Table& Members();

 private:
  Value SystemInfo(std::span<Value> arguments);
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
