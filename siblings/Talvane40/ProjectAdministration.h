// ProjectAdministration: creates and describes projects. platform/contracts/ProjectAdministration.h is the
// contract.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"

namespace Talvane40 {

using namespace Platform;

extern std::atomic<long> liveObjects;

class ProjectAdministration : public ObjectWithMembers<ProjectAdministration> {
 public:
  static const Table& Members();

 private:
  Value CreateProject(std::span<Value> arguments);
  Value AddUser(std::span<Value> arguments);
  Value ChangeUser(std::span<Value> arguments);
  Value RemoveUser(std::span<Value> arguments);
  Value SetPassword(std::span<Value> arguments);
  Value AddDiscussion(std::span<Value> arguments);
  Value AddReply(std::span<Value> arguments);
  Value Outline(std::span<Value> arguments);
  Value RepliesAfter(std::span<Value> arguments);

  LiveObject live_{liveObjects};
};

}  // namespace Talvane40
