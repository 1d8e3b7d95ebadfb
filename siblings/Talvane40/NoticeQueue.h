// NoticeQueue: what a project has to send by mail. platform/contracts/NoticeQueue.h is the contract.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"
#include "siblings/Talvane40/OpenedDatabase.h"

namespace Talvane40 {

using namespace Platform;

extern std::atomic<long> liveObjects;

class NoticeQueue : public ObjectWithMembers<NoticeQueue> {
 public:
  NoticeQueue();
  ~NoticeQueue() override;
  static const Table& Members();

 private:
  struct Files;

  Value Open(std::span<Value> arguments);
  Value Lock(std::span<Value> arguments);
  Value Unlock(std::span<Value> arguments);
  Value Next(std::span<Value> arguments);
  Value Ready(std::span<Value> arguments);
  Value Untried(std::span<Value> arguments);
  Value EndPauses(std::span<Value> arguments);
  Value Sent(std::span<Value> arguments);
  Value Defer(std::span<Value> arguments);
  Value Postpone(std::span<Value> arguments);
  Value GiveUp(std::span<Value> arguments);
  Value State(std::span<Value> arguments);
  Value AddAnswer(std::span<Value> arguments);
  Value AddBounce(std::span<Value> arguments);
  Value Drop(std::span<Value> arguments);

  Files& Locked();

  OpenedDatabase<Files> opened_;
  LiveObject live_{liveObjects};
};

}  // namespace Talvane40
