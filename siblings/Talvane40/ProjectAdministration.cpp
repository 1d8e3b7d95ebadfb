#include "siblings/Talvane40/ProjectAdministration.h"

#include <algorithm>

#include "platform/ReasonTexts.h"
#include "platform/contracts/ProjectAdministration.h"
#include "runtime/MailAddress.h"
#include "runtime/Texts.h"
#include "siblings/Talvane40/ProjectCreation.h"
#include "siblings/Talvane40/ProjectLocation.h"

namespace Talvane40 {
namespace {

constexpr std::size_t kLongest = 255;  // characters of a name or a title

// The longest password, and the character codes, that a mailbox record can hold.
constexpr std::size_t kLongestPassword = 97;
constexpr char16_t kLowestCode = 14, kHighestCode = 124;

[[noreturn]] void Refuse(std::int32_t text, StringView first = {}, StringView second = {}) {
  throw Failure(FailureNumber::RefusedInput, u"Talvane40.ProjectAdministration",
                Runtime::TextOf(text, first, second));
}

// The text without blanks at its ends. Raises 380 unless it is a valid name. what is the number of the text
// that begins the description.
String VettedName(const Value& value, std::int32_t what) {
  String name = Trim(value.ToString());
  if (name.empty()) Refuse(TextNumber::kNameEmpty, Runtime::TextOf(what));
  if (name.size() > kLongest) Refuse(TextNumber::kNameTooLarge, Runtime::TextOf(what));
  if (HasControl(name)) Refuse(TextNumber::kNameWithControl, Runtime::TextOf(what));
  return name;
}

// A project's name becomes the name of a registry key, which can't hold a backslash.
String VettedProjectName(const Value& value) {
  String name = VettedName(value, TextNumber::kProjectName);
  if (name.find(u'\\') != String::npos)
    Refuse(TextNumber::kNameWithBackslash, Runtime::TextOf(TextNumber::kProjectName));
  return name;
}

String VettedAddress(const Value& value) {
  String address = Trim(value.ToString());
  if (const String fault = Runtime::AddressFault(address); !fault.empty())
    Refuse(TextNumber::kAddressRefused, address, fault);
  return address;
}

// The password of an owner, who may bind a mailbox. The mailbox stores it without blanks at its ends.
String VettedPassword(const Value& value) {
  String password = value.ToString();
  if (password.empty()) Refuse(TextNumber::kPasswordEmpty);
  if (password.size() > kLongestPassword) Refuse(TextNumber::kPasswordTooLong);
  if (std::ranges::any_of(password, [](char16_t c) { return c < kLowestCode || c > kHighestCode; }))
    Refuse(TextNumber::kPasswordCharacters);
  if (password != Trim(password)) Refuse(TextNumber::kPasswordBlanks);
  return password;
}

ProjectDatabase OpenDatabase(const Value& path) {
  return ProjectDatabase(ReadProjectLocation(path.ToString()).Database.string());
}

}  // namespace

const ProjectAdministration::Table& ProjectAdministration::Members() {
  static const Table table = {Method(u"CreateProject", 5, &ProjectAdministration::CreateProject),
                              Method(u"AddUser", 4, &ProjectAdministration::AddUser),
                              Method(u"AddDiscussion", 2, &ProjectAdministration::AddDiscussion),
                              Method(u"Describe", 1, &ProjectAdministration::Describe)};
  return table;
}

Value ProjectAdministration::CreateProject(std::span<Value> arguments) {
  const String name = VettedProjectName(arguments[1]);
  DescribedUser owner{.Key = 0,
                      .Name = VettedName(arguments[2], TextNumber::kUserName),
                      .Address = {},
                      .MailAccepted = false};
  if (!arguments[3].ToString().empty()) {
    owner.Address = VettedAddress(arguments[3]);
    owner.MailAccepted = true;
  }
  Talvane40::CreateProject(arguments[0].ToString(), name, owner, VettedPassword(arguments[4]));
  return {};
}

Value ProjectAdministration::AddUser(std::span<Value> arguments) {
  const DescribedUser user{.Key = 0,
                           .Name = VettedName(arguments[1], TextNumber::kUserName),
                           .Address = VettedAddress(arguments[2]),
                           .MailAccepted = arguments[3].ToBool()};
  return OpenDatabase(arguments[0]).AddUser(user);
}

Value ProjectAdministration::AddDiscussion(std::span<Value> arguments) {
  const String title = VettedName(arguments[1], TextNumber::kDiscussionTitle);
  return OpenDatabase(arguments[0]).AddDiscussion(title);
}

Value ProjectAdministration::Describe(std::span<Value> arguments) {
  const ProjectLocation project = ReadProjectLocation(arguments[0].ToString());
  ProjectDatabase database(project.Database.string());
  std::int64_t version = 0;
  const ProjectDescription description{
      .Name = project.Name, .Users = database.Users(version), .Discussions = database.Discussions()};
  return description.ToValue();
}

}  // namespace Talvane40
