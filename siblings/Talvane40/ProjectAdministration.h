// ProjectAdministration: what sets projects up, for programs that administer them.
//
// An object known by its members' names, created as "Talvane40.ProjectAdministration". Whoever may write to a
// project's files may administer it; no logon is asked for. Paths are those of project files (.TVS), taken as
// they are given. Every refusal is a raised failure whose description says what to do: 380 for what was
// entered, 58 for a project file or user that exists, 76 for a file or folder that doesn't, and 57 for all
// else. A member that changes something has done all of it when it comes back, and nothing when it raises.
//
//   CreateProject(path, name, ownerUserName, ownerAddress, password)
//       Makes the project file and its database. The owner may bind a mailbox to the project, and mail from
//       the owner is accepted if an address is given; it may be empty. A file that exists is refused.
//   AddUser(path, userName, address, mailAccepted) -> the new user's key, a 32-bit number
//       User names are told apart without regard to case. Such a user can't open the project.
//   AddDiscussion(path, title) -> the new discussion's number, a 32-bit number
//   Describe(path) -> an Array of
//       [0] the project's name
//       [1] an Array of users in the order of their keys, each an Array of
//           key (number), name, address (strings), mail accepted (truth value)
//       [2] an Array of discussions in the order of their numbers, each an Array of
//           number, title, and an Array of replies in the order of their coming, each an Array of
//           subject, body, user name, time in UTC as "2024-05-01T09:30:00.000Z" (strings)
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
  Value AddDiscussion(std::span<Value> arguments);
  Value Describe(std::span<Value> arguments);

  LiveObject live_{liveObjects};
};

}  // namespace Talvane40
