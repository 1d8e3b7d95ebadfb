// DatabaseState: tells whether the content of a database may have changed, without a lock and without a
// system call.
//
// A database in WAL mode has an index in shared memory, which all its connections map. The index begins with
// two copies of a header of 48 bytes. Each commit of any process counts a number in it up and changes the
// checksum of the log; it writes the second copy first (https://sqlite.org/walformat.html, "The WAL-Index
// Header"). So two equal copies belong to a whole commit, and a header that is the same as before means that
// nothing was committed in between. SQLite itself decides in this way, before it takes any lock, whether the
// pages in its memory are still valid. The locks that follow protect the pages which it then reads from the
// files. A program that only asks whether what it has read is still valid reads no page, and needs none.
//
// What was read is valid as long as the state is the same as before the reading began:
//
//   const auto before = watch.Now();
//   read, in any number of transactions;
//   later: if (before && watch.Now() == before) what was read is still in the database.
//
// A checkpoint may change the state without a change of the content. A restart of the log changes the salts
// of the header, which are random numbers, so no former state comes back. The shared memory exists as long as
// any connection is open: nobody can remove the log, or change the mode, while the Database of a watch
// exists. Not noticed is that another file takes the place of the database: compare the file's identity for
// that.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "runtime/Database.h"

struct sqlite3_file;

namespace Runtime {

class DatabaseState {
 public:
  friend bool operator==(const DatabaseState&, const DatabaseState&) = default;

  // True if one commit and no other one leads from the state before to this one.
  bool IsOneCommitAfter(const DatabaseState& before) const;

 private:
  friend class DatabaseWatch;
  std::array<std::uint32_t, 12> header_{};
};

// Reads the state of a database. Used by the thread of the Database, which must outlive it.
class DatabaseWatch {
 public:
  // Raises 57 if the database can't be read.
  explicit DatabaseWatch(Database& database);

  // Nothing if the database isn't in WAL mode, while a commit is being written, and after a writer was
  // stopped in the middle of one: read the database then.
  std::optional<DatabaseState> Now() const;

 private:
  sqlite3_file* file_ = nullptr;
};

}  // namespace Runtime
