// The least work of a delivery, for comparison: parses each mail of an mbox and commits one reply for it to a
// project's database, and does nothing else: no mailbox, no sender, no discussion, no outcome.
//   bench_deliver_floor MBOX DATABASE
#include <sqlite3.h>

#include <cstdio>
#include <stdexcept>

#include "gateway/sources/MailSource.h"
#include "mime/Mail.h"

namespace {

constexpr Platform::StringView kCutMarker = u"----- Reply above this line -----";

void Check(sqlite3* database, int result) {
  if (result != SQLITE_OK && result != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(database));
}

void BindText(sqlite3_stmt* statement, int position, const std::string& text) {
  sqlite3_bind_text(statement, position, text.data(), static_cast<int>(text.size()), SQLITE_STATIC);
}

class ReplyTable {
 public:
  explicit ReplyTable(const char* file) {
    Check(database_, sqlite3_open(file, &database_));
    Run("PRAGMA synchronous=FULL");
    const char* insert =
        "INSERT INTO replies (discussion, subject, body, user, at) "
        "VALUES (1, ?, ?, 1, strftime('%Y-%m-%dT%H:%M:%fZ', 'now'))";
    Check(database_, sqlite3_prepare_v2(database_, insert, -1, &insert_, nullptr));
  }
  ReplyTable(const ReplyTable&) = delete;
  ReplyTable& operator=(const ReplyTable&) = delete;
  ~ReplyTable() {
    sqlite3_finalize(insert_);
    sqlite3_close(database_);
  }

  void Add(const std::string& subject, const std::string& body) {
    Run("BEGIN IMMEDIATE");
    BindText(insert_, 1, subject);
    BindText(insert_, 2, body);
    Check(database_, sqlite3_step(insert_));
    sqlite3_reset(insert_);
    Run("COMMIT");
  }

 private:
  void Run(const char* sql) { Check(database_, sqlite3_exec(database_, sql, nullptr, nullptr, nullptr)); }

  sqlite3* database_ = nullptr;
  sqlite3_stmt* insert_ = nullptr;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return std::fputs("usage: bench_deliver_floor MBOX DATABASE\n", stderr), 64;
  try {
    ReplyTable replies(argv[2]);
    std::size_t count = 0;
    Gateway::ReadMailSource(argv[1], Gateway::StandardInput::OneMail, [&](Gateway::RawMail raw) {
      if (!raw.Fault.empty()) throw std::runtime_error(raw.Source + " " + raw.Fault);
      const Mime::Mail mail = Mime::ReadMail(std::move(raw.Bytes));
      // The same row that the component writes, so that both store as many bytes.
      const Platform::StringView body(mail.Body);
      replies.Add(Platform::ToUtf8(mail.Subject), Platform::ToUtf8(body.substr(0, body.find(kCutMarker))));
      ++count;
      return Gateway::Outcome::Delivered;
    });
    std::printf("%zu replies\n", count);
    return 0;
  } catch (const std::exception& error) {
    std::fprintf(stderr, "bench_deliver_floor: %s\n", error.what());
    return 75;
  }
}
