// ProjectDatabase: the users, discussions and replies of one project, in a SQLite file.
//
// Used on one thread; several processes may have the same file open and write to it. Every operation that
// changes something is one durable transaction: afterwards it is done, or nothing is. What fails raises 57
// with the reason in words.
#pragma once

#include <optional>
#include <vector>

#include "platform/Text.h"
#include "runtime/Database.h"

namespace Talvane40 {

using namespace Platform;

struct User {
  std::int32_t Key = 0;
  String Name;
  String Address;
  bool MailAccepted = false;
};

struct Logon {
  std::int32_t UserKey = 0;
  std::optional<String> PasswordHash;  // none: that user can't open the project
};

struct Discussion {
  std::int32_t Number = 0;
  String Title;
};

struct Reply {
  String Subject;
  String Body;
  String UserName;
  String At;  // UTC, as "2024-05-01T09:30:00.000Z"
};

class ProjectDatabase {
 public:
  // Fills an empty file with the tables of a project and its owner.
  static void Create(const std::string& file, StringView name, const User& owner, StringView passwordHash);

  // Opens an existing file. Refuses one that is missing, no project's database, or of a newer version.
  explicit ProjectDatabase(const std::string& file);

  // User names match without regard to case.
  std::optional<Logon> FindLogon(StringView userName);

  bool IsOwner(std::int32_t userKey);

  // Whether a user's mail is accepted; nothing for a user that doesn't exist.
  std::optional<bool> IsMailAccepted(std::int32_t userKey);

  // Changes whenever a user does, whoever changed it.
  std::int64_t UsersVersion();

  // All users in the order of their keys, and the version that they have.
  std::vector<User> Users(std::int64_t& version);

  std::optional<String> DiscussionTitle(std::int32_t number);

  // The discussions in the order of their numbers; the replies of one in the order of their coming.
  std::vector<Discussion> Discussions();
  std::vector<Reply> Replies(std::int32_t discussion);

  void AddReply(std::int32_t discussion, StringView subject, StringView body, std::int32_t userKey);

  // Gives the new user's key. Raises 57 if there is a user of that name.
  std::int32_t AddUser(const User& user);

  // Gives the new discussion's number.
  std::int32_t AddDiscussion(StringView title);

 private:
  static void InsertUser(Runtime::Database& database, const User& user, std::string_view role,
                         std::optional<StringView> passwordHash);

  Runtime::Database database_;
  Runtime::Statement findLogon_, role_, mailAccepted_, usersVersion_, discussionTitle_, addReply_;
};

}  // namespace Talvane40
