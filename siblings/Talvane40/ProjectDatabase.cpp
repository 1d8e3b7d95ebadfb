#include "siblings/Talvane40/ProjectDatabase.h"

#include "platform/CheckedArithmetic.h"
#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"
#include "siblings/Talvane40/ProjectSchema.h"

namespace Talvane40 {
namespace {

[[noreturn]] void Refuse(std::int32_t number, std::int32_t text, StringView name) {
  throw Failure(number, u"Talvane40", Runtime::TextOf(text, name));
}

// One step of RepliesAfter.
constexpr std::size_t kMostReplies = 100, kManyCharacters = 1'000'000;

// The key of the row that was inserted last.
std::int32_t NewNumber(Runtime::Database& database) {
  return Narrow<std::int32_t>(database.Number("SELECT last_insert_rowid()"));
}

std::int32_t NumberAt(const Runtime::Rows& row, int column) {
  return Narrow<std::int32_t>(row.Integer(column));
}

String TextAt(const Runtime::Rows& row, int column) {
  return FromUtf8(row.Text(column));
}

}  // namespace

void ProjectDatabase::Create(const std::string& file, StringView name, const DescribedUser& owner,
                             StringView passwordHash) {
  Runtime::Database database(file);
  Runtime::Transaction transaction(database);
  CreateTables(database);
  Runtime::Statement(database, "INSERT INTO project (id, name) VALUES (1, ?)").Run({ToUtf8(name)});
  InsertUser(database, owner, "owner", passwordHash);
  transaction.Commit();
  database.Run("PRAGMA journal_mode=WAL");
}

ProjectDatabase::ProjectDatabase(const std::string& file)
    : database_(ExistingDatabase(file)),
      facts_(WithCurrentTables(database_)),
      findLogon_(database_, "SELECT key, password_hash FROM users WHERE folded_name = ?"),
      role_(database_, "SELECT role FROM users WHERE key = ?"),
      mailAccepted_(database_, "SELECT mail_accepted FROM users WHERE key = ?"),
      usersVersion_(database_, "SELECT users_version FROM project"),
      discussion_(database_, "SELECT 1 FROM discussions WHERE number = ?"),
      addReply_(database_,
                "INSERT INTO replies (discussion, subject, body, user, at) "
                "VALUES (?, ?, ?, ?, strftime('%Y-%m-%dT%H:%M:%fZ', 'now'))"),
      mail_(database_, "SELECT EXISTS (SELECT 1 FROM mails WHERE key = ?), users_version FROM project"),
      addMail_(database_, "INSERT INTO mails (key, reply) VALUES (?, last_insert_rowid())") {
  database_.Run("PRAGMA foreign_keys=ON");
}

std::optional<Logon> ProjectDatabase::FindLogon(StringView userName) {
  auto row = findLogon_({ToUtf8(FoldCase(userName))});
  if (!row.Next()) return std::nullopt;
  Logon logon{.UserKey = NumberAt(row, 0), .PasswordHash = {}};
  if (row.Type(1) != Runtime::ColumnType::Null) logon.PasswordHash = TextAt(row, 1);
  return logon;
}

bool ProjectDatabase::IsOwner(std::int32_t userKey) {
  auto row = role_({userKey});
  return row.Next() && row.Text(0) == "owner";
}

std::optional<bool> ProjectDatabase::IsMailAccepted(std::int32_t userKey) {
  auto& known = facts_.Valid().MailAccepted;
  if (const auto found = known.find(userKey); found != known.end()) return found->second;
  auto row = mailAccepted_({userKey});
  return known[userKey] = row.Next() ? std::optional(row.Integer(0) != 0) : std::nullopt;
}

std::int64_t ProjectDatabase::UsersVersion() {
  auto& known = facts_.Valid().UsersVersion;
  if (known) return *known;
  auto row = usersVersion_({});
  known = row.Next() ? row.Integer(0) : 0;
  return *known;
}

// One statement reads users and version, so that they match.
std::vector<DescribedUser> ProjectDatabase::Users(std::int64_t& version) {
  std::vector<DescribedUser> users;
  Runtime::Statement statement(database_,
                               "SELECT key, name, email, mail_accepted, role = 'owner', language, "
                               "(SELECT users_version FROM project), "
                               "(SELECT count(*) FROM bounces WHERE user = key) >= 3 "
                               "FROM users WHERE removed = 0 ORDER BY key");
  for (auto row = statement({}); row.Next();) {
    users.push_back({NumberAt(row, 0), TextAt(row, 1), TextAt(row, 2), row.Integer(3) != 0,
                     row.Integer(4) != 0, TextAt(row, 5), row.Integer(7) != 0});
    version = row.Integer(6);
  }
  return users;
}

bool ProjectDatabase::HasDiscussion(std::int32_t number) {
  auto& known = facts_.Valid().HasDiscussion;
  if (const auto found = known.find(number); found != known.end()) return found->second;
  return known[number] = discussion_({number}).Next();
}

std::vector<DescribedDiscussion> ProjectDatabase::Discussions() {
  std::vector<DescribedDiscussion> discussions;
  Runtime::Statement select(database_, "SELECT number, title FROM discussions ORDER BY number");
  for (auto row = select({}); row.Next();) discussions.push_back({NumberAt(row, 0), TextAt(row, 1), {}});
  return discussions;
}

std::optional<String> ProjectDatabase::TitleOf(std::int32_t discussion) {
  Runtime::Statement select(database_, "SELECT title FROM discussions WHERE number = ?");
  auto row = select({discussion});
  if (!row.Next()) return std::nullopt;
  return TextAt(row, 0);
}

std::vector<DescribedReply> ProjectDatabase::RepliesAfter(std::int32_t discussion, std::int32_t after) {
  std::vector<DescribedReply> replies;
  std::size_t characters = 0;
  Runtime::Statement select(database_,
                            "SELECT subject, body, users.name, at, id, user, users.email FROM replies "
                            "JOIN users ON users.key = user WHERE discussion = ? AND id > ? ORDER BY id");
  for (auto row = select({discussion, after});
       replies.size() < kMostReplies && characters < kManyCharacters && row.Next();) {
    replies.push_back({TextAt(row, 0), TextAt(row, 1), TextAt(row, 2), TextAt(row, 3), NumberAt(row, 4),
                       NumberAt(row, 5), TextAt(row, 6)});
    characters += replies.back().Body.size();
  }
  return replies;
}

// Reads the version of the users with it, which each mail needs: one transaction for both.
bool ProjectDatabase::IsMailStored(std::string_view mailKey) {
  auto& version = facts_.Valid().UsersVersion;
  auto row = mail_({mailKey});
  if (!row.Next()) return false;
  version = row.Integer(1);
  return row.Integer(0) != 0;
}

bool ProjectDatabase::AddReply(std::int32_t discussion, StringView subject, StringView body,
                               std::int32_t userKey, std::optional<std::string_view> mailKey,
                               Runtime::Durability durability) {
  Runtime::Transaction transaction(database_, durability);
  facts_.BeginOwnChange();
  if (mailKey && IsMailStored(*mailKey)) return false;
  addReply_.Run(
      {discussion, ToUtf8(subject), ToUtf8(body), userKey});  // a trigger adds its row in due_replies
  if (mailKey) addMail_.Run({*mailKey});
  transaction.Commit();
  facts_.EndOwnChange();
  return true;
}

void ProjectDatabase::InsertUser(Runtime::Database& database, const DescribedUser& user,
                                 std::string_view role, std::optional<StringView> passwordHash) {
  const std::string hash = ToUtf8(passwordHash.value_or(StringView()));
  Runtime::Statement(
      database,
      "INSERT INTO users (name, folded_name, email, mail_accepted, role, password_hash, mail_since) "
      "VALUES (?, ?, ?, ?, ?, ?, (SELECT coalesce(max(id), 0) FROM replies))")
      .Run({ToUtf8(user.Name), ToUtf8(FoldCase(user.Name)), ToUtf8(user.Address),
            std::int64_t{user.MailAccepted}, role,
            passwordHash ? Runtime::Parameter(std::string_view(hash)) : Runtime::Parameter(nullptr)});
}

std::int32_t ProjectDatabase::AddUser(const DescribedUser& user) {
  Runtime::Transaction transaction(database_);
  RequireFreeName(user.Name);
  InsertUser(database_, user, "member", std::nullopt);
  const std::int32_t key = NewNumber(database_);
  transaction.Commit();
  return key;
}

std::int32_t ProjectDatabase::KeyOf(StringView name) {
  const auto logon = FindLogon(name);
  if (!logon) Refuse(FailureNumber::PathNotFound, TextNumber::kUserUnknown, name);
  return logon->UserKey;
}

void ProjectDatabase::RequireFreeName(StringView name, std::int32_t key) {
  const auto logon = FindLogon(name);
  if (logon && logon->UserKey != key) Refuse(FailureNumber::AlreadyExists, TextNumber::kUserExists, name);
}

void ProjectDatabase::ChangeUser(StringView name, const UserChange& change) {
  Runtime::Transaction transaction(database_);
  const std::int32_t key = KeyOf(name);
  if (change.Name) {
    RequireFreeName(*change.Name, key);
    Runtime::Statement(database_, "UPDATE users SET name = ?, folded_name = ? WHERE key = ?")
        .Run({ToUtf8(*change.Name), ToUtf8(FoldCase(*change.Name)), key});
  }
  if (change.Address)
    Runtime::Statement(database_, "UPDATE users SET email = ? WHERE key = ?")
        .Run({ToUtf8(*change.Address), key});
  if (change.MailAccepted)
    Runtime::Statement(database_, "UPDATE users SET mail_accepted = ? WHERE key = ?")
        .Run({std::int64_t{*change.MailAccepted}, key});
  if (change.Language)
    Runtime::Statement(database_, "UPDATE users SET language = ? WHERE key = ?")
        .Run({ToUtf8(*change.Language), key});
  Runtime::Statement check(database_, "SELECT 1 FROM users WHERE key = ? AND mail_accepted AND email = ''");
  if (check({key}).Next()) Refuse(FailureNumber::RefusedInput, TextNumber::kNoAddressForMail, name);
  transaction.Commit();
}

// The folded name of a user who was removed ends with a line end and the key. No name holds a line end, so
// that the name is free for another user.
void ProjectDatabase::RemoveUser(StringView name) {
  Runtime::Transaction transaction(database_);
  const std::int32_t key = KeyOf(name);
  if (IsOwner(key)) Refuse(FailureNumber::RefusedInput, TextNumber::kOwnerNotRemoved, name);
  Runtime::Statement(database_,
                     "UPDATE users SET removed = 1, mail_accepted = 0, password_hash = NULL, "
                     "folded_name = folded_name || char(10) || key WHERE key = ?")
      .Run({key});
  transaction.Commit();
}

void ProjectDatabase::SetPasswordHash(StringView name, StringView hash) {
  Runtime::Transaction transaction(database_);
  Runtime::Statement(database_, "UPDATE users SET password_hash = ? WHERE key = ?")
      .Run({ToUtf8(hash), KeyOf(name)});
  transaction.Commit();
}

std::int32_t ProjectDatabase::AddReplyOf(StringView user, std::int32_t discussion, StringView body,
                                         const std::optional<NoticeRoute>& route) {
  Runtime::Transaction transaction(database_);
  const std::int32_t key = KeyOf(user);
  const auto title = TitleOf(discussion);
  if (!title)
    Refuse(FailureNumber::PathNotFound, TextNumber::kDiscussionUnknown, FromUtf8(std::to_string(discussion)));
  addReply_.Run({discussion, ToUtf8(*title), ToUtf8(body), key});
  const std::int32_t number = NewNumber(database_);
  if (route) {
    AddRoute(number, *route);
  } else {
    Runtime::Statement(database_, "DELETE FROM due_replies WHERE reply = ?").Run({number});
    Runtime::Statement(database_, "INSERT INTO quiet_replies (reply) VALUES (?)").Run({number});
  }
  transaction.Commit();
  return number;
}

// A profile belongs to one system user, who alone can send by it.
void ProjectDatabase::AddRoute(std::int32_t reply, const NoticeRoute& route) {
  if (route.Transport == TransportId::kMapi)
    Runtime::Statement(database_, "UPDATE due_replies SET sender = ? WHERE reply = ?")
        .Run({route.Uid, reply});
  if (route.Transport == 0) return;
  Runtime::Statement(database_,
                     "INSERT INTO routes (reply, transport, server, address, real_name, uid) "
                     "VALUES (?, ?, ?, ?, ?, ?)")
      .Run({reply, route.Transport, ToUtf8(route.Server), ToUtf8(route.Address), ToUtf8(route.RealName),
            route.Uid});
}

std::int32_t ProjectDatabase::AddDiscussion(StringView title) {
  Runtime::Transaction transaction(database_);
  Runtime::Statement(database_, "INSERT INTO discussions (title) VALUES (?)").Run({ToUtf8(title)});
  const std::int32_t number = NewNumber(database_);
  transaction.Commit();
  return number;
}

}  // namespace Talvane40
