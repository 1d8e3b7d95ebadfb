#include "runtime/RegistryFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cmath>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/Folders.h"
#include "runtime/StoreFolder.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

std::atomic<std::int64_t> openings = 0;

constexpr std::int64_t kApplicationId = 0x54765267;  // "TvRg"
constexpr std::int64_t kFormat = 1;                  // version of the tables below

// The cache is emptied when it has reached one of these sizes.
constexpr std::size_t kMostKnownKeys = 256;
constexpr std::size_t kMostKnownValues = 64;  // of one key

// A key's path is in folded case, for comparison; its name keeps the spelling. Key 0 is the root.
constexpr const char* kTables = R"(
  CREATE TABLE key(id INTEGER PRIMARY KEY, parent INTEGER REFERENCES key(id), path TEXT NOT NULL UNIQUE,
                   name TEXT NOT NULL);
  CREATE INDEX key_of_parent ON key(parent, path, name);
  CREATE TABLE value(key INTEGER NOT NULL REFERENCES key(id), folded TEXT NOT NULL, name TEXT NOT NULL,
                     type INTEGER NOT NULL, content, PRIMARY KEY(key, folded)) WITHOUT ROWID;
  INSERT INTO key VALUES(0, NULL, '', '');
  PRAGMA application_id=1417040487;
  PRAGMA user_version=1;
)";

[[noreturn]] void Refuse(const std::string& file, std::int32_t text, StringView argument = {}) {
  throw Failure(FailureNumber::DeviceFailed, u"Runtime.RegistryStore",
                TextOf(text, FromUtf8(file), argument));
}

const std::string& RequireFile(const std::string& file) {
  Database::RequireItsLog(file);
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) Refuse(file, TextNumber::kNoRegistry, FromUtf8(SystemReason(errno)));
  if (!S_ISREG(status.st_mode)) Refuse(file, TextNumber::kRegistryNoFile);
  RequireTrusted(FolderOfPath(file));
  RequireTrusted(file, status);
  return file;
}

bool IsUnfinished(Database& database) {
  return database.Number("PRAGMA application_id") == 0 &&
         database.Number("SELECT count(*) FROM sqlite_schema") == 0;
}

void RequireFormat(Database& database) {
  if (IsUnfinished(database)) Refuse(database.File(), TextNumber::kRegistryEmpty);
  if (database.Number("PRAGMA application_id") != kApplicationId)
    Refuse(database.File(), TextNumber::kRegistryOfAnotherKind);
  if (const auto format = database.Number("PRAGMA user_version"); format != kFormat)
    Refuse(database.File(), TextNumber::kRegistryFormatUnknown, FromUtf8(std::to_string(format)));
}

// Returns the database after checking its format.
Database& Opened(Database& database) {
  RequireFormat(database);
  return database;
}

std::string Folded(StringView text) {
  return ToUtf8(FoldCase(text));
}

// True if every name on the path is a valid key name.
bool IsPath(StringView path) {
  while (!path.empty()) {
    const auto end = path.find(u'\\');
    if (!RegistryStore::IsKeyName(path.substr(0, end))) return false;
    if (end == StringView::npos) return true;
    path.remove_prefix(end + 1);
    if (path.empty()) return false;
  }
  return true;
}

Value ContentOf(const Rows& row, int column) {
  switch (row.Type(column)) {
    case ColumnType::Integer: {
      const std::int64_t number = row.Integer(column);
      const auto narrow = static_cast<std::int32_t>(number);
      return narrow == number ? Value(narrow) : Value(static_cast<double>(number));
    }
    case ColumnType::Real:
      return row.Real(column);
    case ColumnType::Text:
      return FromUtf8(row.Text(column));
    case ColumnType::Blob: {
      const auto bytes = row.Blob(column);
      return Bytes(bytes.begin(), bytes.end());
    }
    case ColumnType::Null:
      break;
  }
  return {};
}

}  // namespace

thread_local int RegistryScope::depth = 0;

RegistryFile::RegistryFile(const std::string& file)
    : database_(RequireFile(file)),
      opening_(++openings),
      watch_(Opened(database_)),
      othersWrites_(database_, "PRAGMA data_version"),
      find_(database_, "SELECT id FROM key WHERE path=?"),
      name_(database_, "SELECT name FROM key WHERE path=?"),
      addKey_(database_, "INSERT INTO key(parent, path, name) VALUES(?, ?, ?) RETURNING id"),
      subKeys_(database_, "SELECT name FROM key WHERE parent=? ORDER BY path"),
      deleteValues_(
          database_,
          "DELETE FROM value WHERE key IN (SELECT id FROM key WHERE path=?1 OR (path>?2 AND path<?3))"),
      deleteKeys_(database_, "DELETE FROM key WHERE path=?1 OR (path>?2 AND path<?3)"),
      read_(database_,
            "SELECT value.type, value.content FROM key JOIN value ON value.key=key.id "
            "WHERE key.path=? AND value.folded=?"),
      write_(database_,
             "INSERT INTO value VALUES(?, ?, ?, ?, ?) "
             "ON CONFLICT(key, folded) DO UPDATE SET type=excluded.type, content=excluded.content") {
  struct stat status {};
  stat(file.c_str(), &status);
  device_ = status.st_dev;
  inode_ = status.st_ino;
  mode_ = status.st_mode;
  owner_ = status.st_uid;
}

void RegistryFile::Create(const std::string& file) {
  Database::RequireItsLog(file);
  // Created here and not by SQLite, so that no other user can ever read it. An existing file isn't opened:
  // closing it would release the POSIX locks that this process may have on it.
  const int made = open(file.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
  if (made >= 0) close(made);
  if (made < 0 && errno != EEXIST) Refuse(file, TextNumber::kNotCreated, FromUtf8(SystemReason(errno)));
  Database database(RequireFile(file));
  if (IsUnfinished(database)) {
    database.Run("PRAGMA journal_mode=WAL");
    Transaction transaction(database);
    database.Run(kTables);
    transaction.Commit();
  }
  RequireFormat(database);
}

bool RegistryFile::IsStillInPlace(RegistryUse use) {
  if (use == RegistryUse::Read && RegistryScope::IsOpen()) {
    const auto now = std::chrono::steady_clock::now();
    if (now - lookedAt_ < RegistryScope::kLookInterval) return true;
    lookedAt_ = now;
  }
  struct stat status {};
  return stat(database_.File().c_str(), &status) == 0 && status.st_dev == device_ &&
         status.st_ino == inode_ && status.st_mode == mode_ && status.st_uid == owner_;
}

RegistryState RegistryFile::State() {
  RegistryState state{opening_, watch_.Now(), 0, database_.ChangedRows()};
  if (state.Content) return state;
  Rows rows = othersWrites_({});
  rows.Next();
  state.OthersWrites = rows.Integer(0);
  return state;
}

std::optional<std::int64_t> RegistryFile::Find(StringView path) {
  if (!IsPath(path)) return {};
  Rows rows = find_({Folded(path)});
  if (!rows.Next()) return {};
  return rows.Integer(0);
}

std::optional<String> RegistryFile::NameInStore(StringView path) {
  if (!IsPath(path)) return {};
  Rows rows = name_({Folded(path)});
  if (!rows.Next()) return {};
  return FromUtf8(rows.Text(0));
}

RegistryFile::KnownKey& RegistryFile::Known(StringView path) {
  if (const RegistryState state = State(); state != knownAt_ || known_.size() == kMostKnownKeys) {
    known_.clear();
    knownAt_ = state;
  }
  auto key = known_.find(path);
  if (key == known_.end()) key = known_.emplace(path, KnownKey{NameInStore(path), {}}).first;
  return key->second;
}

bool RegistryFile::KeyExists(StringView path) {
  return Known(path).Name.has_value();
}

std::optional<String> RegistryFile::NameOf(StringView path) {
  return Known(path).Name;
}

std::optional<RegistryValue> RegistryFile::Read(StringView path, StringView name) {
  KnownKey& key = Known(path);
  if (!key.Name) return {};
  auto value = key.Values.find(name);
  if (value == key.Values.end()) {
    if (key.Values.size() == kMostKnownValues) key.Values.clear();
    value = key.Values.emplace(name, ReadFromStore(path, name)).first;
  }
  return value->second;
}

void RegistryFile::CreateKey(StringView path) {
  if (!IsPath(path))
    Raise(FailureNumber::InvalidArgument,
          u"this is no path of a registry key: a name in it is empty or too long");
  std::int64_t parent = 0;
  for (std::size_t end = 0; end < path.size(); ++end) {
    const std::size_t begin = end;
    end = std::min(path.find(u'\\', begin), path.size());
    if (const auto found = Find(path.substr(0, end))) {
      parent = *found;
      continue;
    }
    Rows rows = addKey_({parent, Folded(path.substr(0, end)), ToUtf8(path.substr(begin, end - begin))});
    rows.Next();
    parent = rows.Integer(0);
    rows.Next();
  }
}

std::vector<String> RegistryFile::SubKeys(StringView path) {
  std::vector<String> names;
  if (const auto key = Find(path)) {
    Rows rows = subKeys_({*key});
    while (rows.Next()) names.push_back(FromUtf8(rows.Text(0)));
  }
  return names;
}

bool RegistryFile::DeleteKey(StringView path) {
  if (path.empty()) Raise(FailureNumber::InvalidArgument, u"the root of the registry can't be deleted");
  if (!Find(path)) return false;
  // The paths below begin with this path and a backslash; "]" is the character after the backslash.
  const std::string folded = Folded(path);
  const std::string below = folded + "\\";
  const std::string behind = folded + "]";
  deleteValues_.Run({folded, below, behind});
  deleteKeys_.Run({folded, below, behind});
  return true;
}

std::optional<RegistryValue> RegistryFile::ReadFromStore(StringView path, StringView name) {
  Rows rows = read_({Folded(path), Folded(name)});
  if (!rows.Next()) return {};
  return RegistryValue{static_cast<std::int32_t>(rows.Integer(0)), ContentOf(rows, 1)};
}

bool RegistryFile::Write(StringView path, StringView name, const RegistryValue& value) {
  const auto key = Find(path);
  if (!key) return false;
  std::string text;
  Bytes bytes;
  Parameter content;
  switch (value.Type) {
    case 1:
      text = ToUtf8(value.Content.ToString());
      content = std::string_view(text);
      break;
    case 3:
      bytes = value.Content.ToBytes();
      content = std::span<const std::uint8_t>(bytes);
      break;
    case 4: {
      const double number = value.Content.ToDouble();
      const auto whole = static_cast<std::int64_t>(std::abs(number) < 9e15 ? number : 0);
      if (static_cast<double>(whole) == number)
        content = whole;
      else
        content = number;
      break;
    }
    default:
      Raise(FailureNumber::InvalidArgument,
            u"a registry value is of type 1 (string), 3 (bytes) or 4 (number)");
  }
  write_.Run({*key, Folded(name), ToUtf8(name), std::int64_t{value.Type}, content});
  return true;
}

}  // namespace Runtime
