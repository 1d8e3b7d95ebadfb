#include "runtime/Database.h"

#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

#include <cerrno>
#include <chrono>
#include <random>
#include <thread>
#include <utility>

#include "platform/Failure.h"
#include "platform/ReasonTexts.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Runtime {
namespace {

namespace TextNumber = Platform::TextNumber;

using Clock = std::chrono::steady_clock;

// After a wait for another connection, a pause follows each of this number of commits.
constexpr int kPausesForOthers = 64;
constexpr auto kPauseForOthers = std::chrono::milliseconds(2);

off_t SizeOf(const std::string& file) {
  struct stat status {};
  return stat(file.c_str(), &status) == 0 ? status.st_size : 0;
}

bool IsAtFileSizeLimit(const std::string& file) {
  rlimit limit{};
  if (getrlimit(RLIMIT_FSIZE, &limit) != 0) return false;
  // A page and its header in the log. SQLite truncates the file after a write beyond the limit.
  constexpr rlim_t kLargestWrite = 4096 + 24;
  const auto reaches = [&](const char* end) {
    return static_cast<rlim_t>(SizeOf(file + end)) + kLargestWrite > limit.rlim_cur;
  };
  return reaches("") || reaches("-wal") || reaches("-shm") || reaches("-journal");
}

bool IsDiskFull(const std::string& file) {
  struct statvfs disk {};
  return statvfs(file.c_str(), &disk) == 0 && disk.f_bavail == 0;
}

[[noreturn]] void RaiseReason(String reason) {
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Runtime.Database", std::move(reason));
}

}  // namespace

String Database::ReasonOf(int result) const {
  const String file = Platform::FromUtf8(file_);
  switch (result & 0xFF) {
    case SQLITE_NOTADB:
      return TextOf(TextNumber::kNoDatabase, file);
    case SQLITE_CORRUPT:
      return TextOf(TextNumber::kDatabaseDamaged, file);
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return TextOf(TextNumber::kDatabaseInUse, file);
    case SQLITE_READONLY:
      return TextOf(TextNumber::kDatabaseReadOnly, file);
    case SQLITE_FULL:
      return TextOf(TextNumber::kDatabaseDiskFull, file);
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
      return TextOf(TextNumber::kDatabaseNotOpened, file);
    default:
      break;
  }
  // SQLite doesn't pass on the errno. A file size near the limit shows that it was EFBIG.
  if ((result & 0xFF) == SQLITE_IOERR && IsAtFileSizeLimit(file_))
    return TextOf(TextNumber::kNotWritten, file, Platform::FromUtf8(SystemReason(EFBIG)));
  if ((result & 0xFF) == SQLITE_IOERR && IsDiskFull(file_)) return ReasonOf(SQLITE_FULL);
  // For unusual errors SQLite's English text is good enough to be searched for.
  const char* reason = handle_ ? sqlite3_errmsg(handle_) : sqlite3_errstr(result);
  return TextOf(TextNumber::kDatabaseFailed, file, Platform::FromUtf8(reason));
}

void Database::RequireItsLog(const std::string& file) {
  const std::string log = file + "-wal";
  if (SizeOf(file) == 0 && SizeOf(log) > 0)
    RaiseReason(
        TextOf(TextNumber::kDatabaseWithoutItsContent, Platform::FromUtf8(file), Platform::FromUtf8(log)));
}

Database::Database(std::string file, std::chrono::milliseconds timeout)
    : file_(std::move(file)), timeout_(timeout) {
  RequireItsLog(file_);
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
  const int result = sqlite3_open_v2(file_.c_str(), &handle_, flags, nullptr);
  if (result != SQLITE_OK) CloseAndRefuse(result);
  sqlite3_busy_handler(handle_, &Database::WaitForOthers, this);
  sqlite3_db_config(handle_, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  const char* const settings = "PRAGMA synchronous=FULL; PRAGMA cell_size_check=ON";
  int prepared = sqlite3_exec(handle_, settings, nullptr, nullptr, nullptr);
  // IMMEDIATE: a transaction that reads before it writes fails if another connection writes in between.
  if (prepared == SQLITE_OK) prepared = Prepare("BEGIN IMMEDIATE", begin_);
  if (prepared == SQLITE_OK) prepared = Prepare("COMMIT", commit_);
  if (prepared != SQLITE_OK) CloseAndRefuse(prepared);
}

void Database::CloseAndRefuse(int result) {
  String reason = ReasonOf(result);
  Close();
  RaiseReason(std::move(reason));
}

Database::~Database() {
  Close();
}

void Database::Close() {
  sqlite3_finalize(begin_);
  sqlite3_finalize(commit_);
  sqlite3_close(handle_);
}

int Database::Prepare(const char* sql, sqlite3_stmt*& statement) {
  return sqlite3_prepare_v3(handle_, sql, -1, SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
}

void Database::Refuse(int result) const {
  RaiseReason(ReasonOf(result));
}

// Waits are short and random: with long ones, a writer that commits in a loop gets the lock nearly always.
int Database::WaitForOthers(void* database, int attempt) {
  thread_local std::minstd_rand random{std::random_device{}()};
  thread_local Clock::time_point start;
  if (attempt == 0) start = Clock::now();
  auto& waiting = *static_cast<Database*>(database);
  if (Clock::now() - start > waiting.timeout_) return 0;
  waiting.pausesLeft_ = kPausesForOthers;
  std::this_thread::sleep_for(std::chrono::microseconds(std::uniform_int_distribution(100, 1500)(random)));
  return 1;
}

void Database::PauseAfterCommit() {
  if (pausesLeft_ == 0) return;
  --pausesLeft_;
  std::this_thread::sleep_for(kPauseForOthers);
}

void Database::Run(const char* sql) {
  const int result = sqlite3_exec(handle_, sql, nullptr, nullptr, nullptr);
  if (result != SQLITE_OK) Refuse(result);
}

// Without its own wait for the disk SQLite still writes the log in order and waits before it uses the log's
// changes, so that a failure of power can only lose the last transactions.
void Database::Begin(Durability durability) {
  if (durability != durability_)
    Run(durability == Durability::Later ? "PRAGMA synchronous=NORMAL" : "PRAGMA synchronous=FULL");
  durability_ = durability;
  RunPrepared(begin_);
}

// SQLite waits itself when it moves changes from the log into the database.
void Database::SyncLog() {
  sqlite3_file* log = nullptr;
  const int result = sqlite3_file_control(handle_, "main", SQLITE_FCNTL_JOURNAL_POINTER, &log);
  if (result != SQLITE_OK || !log || !log->pMethods) return;
  errno = 0;
  if (log->pMethods->xSync(log, SQLITE_SYNC_NORMAL | SQLITE_SYNC_DATAONLY) != SQLITE_OK)
    RaiseReason(TextOf(TextNumber::kNotWritten, Platform::FromUtf8(file_ + "-wal"),
                       Platform::FromUtf8(SystemReason(errno != 0 ? errno : EIO))));
}

void Database::Commit() {
  RunPrepared(commit_);
}

void Database::RunPrepared(sqlite3_stmt* statement) {
  const int result = sqlite3_step(statement);
  sqlite3_reset(statement);
  if (result != SQLITE_DONE) Refuse(result);
}

std::int64_t Database::Number(const char* sql) {
  Statement statement(*this, sql);
  Rows rows = statement({});
  return rows.Next() ? rows.Integer(0) : 0;
}

std::int64_t Database::ChangedRows() const {
  return sqlite3_total_changes64(handle_);
}

Rows::~Rows() {
  sqlite3_reset(statement_);
  sqlite3_clear_bindings(statement_);
}

bool Rows::Next() {
  const int result = sqlite3_step(statement_);
  if (result == SQLITE_ROW) return true;
  if (result != SQLITE_DONE) database_.Refuse(result);
  return false;
}

ColumnType Rows::Type(int column) const {
  switch (sqlite3_column_type(statement_, column)) {
    case SQLITE_INTEGER:
      return ColumnType::Integer;
    case SQLITE_FLOAT:
      return ColumnType::Real;
    case SQLITE_TEXT:
      return ColumnType::Text;
    case SQLITE_BLOB:
      return ColumnType::Blob;
    default:
      return ColumnType::Null;
  }
}

std::int64_t Rows::Integer(int column) const {
  return sqlite3_column_int64(statement_, column);
}

double Rows::Real(int column) const {
  return sqlite3_column_double(statement_, column);
}

std::string_view Rows::Text(int column) const {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  return {text ? text : "", static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

std::span<const std::uint8_t> Rows::Blob(int column) const {
  const auto* bytes = static_cast<const std::uint8_t*>(sqlite3_column_blob(statement_, column));
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

Statement::Statement(Database& database, const char* sql) : database_(database) {
  const int result = database.Prepare(sql, statement_);
  if (result != SQLITE_OK) database.Refuse(result);
}

Statement::~Statement() {
  sqlite3_finalize(statement_);
}

Rows Statement::operator()(std::initializer_list<Parameter> parameters) {
  int position = 0;
  for (const Parameter& parameter : parameters) {
    ++position;
    int result = SQLITE_OK;
    if (const auto* number = std::get_if<std::int64_t>(&parameter)) {
      result = sqlite3_bind_int64(statement_, position, *number);
    } else if (const auto* real = std::get_if<double>(&parameter)) {
      result = sqlite3_bind_double(statement_, position, *real);
    } else if (const auto* text = std::get_if<std::string_view>(&parameter)) {
      // An empty view may have a null address, which SQLite binds as NULL.
      result = sqlite3_bind_text64(statement_, position, text->empty() ? "" : text->data(), text->size(),
                                   SQLITE_TRANSIENT, SQLITE_UTF8);
    } else if (const auto* bytes = std::get_if<std::span<const std::uint8_t>>(&parameter)) {
      result = bytes->empty() ? sqlite3_bind_zeroblob(statement_, position, 0)
                              : sqlite3_bind_blob64(statement_, position, bytes->data(), bytes->size(),
                                                    SQLITE_TRANSIENT);
    } else {
      result = sqlite3_bind_null(statement_, position);
    }
    if (result != SQLITE_OK) database_.Refuse(result);
  }
  return Rows(database_, statement_);
}

void Statement::Run(std::initializer_list<Parameter> parameters) {
  Rows rows = (*this)(parameters);
  while (rows.Next()) {
  }
}

Transaction::Transaction(Database& database, Durability durability) : database_(database) {
  database_.Begin(durability);
}

Transaction::~Transaction() {
  if (!sqlite3_get_autocommit(database_.Handle()))
    sqlite3_exec(database_.Handle(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  database_.Commit();
  database_.PauseAfterCommit();
}

}  // namespace Runtime
