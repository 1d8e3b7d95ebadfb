#include "siblings/Talvane40/NoticeQueue.h"

#include "siblings/Talvane40/FileIdentity.h"
#include "siblings/Talvane40/MailUnderWay.h"
#include "siblings/Talvane40/NoticeLock.h"
#include "siblings/Talvane40/NoticeStore.h"
#include "siblings/Talvane40/ProjectLocation.h"

namespace Talvane40 {
namespace {

[[noreturn]] void Refuse(std::int32_t number, StringView why) {
  throw Failure(number, u"Talvane40.NoticeQueue", String(why));
}

}  // namespace

struct NoticeQueue::OpenedFiles {
  // The identity is taken before the database is opened: if another file takes its place in between, the next
  // look notices it.
  explicit OpenedFiles(const std::string& file) : File(file), Identity(IdentityOf(file)), Store(file) {}

  std::string File;
  FileIdentity Identity;
  NoticeStore Store;
  Runtime::Descriptor Lock;
};

NoticeQueue::NoticeQueue() = default;
NoticeQueue::~NoticeQueue() = default;

const NoticeQueue::Table& NoticeQueue::Members() {
  static const Table table = {Method(u"Open", 1, &NoticeQueue::Open),
                              Method(u"Lock", 0, &NoticeQueue::Lock),
                              Method(u"Unlock", 0, &NoticeQueue::Unlock),
                              Method(u"Next", 2, &NoticeQueue::Next),
                              Method(u"Sent", 1, &NoticeQueue::Sent),
                              Method(u"Defer", 3, &NoticeQueue::Defer),
                              Method(u"GiveUp", 2, &NoticeQueue::GiveUp),
                              Method(u"State", 0, &NoticeQueue::State),
                              Method(u"AddAnswer", 6, &NoticeQueue::AddAnswer),
                              Method(u"AddBounce", 2, &NoticeQueue::AddBounce),
                              Method(u"Drop", 0, &NoticeQueue::Drop)};
  return table;
}

NoticeQueue::OpenedFiles& NoticeQueue::Opened() {
  if (!opened_) Refuse(FailureNumber::ObjectNotSet, u"No project is open. Open one first.");
  return *opened_;
}

NoticeQueue::OpenedFiles& NoticeQueue::Locked() {
  if (!Opened().Lock) Refuse(FailureNumber::PermissionDenied, u"Lock the project's notices first.");
  return *opened_;
}

Value NoticeQueue::Open(std::span<Value> arguments) {
  std::unique_ptr<OpenedFiles> former = std::move(opened_);
  const std::string file = ReadProjectLocation(arguments[0].ToString()).Database.string();
  const bool same = former && former->File == file && former->Identity == IdentityOf(file);
  opened_ = same ? std::move(former) : std::make_unique<OpenedFiles>(file);
  return !same;
}

Value NoticeQueue::Lock(std::span<Value>) {
  OpenedFiles& files = Opened();
  if (!files.Lock) files.Lock = TakeNoticeLock(files.File);
  return bool(files.Lock);
}

Value NoticeQueue::Unlock(std::span<Value>) {
  Opened().Lock.Close();
  return {};
}

Value NoticeQueue::Next(std::span<Value> arguments) {
  const std::int32_t perMinute = arguments[0].ToInt32(), uid = arguments[1].ToInt32();
  if (perMinute < 1) Refuse(FailureNumber::RefusedInput, u"At least one notice a minute must be allowed.");
  return Locked().Store.Next(perMinute, uid).ToValue();
}

Value NoticeQueue::Sent(std::span<Value> arguments) {
  Opened().Store.Sent(arguments[0].ToInt32());
  return {};
}

Value NoticeQueue::Defer(std::span<Value> arguments) {
  Opened().Store.Defer(arguments[0].ToInt32(), arguments[1].ToString(),
                       std::chrono::seconds(arguments[2].ToInt32()));
  return {};
}

Value NoticeQueue::GiveUp(std::span<Value> arguments) {
  Opened().Store.GiveUp(arguments[0].ToInt32(), arguments[1].ToString());
  return {};
}

Value NoticeQueue::State(std::span<Value>) {
  return Opened().Store.State().ToValue();
}

Value NoticeQueue::AddAnswer(std::span<Value> arguments) {
  const RefusedMail mail{.UserKey = arguments[0].ToInt32(),
                         .Key = FromUtf8(VettedKey(arguments[1])),
                         .MessageId = arguments[2].ToString(),
                         .Subject = arguments[3].ToString(),
                         .Text = arguments[4].ToString(),
                         .Reason = arguments[5].ToString()};
  return Opened().Store.AddAnswer(mail);
}

Value NoticeQueue::AddBounce(std::span<Value> arguments) {
  return static_cast<std::int32_t>(
      Opened().Store.AddBounce(arguments[0].ToString(), arguments[1].ToString()));
}

Value NoticeQueue::Drop(std::span<Value>) {
  return Locked().Store.Drop();
}

}  // namespace Talvane40
