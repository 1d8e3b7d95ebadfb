// Help: shows help topics in the viewer of the process's forms toolkit.
//
// An object known by its members' names, used on the thread that created it.
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
  // DisplayHelpTopic(topic). Raises 57 with the topic's name if the viewer can't open it, 429 where the
  // process has no toolkit.
  Value DisplayHelpTopic(std::span<Value> arguments);

  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralGuiServices
