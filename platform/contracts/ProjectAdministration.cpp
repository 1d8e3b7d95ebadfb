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
  return Array{user.Key, user.Name, user.Address, user.MailAccepted};
}

DescribedUser ReadUser(const Array& user) {
  return {ElementOf(user, 0).ToInt32(), ElementOf(user, 1).ToString(), ElementOf(user, 2).ToString(),
          ElementOf(user, 3).ToBool()};
}

Value ReplyValue(const DescribedReply& reply) {
  return Array{reply.Subject, reply.Body, reply.UserName, reply.At};
}

DescribedReply ReadReply(const Array& reply) {
  return {ElementOf(reply, 0).ToString(), ElementOf(reply, 1).ToString(), ElementOf(reply, 2).ToString(),
          ElementOf(reply, 3).ToString()};
}

Value DiscussionValue(const DescribedDiscussion& discussion) {
  return Array{discussion.Number, discussion.Title, ArrayOf(discussion.Replies, ReplyValue)};
}

DescribedDiscussion ReadDiscussion(const Array& discussion) {
  return {ElementOf(discussion, 0).ToInt32(), ElementOf(discussion, 1).ToString(),
          VectorOf(ElementOf(discussion, 2), ReadReply)};
}

}  // namespace

Value ProjectDescription::ToValue() const {
  return Array{Name, ArrayOf(Users, UserValue), ArrayOf(Discussions, DiscussionValue)};
}

ProjectDescription ProjectDescription::FromValue(const Value& value) {
  const Array& project = value.ToArray();
  return {ElementOf(project, 0).ToString(), VectorOf(ElementOf(project, 1), ReadUser),
          VectorOf(ElementOf(project, 2), ReadDiscussion)};
}

}  // namespace Platform
