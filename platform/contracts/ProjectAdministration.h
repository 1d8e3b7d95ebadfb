// ProjectAdministration: the contract for setting projects up, for programs that administer them.
//
// Whoever may write a project's files may administer it; no logon is asked for. Paths are those of project
// files (.TVS); blanks around them don't count. A change is on disk when its operation returns; an operation
// that raises has changed nothing. Failures: 380 for refused input, 58 for a project file or user that
// exists, 76 for a file or folder that doesn't, 70 where permission for one is missing, 57 for
// other files that can't be read or written. The description says what to do. See ObjectProxy for what else may be raised.
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

  // The form in which a description crosses a library boundary: nested arrays in the order of the members.
  Value ToValue() const;
  // Raises 9 or 13 for a value of another form.
  static ProjectDescription FromValue(const Value& value);
};

class ProjectAdministration : public ObjectProxy {
 public:
  static constexpr StringView kName = u"Talvane40.ProjectAdministration";
  using ObjectProxy::ObjectProxy;

  // Creates the project file and its database. The owner may bind a mailbox to the project; mail from the
  // owner is accepted if an address is given. A file that exists is refused, and so is a password
  // that a mailbox can't store: empty, of more than 97 characters, with codes outside 14 to 124, or with
  // blanks at its ends.
  void CreateProject(StringView path, StringView name, StringView owner, StringView address,
                     StringView password) const {
    Call(u"CreateProject", path, name, owner, address, password);
  }
  // Gives the new user's key. User names differ by more than their case. Such a user can't open the project.
  // The address is any valid one of platform/MailAddress.h, and is stored as it is given, without blanks
  // around it.
  std::int32_t AddUser(StringView path, StringView name, StringView address, bool mailAccepted) const {
    return Call(u"AddUser", path, name, address, mailAccepted).ToInt32();
  }
  // Gives the new discussion's number.
  std::int32_t AddDiscussion(StringView path, StringView title) const {
    return Call(u"AddDiscussion", path, title).ToInt32();
  }
  ProjectDescription Describe(StringView path) const {
    return ProjectDescription::FromValue(Call(u"Describe", path));
  }
};

}  // namespace Platform
