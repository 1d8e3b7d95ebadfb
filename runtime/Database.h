// Database: one SQLite file, opened for durable work.
//
// Every operation raises 57, with the file's name, the reason and what to do, if SQLite reports an error. A
// Database and its statements, rows and transactions are used by one thread at a time, and must not be used
// in a forked child. They refer to the Database, which must outlive them.
#pragma once

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "platform/Text.h"
#include "runtime/BusyTimeout.h"

struct sqlite3;
struct sqlite3_stmt;

namespace Runtime {

// When a transaction is on disk: when its Commit returns, or later: with SyncLog, or with the next commit to
// the same file that waits for the disk. In both cases others see it at once, and it survives the end of the
// process.
enum class Durability { AtCommit, Later };

class Database {
 public:
  // Opens an existing file, after RequireItsLog. The timeout limits each wait for another connection.
  explicit Database(std::string file, std::chrono::milliseconds timeout = BusyTimeout());
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  // Raises 57 if the file is empty or missing, but its write-ahead log holds changes: SQLite would delete the
  // log when it opens the file. For callers that create the file, or have their own text for a missing one.
  static void RequireItsLog(const std::string& file);

  // Waits until all transactions of any connection to the file that others can see are on disk. After a
  // failure some of them may be lost for good, also if a second try succeeds. This connection must have read
  // something.
  void SyncLog();

  const std::string& File() const { return file_; }

  // Runs SQL statements; rows are ignored.
  void Run(const char* sql);

  // The first column of the first row as an integer; 0 if there is no row.
  std::int64_t Number(const char* sql);

  // The number of rows that this connection has changed since it was opened.
  std::int64_t ChangedRows() const;

  // Raises the failure for a result code of SQLite. CloseAndRefuse is for the constructor.
  [[noreturn]] void Refuse(int result) const;
  [[noreturn]] void CloseAndRefuse(int result);

  sqlite3* Handle() const { return handle_; }

  // Prepares a statement for repeated use. Returns SQLite's result code.
  int Prepare(const char* sql, sqlite3_stmt*& statement);

  // For Transaction.
  void Begin(Durability durability = Durability::AtCommit);
  void Commit();

  // Waits for 2 ms if this connection had to wait for another one recently, so that the other one can write.
  void PauseAfterCommit();

 private:
  static int WaitForOthers(void* database, int attempt);
  void RunPrepared(sqlite3_stmt* statement);
  Platform::String ReasonOf(int result) const;
  void Close();

  std::string file_;
  std::chrono::milliseconds timeout_;
  sqlite3* handle_ = nullptr;
  sqlite3_stmt* begin_ = nullptr;
  sqlite3_stmt* commit_ = nullptr;
  Durability durability_ = Durability::AtCommit;
  int pausesLeft_ = 0;
};

// A value for a "?" of a statement.
using Parameter =
    std::variant<std::nullptr_t, std::int64_t, double, std::string_view, std::span<const std::uint8_t>>;

enum class ColumnType { Integer, Real, Text, Blob, Null };

// The rows of one run of a statement. Columns count from 0. The views that Text and Blob return are valid
// until the next call of Next, and end with the Rows.
class Rows {
 public:
  Rows(Database& database, sqlite3_stmt* statement) : database_(database), statement_(statement) {}
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  ~Rows();

  // Moves to the next row; false after the last one.
  bool Next();

  ColumnType Type(int column) const;
  std::int64_t Integer(int column) const;
  double Real(int column) const;
  std::string_view Text(int column) const;
  std::span<const std::uint8_t> Blob(int column) const;

 private:
  Database& database_;
  sqlite3_stmt* statement_;
};

// A prepared statement for repeated use, one run at a time.
class Statement {
 public:
  Statement(Database& database, const char* sql);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  // Starts a run with the parameters, which are copied. The statement is executed by the first Next.
  Rows operator()(std::initializer_list<Parameter> parameters);

  // Executes the statement to its end; rows are ignored.
  void Run(std::initializer_list<Parameter> parameters);

 private:
  Database& database_;
  sqlite3_stmt* statement_ = nullptr;
};

// A write transaction. It takes the write lock at once, and is rolled back unless Commit succeeds.
class Transaction {
 public:
  explicit Transaction(Database& database, Durability durability = Durability::AtCommit);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  // When this returns, the changes are on disk, or will be as the constructor was told.
  void Commit();

 private:
  Database& database_;
};

}  // namespace Runtime
