// ProjectAdministration: typed proxy for the object of Talvane40 that sets up projects.
//
// It needs no logon, only write access to the project's files. Paths are those of project files (.TVS);
// blanks around them are ignored; so are blanks around names. Users are found by name in any case. A change
// is on disk when its operation returns; an operation that raises has changed nothing. Failures: 380 for
// refused input, 58 for a project file or user that exists, 76 for a missing file, folder, user or
// discussion, 70 for one without permission, 57 for other files that can't be read or written. The
// description says what to do. See ObjectProxy for what else may be raised, and for threads and ownership.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

struct DescribedUser {
  std::int32_t Key = 0;
  String Name;
  String Address;
  bool MailAccepted = false;
  bool Owner = false;  // who may bind a mailbox to the project
  String Language;     // such as "de"; empty for the language of the program that sends
  bool Stopped =
      false;  // gets no mail after three delivery reports; told by the descriptions of a project alone

  // The members as an array, in their order.
  Value ToValue() const;
  // Raises 9 or 13 for a value of another structure.
  static DescribedUser FromValue(const Value& value);
};

// What changes of a user; the rest is kept.
struct UserChange {
  std::optional<String> Name;
  std::optional<String> Address;
  std::optional<bool> MailAccepted;
  std::optional<String> Language;

  // The members as an array, in their order, with an empty value for what is kept.
  Value ToValue() const;
  // Raises 9 or 13 for a value of another structure.
  static UserChange FromValue(const Value& value);
};

struct DescribedReply {
  String Subject;
  String Body;
  String UserName;          // also of a user who was removed
  String At;                // UTC, as "2024-05-01T09:30:00.000Z"
  std::int32_t Number = 0;  // of all replies of the project, in the order in which they were stored
  std::int32_t UserKey = 0;
  String UserAddress;  // the present one; may be empty

  // The members as an array, in their order.
  Value ToValue() const;
  // Raises 9 or 13 for a value of another structure.
  static DescribedReply FromValue(const Value& value);
};

struct DescribedDiscussion {
  std::int32_t Number = 0;
  String Title;
  std::vector<DescribedReply> Replies;  // in the order in which they were stored
};

// How the notices of a reply are sent that a user posts on this machine.
struct NoticeRoute {
  std::int32_t Transport = 0;  // of TransportId; 0: by the project's own settings
  String Server;               // SMTP: the host, which may have a port; MAPI: the profile's name
  String Address;              // SMTP: the sender's
  String RealName;
  std::int32_t Uid = 0;  // the system user who posted, to whom a profile belongs

  // The members as an array, in their order.
  Value ToValue() const;
  static NoticeRoute FromValue(const Value& value);
};

// The longest text of a reply that AddReply takes, in characters: a book of 500 pages.
inline constexpr std::size_t kLongestReply = 1'000'000;

struct ProjectDescription {
  String Name;
  std::vector<DescribedUser> Users;              // ordered by key, without those who were removed
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
  void ChangeUser(StringView path, StringView name, const UserChange& change) const {
    Call(u"ChangeUser", path, name, change.ToValue());
  }
  // The user's replies stay, with the name. Mail of the user is no longer accepted, the password is deleted,
  // and the name is free for another user. Raises 380 for the owner.
  void RemoveUser(StringView path, StringView name) const { Call(u"RemoveUser", path, name); }
  // The user can then open the project. Takes the passwords that CreateProject takes. Mailboxes that open the
  // project as this user keep the former password.
  void SetPassword(StringView path, StringView name, StringView password) const {
    Call(u"SetPassword", path, name, password);
  }
  // The new discussion's number.
  std::int32_t AddDiscussion(StringView path, StringView title) const {
    return Call(u"AddDiscussion", path, title).ToInt32();
  }
  // Stores a reply of the user, and returns its number. Line ends become CR LF, and those at the end of the
  // text are removed. The subject is the discussion's title. Raises 380 for a text that is blank, too long,
  // or holds a NUL. Its notices are due, by the route; none are without a route.
  std::int32_t AddReply(StringView path, std::int32_t discussion, StringView user, StringView text,
                        const std::optional<NoticeRoute>& route) const {
    return Call(u"AddReply", path, discussion, user, text, route ? route->ToValue() : Value()).ToInt32();
  }
  // The project without the replies.
  ProjectDescription Outline(StringView path) const {
    return ProjectDescription::FromValue(Call(u"Outline", path));
  }
  // The next replies of a discussion after the one of this number: up to 100, and only one more after a
  // million characters. Empty after the last one, and for a discussion that doesn't exist.
  std::vector<DescribedReply> RepliesAfter(StringView path, std::int32_t discussion,
                                           std::int32_t after) const;
  // Calls take with each reply of a discussion, in order. Only the replies of one RepliesAfter are in memory.
  template <class Take>
  void EachReply(StringView path, std::int32_t discussion, Take take) const {
    std::vector<DescribedReply> replies;
    do {
      replies = RepliesAfter(path, discussion, replies.empty() ? 0 : replies.back().Number);
      for (const DescribedReply& reply : replies) take(reply);
    } while (!replies.empty());
  }
  // The whole project in memory. A program that shows it reads the replies with EachReply.
  ProjectDescription Describe(StringView path) const;
};

}  // namespace Platform
