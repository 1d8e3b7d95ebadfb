// NoticeTurns: which notice of a project is sent next, and when.
//
// A reply has one row in due_replies, however many users there are. When nothing else is ready, the rows of
// its next users are created, up to 1,000 at a time. The order is by reply, then by user.
#pragma once

#include <map>
#include <optional>

#include "runtime/Database.h"

namespace Talvane40 {

using namespace Platform;

inline constexpr std::int64_t kAnySender = -1;  // any system user may send a notice

class NoticeTurns {
 public:
  // The database must outlive the object. Every operation raises 57 if it can't be read or written.
  explicit NoticeTurns(Runtime::Database& database);

  struct Turn {
    std::optional<std::int64_t> Notice;
    std::optional<std::int64_t> Wait;  // milliseconds; without a notice, if one waits
    bool Limited = false;              // there would be one without the limit
  };

  // The first notice that is ready and that the system user may send; it is counted. At most perMinute are
  // given in 60 s. Without byProject, only those with a route of their own. Notices to users who get no mail
  // any more are removed, and those that have waited for 30 days are given up. Writes nothing if there is
  // nothing to do.
  Turn Next(std::int32_t perMinute, std::int32_t uid, bool byProject);

  // How many are ready for the system user, without a limit.
  std::int64_t Ready(std::int32_t uid);

  // All that wait, by the system user who may send them, or kAnySender.
  std::map<std::int64_t, std::int64_t> Unsent();

  // As NoticeQueue::Untried and Postpone, with milliseconds, in the caller's transaction.
  void Uncount();
  std::int64_t Postpone(std::int32_t id, std::int64_t pause);

 private:
  bool HasWork(std::int64_t now, std::int32_t uid, bool byProject);
  std::optional<std::int64_t> WaitOf(std::int64_t now, std::int32_t uid);
  std::optional<std::int64_t> WaitForMinute(std::int64_t now, std::int32_t perMinute);
  void GiveUpOld(std::int64_t now);
  void MakeReady(std::int64_t now, std::int32_t uid);
  std::optional<std::int64_t> FirstReady(std::int32_t uid, bool byProject);
  bool CreateRows(std::int64_t now, std::int32_t uid, bool byProject);
  std::map<std::int64_t, std::int64_t> NotCreated(std::int64_t reply = 0);

  Runtime::Database& database_;
  Runtime::Statement hasWork_, wait_, ready_, dueReply_;
};

}  // namespace Talvane40
