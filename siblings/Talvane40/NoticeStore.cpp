#include "siblings/Talvane40/NoticeStore.h"

#include <algorithm>

#include "platform/CheckedArithmetic.h"
#include "siblings/Talvane40/Bounces.h"
#include "siblings/Talvane40/NoticeTime.h"
#include "siblings/Talvane40/ProjectSchema.h"
#include "siblings/Talvane40/SenderAnswers.h"

namespace Talvane40 {
namespace {

constexpr std::size_t kLongestReason = 1000;  // characters
constexpr std::int64_t kEndedCounted = 7 * kDay;

NoticeIds IdsOf(Runtime::Database& database) {
  Runtime::Statement select(database, "SELECT hmac_key FROM notice_key");
  auto row = select({});
  if (!row.Next() || row.Blob(0).empty())
    throw Failure(FailureNumber::DeviceFailed, u"Talvane40",
                  FromUtf8(database.File()) + u": the table notice_key is empty.");
  return NoticeIds(row.Blob(0));
}

std::string Stored(StringView reason) {
  return ToUtf8(Shortened(String(reason), kLongestReason));
}

// A number to be shown, which a larger one doesn't make an error.
std::int32_t Shown(std::int64_t number) {
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(number, 0, INT32_MAX));
}

std::int64_t Milliseconds(std::chrono::seconds pause) {
  return std::clamp<std::int64_t>(pause.count() * kSecond, 1, kHour);
}

constexpr const char* kTimeFormat = "%Y-%m-%dT%H:%M:%fZ";

}  // namespace

NoticeStore::NoticeStore(const std::string& file)
    : database_(ExistingDatabase(file)),
      ids_(IdsOf(WithCurrentTables(database_))),
      turns_(database_),
      reader_(database_, ids_),
      delete_(database_, "DELETE FROM notices WHERE id = ?"),
      defer_(database_,
             "UPDATE notices SET attempts = attempts + 1, next_attempt = ?2 + ?3, waiting_since = ?2, "
             "first_attempt = min(coalesce(first_attempt, ?2), ?2), reason = ?4 WHERE id = ?1") {
  database_.Run("PRAGMA foreign_keys=ON");
}

NextNotice NoticeStore::Next(std::int32_t perMinute, std::int32_t uid, bool byProject) {
  const NoticeTurns::Turn turn = turns_.Next(perMinute, uid, byProject);
  NextNotice next;
  if (turn.Notice) next.Notice = reader_.Read(*turn.Notice);
  if (turn.Wait) next.Wait = std::chrono::milliseconds(*turn.Wait);
  next.Limited = turn.Limited;
  return next;
}

std::int32_t NoticeStore::Ready(std::int32_t uid) {
  return Shown(turns_.Ready(uid));
}

void NoticeStore::Untried() {
  Runtime::Transaction transaction(database_);
  turns_.Uncount();
  transaction.Commit();
}

void NoticeStore::EndPauses() {
  Runtime::Transaction transaction(database_);
  database_.Run("UPDATE notices SET next_attempt = 0 WHERE next_attempt > 0");
  transaction.Commit();
}

void NoticeStore::Sent(std::int32_t id) {
  Runtime::Transaction transaction(database_);
  delete_.Run({id});
  transaction.Commit();
}

// The first attempt can't have been after now: the clock was set back then.
void NoticeStore::Defer(std::int32_t id, StringView reason, std::chrono::seconds pause) {
  Runtime::Transaction transaction(database_);
  defer_.Run({id, Now(), Milliseconds(pause), Stored(reason)});
  transaction.Commit();
}

std::int32_t NoticeStore::Postpone(std::int32_t id, std::chrono::seconds pause) {
  Runtime::Transaction transaction(database_);
  const std::int64_t postponed = turns_.Postpone(id, Milliseconds(pause));
  transaction.Commit();
  return Shown(postponed);
}

void NoticeStore::GiveUp(std::int32_t id, StringView reason) {
  Runtime::Transaction transaction(database_);
  Runtime::Statement(database_,
                     "INSERT INTO ended_notices (at, address, reason) "
                     "SELECT ?, email, ? FROM notices JOIN users ON key = user WHERE id = ?")
      .Run({Now(), Stored(reason), id});
  delete_.Run({id});
  transaction.Commit();
}

NoticeState NoticeStore::State() {
  NoticeState state;
  for (const auto& [sender, notices] : turns_.Unsent()) {
    state.Unsent = Shown(state.Unsent + notices);
    if (sender != kAnySender && notices > 0)
      state.OfUsers.push_back({static_cast<std::int32_t>(sender), Shown(notices)});
  }
  AddDeferred(state);
  AddGivenUp(state);
  state.StoppedAddresses = StoppedAddresses(database_);
  return state;
}

void NoticeStore::AddDeferred(NoticeState& state) {
  Runtime::Statement counts(database_,
                            "SELECT count(*), strftime(?, min(first_attempt) / 1000.0, 'unixepoch') "
                            "FROM notices WHERE attempts > 0");
  if (auto row = counts({kTimeFormat}); row.Next()) {
    state.Deferred = Shown(row.Integer(0));
    state.OldestAttempt = FromUtf8(row.Text(1));
  }
  Runtime::Statement last(
      database_, "SELECT reason FROM notices WHERE attempts > 0 ORDER BY waiting_since DESC LIMIT 1");
  if (auto row = last({}); row.Next()) state.DeferredReason = FromUtf8(row.Text(0));
}

void NoticeStore::AddGivenUp(NoticeState& state) {
  const std::int64_t from = Now() - kEndedCounted;
  Runtime::Statement count(database_, "SELECT coalesce(sum(notices), 0) FROM ended_notices WHERE at > ?");
  if (auto row = count({from}); row.Next()) state.GivenUp = Shown(row.Integer(0));
  Runtime::Statement last(database_,
                          "SELECT strftime(?, at / 1000.0, 'unixepoch'), address, reason FROM ended_notices "
                          "WHERE at > ? ORDER BY at DESC, id DESC LIMIT 1");
  if (auto row = last({kTimeFormat, from}); row.Next()) {
    state.GivenUpAt = FromUtf8(row.Text(0));
    state.GivenUpAddress = FromUtf8(row.Text(1));
    state.GivenUpReason = FromUtf8(row.Text(2));
  }
}

bool NoticeStore::AddAnswer(const RefusedMail& mail) {
  return Talvane40::AddAnswer(database_, mail);
}

BounceResult NoticeStore::AddBounce(StringView messageId, const std::vector<String>& addresses,
                                    StringView reason) {
  return Talvane40::AddBounce(database_, ids_, messageId, addresses, reason);
}

std::int32_t NoticeStore::Drop() {
  Runtime::Transaction transaction(database_);
  std::int64_t unsent = 0;
  for (const auto& [sender, notices] : turns_.Unsent()) unsent += notices;
  database_.Run("DELETE FROM notices; DELETE FROM due_replies");
  transaction.Commit();
  return Shown(unsent);
}

}  // namespace Talvane40
