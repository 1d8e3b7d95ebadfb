// OpenedProject: a project that a user has opened, with its users and its discussions.
//
// Used on the thread of the application that opened it. The database stays open until the project and all
// that it gave are dropped.
#pragma once

#include <memory>

#include "platform/Component.h"
#include "platform/contracts/ProjectLibrary.h"
#include "siblings/Talvane40/ProjectDatabase.h"

namespace Talvane40 {

extern std::atomic<long> liveObjects;

// What a project and its discussions share.
struct OpenState {
  explicit OpenState(const std::string& database) : Database(database) {}
  ProjectDatabase Database;
  std::int32_t Author = 0;  // of the replies that follow
};

class OpenedProject : public Project {
 public:
  // logonText is what the application gives as its own.
  OpenedProject(std::shared_ptr<OpenState> state, String name, String logonText);

  // A snapshot, which is read anew only after a user was added or changed.
  std::shared_ptr<ProjectUsers> GetUsers() override;

  String GetName() override { return name_; }

  // True for the owner, the user who was named when the project was created.
  Boolean IsMailBoxAllowed() override;

  // An object with the method Reply(subject, body): one durable transaction, which is done when the call
  // comes back and undone when it raises.
  ObjectRef GetDiscussion(std::int32_t number) override;

  // True if kind is 1, the logon text is this application's own, and the user exists and accepts mail;
  // anything else changes nothing.
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
