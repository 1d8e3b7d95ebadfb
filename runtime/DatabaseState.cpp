#include "runtime/DatabaseState.h"

#include <sqlite3.h>

#include <atomic>

namespace Runtime {
namespace {

// The numbers of 4 bytes in a header. The first byte of kIsComplete is 0 while the index is being rebuilt.
enum Place : std::size_t { kCommits = 2, kIsComplete = 3, kFrames = 4, kSalt = 8 };
constexpr std::size_t kHeaderNumbers = 12;

constexpr int kRegionSize = 32768;  // bytes in which SQLite maps the index

}  // namespace

bool DatabaseState::IsOneCommitAfter(const DatabaseState& before) const {
  // Also the log was not restarted or read again after a crash, which sets the count of commits to 0.
  return header_[kCommits] == before.header_[kCommits] + 1 && header_[kFrames] > before.header_[kFrames] &&
         header_[kSalt] == before.header_[kSalt] && header_[kSalt + 1] == before.header_[kSalt + 1];
}

DatabaseWatch::DatabaseWatch(Database& database) {
  // The query reads the database, so that the index is mapped afterwards.
  Statement mode(database, "PRAGMA journal_mode");
  Rows rows = mode({});
  if (!rows.Next() || rows.Text(0) != "wal") return;
  sqlite3_file* file = nullptr;
  const int result = sqlite3_file_control(database.Handle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
  if (result == SQLITE_OK && file && file->pMethods && file->pMethods->iVersion >= 2) file_ = file;
}

std::optional<DatabaseState> DatabaseWatch::Now() const {
  if (!file_) return {};
  // SQLite has mapped the region already and returns its address.
  void volatile* region = nullptr;
  if (file_->pMethods->xShmMap(file_, 0, kRegionSize, 0, &region) != SQLITE_OK || !region) return {};
  const auto* numbers = static_cast<const volatile std::uint32_t*>(region);
  DatabaseState first, second;
  for (std::size_t i = 0; i < kHeaderNumbers; ++i) first.header_[i] = numbers[i];
  // A writer writes the second copy, then the first one, with a barrier in between.
  std::atomic_thread_fence(std::memory_order_seq_cst);
  for (std::size_t i = 0; i < kHeaderNumbers; ++i) second.header_[i] = numbers[kHeaderNumbers + i];
  const auto* complete = reinterpret_cast<const unsigned char*>(&first.header_[kIsComplete]);
  if (first != second || *complete == 0) return {};
  return first;
}

}  // namespace Runtime
