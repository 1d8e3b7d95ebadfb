#include "platform/contracts/ProjectAdministration.h"

#include "platform/contracts/ArrayMembers.h"

namespace Platform {
namespace {

Value UserValue(const DescribedUser& user) {
  return user.ToValue();
}

Value ReplyValue(const DescribedReply& reply) {
  return reply.ToValue();
}

Value DiscussionValue(const DescribedDiscussion& discussion) {
  return Array{discussion.Number, discussion.Title, ArrayOf(discussion.Replies, ReplyValue)};
}

DescribedDiscussion ReadDiscussion(const Value& value) {
  const Array& discussion = value.ToArray();
  return {ElementOf(discussion, 0).ToInt32(), ElementOf(discussion, 1).ToString(),
          VectorOf(ElementOf(discussion, 2), DescribedReply::FromValue)};
}

}  // namespace

Value DescribedUser::ToValue() const {
  return Array{Key, Name, Address, MailAccepted, Owner, Language, Stopped};
}

DescribedUser DescribedUser::FromValue(const Value& value) {
  const Array& user = value.ToArray();
  return {ElementOf(user, 0).ToInt32(), ElementOf(user, 1).ToString(), ElementOf(user, 2).ToString(),
          ElementOf(user, 3).ToBool(),  ElementOf(user, 4).ToBool(),   ElementOf(user, 5).ToString(),
          ElementOf(user, 6).ToBool()};
}

Value DescribedReply::ToValue() const {
  return Array{Subject, Body, UserName, At, Number, UserKey, UserAddress};
}

DescribedReply DescribedReply::FromValue(const Value& value) {
  const Array& reply = value.ToArray();
  return {ElementOf(reply, 0).ToString(), ElementOf(reply, 1).ToString(), ElementOf(reply, 2).ToString(),
          ElementOf(reply, 3).ToString(), ElementOf(reply, 4).ToInt32(),  ElementOf(reply, 5).ToInt32(),
          ElementOf(reply, 6).ToString()};
}

Value NoticeRoute::ToValue() const {
  return Array{Transport, Server, Address, RealName, Uid};
}

NoticeRoute NoticeRoute::FromValue(const Value& value) {
  const Array& route = value.ToArray();
  return {ElementOf(route, 0).ToInt32(), ElementOf(route, 1).ToString(), ElementOf(route, 2).ToString(),
          ElementOf(route, 3).ToString(), ElementOf(route, 4).ToInt32()};
}

Value UserChange::ToValue() const {
  return Array{OptionalValue(Name), OptionalValue(Address), OptionalValue(MailAccepted),
               OptionalValue(Language)};
}

UserChange UserChange::FromValue(const Value& value) {
  const Array& change = value.ToArray();
  const auto text = [](const Value& member) { return member.ToString(); };
  return {ReadOptional(change, 0, text), ReadOptional(change, 1, text),
          ReadOptional(change, 2, [](const Value& member) { return member.ToBool(); }),
          ReadOptional(change, 3, text)};
}

Value ProjectDescription::ToValue() const {
  return Array{Name, ArrayOf(Users, UserValue), ArrayOf(Discussions, DiscussionValue)};
}

ProjectDescription ProjectDescription::FromValue(const Value& value) {
  const Array& project = value.ToArray();
  return {ElementOf(project, 0).ToString(), VectorOf(ElementOf(project, 1), DescribedUser::FromValue),
          VectorOf(ElementOf(project, 2), ReadDiscussion)};
}

std::vector<DescribedReply> ProjectAdministration::RepliesAfter(StringView path, std::int32_t discussion,
                                                                std::int32_t after) const {
  return VectorOf(Call(u"RepliesAfter", path, discussion, after), DescribedReply::FromValue);
}

ProjectDescription ProjectAdministration::Describe(StringView path) const {
  ProjectDescription project = Outline(path);
  for (DescribedDiscussion& discussion : project.Discussions)
    EachReply(path, discussion.Number,
              [&](const DescribedReply& reply) { discussion.Replies.push_back(reply); });
  return project;
}

}  // namespace Platform
