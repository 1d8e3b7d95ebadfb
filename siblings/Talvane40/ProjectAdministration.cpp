#include "siblings/Talvane40/ProjectAdministration.h"

#include <algorithm>

#include "platform/contracts/ProjectAdministration.h"
#include "runtime/MailAddress.h"
#include "siblings/Talvane40/ProjectCreation.h"
#include "siblings/Talvane40/ProjectLocation.h"

namespace Talvane40 {
namespace {

constexpr std::size_t kLongest = 255;  // characters of a name or a title

// The longest password, and the character codes, that a mailbox record can hold.
constexpr std::size_t kLongestPassword = 97;
constexpr char16_t kLowestCode = 14, kHighestCode = 124;

[[noreturn]] void Refuse(const String& what) {
  throw Failure(FailureNumber::RefusedInput, u"Talvane40.ProjectAdministration", what);
}

// The text without blanks at its ends. Raises 380 unless it is a valid name; `what` begins the description.
String VettedName(const Value& value, const String& what) {
  String name = Trim(value.ToString());
  if (name.empty()) Refuse(what + u" must not be empty.");
  if (name.size() > kLongest) Refuse(what + u" must not have more than 255 characters.");
  if (HasControl(name)) Refuse(what + u" must not hold line ends or other control characters.");
  return name;
}

// A project's name becomes the name of a registry key, which can't hold a backslash.
String VettedProjectName(const Value& value) {
  String name = VettedName(value, u"The project's name");
  if (name.find(u'\\') != String::npos) Refuse(u"The project's name must not hold a backslash.");
  return name;
}

String VettedAddress(const Value& value) {
  String address = Trim(value.ToString());
  if (const String fault = Runtime::AddressFault(address); !fault.empty())
    Refuse(u"\"" + address + u"\" is no e-mail address: " + fault + u". Give one such as ann@example.org.");
  return address;
}

// The password of an owner, who may bind a mailbox. The mailbox stores it without blanks at its ends.
String VettedPassword(const Value& value) {
  String password = value.ToString();
  if (password.empty()) Refuse(u"The password must not be empty.");
  if (password.size() > kLongestPassword)
    Refuse(u"The password must not have more than 97 characters: a mailbox can't store a longer one.");
  if (std::ranges::any_of(password, [](char16_t c) { return c < kLowestCode || c > kHighestCode; }))
    Refuse(
        u"The password must hold only printable ASCII characters without \"~\" and \"}\": a mailbox can't "
        u"store others.");
  if (password != Trim(password))
    Refuse(u"The password must not begin or end with a blank: a mailbox stores it without.");
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
  DescribedUser owner{
      .Key = 0, .Name = VettedName(arguments[2], u"The user's name"), .Address = {}, .MailAccepted = false};
  if (!arguments[3].ToString().empty()) {
    owner.Address = VettedAddress(arguments[3]);
    owner.MailAccepted = true;
  }
  Talvane40::CreateProject(arguments[0].ToString(), name, owner, VettedPassword(arguments[4]));
  return {};
}

Value ProjectAdministration::AddUser(std::span<Value> arguments) {
  const DescribedUser user{.Key = 0,
                           .Name = VettedName(arguments[1], u"The user's name"),
                           .Address = VettedAddress(arguments[2]),
                           .MailAccepted = arguments[3].ToBool()};
  return OpenDatabase(arguments[0]).AddUser(user);
}

Value ProjectAdministration::AddDiscussion(std::span<Value> arguments) {
  const String title = VettedName(arguments[1], u"The discussion's title");
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
