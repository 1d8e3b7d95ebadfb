// Objects with a table of members: what is found by name, and what is refused.
#include "platform/Object.h"

#include <functional>

#include "tests/support/Texts.h"

namespace Tests {
namespace {

using namespace Platform;

class Sample : public ObjectWithMembers<Sample> {
 public:
  static const Table& Members() {
    static const Table table = {Method(u"Twice", 1, &Sample::Twice), Property(u"Name", &Sample::GetName)};
    return table;
  }

 private:
  Value Twice(std::span<Value> arguments) { return arguments[0].ToInt32() * 2; }
  Value GetName() { return u"sample"; }
};

TEST(Objects, AnUnknownMemberAndAWrongNumberOfArgumentsAreRefused) {
  Sample object;
  EXPECT_EQ(CallWith(object, u"Twice", {2}).ToInt32(), 4);
  EXPECT_TEXT(u"sample", object.Get(u"Name").ToString());
  const std::pair<std::int32_t, std::function<void()>> rows[] = {
      {FailureNumber::WrongArguments, [&] { CallWith(object, u"Twice", {}); }},
      {FailureNumber::WrongArguments,
       [&] {
         CallWith(object, u"Twice", {1, 2});
       }},
      {FailureNumber::NoSuchMember, [&] { CallWith(object, u"Thrice", {1}); }},
      {FailureNumber::NoSuchMember, [&] { object.Get(u"Twice"); }},
      {FailureNumber::NoSuchMember, [&] { object.Set(u"Name", u"x"); }}};
  for (const auto& [number, work] : rows) {
    try {
      work();
      ADD_FAILURE() << "nothing was raised for " << number;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.Number(), number);
    }
  }
}

}  // namespace
}  // namespace Tests
