#include "siblings/Talvane40/MailIntake.h"

#include "runtime/FileStamp.h"
#include "siblings/Talvane40/FileIdentity.h"
#include "siblings/Talvane40/MailUnderWay.h"
#include "siblings/Talvane40/ProjectLocation.h"
#include "siblings/Talvane40/SenderDirectory.h"

namespace Talvane40 {
namespace {

[[noreturn]] void Refuse(std::int32_t number, StringView why) {
  throw Failure(number, u"Talvane40.MailIntake", String(why));
}

}  // namespace

struct MailIntake::OpenedFiles {
  // The identity is taken before the database is opened: if another file takes its place in between, the next
  // look notices it.
  explicit OpenedFiles(const std::string& file) : File(file), Identity(IdentityOf(file)), Database(file) {}

  std::string ProjectFile;
  Runtime::FileStamp ProjectStamp;  // from before it was read
  std::string File;
  FileIdentity Identity;
  ProjectDatabase Database;
  SenderDirectory Senders;
};

MailIntake::MailIntake() = default;

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

MailIntake::OpenedFiles& MailIntake::Opened() {
  if (!opened_) Refuse(FailureNumber::ObjectNotSet, u"No project is open. Open one first.");
  return *opened_;
}

Value MailIntake::Open(std::span<Value> arguments) {
  std::unique_ptr<OpenedFiles> former = std::move(opened_);
  const std::string project = PathOf(arguments[0].ToString()).string();
  const Runtime::FileStamp stamp(project);
  const bool sameProject = former && former->ProjectFile == project && former->ProjectStamp.IsSettled() &&
                           former->ProjectStamp == stamp;
  const std::string file =
      sameProject ? former->File : ReadProjectLocation(arguments[0].ToString()).Database.string();
  const bool sameDatabase = former && former->File == file && former->Identity == IdentityOf(file);
  opened_ = sameDatabase ? std::move(former) : std::make_unique<OpenedFiles>(file);
  opened_->ProjectFile = project;
  opened_->ProjectStamp = stamp;
  return !sameProject || !sameDatabase;
}

Value MailIntake::IsStored(std::span<Value> arguments) {
  return Opened().Database.IsMailStored(VettedKey(arguments[0]));
}

// Nothing, or whether mail of the user is accepted, the user's key and language.
Value MailIntake::FindSender(std::span<Value> arguments) {
  OpenedFiles& files = Opened();
  const Sender* const sender = files.Senders.Find(files.Database, arguments[0].ToString());
  if (!sender) return {};
  return Array{sender->MailAccepted, sender->UserKey, sender->Language};
}

Value MailIntake::Begin(std::span<Value> arguments) {
  std::optional<MailUnderWay>& mail = MailOfThisThread();
  mail.reset();
  Opened();
  mail = MailUnderWay{.Key = VettedKey(arguments[0]), .Author = arguments[1].ToInt32(), .BegunBy = this};
  return {};
}

Value MailIntake::End(std::span<Value>) {
  std::optional<MailUnderWay>& mail = MailOfThisThread();
  const IntakeResult result = mail ? mail->Result : IntakeResult::Nothing;
  if (result == IntakeResult::Stored && opened_ && opened_->File == mail->StoredIn)
    opened_->Database.ReplyWasAdded();
  mail.reset();
  return static_cast<std::int32_t>(result);
}

}  // namespace Talvane40
