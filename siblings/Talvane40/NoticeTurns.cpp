#include "siblings/Talvane40/NoticeTurns.h"

#include <algorithm>

#include "platform/NoticeTexts.h"
#include "runtime/Texts.h"
#include "siblings/Talvane40/NoticeTime.h"

namespace Talvane40 {
namespace {

constexpr std::int64_t kLongestPause = kHour;
constexpr std::int64_t kLongestWait = 30 * kDay;
constexpr std::int64_t kRowsAtOnce = 1000;

// The number of users who have to be told of a reply and have no row yet.
constexpr const char* kNotCreated =
    "WITH all_recipients (number) AS (SELECT count(*) FROM recipients) "
    "SELECT coalesce(sum(number"
    " - (SELECT count(*) FROM recipients WHERE key = replies.user AND key > after_user)"
    " - CASE after_user WHEN 0 THEN 0 ELSE (SELECT count(*) FROM recipients WHERE key <= after_user) END), "
    "0) "
    "FROM due_replies JOIN replies ON id = reply, all_recipients WHERE ?1 IN (0, reply)";

}  // namespace

NoticeTurns::NoticeTurns(Runtime::Database& database)
    : database_(database),
      hasWork_(database,
               "SELECT EXISTS (SELECT 1 FROM notices WHERE sender IN (-1, ?1) AND next_attempt = 0)"
               " OR EXISTS (SELECT 1 FROM due_replies WHERE sender IN (-1, ?1))"
               " OR EXISTS (SELECT 1 FROM notices WHERE sender IN (-1, ?1) AND next_attempt > 0"
               "            AND next_attempt <= ?2)"
               " OR EXISTS (SELECT 1 FROM notices WHERE sender IN (-1, ?1) AND next_attempt > 0"
               "            AND next_attempt > ?3)"
               " OR EXISTS (SELECT 1 FROM notices WHERE waiting_since < ?4)"
               " OR EXISTS (SELECT 1 FROM (SELECT reply FROM due_replies ORDER BY reply LIMIT 1)"
               "            JOIN replies ON id = reply WHERE unixepoch(at) * 1000 < ?4)"),
      wait_(database,
            "SELECT next_attempt FROM ("
            "SELECT * FROM (SELECT next_attempt FROM notices WHERE sender = -1 AND next_attempt > 0"
            "               ORDER BY next_attempt LIMIT 1) UNION ALL "
            "SELECT * FROM (SELECT next_attempt FROM notices WHERE sender = ? AND next_attempt > 0"
            "               ORDER BY next_attempt LIMIT 1)) ORDER BY next_attempt LIMIT 1"),
      ready_(database,
             "SELECT id, EXISTS (SELECT 1 FROM recipients WHERE key = user) FROM ("
             "SELECT * FROM (SELECT id, reply, user FROM notices WHERE sender = -1 AND next_attempt = 0"
             "               ORDER BY reply, user LIMIT 1) UNION ALL "
             "SELECT * FROM (SELECT id, reply, user FROM notices WHERE sender = ? AND next_attempt = 0"
             "               ORDER BY reply, user LIMIT 1)) ORDER BY reply, user LIMIT 1"),
      dueReply_(database,
                "SELECT reply, sender, after_user, replies.user, unixepoch(at) * 1000 FROM due_replies "
                "JOIN replies ON id = reply WHERE sender IN (-1, ?) ORDER BY reply LIMIT 1") {}

NoticeTurns::Turn NoticeTurns::Next(std::int32_t perMinute, std::int32_t uid) {
  const std::int64_t now = Now();
  if (!HasWork(now, uid)) return {.Notice = {}, .Wait = WaitOf(now, uid)};
  Runtime::Transaction transaction(database_);
  GiveUpOld(now);
  Turn turn{.Notice = {}, .Wait = WaitForMinute(now, perMinute)};
  if (!turn.Wait) {
    MakeReady(now, uid);
    do {
      turn.Notice = FirstReady(uid);
    } while (!turn.Notice && CreateRows(now, uid));
    if (!turn.Notice) turn.Wait = WaitOf(now, uid);
  }
  if (turn.Notice) Runtime::Statement(database_, "INSERT INTO notices_given VALUES (?)").Run({now});
  transaction.Commit();
  return turn;
}

std::int64_t NoticeTurns::NotCreated(std::optional<std::int64_t> reply) {
  Runtime::Statement count(database_, kNotCreated);
  auto row = count({reply.value_or(0)});
  return row.Next() ? row.Integer(0) : 0;
}

bool NoticeTurns::HasWork(std::int64_t now, std::int32_t uid) {
  auto row = hasWork_({uid, now, now + kLongestPause, now - kLongestWait});
  return row.Next() && row.Integer(0) != 0;
}

std::optional<std::int64_t> NoticeTurns::WaitOf(std::int64_t now, std::int32_t uid) {
  auto row = wait_({uid});
  if (!row.Next()) return std::nullopt;
  return std::clamp<std::int64_t>(row.Integer(0) - now, 1, kLongestPause);
}

// What a clock that was set back has left in the future counts as given now.
std::optional<std::int64_t> NoticeTurns::WaitForMinute(std::int64_t now, std::int32_t perMinute) {
  Runtime::Statement(database_, "UPDATE notices_given SET at = ?1 WHERE at > ?1").Run({now});
  Runtime::Statement(database_, "DELETE FROM notices_given WHERE at <= ?").Run({now - kMinute});
  Runtime::Statement select(database_, "SELECT count(*), min(at) FROM notices_given");
  auto row = select({});
  if (!row.Next() || row.Integer(0) < perMinute) return std::nullopt;
  return row.Integer(1) + kMinute - now;
}

void NoticeTurns::GiveUpOld(std::int64_t now) {
  const std::string reason = ToUtf8(Runtime::TextOf(TextNumber::kNoticeExpired));
  const std::int64_t oldest = now - kLongestWait;
  Runtime::Statement(database_,
                     "INSERT INTO ended_notices (at, address, reason) SELECT ?, email, ? FROM notices "
                     "JOIN recipients ON key = user WHERE waiting_since < ?")
      .Run({now, reason, oldest});
  Runtime::Statement(database_, "DELETE FROM notices WHERE waiting_since < ?").Run({oldest});

  // Of a reply that had no turn, the number of its notices is kept instead of a row for each.
  Runtime::Statement first(database_,
                           "SELECT reply, unixepoch(at) * 1000 FROM due_replies JOIN replies ON id = reply "
                           "ORDER BY reply LIMIT 1");
  for (;;) {
    std::int64_t reply = 0;
    if (auto row = first({}); row.Next() && row.Integer(1) < oldest)
      reply = row.Integer(0);
    else
      return;
    if (const std::int64_t notices = NotCreated(reply); notices > 0)
      Runtime::Statement(database_,
                         "INSERT INTO ended_notices (at, address, reason, notices) VALUES (?, '', ?, ?)")
          .Run({now, reason, notices});
    Runtime::Statement(database_, "DELETE FROM due_replies WHERE reply = ?").Run({reply});
  }
}

// Attempts beyond the longest pause were planned by a clock that was wrong.
void NoticeTurns::MakeReady(std::int64_t now, std::int32_t uid) {
  Runtime::Statement(database_,
                     "UPDATE notices SET next_attempt = ?2 WHERE sender IN (-1, ?1) AND next_attempt > 0 "
                     "AND next_attempt > ?2")
      .Run({uid, now + kLongestPause});
  Runtime::Statement(database_,
                     "UPDATE notices SET next_attempt = 0 WHERE sender IN (-1, ?) AND next_attempt > 0 "
                     "AND next_attempt <= ?")
      .Run({uid, now});
}

std::optional<std::int64_t> NoticeTurns::FirstReady(std::int32_t uid) {
  for (;;) {
    std::int64_t notice = 0;
    {
      auto row = ready_({uid});
      if (!row.Next()) return std::nullopt;
      notice = row.Integer(0);
      if (row.Integer(1) != 0) return notice;
    }
    Runtime::Statement(database_, "DELETE FROM notices WHERE id = ?").Run({notice});
  }
}

bool NoticeTurns::CreateRows(std::int64_t now, std::int32_t uid) {
  std::int64_t reply = 0;
  {
    auto due = dueReply_({uid});
    if (!due.Next()) return false;
    reply = due.Integer(0);
    Runtime::Statement(database_,
                       "INSERT INTO notices (reply, user, sender, waiting_since) "
                       "SELECT ?1, key, ?2, ?3 FROM recipients WHERE key > ?4 AND key <> ?5 "
                       "ORDER BY key LIMIT ?6")
        .Run({reply, due.Integer(1), due.Type(4) == Runtime::ColumnType::Null ? now : due.Integer(4),
              due.Integer(2), due.Integer(3), kRowsAtOnce});
  }
  if (database_.Number("SELECT changes()") == kRowsAtOnce)
    Runtime::Statement(database_,
                       "UPDATE due_replies SET after_user = (SELECT user FROM notices "
                       "WHERE id = last_insert_rowid()) WHERE reply = ?")
        .Run({reply});
  else
    Runtime::Statement(database_, "DELETE FROM due_replies WHERE reply = ?").Run({reply});
  return true;
}

}  // namespace Talvane40
