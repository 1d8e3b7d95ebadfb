#include "siblings/Talvane40/MailIntake.h"

#include <utility>

#include "siblings/Talvane40/MailUnderWay.h"
#include "siblings/Talvane40/SenderDirectory.h"

namespace Talvane40 {

struct MailIntake::Files {
  explicit Files(const std::string& file) : Connection(std::make_shared<ProjectDatabase>(file)) {}

  const std::shared_ptr<ProjectDatabase> Connection;  // shared with those that have to be synced
  ProjectDatabase& Database = *Connection;
  SenderDirectory Senders;
};

MailIntake::MailIntake() : opened_(u"Talvane40.MailIntake") {}

MailIntake::~MailIntake() {
  std::optional<MailUnderWay>& mail = MailOfThisThread();
  if (mail && mail->BegunBy == this) mail.reset();
}

const MailIntake::Table& MailIntake::Members() {
  static const Table table = {Method(u"Open", 1, &MailIntake::Open),
                              Method(u"IsStored", 1, &MailIntake::IsStored),
                              Method(u"FindSender", 1, &MailIntake::FindSender),
                              Method(u"Begin", 2, &MailIntake::Begin),
                              Method(u"End", 0, &MailIntake::End),
                              Method(u"SyncLater", 0, &MailIntake::SyncLater),
                              Method(u"Sync", 0, &MailIntake::Sync)};
  return table;
}

Value MailIntake::Open(std::span<Value> arguments) {
  return opened_.Open(arguments[0].ToString()) != OpenedDatabase<Files>::Change::None;
}

Value MailIntake::IsStored(std::span<Value> arguments) {
  Files& files = opened_.Get();
  const bool stored = files.Database.IsMailStored(VettedKey(arguments[0]));
  if (stored) SyncWithOthers(files.Connection);
  return stored;
}

// Nothing, or whether mail of the user is accepted, the user's key and language.
Value MailIntake::FindSender(std::span<Value> arguments) {
  Files& files = opened_.Get();
  const Sender* const sender = files.Senders.Find(files.Database, arguments[0].ToString());
  if (!sender) return {};
  return Array{sender->MailAccepted, sender->UserKey, sender->Language};
}

Value MailIntake::Begin(std::span<Value> arguments) {
  std::optional<MailUnderWay>& mail = MailOfThisThread();
  mail.reset();
  opened_.Get();
  mail = MailUnderWay{.Key = VettedKey(arguments[0]),
                      .Author = arguments[1].ToInt32(),
                      .BegunBy = this,
                      .Durability = durability_};
  return {};
}

Value MailIntake::End(std::span<Value>) {
  const std::optional<MailUnderWay> mail = std::exchange(MailOfThisThread(), std::nullopt);
  const IntakeResult result = mail ? mail->Result : IntakeResult::Nothing;
  if (result == IntakeResult::Nothing) return static_cast<std::int32_t>(result);
  const bool here = opened_.IsOpen() && opened_.File() == mail->StoredIn;
  if (result == IntakeResult::Stored && here) opened_.Get().Database.ReplyWasAdded();
  if (result == IntakeResult::AlreadyStored || mail->Durability == Runtime::Durability::Later)
    SyncWithOthers(here ? opened_.Get().Connection : std::make_shared<ProjectDatabase>(mail->StoredIn));
  return static_cast<std::int32_t>(result);
}

Value MailIntake::SyncLater(std::span<Value>) {
  durability_ = Runtime::Durability::Later;
  return {};
}

// What another process has stored may not be on disk either.
void MailIntake::SyncWithOthers(const std::shared_ptr<ProjectDatabase>& connection) {
  if (durability_ == Runtime::Durability::AtCommit)
    connection->SyncLog();
  else
    unsynced_.insert(connection);
}

// A second try may succeed although what the first one lost is not on disk, so it is not made.
Value MailIntake::Sync(std::span<Value>) {
  if (syncFailure_) throw *syncFailure_;
  try {
    for (const auto& connection : unsynced_) connection->SyncLog();
  } catch (const Failure& failure) {
    syncFailure_ = failure;
    throw;
  }
  unsynced_.clear();
  return {};
}

}  // namespace Talvane40
