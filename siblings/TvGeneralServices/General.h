// General: what the system says of itself.
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
  // Fills six strings: the system's name with its version, the name of its maker's series, its version, the
  // kernel's release, the machine's architecture, and the platform ("Linux"). What the system doesn't tell
  // stays empty. Gives true.
  Value SystemInfo(std::span<Value> arguments);
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
