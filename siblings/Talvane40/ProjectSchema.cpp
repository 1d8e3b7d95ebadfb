#include "siblings/Talvane40/ProjectSchema.h"

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

void RequireCurrentTables(Runtime::Database& database) {
  if (database.Number("PRAGMA application_id") != kApplicationId)
    Refuse(database, TextNumber::kProjectDatabaseForeign);
  if (VersionOf(database) == kVersion) return;
  try {
    Runtime::Transaction transaction(database);
    UpgradeFrom(database, VersionOf(database));  // again: another process may have upgraded it
    transaction.Commit();
  } catch (const Failure& failure) {
    Refuse(database, TextNumber::kProjectDatabaseNotUpgraded, failure.Description());
  }
}

}  // namespace Talvane40
