// ProjectLibrary: the interfaces of the project library: projects, their users and their discussions.
//
// The sibling Talvane40 implements them. All objects are used on the thread that created the application.
// Operations of a project and a discussion raise 57, with the reason, if the project's database can't be read
// or written. Objects are shared; releasing the last reference closes them.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/Guid.h"
#include "platform/contracts/ObjectProxy.h"

namespace Platform {

class ProjectUser {
 public:
  virtual ~ProjectUser();
  // In the form of Runtime::CanonicalAddress; empty if the user has none. The view is valid as long as the
  // user object.
  virtual StringView GetEMailAddress() = 0;
  virtual Boolean IsMailAccepted() = 0;
  virtual std::int32_t GetUserKey() = 0;  // 1 or more; never given to another user
};

// The users of a project, ordered by key, as they were when GetUsers was called.
class ProjectUsers {
 public:
  virtual ~ProjectUsers();
  virtual std::int32_t Count() = 0;
  // Position from 1 to Count; raises 9 for another. The user is valid as long as the users object.
  virtual std::shared_ptr<ProjectUser> Item(std::int32_t position) = 0;
};

// Typed proxy for a discussion.
class Discussion : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Adds a reply of the acting user. It is on disk when this returns; nothing is stored if this raises.
  void Reply(const String& subjectText, const String& body) const {
    Value arguments[] = {subjectText, body};
    CallByReference(u"Reply", arguments);
  }
};

class Project {
 public:
  virtual ~Project();
  virtual std::shared_ptr<ProjectUsers> GetUsers() = 0;  // may be nothing
  virtual String GetName() = 0;
  // True if the user who opened the project may bind a mailbox to it.
  virtual Boolean IsMailBoxAllowed() = 0;
  // The discussion of that number, for the proxy Discussion; nothing if there is none.
  virtual ObjectRef GetDiscussion(std::int32_t number) = 0;
  // Sets the author of the following replies; at first it is the user who opened the project. kind is 1,
  // logonText the text of GetLogonText. False, and the author stays: there is no such user, mail from the
  // user isn't accepted, or another kind or text was given.
  virtual Boolean SetActingUser(const Value& userKey, std::int32_t kind, const Value& logonText) = 0;
};

class ApplicationStatus {
 public:
  virtual ~ApplicationStatus();
  virtual String GetFailureText() = 0;  // why the last OpenProject failed; empty if it didn't
};

class ApplicationLogon {
 public:
  virtual ~ApplicationLogon();
  virtual String GetLogonText() = 0;  // identifies this application to SetActingUser
};

class TalvaneApplication {
 public:
  virtual ~TalvaneApplication();
  // Opens a project; nothing on failure, with the reason in GetStatus. mode is 1, options 0 and access 3.
  // Raises no failure.
  virtual std::shared_ptr<Project> OpenProject(const Value& path, std::int32_t mode, const String& userId,
                                               const String& password, std::int32_t options,
                                               std::int32_t access) = 0;
  virtual std::shared_ptr<ApplicationStatus> GetStatus() = 0;
  virtual std::shared_ptr<ApplicationLogon> GetLogon() = 0;
};

class TalvaneApplicationFactory {
 public:
  virtual ~TalvaneApplicationFactory();
  // A new application. shared becomes False: no other client uses it.
  virtual std::shared_ptr<TalvaneApplication> CreateApplication(Boolean& shared) = 0;
};

// The registered classes. Their objects also are of type Object.
inline constexpr Guid TalvaneApplicationClass = "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4001}"_guid;
inline constexpr Guid TalvaneApplicationFactoryClass = "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4002}"_guid;

}  // namespace Platform
