#include "platform/contracts/ProjectAdministration.h"

namespace Platform {
namespace {

// An array with the value that make gives for each element.
template <class Element, class Make>
Array ArrayOf(const std::vector<Element>& elements, Make make) {
  Array array;
  array.reserve(elements.size());
  for (const Element& element : elements) array.push_back(make(element));
  return array;
}

template <class Read>
auto VectorOf(const Value& value, Read read) {
  std::vector<decltype(read(value.ToArray()))> elements;
  for (const Value& element : value.ToArray()) elements.push_back(read(element.ToArray()));
  return elements;
}

const Value& ElementOf(const Array& array, std::size_t index) {
  if (index >= array.size()) Raise(FailureNumber::Subscript);
  return array[index];
}

Value UserValue(const DescribedUser& user) {
  return Array{user.Key, user.Name, user.Address, user.MailAccepted, user.Owner, user.Language};
}

DescribedUser ReadUser(const Array& user) {
  return {ElementOf(user, 0).ToInt32(), ElementOf(user, 1).ToString(), ElementOf(user, 2).ToString(),
          ElementOf(user, 3).ToBool(),  ElementOf(user, 4).ToBool(),   ElementOf(user, 5).ToString()};
}

Value ReplyValue(const DescribedReply& reply) {
  return reply.ToValue();
}

DescribedReply ReadReply(const Array& reply) {
  return {ElementOf(reply, 0).ToString(), ElementOf(reply, 1).ToString(), ElementOf(reply, 2).ToString(),
          ElementOf(reply, 3).ToString(), ElementOf(reply, 4).ToInt32(),  ElementOf(reply, 5).ToInt32(),
          ElementOf(reply, 6).ToString()};
}

Value DiscussionValue(const DescribedDiscussion& discussion) {
  return Array{discussion.Number, discussion.Title, ArrayOf(discussion.Replies, ReplyValue)};
}

DescribedDiscussion ReadDiscussion(const Array& discussion) {
  return {ElementOf(discussion, 0).ToInt32(), ElementOf(discussion, 1).ToString(),
          VectorOf(ElementOf(discussion, 2), ReadReply)};
}

// An empty value stands for nothing.
template <class Member>
Value OptionalValue(const std::optional<Member>& member) {
  return member ? Value(*member) : Value();
}

template <class Read>
auto ReadOptional(const Array& array, std::size_t index, Read read) {
  const Value& value = ElementOf(array, index);
  return value.IsEmpty() ? std::nullopt : std::optional(read(value));
}

}  // namespace

Value DescribedReply::ToValue() const {
  return Array{Subject, Body, UserName, At, Number, UserKey, UserAddress};
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
  return {ElementOf(project, 0).ToString(), VectorOf(ElementOf(project, 1), ReadUser),
          VectorOf(ElementOf(project, 2), ReadDiscussion)};
}

std::vector<DescribedReply> ProjectAdministration::RepliesAfter(StringView path, std::int32_t discussion,
                                                                std::int32_t after) const {
  return VectorOf(Call(u"RepliesAfter", path, discussion, after), ReadReply);
}

ProjectDescription ProjectAdministration::Describe(StringView path) const {
  ProjectDescription project = Outline(path);
  for (DescribedDiscussion& discussion : project.Discussions)
    EachReply(path, discussion.Number,
              [&](const DescribedReply& reply) { discussion.Replies.push_back(reply); });
  return project;
}

}  // namespace Platform
