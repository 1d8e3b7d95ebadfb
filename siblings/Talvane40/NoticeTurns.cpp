#include "siblings/Talvane40/NoticeTurns.h"

#include <algorithm>

#include "platform/NoticeTexts.h"
#include "platform/contracts/NoticeQueue.h"
#include "runtime/Texts.h"
#include "siblings/Talvane40/NoticeTime.h"

namespace Talvane40 {
namespace {

constexpr std::int64_t kLongestPause = kHour;
constexpr std::int64_t kLongestWait = 30 * kDay;
constexpr std::int64_t kRowsAtOnce = 1000;

// The number of users who have to be told of a reply and have no row yet, for all due replies or for one, by
// sender.
constexpr const char* kNotCreated =
    "WITH all_recipients (number) AS (SELECT count(*) FROM recipients) "
    "SELECT sender, coalesce(sum(number"
    " - (SELECT count(*) FROM recipients WHERE key = replies.user AND key > after_user)"
    " - CASE after_user WHEN 0 THEN 0 ELSE (SELECT count(*) FROM recipients WHERE key <= after_user) END), "
    "0) "
    "FROM due_replies JOIN replies ON id = reply, all_recipients WHERE ?1 IN (0, reply) "
    "GROUP BY sender";

}  // namespace

NoticeTurns::NoticeTurns(Runtime::Database& database)
    : database_(database),
      hasWork_(database,
               "SELECT EXISTS (SELECT 1 FROM notices WHERE sender IN (-1, ?1) AND next_attempt = 0"
               "               AND (?5 OR reply IN (SELECT reply FROM routes)))"
               " OR EXISTS (SELECT 1 FROM due_replies WHERE sender IN (-1, ?1)"
               "            AND (?5 OR reply IN (SELECT reply FROM routes)))"
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
             "               AND (?2 OR reply IN (SELECT reply FROM routes)) ORDER BY reply, user LIMIT 1) "
             "UNION ALL "
             "SELECT * FROM (SELECT id, reply, user FROM notices WHERE sender = ?1 AND next_attempt = 0"
             "               ORDER BY reply, user LIMIT 1)) ORDER BY reply, user LIMIT 1"),
      dueReply_(database,
                "SELECT reply, sender, after_user, replies.user, unixepoch(at) * 1000 FROM due_replies "
                "JOIN replies ON id = reply WHERE sender IN (-1, ?1) AND (?2 OR reply IN (SELECT reply FROM "
                "routes)) "
                "ORDER BY reply LIMIT 1") {}

NoticeTurns::Turn NoticeTurns::Next(std::int32_t perMinute, std::int32_t uid, bool byProject) {
  const std::int64_t now = Now();
  if (!HasWork(now, uid, byProject)) return {.Notice = {}, .Wait = WaitOf(now, uid)};
  Runtime::Transaction transaction(database_);
  GiveUpOld(now);
  Turn turn{.Notice = {}, .Wait = WaitForMinute(now, perMinute)};
  turn.Limited = turn.Wait.has_value();
  if (!turn.Limited) {
    MakeReady(now, uid);
    do {
      turn.Notice = FirstReady(uid, byProject);
    } while (!turn.Notice && CreateRows(now, uid, byProject));
    if (!turn.Notice) turn.Wait = WaitOf(now, uid);
  }
  if (turn.Notice) Runtime::Statement(database_, "INSERT INTO notices_given VALUES (?)").Run({now});
  transaction.Commit();
  return turn;
}

std::int64_t NoticeTurns::Ready(std::int32_t uid) {
  Runtime::Statement created(database_,
                             "SELECT count(*) FROM notices WHERE sender IN (-1, ?) AND next_attempt <= ?");
  std::int64_t ready = 0;
  if (auto row = created({uid, Now()}); row.Next()) ready = row.Integer(0);
  for (const auto& [sender, notices] : NotCreated()) {
    if (sender == kAnySender || sender == uid) ready += notices;
  }
  return ready;
}

std::map<std::int64_t, std::int64_t> NoticeTurns::Unsent() {
  std::map<std::int64_t, std::int64_t> unsent = NotCreated();
  Runtime::Statement created(database_, "SELECT sender, count(*) FROM notices GROUP BY sender");
  for (auto row = created({}); row.Next();) unsent[row.Integer(0)] += row.Integer(1);
  return unsent;
}

void NoticeTurns::Uncount() {
  database_.Run("DELETE FROM notices_given WHERE rowid = (SELECT max(rowid) FROM notices_given)");
}

// Those of one reply have one route, and answers have that of the project. The notice itself is postponed
// even if its time ended a moment ago, so that it isn't given again at once.
std::int64_t NoticeTurns::Postpone(std::int32_t id, std::int64_t pause) {
  std::int64_t sender = kAnySender;
  std::string route;
  {
    Runtime::Statement select(database_,
                              "SELECT sender, coalesce(transport || ' ' || server, '') FROM notices "
                              "LEFT JOIN routes USING (reply) WHERE id = ?");
    auto row = select({id});
    if (!row.Next()) return 0;
    sender = row.Integer(0);
    route = row.Text(1);
  }
  const std::int64_t now = Now(), oldest = now - std::chrono::milliseconds(kLongestTry).count() - kMinute;
  Runtime::Statement(
      database_,
      "UPDATE notices SET next_attempt = ?1 + ?2, first_attempt = min(coalesce(first_attempt, ?1), ?1) "
      "WHERE next_attempt = 0 AND sender = ?3 AND coalesce(first_attempt, ?1) > ?4 AND "
      "coalesce((SELECT transport || ' ' || server FROM routes WHERE routes.reply = notices.reply), '') = ?5")
      .Run({now, pause, sender, oldest, route});
  return database_.Number("SELECT changes()");
}

std::map<std::int64_t, std::int64_t> NoticeTurns::NotCreated(std::int64_t reply) {
  std::map<std::int64_t, std::int64_t> notices;
  Runtime::Statement count(database_, kNotCreated);
  for (auto row = count({reply}); row.Next();) notices[row.Integer(0)] = row.Integer(1);
  return notices;
}

bool NoticeTurns::HasWork(std::int64_t now, std::int32_t uid, bool byProject) {
  auto row = hasWork_({uid, now, now + kLongestPause, now - kLongestWait, std::int64_t{byProject}});
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
    for (const auto& [sender, notices] : NotCreated(reply)) {
      if (notices > 0)
        Runtime::Statement(database_,
                           "INSERT INTO ended_notices (at, address, reason, notices) VALUES (?, '', ?, ?)")
            .Run({now, reason, notices});
    }
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

std::optional<std::int64_t> NoticeTurns::FirstReady(std::int32_t uid, bool byProject) {
  for (;;) {
    std::int64_t notice = 0;
    {
      auto row = ready_({uid, std::int64_t{byProject}});
      if (!row.Next()) return std::nullopt;
      notice = row.Integer(0);
      if (row.Integer(1) != 0) return notice;
    }
    Runtime::Statement(database_, "DELETE FROM notices WHERE id = ?").Run({notice});
  }
}

bool NoticeTurns::CreateRows(std::int64_t now, std::int32_t uid, bool byProject) {
  std::int64_t reply = 0;
  {
    auto due = dueReply_({uid, std::int64_t{byProject}});
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
