#include "siblings/Talvane40/NoticeQueue.h"

#include "platform/contracts/ArrayMembers.h"
#include "siblings/Talvane40/MailUnderWay.h"
#include "siblings/Talvane40/NoticeLock.h"
#include "siblings/Talvane40/NoticeStore.h"

namespace Talvane40 {
namespace {

constexpr StringView kComponent = u"Talvane40.NoticeQueue";

[[noreturn]] void Refuse(std::int32_t number, StringView why) {
  throw Failure(number, String(kComponent), String(why));
}

}  // namespace

struct NoticeQueue::Files {
  explicit Files(const std::string& file) : Store(file) {}

  NoticeStore Store;
  Runtime::Descriptor Lock;
};

NoticeQueue::NoticeQueue() : opened_(kComponent) {}
NoticeQueue::~NoticeQueue() = default;

const NoticeQueue::Table& NoticeQueue::Members() {
  static const Table table = {Method(u"Open", 1, &NoticeQueue::Open),
                              Method(u"Lock", 0, &NoticeQueue::Lock),
                              Method(u"Unlock", 0, &NoticeQueue::Unlock),
                              Method(u"Next", 3, &NoticeQueue::Next),
                              Method(u"Ready", 1, &NoticeQueue::Ready),
                              Method(u"Untried", 0, &NoticeQueue::Untried),
                              Method(u"EndPauses", 0, &NoticeQueue::EndPauses),
                              Method(u"Sent", 1, &NoticeQueue::Sent),
                              Method(u"Defer", 3, &NoticeQueue::Defer),
                              Method(u"Postpone", 2, &NoticeQueue::Postpone),
                              Method(u"GiveUp", 2, &NoticeQueue::GiveUp),
                              Method(u"State", 0, &NoticeQueue::State),
                              Method(u"AddAnswer", 6, &NoticeQueue::AddAnswer),
                              Method(u"AddBounce", 3, &NoticeQueue::AddBounce),
                              Method(u"Drop", 0, &NoticeQueue::Drop)};
  return table;
}

NoticeQueue::Files& NoticeQueue::Locked() {
  Files& files = opened_.Get();
  if (!files.Lock) Refuse(FailureNumber::PermissionDenied, u"Lock the project's notices first.");
  return files;
}

Value NoticeQueue::Open(std::span<Value> arguments) {
  return opened_.Open(arguments[0].ToString()) == OpenedDatabase<Files>::Change::Database;
}

Value NoticeQueue::Lock(std::span<Value>) {
  Files& files = opened_.Get();
  if (!files.Lock) files.Lock = TakeNoticeLock(opened_.File());
  return bool(files.Lock);
}

Value NoticeQueue::Unlock(std::span<Value>) {
  opened_.Get().Lock.Close();
  return {};
}

Value NoticeQueue::Next(std::span<Value> arguments) {
  const std::int32_t perMinute = arguments[0].ToInt32(), uid = arguments[1].ToInt32();
  if (perMinute < 1) Refuse(FailureNumber::RefusedInput, u"At least one notice a minute must be allowed.");
  return Locked().Store.Next(perMinute, uid, arguments[2].ToBool()).ToValue();
}

Value NoticeQueue::Ready(std::span<Value> arguments) {
  return opened_.Get().Store.Ready(arguments[0].ToInt32());
}

Value NoticeQueue::Untried(std::span<Value>) {
  opened_.Get().Store.Untried();
  return {};
}

Value NoticeQueue::EndPauses(std::span<Value>) {
  Locked().Store.EndPauses();
  return {};
}

Value NoticeQueue::Sent(std::span<Value> arguments) {
  opened_.Get().Store.Sent(arguments[0].ToInt32());
  return {};
}

Value NoticeQueue::Defer(std::span<Value> arguments) {
  opened_.Get().Store.Defer(arguments[0].ToInt32(), arguments[1].ToString(),
                            std::chrono::seconds(arguments[2].ToInt32()));
  return {};
}

Value NoticeQueue::Postpone(std::span<Value> arguments) {
  return opened_.Get().Store.Postpone(arguments[0].ToInt32(), std::chrono::seconds(arguments[1].ToInt32()));
}

Value NoticeQueue::GiveUp(std::span<Value> arguments) {
  opened_.Get().Store.GiveUp(arguments[0].ToInt32(), arguments[1].ToString());
  return {};
}

Value NoticeQueue::State(std::span<Value>) {
  return opened_.Get().Store.State().ToValue();
}

Value NoticeQueue::AddAnswer(std::span<Value> arguments) {
  const RefusedMail mail{.UserKey = arguments[0].ToInt32(),
                         .Key = FromUtf8(VettedKey(arguments[1])),
                         .MessageId = arguments[2].ToString(),
                         .Subject = arguments[3].ToString(),
                         .Text = arguments[4].ToString(),
                         .Reason = arguments[5].ToString()};
  return opened_.Get().Store.AddAnswer(mail);
}

Value NoticeQueue::AddBounce(std::span<Value> arguments) {
  const auto address = [](const Value& value) { return value.ToString(); };
  return static_cast<std::int32_t>(opened_.Get().Store.AddBounce(
      arguments[0].ToString(), VectorOf(arguments[1], address), arguments[2].ToString()));
}

Value NoticeQueue::Drop(std::span<Value>) {
  return Locked().Store.Drop();
}

}  // namespace Talvane40
