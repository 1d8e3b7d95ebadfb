// MailIntake: stores each mail of a host once. platform/contracts/MailIntake.h is the contract.
#pragma once

#include <memory>
#include <optional>
#include <set>

#include "platform/Component.h"
#include "platform/Object.h"
#include "runtime/Database.h"
#include "siblings/Talvane40/OpenedDatabase.h"
#include "siblings/Talvane40/ProjectDatabase.h"

namespace Talvane40 {

using namespace Platform;

extern std::atomic<long> liveObjects;

class MailIntake : public ObjectWithMembers<MailIntake> {
 public:
  MailIntake();
  ~MailIntake() override;
  static const Table& Members();

 private:
  struct Files;

  Value Open(std::span<Value> arguments);
  Value IsStored(std::span<Value> arguments);
  Value FindSender(std::span<Value> arguments);
  Value Begin(std::span<Value> arguments);
  Value End(std::span<Value> arguments);
  Value SyncLater(std::span<Value> arguments);
  Value Sync(std::span<Value> arguments);

  // Makes replies that a connection can see durable: now, or with Sync.
  void SyncWithOthers(const std::shared_ptr<ProjectDatabase>& connection);

  OpenedDatabase<Files> opened_;
  Runtime::Durability durability_ = Runtime::Durability::AtCommit;
  std::set<std::shared_ptr<ProjectDatabase>> unsynced_;  // of replies that may not be on disk
  std::optional<Failure> syncFailure_;                   // of the first Sync that failed
  LiveObject live_{liveObjects};
};

}  // namespace Talvane40
