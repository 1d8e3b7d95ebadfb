// MemorySiblings: the siblings that a message needs, in memory: one mailbox record, and one project with its
// users and one discussion. They record the calls to the project; each operation can give nothing or fail on
// demand.
#pragma once

#include <set>

#include "platform/contracts/GeneralServices.h"
#include "platform/contracts/ProjectLibrary.h"
#include "src/security/ComponentSecurity.h"
#include "tests/services/NumberedTexts.h"
#include "tests/support/TestServices.h"

namespace Tests {

// An object of plain properties.
class Properties : public Object {
 public:
  using Map = std::map<String, Value, std::less<>>;
  explicit Properties(Map values = {}) : values_(std::move(values)) {}
  Value Get(StringView member) override {
    const auto found = values_.find(member);
    return found != values_.end() ? found->second : Object::Get(member);
  }
  void Set(StringView member, Value value) override { values_[String(member)] = std::move(value); }

 private:
  Map values_;
};

inline ObjectRef ObjectOf(Properties::Map values) {
  return std::make_shared<Properties>(std::move(values));
}

inline ObjectRef MessageOf(StringView sender, const Value& subject, const Value& body) {
  const ObjectRef from = ObjectOf({{u"Address", sender}});
  return ObjectOf({{u"Message", ObjectOf({{u"From", from}, {u"subject", subject}, {u"body", body}})}});
}

class MemorySiblings {
 public:
  struct User : ProjectUser {
    User(String address, bool accepted, std::int32_t key)
        : Address(std::move(address)), Accepted(accepted), Key(key) {}
    StringView GetEMailAddress() override { return Address; }
    Boolean IsMailAccepted() override { return Accepted; }
    std::int32_t GetUserKey() override { return Key; }
    String Address;
    bool Accepted;
    std::int32_t Key;
  };

  // The values of the mailbox's record; none: there is no record.
  Properties::Map Record = {{u"TVSFilePath", u"P.tvs"},
                            {u"DBUID", u"pump"},
                            {u"DBPWD", TvEmailServices::ComponentSecurity().Encrypt(u"secret")}};
  std::vector<std::shared_ptr<ProjectUser>> Users;

  std::set<std::string> Nothing;           // operations that give nothing, or false
  std::map<std::string, String> Failures;  // operations that fail, and their descriptions
  std::pair<std::string, int> NothingAt;   // an operation that gives nothing at its nth call alone
  std::vector<std::string> Log;            // the calls with their arguments
  std::vector<std::string> Ended;          // the objects that were released, in order
  bool Quiet = false;                      // nothing is recorded

  void Install(TestServices& services) {
    services.Instead["TvResourceServices.Resource"] = [] {
      return std::make_shared<NumberedTexts>(std::map<std::int32_t, String>{{2166, u"-- cut --"}});
    };
    services.Instead["TvGeneralServices.RegValue"] = [] { return ObjectOf({}); };
    services.Instead["TvGeneralServices.RegUtil"] = [this] { return std::make_shared<Registry>(*this); };
    services.InsteadOfClass[TalvaneApplicationClass] = [this] {
      return std::make_shared<Application>(*this);
    };
  }

 private:
  // Records the call; true if it succeeds.
  bool Asked(const std::string& operation, std::initializer_list<Value> arguments = {}) {
    if (!Quiet) Log.push_back(operation + ToUtf8(Joined(arguments)));
    if (const auto failure = Failures.find(operation); failure != Failures.end()) {
      throw Failure(1000, {}, failure->second);
    }
    if (operation == NothingAt.first && --NothingAt.second == 0) return false;
    return !Nothing.contains(operation);
  }

  template <class... Interfaces>
  struct Part : Interfaces... {
    explicit Part(MemorySiblings& siblings) : All(siblings) {}
    MemorySiblings& All;
  };

  struct Registry : Part<Object> {
    using Part::Part;
    Value Call(StringView member, std::span<Value> arguments) override {
      if (member == u"SetCurrHive")
        machineWide_ = arguments[0].ToInt32() == static_cast<std::int32_t>(0x80000002);
      if (member == u"SetCurrPath" && machineWide_) {
        return !All.Record.empty() &&
               arguments[0].ToString() == u"Software\\Ostrand Software\\Email\\MailBoxes\\Apollo";
      }
      if (member != u"GetValue") return true;
      const RegValue value(arguments[0].ToObject());
      const auto found = All.Record.find(value.ValueName());
      if (found != All.Record.end()) value.SetValue(found->second);
      return found != All.Record.end();
    }

   private:
    bool machineWide_ = false;
  };

  struct AllUsers : Part<ProjectUsers> {
    using Part::Part;
    std::int32_t Count() override {
      All.Asked("Count");
      return static_cast<std::int32_t>(All.Users.size());
    }
    std::shared_ptr<ProjectUser> Item(std::int32_t position) override {
      return All.Users.at(static_cast<std::size_t>(position - 1));
    }
  };

  struct Discussion : Part<Object> {
    using Part::Part;
    Value Call(StringView member, std::span<Value> arguments) override {
      return All.Asked(ToUtf8(member), {arguments[0], arguments[1]});
    }
  };

  struct OpenedProject : Part<Project> {
    using Part::Part;
    ~OpenedProject() override { All.Ended.push_back("project"); }
    std::shared_ptr<ProjectUsers> GetUsers() override {
      return All.Asked("GetUsers") ? std::make_shared<AllUsers>(All) : nullptr;
    }
    String GetName() override { return u"Apollo"; }
    Boolean IsMailBoxAllowed() override { return true; }
    ObjectRef GetDiscussion(std::int32_t number) override {
      return All.Asked("GetDiscussion", {number}) ? std::make_shared<Discussion>(All) : nullptr;
    }
    Boolean SetActingUser(const Value& key, std::int32_t kind, const Value& logon) override {
      return All.Asked("SetActingUser", {key, kind, logon});
    }
  };

  struct Status : ApplicationStatus {
    String GetFailureText() override { return u"wrong password"; }
  };
  struct Logon : ApplicationLogon {
    String GetLogonText() override { return u"logon"; }
  };

  struct Application : Part<Object, TalvaneApplication> {
    explicit Application(MemorySiblings& siblings) : Part(siblings) { All.Asked("CreateApplication"); }
    ~Application() override { All.Ended.push_back("application"); }
    std::shared_ptr<Project> OpenProject(const Value& path, std::int32_t mode, const String& userId,
                                         const String& password, std::int32_t options,
                                         std::int32_t access) override {
      return All.Asked("OpenProject", {path, mode, userId, password, options, access})
                 ? std::make_shared<OpenedProject>(All)
                 : nullptr;
    }
    std::shared_ptr<ApplicationStatus> GetStatus() override {
      return All.Asked("GetStatus") ? std::make_shared<Status>() : nullptr;
    }
    std::shared_ptr<ApplicationLogon> GetLogon() override {
      return All.Asked("GetLogon") ? std::make_shared<Logon>() : nullptr;
    }
  };
};

}  // namespace Tests
