// ProjectAdministration: typed proxy for the object of Talvane40 that sets up projects.
//
// It needs no logon, only write access to the project's files. Paths are those of project files (.TVS);
// blanks around them are ignored. A change is on disk when its operation returns; an operation that raises
// has changed nothing. Failures: 380 for refused input, 58 for a project file or user that exists, 76 for a
// missing file or folder, 70 for one without permission, 57 for other files that can't be read or written.
// The description says what to do. See ObjectProxy for what else may be raised, and for threads and
// ownership.
#pragma once

#include <cstdint>
#include <vector>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

struct DescribedUser {
  std::int32_t Key = 0;
  String Name;
  String Address;
  bool MailAccepted = false;
};

struct DescribedReply {
  String Subject;
  String Body;
  String UserName;
  String At;  // UTC, as "2024-05-01T09:30:00.000Z"
};

struct DescribedDiscussion {
  std::int32_t Number = 0;
  String Title;
  std::vector<DescribedReply> Replies;  // in the order in which they were stored
};

struct ProjectDescription {
  String Name;
  std::vector<DescribedUser> Users;              // ordered by key
  std::vector<DescribedDiscussion> Discussions;  // ordered by number

  // The description as nested arrays, in the order of the members, in which the object returns it.
  Value ToValue() const;
  // Raises 9 or 13 for a value of another structure.
  static ProjectDescription FromValue(const Value& value);
};

class ProjectAdministration : public ObjectProxy {
 public:
  static constexpr StringView kName = u"Talvane40.ProjectAdministration";  // the programmatic name
  using ObjectProxy::ObjectProxy;

  // Creates the project file and its database. The owner may bind a mailbox to the project; mail from the
  // owner is accepted if an address is given. Refuses a file that exists, and a password that a mailbox can't
  // store: empty, of more than 97 characters, with codes outside 14 to 124, or with blanks at its ends.
  void CreateProject(StringView path, StringView name, StringView owner, StringView address,
                     StringView password) const {
    Call(u"CreateProject", path, name, owner, address, password);
  }
  // The new user's key. User names must differ in more than case. The user can't open the project. The
  // address must be valid (Runtime::AddressFault) and is stored without blanks around it.
  std::int32_t AddUser(StringView path, StringView name, StringView address, bool mailAccepted) const {
    return Call(u"AddUser", path, name, address, mailAccepted).ToInt32();
  }
  // The new discussion's number.
  std::int32_t AddDiscussion(StringView path, StringView title) const {
    return Call(u"AddDiscussion", path, title).ToInt32();
  }
  ProjectDescription Describe(StringView path) const {
    return ProjectDescription::FromValue(Call(u"Describe", path));
  }
};

}  // namespace Platform
