#include "siblings/Talvane40/MailIntake.h"

#include "siblings/Talvane40/MailUnderWay.h"
#include "siblings/Talvane40/SenderDirectory.h"

namespace Talvane40 {

struct MailIntake::Files {
  explicit Files(const std::string& file) : Database(file) {}

  ProjectDatabase Database;
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
  return opened_.Get().Database.IsMailStored(VettedKey(arguments[0]));
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
  std::optional<MailUnderWay>& mail = MailOfThisThread();
  const IntakeResult result = mail ? mail->Result : IntakeResult::Nothing;
  if (result == IntakeResult::Stored && opened_.IsOpen() && opened_.File() == mail->StoredIn)
    opened_.Get().Database.ReplyWasAdded();
  if (result == IntakeResult::Stored && mail->Durability == Runtime::Durability::Later)
    unsynced_.insert(mail->StoredIn);
  mail.reset();
  return static_cast<std::int32_t>(result);
}

Value MailIntake::SyncLater(std::span<Value>) {
  durability_ = Runtime::Durability::Later;
  return {};
}

// A second try may succeed although what the first one lost is not on disk, so it is not made.
Value MailIntake::Sync(std::span<Value>) {
  if (syncFailure_) throw *syncFailure_;
  try {
    for (const std::string& file : unsynced_) Runtime::Database::SyncLog(file);
  } catch (const Failure& failure) {
    syncFailure_ = failure;
    throw;
  }
  unsynced_.clear();
  return {};
}

}  // namespace Talvane40
