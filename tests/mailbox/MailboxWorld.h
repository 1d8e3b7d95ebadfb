// MailboxWorld: a world for mailboxes, with a session of the host, and short texts for records and sections.
#pragma once

#include <map>
#include <sstream>

#include "platform/StoredNames.h"
#include "platform/contracts/ProjectAdministration.h"
#include "runtime/RegistryStore.h"
#include "src/mailbox/MailboxRecords.h"
#include "src/mailbox/ProjectEmailSettings.h"
#include "src/security/ComponentSecurity.h"
#include "src/services/modResource.h"
#include "tests/support/World.h"

namespace Tests {

using namespace TvEmailServices;
using Strings = std::vector<std::string>;

inline Strings Split(const std::string& text, const std::string& separator) {
  Strings parts;
  for (std::size_t begin = 0, end; begin <= text.size(); begin = end + separator.size()) {
    end = std::min(text.find(separator, begin), text.size());
    parts.push_back(Utf8(Trim(FromUtf8(text.substr(begin, end - begin)))));
  }
  return parts;
}

// The rows of a table: a line each, its cells between ";", blanks around them left out.
inline std::vector<Strings> Table(const std::string& text) {
  std::vector<Strings> rows;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) rows.push_back(Split(line, ";"));
  }
  return rows;
}

// The texts of boxes, separated by " / ". "[10019]" means the text of that number, "[10013|Apollo]" one with
// an argument, "_" a blank at an end.
inline Strings BoxTexts(const std::string& cell) {
  Strings boxes = cell.empty() ? Strings() : Split(cell, " / ");
  for (std::string& box : boxes) {
    std::replace(box.begin(), box.end(), '_', ' ');
    for (std::size_t at = 0; (at = box.find('[', at)) != std::string::npos;) {
      const std::size_t end = box.find(']', at);
      const Strings parts = Split(box.substr(at + 1, end - at - 1), "|");
      const std::int32_t number = std::stoi(parts[0]);
      const std::string text =
          Utf8(parts.size() == 1 ? LoadTvResourceString(number)
                                 : LoadTVResourceStringV(number, {Value(FromUtf8(parts[1]))}));
      box.replace(at, end + 1 - at, text);
      at += text.size();
    }
  }
  return boxes;
}

// An object of the host: its members, whose reading is recorded. A member that it wasn't given raises 438.
class HostObject : public Object {
 public:
  using Members = std::map<std::string, Value>;
  HostObject(Strings& calls, std::string name, Members members)
      : calls_(calls), name_(std::move(name)), members_(std::move(members)) {}

  Value Get(StringView member) override {
    calls_.push_back(name_ + "." + ToUtf8(member));
    const auto found = members_.find(ToUtf8(member));
    return found != members_.end() ? found->second : Object::Get(member);
  }

 private:
  Strings& calls_;
  std::string name_;
  Members members_;
};

struct Settings {
  String Transport = u"SMTP";
  String Profile = u"Outlook";
  String Host = u"mail.example.org";
  String Address = u"apollo@example.org";
  String RealName = u"Apollo Mail";
};

class MailboxWorld : public World {
 public:
  // The thread keeps the object of its texts, which must not be a watched one that outlives its world.
  MailboxWorld() { LoadTvResourceString(9000); }

  ObjectRef Make(std::string name, HostObject::Members members) {
    return std::make_shared<HostObject>(Services.Calls, std::move(name), std::move(members));
  }

  ObjectRef SessionWith(const Settings& settings) {
    const ObjectRef logon =
        Make("SendLogon", {{"Transport", settings.Transport}, {"HostName", settings.Host}});
    const ObjectRef user = Make("User", {{"Address", settings.Address}, {"RealName", settings.RealName}});
    return Make("Sess", {{"SendLogon", logon}, {"MAPIProfile", settings.Profile}, {"User", user}});
  }

  // A project file without a project database.
  String MakeProjectFile(const std::string& name, const std::string& emailSection = {}) {
    WriteFile(Home.Path() / name, "[Project]\nFormat=1\nName=" + name + "\n" + emailSection);
    return PathOf(name);
  }

  // The project Apollo in Apollo.TVS, which ann opens with "word".
  void MakeProject() {
    ProjectAdministration(Services.CreateByName(ProjectAdministration::kName))
        .CreateProject(PathOf("Apollo.TVS"), u"Apollo", u"ann", u"ann@example.org", u"word");
    Services.Created.clear();
  }

  // From here on calls are recorded and these faults happen, separated by blanks: "RegUtil.AddKey" gives
  // false, "ProjectFile.Save!" raises, "Files.RetrieveTVSFile?" gives nothing, "RegValue.Value*" no text,
  // "-RegValue" can't be created. It is the first call, or "RegUtil.AddKey#2" the second, or "#0" each.
  void Watch(const std::string& faults = {}) {
    Services.Watching = true;
    std::istringstream words(faults);
    for (std::string word; words >> word;) {
      if (word.front() == '-') {
        Services.Missing.insert("TvGeneralServices." + word.substr(1));
        continue;
      }
      const Strings parts = Split(word, "#");
      Fault fault{parts[0], parts.size() == 1 ? 1 : std::stoi(parts[1])};
      if (fault.Member.back() == '!') fault.Outcome = Failure(57, u"", u"Disk full");
      if (fault.Member.back() == '?') fault.Outcome = Value(ObjectRef());
      if (fault.Member.back() == '*') fault.Outcome = Value(Bytes{1, 2});
      fault.Member.resize(std::min(fault.Member.find_first_of("!?*"), fault.Member.size()));
      Services.Faults.push_back(fault);
    }
  }

  // The boxes since the last call, with the world's folder left out of them.
  Strings Boxes() {
    Strings boxes = Toolkit.TakeBoxes();
    for (std::string& box : boxes) box = WithoutFolder(box);
    return boxes;
  }

  // The password of a mailbox's record as it is stored.
  std::string EncodedPassword(const String& mailBox) {
    return Registry(Hive::LocalMachine, String(RegistryPath::kMailBoxes) + u"\\" + mailBox, u"DBPWD");
  }

  // "path|user id|password" of a mailbox's record, the password decoded.
  std::string Record(const String& mailBox) {
    const String key = String(RegistryPath::kMailBoxes) + u"\\" + mailBox;
    if (!Runtime::RegistryStore::KeyExists(Hive::LocalMachine, key)) return "none";
    String password = FromUtf8(Registry(Hive::LocalMachine, key, u"DBPWD"));
    if (password != u"(none)") password = ComponentSecurity().Decrypt(password);
    return WithoutFolder(Registry(Hive::LocalMachine, key, u"TVSFilePath")) + "|" +
           Registry(Hive::LocalMachine, key, u"DBUID") + "|" + Utf8(password);
  }

  // "transport|profile|host|real name|address" of the e-mail section of a project file.
  std::string Section(const std::string& name) {
    const bool watching = std::exchange(Services.Watching, false);
    const ProjectFile file = GetProjectFile(PathOf(name), false);
    Services.Watching = watching;
    if (!file || !file.HasSection(u"EMail")) return file ? "none" : "no file";
    std::string section = Utf8(file.KeyValue(u"EMail", u"TransportID").ToString());
    for (const StringView key : {u"MAPIProfile", u"SMTPHostName", u"RealName", u"EMailAddress"})
      section += "|" + Utf8(file.KeyValue(u"EMail", key).ToString());
    return section;
  }

  // One value of a record, as any other program might have stored it.
  void Store(const String& mailBox, StringView name, const Value& content) {
    const String key = String(RegistryPath::kMailBoxes) + u"\\" + mailBox;
    Runtime::RegistryStore::CreateKey(Hive::LocalMachine, key);
    if (content.IsEmpty()) return;
    Runtime::RegistryStore::Write(Hive::LocalMachine, key, name, {content.IsString() ? 1 : 4, content});
  }

  std::string WithoutFolder(std::string text) const {
    const std::string folder = Home.Path().string() + "/";
    for (std::size_t at; (at = text.find(folder)) != std::string::npos;) text.erase(at, folder.size());
    return text;
  }
};

}  // namespace Tests
