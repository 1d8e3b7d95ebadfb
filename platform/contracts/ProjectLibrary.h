// ProjectLibrary: the interfaces of the library that holds projects, their users and their discussions.
//
// The sibling Talvane40 implements them, and the component calls them on the thread that created the
// application. Every operation may raise a failure: 57 where the project's database can't be read or written,
// with the reason. Results belong to the caller. No object has a closing call: dropping the last reference
// ends it.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/Guid.h"
#include "platform/contracts/ObjectProxy.h"

namespace Platform {

class ProjectUser {
 public:
  virtual ~ProjectUser();
  // The view holds as long as the user object.
  // In the spelling of CanonicalAddress, by which a mail's sender is compared; empty where the user has none.
  virtual StringView GetEMailAddress() = 0;
  virtual Boolean IsMailAccepted() = 0;
  virtual std::int32_t GetUserKey() = 0;  // 1 or more, for ever this user's
};

// The users of a project in their order. What a walk sees is the state when GetUsers was called.
class ProjectUsers {
 public:
  virtual ~ProjectUsers();
  virtual std::int32_t Count() = 0;
  // Position from 1 to Count; raises 9 for another.
  virtual std::shared_ptr<ProjectUser> Item(std::int32_t position) = 0;
};

// A discussion, known by the names of its members.
class Discussion : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Adds a reply of the acting user. It is on disk when this returns, and nothing is stored if it raises.
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
  // A discussion by its number, for a Discussion; or nothing.
  virtual ObjectRef GetDiscussion(std::int32_t number) = 0;
  // Makes a user the author of the replies that follow; before the first call it is the user who opened the
  // project. kind is 1, logonText the text of GetLogonText. False: that user can't act in the project, and
  // the author stays who it was.
  virtual Boolean SetActingUser(const Value& userKey, std::int32_t kind, const Value& logonText) = 0;
};

class ApplicationStatus {
 public:
  virtual ~ApplicationStatus();
  virtual String GetFailureText() = 0;  // why the last OpenProject gave nothing
};

class ApplicationLogon {
 public:
  virtual ~ApplicationLogon();
  virtual String GetLogonText() = 0;  // tells who is at work; SetActingUser takes it back
};

class TalvaneApplication {
 public:
  virtual ~TalvaneApplication();
  // The project, or nothing, when GetStatus tells why. mode is 1, options 0 and access 3.
  virtual std::shared_ptr<Project> OpenProject(const Value& path, std::int32_t mode, const String& userId,
                                               const String& password, std::int32_t options,
                                               std::int32_t access) = 0;
  virtual std::shared_ptr<ApplicationStatus> GetStatus() = 0;
  virtual std::shared_ptr<ApplicationLogon> GetLogon() = 0;
};

class TalvaneApplicationFactory {
 public:
  virtual ~TalvaneApplicationFactory();
  virtual std::shared_ptr<TalvaneApplication> CreateApplication(Boolean& shared) = 0;
};

// The classes that the library registers. Their objects are Objects that also have the interface above.
inline constexpr Guid TalvaneApplicationClass = "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4001}"_guid;
inline constexpr Guid TalvaneApplicationFactoryClass = "{0E7A0C52-6B5D-4E38-9C0B-5D4F5B6E4002}"_guid;

}  // namespace Platform
