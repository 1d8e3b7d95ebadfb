#include "platform/contracts/NoticeQueue.h"

#include "platform/CheckedArithmetic.h"
#include "platform/contracts/ArrayMembers.h"

namespace Platform {
namespace {

Value TextValue(const String& text) {
  return text;
}

String ReadText(const Value& value) {
  return value.ToString();
}

Value UserValue(const NoticesOfUser& notices) {
  return notices.ToValue();
}

}  // namespace

Value DueNotice::ToValue() const {
  return Array{Id,
               static_cast<std::int32_t>(Kind),
               Recipient.ToValue(),
               Attempts,
               FirstAttempt,
               MessageId,
               ThreadId,
               ArrayOf(EarlierIds, TextValue),
               Discussion,
               Title,
               Reply.ToValue(),
               Route.ToValue(),
               RefusedId,
               RefusedSubject,
               RefusedText,
               Reason};
}

DueNotice DueNotice::FromValue(const Value& value) {
  const Array& notice = value.ToArray();
  const auto text = [&](std::size_t index) { return ElementOf(notice, index).ToString(); };
  return {.Id = ElementOf(notice, 0).ToInt32(),
          .Kind = static_cast<NoticeKind>(ElementOf(notice, 1).ToInt32()),
          .Recipient = DescribedUser::FromValue(ElementOf(notice, 2)),
          .Attempts = ElementOf(notice, 3).ToInt32(),
          .FirstAttempt = text(4),
          .MessageId = text(5),
          .ThreadId = text(6),
          .EarlierIds = VectorOf(ElementOf(notice, 7), ReadText),
          .Discussion = ElementOf(notice, 8).ToInt32(),
          .Title = text(9),
          .Reply = DescribedReply::FromValue(ElementOf(notice, 10)),
          .Route = NoticeRoute::FromValue(ElementOf(notice, 11)),
          .RefusedId = text(12),
          .RefusedSubject = text(13),
          .RefusedText = text(14),
          .Reason = text(15)};
}

Value NoticesOfUser::ToValue() const {
  return Array{Uid, Unsent};
}

NoticesOfUser NoticesOfUser::FromValue(const Value& value) {
  const Array& notices = value.ToArray();
  return {.Uid = ElementOf(notices, 0).ToInt32(), .Unsent = ElementOf(notices, 1).ToInt32()};
}

Value NoticeState::ToValue() const {
  return Array{Unsent,
               Deferred,
               OldestAttempt,
               DeferredReason,
               GivenUp,
               GivenUpAt,
               GivenUpAddress,
               GivenUpReason,
               ArrayOf(StoppedAddresses, TextValue),
               ArrayOf(OfUsers, UserValue)};
}

NoticeState NoticeState::FromValue(const Value& value) {
  const Array& state = value.ToArray();
  const auto text = [&](std::size_t index) { return ElementOf(state, index).ToString(); };
  return {.Unsent = ElementOf(state, 0).ToInt32(),
          .Deferred = ElementOf(state, 1).ToInt32(),
          .OldestAttempt = text(2),
          .DeferredReason = text(3),
          .GivenUp = ElementOf(state, 4).ToInt32(),
          .GivenUpAt = text(5),
          .GivenUpAddress = text(6),
          .GivenUpReason = text(7),
          .StoppedAddresses = VectorOf(ElementOf(state, 8), ReadText),
          .OfUsers = VectorOf(ElementOf(state, 9), NoticesOfUser::FromValue)};
}

BounceResult NoticeQueue::AddBounce(StringView messageId, const std::vector<String>& addresses,
                                    StringView reason) const {
  return static_cast<BounceResult>(
      Call(u"AddBounce", messageId, ArrayOf(addresses, TextValue), reason).ToInt32());
}

Value NextNotice::ToValue() const {
  return Array{Notice ? Notice->ToValue() : Value(),
               Wait ? Value(Narrow<std::int32_t>(Wait->count())) : Value(), Limited};
}

NextNotice NextNotice::FromValue(const Value& value) {
  const Array& next = value.ToArray();
  const auto time = [](const Value& wait) { return std::chrono::milliseconds(wait.ToInt32()); };
  return {.Notice = ReadOptional(next, 0, DueNotice::FromValue),
          .Wait = ReadOptional(next, 1, time),
          .Limited = ElementOf(next, 2).ToBool()};
}

}  // namespace Platform
