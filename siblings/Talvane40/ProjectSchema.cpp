#include "siblings/Talvane40/ProjectSchema.h"

#include <filesystem>
#include <iterator>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"

namespace Talvane40 {
namespace {

using namespace Platform;

// Each element leads from the version before it to the next one; the first one fills an empty database.
// Former elements are never changed: a database in use has passed through them.
constexpr const char* kVersions[] = {
    // The triggers increment users_version, by which a program detects that its copy of the users is stale.
    R"(
  PRAGMA application_id = 1414943540;
  PRAGMA user_version = 1;
  CREATE TABLE project (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    name TEXT NOT NULL,
    users_version INTEGER NOT NULL DEFAULT 0) STRICT;
  CREATE TABLE users (
    key INTEGER PRIMARY KEY AUTOINCREMENT,
    name TEXT NOT NULL,
    folded_name TEXT NOT NULL UNIQUE,
    email TEXT NOT NULL,
    mail_accepted INTEGER NOT NULL CHECK (mail_accepted IN (0, 1)),
    role TEXT NOT NULL CHECK (role IN ('owner', 'member')),
    password_hash TEXT) STRICT;
  CREATE TABLE discussions (
    number INTEGER PRIMARY KEY AUTOINCREMENT,
    title TEXT NOT NULL) STRICT;
  CREATE TABLE replies (
    id INTEGER PRIMARY KEY,
    discussion INTEGER NOT NULL REFERENCES discussions (number),
    subject TEXT NOT NULL,
    body TEXT NOT NULL,
    user INTEGER NOT NULL REFERENCES users (key),
    at TEXT NOT NULL) STRICT;
  CREATE INDEX replies_of_discussion ON replies (discussion);
  CREATE TRIGGER user_added AFTER INSERT ON users
    BEGIN UPDATE project SET users_version = users_version + 1; END;
  CREATE TRIGGER user_changed AFTER UPDATE ON users
    BEGIN UPDATE project SET users_version = users_version + 1; END;
  CREATE TRIGGER user_removed AFTER DELETE ON users
    BEGIN UPDATE project SET users_version = users_version + 1; END;
)",
    // The mails whose replies are stored, so that a mail that comes again is recognised.
    R"(
  PRAGMA user_version = 2;
  CREATE TABLE mails (
    key TEXT PRIMARY KEY,
    reply INTEGER NOT NULL REFERENCES replies (id)) STRICT, WITHOUT ROWID;
)",
    // A user who was removed stays as the author of replies.
    R"(
  PRAGMA user_version = 3;
  ALTER TABLE users ADD COLUMN language TEXT NOT NULL DEFAULT '';
  ALTER TABLE users ADD COLUMN removed INTEGER NOT NULL DEFAULT 0 CHECK (removed IN (0, 1));
)",
    // What is sent by mail. Times are milliseconds since 1970. A sender is the system user who alone may send
    // a notice, or -1 for any. Notices that are ready have next_attempt 0, so that the first one is found at
    // once among any number of others. To add a column to replies would read all of a large database.
    R"(
  PRAGMA user_version = 4;
  ALTER TABLE users ADD COLUMN mail_since INTEGER NOT NULL DEFAULT 0;
  UPDATE users SET mail_since = (SELECT coalesce(max(id), 0) FROM replies);
  CREATE TABLE notice_key (
    id INTEGER PRIMARY KEY CHECK (id = 1),
    hmac_key BLOB NOT NULL) STRICT;
  INSERT INTO notice_key VALUES (1, randomblob(32));
  CREATE TABLE due_replies (
    reply INTEGER PRIMARY KEY REFERENCES replies (id),
    sender INTEGER NOT NULL DEFAULT -1,
    after_user INTEGER NOT NULL DEFAULT 0) STRICT;
  CREATE TABLE quiet_replies (reply INTEGER PRIMARY KEY REFERENCES replies (id)) STRICT;
  CREATE TABLE routes (
    reply INTEGER PRIMARY KEY REFERENCES replies (id),
    transport INTEGER NOT NULL,
    server TEXT NOT NULL,
    address TEXT NOT NULL,
    real_name TEXT NOT NULL,
    uid INTEGER NOT NULL) STRICT;
  CREATE TABLE answers (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    user INTEGER NOT NULL REFERENCES users (key),
    mail TEXT NOT NULL UNIQUE,
    message_id TEXT NOT NULL,
    subject TEXT NOT NULL,
    text TEXT NOT NULL,
    reason TEXT NOT NULL,
    at INTEGER NOT NULL,
    waits INTEGER NOT NULL DEFAULT 1 CHECK (waits IN (0, 1))) STRICT;
  CREATE INDEX answers_of_user ON answers (user, at);
  CREATE TABLE notices (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    reply INTEGER REFERENCES replies (id),
    answer INTEGER,
    user INTEGER NOT NULL REFERENCES users (key),
    sender INTEGER NOT NULL DEFAULT -1,
    attempts INTEGER NOT NULL DEFAULT 0,
    first_attempt INTEGER,
    next_attempt INTEGER NOT NULL DEFAULT 0,
    waiting_since INTEGER NOT NULL,
    reason TEXT NOT NULL DEFAULT '',
    CHECK ((reply IS NULL) <> (answer IS NULL))) STRICT;
  CREATE INDEX notices_ready ON notices (sender, reply, user) WHERE next_attempt = 0;
  CREATE INDEX notices_deferred ON notices (sender, next_attempt) WHERE next_attempt > 0;
  CREATE INDEX notices_waiting ON notices (waiting_since);
  CREATE TRIGGER answer_ended AFTER DELETE ON notices WHEN OLD.answer IS NOT NULL
    BEGIN UPDATE answers SET waits = 0, text = '' WHERE id = OLD.answer; END;
  CREATE TABLE ended_notices (
    id INTEGER PRIMARY KEY,
    at INTEGER NOT NULL,
    address TEXT NOT NULL,
    reason TEXT NOT NULL,
    notices INTEGER NOT NULL DEFAULT 1) STRICT;
  CREATE INDEX ended_notices_by_time ON ended_notices (at);
  CREATE TRIGGER notice_ended AFTER INSERT ON ended_notices
    BEGIN DELETE FROM ended_notices WHERE at < NEW.at - 2592000000; END;
  CREATE TABLE bounces (
    user INTEGER NOT NULL REFERENCES users (key),
    notice TEXT NOT NULL,
    at INTEGER NOT NULL,
    reason TEXT NOT NULL,
    PRIMARY KEY (user, notice)) STRICT, WITHOUT ROWID;
  CREATE TABLE notices_given (at INTEGER NOT NULL) STRICT;
  CREATE INDEX notices_given_by_time ON notices_given (at);
  CREATE INDEX users_with_mail ON users (key) WHERE mail_accepted = 1 AND removed = 0;
  CREATE VIEW recipients AS SELECT key, name, email, role, language FROM users
    WHERE mail_accepted = 1 AND removed = 0 AND email <> ''
      AND (SELECT count(*) FROM bounces WHERE user = key) < 3;
  CREATE TRIGGER mail_set AFTER UPDATE OF email, mail_accepted ON users
    BEGIN
      DELETE FROM bounces WHERE user = NEW.key;
      UPDATE users SET mail_since = (SELECT coalesce(max(id), 0) FROM replies) WHERE key = NEW.key;
    END;
)",
    // Notices are due for a reply of a former program, too, which had the database open when it was upgraded.
    R"(
  PRAGMA user_version = 5;
  CREATE TRIGGER reply_added AFTER INSERT ON replies
    BEGIN INSERT INTO due_replies (reply) VALUES (NEW.id); END;
)"};
constexpr std::int64_t kVersion = std::size(kVersions);
constexpr std::int64_t kApplicationId = 1414943540;  // "TVS4"

[[noreturn]] void Refuse(const Runtime::Database& database, std::int32_t text, StringView reason = {}) {
  throw Failure(FailureNumber::DeviceFailed, u"Talvane40",
                Runtime::TextOf(text, FromUtf8(database.File()), reason));
}

// The version of a project's database that this program can use or upgrade.
std::int64_t VersionOf(Runtime::Database& database) {
  const std::int64_t version = database.Number("PRAGMA user_version");
  if (version > kVersion) Refuse(database, TextNumber::kProjectDatabaseTooNew);
  if (version < 1) Refuse(database, TextNumber::kProjectDatabaseDamaged);
  return version;
}

void UpgradeFrom(Runtime::Database& database, std::int64_t version) {
  for (; version < kVersion; ++version) database.Run(kVersions[version]);
}

}  // namespace

void CreateTables(Runtime::Database& database) {
  UpgradeFrom(database, 0);
}

const std::string& ExistingDatabase(const std::string& file) {
  const auto refuse = [&](std::int32_t text) {
    throw Failure(FailureNumber::DeviceFailed, u"Talvane40", Runtime::TextOf(text, FromUtf8(file)));
  };
  Runtime::Database::RequireItsLog(file);
  if (!std::filesystem::exists(file)) refuse(TextNumber::kProjectDatabaseMissing);
  if (!std::filesystem::is_regular_file(file)) refuse(TextNumber::kProjectDatabaseNoFile);
  return file;
}

Runtime::Database& WithCurrentTables(Runtime::Database& database) {
  if (database.Number("PRAGMA application_id") != kApplicationId)
    Refuse(database, TextNumber::kProjectDatabaseForeign);
  if (VersionOf(database) == kVersion) return database;
  try {
    Runtime::Transaction transaction(database);
    UpgradeFrom(database, VersionOf(database));  // again: another process may have upgraded it
    transaction.Commit();
  } catch (const Failure& failure) {
    Refuse(database, TextNumber::kProjectDatabaseNotUpgraded, failure.Description());
  }
  return database;
}

}  // namespace Talvane40
