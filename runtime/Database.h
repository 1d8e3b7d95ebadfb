// Database: one SQLite file, opened for durable work.
//
// Every operation raises 57 with the file's name and the reason in words where SQLite refuses it. A database
// and what was made of it belong to one thread at a time; it must not be carried over a fork.
#pragma once

#include <chrono>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "runtime/Patience.h"

struct sqlite3;
struct sqlite3_stmt;

namespace Runtime {

class Database {
 public:
  // Opens a file that exists, with what RequireItsLog says. A writer waits for another one as long as the
  // patience lasts.
  explicit Database(std::string file, std::chrono::milliseconds patience = Patience());
  Database(const Database&) = delete;
  Database& operator=(const Database&) = delete;
  ~Database();

  // Raises 57 for a file that is empty or missing beside a log that holds changes: it was lost by accident,
  // and opening it would throw the log away. For callers that make the file, or have their own text for a
  // missing one.
  static void RequireItsLog(const std::string& file);

  const std::string& File() const { return file_; }

  // Runs statements that give no rows.
  void Run(const char* sql);

  // The first column of the first row, as a whole number.
  std::int64_t Number(const char* sql);

  // How many rows this connection has changed since it was opened.
  std::int64_t ChangedRows() const;

  // Raises what the given result of SQLite stands for.
  [[noreturn]] void Refuse(int result) const;
  [[noreturn]] void CloseAndRefuse(int result);

  sqlite3* Handle() const { return handle_; }

  // Prepares a statement that is to be run again and again; gives SQLite's result.
  int Prepare(const char* sql, sqlite3_stmt*& statement);

  // What a Transaction does.
  void Begin();
  void Commit();

  // Pauses for a moment if another program was at work on the file lately, so that its turn comes too.
  void PauseAfterCommit();

 private:
  static int WaitForOthers(void* database, int attempt);
  void RunPrepared(sqlite3_stmt* statement);
  std::string ReasonOf(int result) const;
  void Close();

  std::string file_;
  std::chrono::milliseconds patience_;
  sqlite3* handle_ = nullptr;
  sqlite3_stmt* begin_ = nullptr;
  sqlite3_stmt* commit_ = nullptr;
  int pausesLeft_ = 0;
};

// What a statement takes for a question mark.
using Parameter =
    std::variant<std::nullptr_t, std::int64_t, double, std::string_view, std::span<const std::uint8_t>>;

enum class ColumnType { Integer, Real, Text, Blob, Null };

// The rows of one run of a statement. The views that a row gives hold until the next one.
class Rows {
 public:
  Rows(Database& database, sqlite3_stmt* statement) : database_(database), statement_(statement) {}
  Rows(const Rows&) = delete;
  Rows& operator=(const Rows&) = delete;
  ~Rows();

  // Steps to the next row; false behind the last one.
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

// A prepared statement, to be run again and again, one run at a time.
class Statement {
 public:
  Statement(Database& database, const char* sql);
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;
  ~Statement();

  // A run with the given parameters, which are copied. Nothing happens before the first Next.
  Rows operator()(std::initializer_list<Parameter> parameters);

  // A run of a statement that gives no rows.
  void Run(std::initializer_list<Parameter> parameters);

 private:
  Database& database_;
  sqlite3_stmt* statement_ = nullptr;
};

// A write transaction: taken at once, rolled back unless it was committed.
class Transaction {
 public:
  explicit Transaction(Database& database);
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;
  ~Transaction();

  // What was written is durable when this returns.
  void Commit();

 private:
  Database& database_;
};

}  // namespace Runtime
