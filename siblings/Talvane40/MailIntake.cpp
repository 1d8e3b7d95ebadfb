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
                              Method(u"Begin", 2, &MailIntake::Begin), Method(u"End", 0, &MailIntake::End)};
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
  mail = MailUnderWay{.Key = VettedKey(arguments[0]), .Author = arguments[1].ToInt32(), .BegunBy = this};
  return {};
}

Value MailIntake::End(std::span<Value>) {
  std::optional<MailUnderWay>& mail = MailOfThisThread();
  const IntakeResult result = mail ? mail->Result : IntakeResult::Nothing;
  if (result == IntakeResult::Stored && opened_.IsOpen() && opened_.File() == mail->StoredIn)
    opened_.Get().Database.ReplyWasAdded();
  mail.reset();
  return static_cast<std::int32_t>(result);
}

}  // namespace Talvane40
