// OpenedProject: a project that a user has opened, with its users and discussions.
// platform/contracts/ProjectLibrary.h is the contract. The database is closed when the project and its
// discussions are destroyed.
#pragma once

#include <memory>

#include "platform/Component.h"
#include "platform/contracts/ProjectLibrary.h"
#include "siblings/Talvane40/ProjectDatabase.h"

namespace Talvane40 {

extern std::atomic<long> liveObjects;

// Shared by a project and its discussions.
struct OpenState {
  explicit OpenState(const std::string& database) : Database(database) {}
  ProjectDatabase Database;
  std::int32_t Author = 0;  // of new replies
};

class OpenedProject : public Project {
 public:
  // logonText is the one of the application that opens the project.
  OpenedProject(std::shared_ptr<OpenState> state, String name, String logonText);

  // A snapshot. It is read again only after a user was added or changed.
  std::shared_ptr<ProjectUsers> GetUsers() override;

  String GetName() override { return name_; }

  // True for the owner of the project.
  Boolean IsMailBoxAllowed() override;

  ObjectRef GetDiscussion(std::int32_t number) override;

  // True if kind is 1, the logon text is that of the application, and mail of the user is accepted.
  Boolean SetActingUser(const Value& userKey, std::int32_t kind, const Value& logonText) override;

 private:
  std::shared_ptr<OpenState> state_;
  String name_;
  String logonText_;
  std::int32_t openedBy_;
  std::shared_ptr<ProjectUsers> users_;
  std::int64_t usersVersion_ = -1;
  LiveObject live_{liveObjects};
};

}  // namespace Talvane40
