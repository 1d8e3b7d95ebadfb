#include "siblings/Talvane40/ProjectAdministration.h"

#include <algorithm>

#include "platform/ReasonTexts.h"
#include "platform/contracts/ProjectAdministration.h"
#include "runtime/MailAddress.h"
#include "runtime/Texts.h"
#include "siblings/Talvane40/PasswordHash.h"
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

// An ISO 639 code, as the catalogues' file names have it, or nothing.
void RequireLanguage(StringView language) {
  const bool letters = std::ranges::all_of(language, [](char16_t c) { return c >= u'a' && c <= u'z'; });
  if (!language.empty() && (!letters || language.size() < 2 || language.size() > 3))
    Refuse(TextNumber::kLanguageRefused, language);
}

// The text with CR LF as line ends, and without line ends at its end.
String VettedReply(const Value& value) {
  const String text = value.ToString();
  if (text.size() > kLongestReply) Refuse(TextNumber::kReplyTooLong, FromUtf8(std::to_string(kLongestReply)));
  if (text.find(u'\0') != String::npos) Refuse(TextNumber::kReplyWithNul);
  const std::size_t end = text.find_last_not_of(u" \t\r\n");
  if (end == String::npos) Refuse(TextNumber::kReplyEmpty);
  const StringView kept = StringView(text).substr(0, text.find_first_of(u"\r\n", end));
  String reply;
  reply.reserve(kept.size());
  for (std::size_t i = 0; i < kept.size(); ++i) {
    const bool lineEnd = kept[i] == u'\r' || kept[i] == u'\n';
    if (kept[i] == u'\r' && i + 1 < kept.size() && kept[i + 1] == u'\n') ++i;
    lineEnd ? reply.append(u"\r\n") : reply.append(1, kept[i]);
  }
  return reply;
}

ProjectDatabase OpenDatabase(const Value& path) {
  return ProjectDatabase(ReadProjectLocation(path.ToString()).Database.string());
}

}  // namespace

const ProjectAdministration::Table& ProjectAdministration::Members() {
  static const Table table = {Method(u"CreateProject", 5, &ProjectAdministration::CreateProject),
                              Method(u"AddUser", 4, &ProjectAdministration::AddUser),
                              Method(u"ChangeUser", 3, &ProjectAdministration::ChangeUser),
                              Method(u"RemoveUser", 2, &ProjectAdministration::RemoveUser),
                              Method(u"SetPassword", 3, &ProjectAdministration::SetPassword),
                              Method(u"AddDiscussion", 2, &ProjectAdministration::AddDiscussion),
                              Method(u"AddReply", 5, &ProjectAdministration::AddReply),
                              Method(u"Outline", 1, &ProjectAdministration::Outline),
                              Method(u"RepliesAfter", 3, &ProjectAdministration::RepliesAfter)};
  return table;
}

Value ProjectAdministration::CreateProject(std::span<Value> arguments) {
  const String name = VettedProjectName(arguments[1]);
  DescribedUser owner{
      .Name = VettedName(arguments[2], TextNumber::kUserName), .Address = {}, .Owner = true, .Language = {}};
  if (!arguments[3].ToString().empty()) {
    owner.Address = VettedAddress(arguments[3]);
    owner.MailAccepted = true;
  }
  Talvane40::CreateProject(arguments[0].ToString(), name, owner, VettedPassword(arguments[4]));
  return {};
}

Value ProjectAdministration::AddUser(std::span<Value> arguments) {
  const DescribedUser user{.Name = VettedName(arguments[1], TextNumber::kUserName),
                           .Address = VettedAddress(arguments[2]),
                           .MailAccepted = arguments[3].ToBool(),
                           .Language = {}};
  return OpenDatabase(arguments[0]).AddUser(user);
}

Value ProjectAdministration::ChangeUser(std::span<Value> arguments) {
  UserChange change = UserChange::FromValue(arguments[2]);
  if (change.Name) change.Name = VettedName(*change.Name, TextNumber::kUserName);
  if (change.Address) change.Address = VettedAddress(*change.Address);
  if (change.Language) RequireLanguage(*change.Language);
  OpenDatabase(arguments[0]).ChangeUser(Trim(arguments[1].ToString()), change);
  return {};
}

Value ProjectAdministration::RemoveUser(std::span<Value> arguments) {
  OpenDatabase(arguments[0]).RemoveUser(Trim(arguments[1].ToString()));
  return {};
}

Value ProjectAdministration::SetPassword(std::span<Value> arguments) {
  const String hash = HashPassword(VettedPassword(arguments[2]));
  OpenDatabase(arguments[0]).SetPasswordHash(Trim(arguments[1].ToString()), hash);
  return {};
}

Value ProjectAdministration::AddReply(std::span<Value> arguments) {
  const String text = VettedReply(arguments[3]);
  std::optional<NoticeRoute> route;
  if (!arguments[4].IsEmpty()) route = NoticeRoute::FromValue(arguments[4]);
  return OpenDatabase(arguments[0])
      .AddReplyOf(Trim(arguments[2].ToString()), arguments[1].ToInt32(), text, route);
}

Value ProjectAdministration::AddDiscussion(std::span<Value> arguments) {
  const String title = VettedName(arguments[1], TextNumber::kDiscussionTitle);
  return OpenDatabase(arguments[0]).AddDiscussion(title);
}

Value ProjectAdministration::Outline(std::span<Value> arguments) {
  const ProjectLocation project = ReadProjectLocation(arguments[0].ToString());
  ProjectDatabase database(project.Database.string());
  std::int64_t version = 0;
  const ProjectDescription description{
      .Name = project.Name, .Users = database.Users(version), .Discussions = database.Discussions()};
  return description.ToValue();
}

Value ProjectAdministration::RepliesAfter(std::span<Value> arguments) {
  Array replies;
  for (const DescribedReply& reply :
       OpenDatabase(arguments[0]).RepliesAfter(arguments[1].ToInt32(), arguments[2].ToInt32()))
    replies.push_back(reply.ToValue());
  return replies;
}

}  // namespace Talvane40
