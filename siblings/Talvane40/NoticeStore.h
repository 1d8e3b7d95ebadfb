// NoticeStore: the notices that wait in a project's database, and what became of them.
//
// Operations are those of NoticeQueue. One thread at a time; each change is one durable transaction. Every
// operation raises 57 with the reason if the database can't be read or written.
#pragma once

#include "platform/contracts/NoticeQueue.h"
#include "runtime/Database.h"
#include "siblings/Talvane40/NoticeIds.h"
#include "siblings/Talvane40/NoticeReader.h"
#include "siblings/Talvane40/NoticeTurns.h"

namespace Talvane40 {

using namespace Platform;

class NoticeStore {
 public:
  // Opens an existing file as ProjectDatabase does.
  explicit NoticeStore(const std::string& file);

  NextNotice Next(std::int32_t perMinute, std::int32_t uid, bool byProject);
  std::int32_t Ready(std::int32_t uid);
  void Untried();
  void EndPauses();
  void Sent(std::int32_t id);
  void Defer(std::int32_t id, StringView reason, std::chrono::seconds pause);
  std::int32_t Postpone(std::int32_t id, std::chrono::seconds pause);
  void GiveUp(std::int32_t id, StringView reason);
  NoticeState State();
  bool AddAnswer(const RefusedMail& mail);
  BounceResult AddBounce(StringView messageId, const std::vector<String>& addresses, StringView reason);
  std::int32_t Drop();

 private:
  void AddDeferred(NoticeState& state);
  void AddGivenUp(NoticeState& state);

  Runtime::Database database_;
  NoticeIds ids_;
  NoticeTurns turns_;
  NoticeReader reader_;
  Runtime::Statement delete_, defer_;
};

}  // namespace Talvane40
