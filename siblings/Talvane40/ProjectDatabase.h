// ProjectDatabase: the users, discussions and replies of one project, in a SQLite file.
//
// One thread at a time; several processes may use the same file. Every change is one durable transaction.
// Every operation raises 57 with the reason if the database can't be read or written.
#pragma once

#include <optional>
#include <vector>

#include "platform/contracts/ProjectAdministration.h"
#include "runtime/Database.h"
#include "siblings/Talvane40/SteadyFacts.h"

namespace Talvane40 {

using namespace Platform;

struct Logon {
  std::int32_t UserKey = 0;
  std::optional<String> PasswordHash;  // without one the user can't open the project
};

class ProjectDatabase {
 public:
  // Creates the tables of a project and its owner in an empty file.
  static void Create(const std::string& file, StringView name, const DescribedUser& owner,
                     StringView passwordHash);

  // Opens an existing file, and upgrades one of a former version. Raises 57 if it is missing, no project
  // database, of a newer version, or can't be upgraded.
  explicit ProjectDatabase(const std::string& file);

  // The user of a name who was not removed. The name is compared without regard to case; nothing if there is
  // none.
  std::optional<Logon> FindLogon(StringView userName);

  bool IsOwner(std::int32_t userKey);

  // True if mail of the user is accepted; nothing if there is no such user.
  std::optional<bool> IsMailAccepted(std::int32_t userKey);

  // A number that is incremented by every change of the users, in any process.
  std::int64_t UsersVersion();

  // All users who were not removed, ordered by key, and their UsersVersion.
  std::vector<DescribedUser> Users(std::int64_t& version);

  bool HasDiscussion(std::int32_t number);

  // All discussions, without their replies.
  std::vector<DescribedDiscussion> Discussions();

  // The title of a discussion; nothing if there is none of the number.
  std::optional<String> TitleOf(std::int32_t discussion);

  // As ProjectAdministration::RepliesAfter.
  std::vector<DescribedReply> RepliesAfter(std::int32_t discussion, std::int32_t after);

  // True if a reply was stored with this key of a mail.
  bool IsMailStored(std::string_view mailKey);

  // Stores a reply together with the key of its mail, if it has one; its notices are due. False, and nothing
  // is changed, if a reply was stored with this key before, by any process.
  bool AddReply(std::int32_t discussion, StringView subject, StringView body, std::int32_t userKey,
                std::optional<std::string_view> mailKey, Runtime::Durability durability);

  // To be called after another ProjectDatabase of this thread has added one reply to the same file since
  // users or discussions were read by this one: if nobody else has changed anything, they needn't be read
  // again.
  void ReplyWasAdded() { facts_.EndOwnChange(); }

  // As Runtime::Database::SyncLog.
  void SyncLog() { database_.SyncLog(); }

  const std::string& File() const { return database_.File(); }

  // Adds a user without a password. Returns the key. Raises 58 if there is a user of that name.
  std::int32_t AddUser(const DescribedUser& user);

  // Each of these raises 76 if there is no user of the name.
  // Raises 58 if another user has the new name, and 380 if mail would be accepted without an address.
  void ChangeUser(StringView name, const UserChange& change);
  // Raises 380 for the owner.
  void RemoveUser(StringView name);
  void SetPasswordHash(StringView name, StringView hash);

  // Returns the number of the new reply, whose notices are due if there is a route. Raises 76 if there is no
  // such discussion or user.
  std::int32_t AddReplyOf(StringView user, std::int32_t discussion, StringView body,
                          const std::optional<NoticeRoute>& route);

  // Returns the number of the new discussion.
  std::int32_t AddDiscussion(StringView title);

 private:
  static void InsertUser(Runtime::Database& database, const DescribedUser& user, std::string_view role,
                         std::optional<StringView> passwordHash);

  // Raises 76 if there is no such user.
  std::int32_t KeyOf(StringView name);
  // Raises 58 if a user other than the one of the key has the name.
  void RequireFreeName(StringView name, std::int32_t key = 0);

  // Makes the notices of a reply due, for the caller's transaction that has just stored the reply.
  void AddRoute(std::int32_t reply, const NoticeRoute& route);

  Runtime::Database database_;
  SteadyFacts facts_;
  Runtime::Statement findLogon_, role_, mailAccepted_, usersVersion_, discussion_, addReply_, mail_, addMail_;
};

}  // namespace Talvane40
