// MemorySiblings: the siblings on the road of a message, in memory: one mailbox record, one project with its
// users and one discussion, and the message itself. They record what is asked of the project, and any of its
// operations can be made to give nothing or to fail.
#pragma once

#include <map>
#include <set>

#include "platform/contracts/ProjectLibrary.h"
#include "src/security/ComponentSecurity.h"
#include "tests/services/NumberedTexts.h"
#include "tests/support/TestServices.h"

namespace Tests {

// An object of plain properties.
class Properties : public Object {
 public:
  using Map = std::map<String, Value, std::less<>>;
  explicit Properties(Map values) : Values(std::move(values)) {}
  Value Get(StringView member) override {
    const auto found = Values.find(member);
    return found != Values.end() ? found->second : Object::Get(member);
  }
  void Set(StringView member, Value value) override { Values[String(member)] = std::move(value); }
  Map Values;
};

inline ObjectRef MessageOf(const Value& from, const Value& subject, const Value& body) {
  ObjectRef mail =
      std::make_shared<Properties>(Properties::Map{{u"From", from}, {u"subject", subject}, {u"body", body}});
  return std::make_shared<Properties>(Properties::Map{{u"Message", mail}});
}

inline Value SenderOf(StringView address) {
  return ObjectRef(std::make_shared<Properties>(Properties::Map{{u"Address", address}}));
}

class MemorySiblings {
 public:
  struct User {
    String Address;
    bool Accepted = true;
    std::int32_t Key = 0;
  };

  // What the record of the one mailbox holds; without values there is no record.
  std::map<String, String, std::less<>> Record = {
      {u"TVSFilePath", u"P.tvs"},
      {u"DBUID", u"pump"},
      {u"DBPWD", TvEmailServices::ComponentSecurity().Encrypt(u"secret")}};
  std::vector<User> Users;
  std::map<std::int32_t, String> Texts = {{2166, u"-- cut --"}};

  std::set<std::string> Nothing;                // operations that give nothing, or false
  std::map<std::string, std::string> Failures;  // operations that fail, and their descriptions
  std::vector<std::string> Log;
  bool Quiet = false;  // nothing is recorded

  void Install(TestServices& services) {
    services.Instead["TvResourceServices.Resource"] = [this] {
      return std::make_shared<NumberedTexts>(Texts);
    };
    services.Instead["TvGeneralServices.RegValue"] = [] {
      return std::make_shared<Properties>(Properties::Map{});
    };
    services.Instead["TvGeneralServices.RegUtil"] = [this] { return std::make_shared<Registry>(*this); };
    services.InsteadOfClass[TalvaneApplicationClass] = [this] {
      Asked("CreateApplication");
      return std::make_shared<Application>(*this);
    };
  }

  // Records the operation; true if it is to work as usual.
  bool Asked(const std::string& operation, const std::string& arguments = "") {
    if (!Quiet) Log.push_back(operation + arguments);
    if (const auto failure = Failures.find(operation); failure != Failures.end()) {
      throw Failure(1000, {}, FromUtf8(failure->second));
    }
    return !Nothing.contains(operation);
  }

 private:
  class Registry : public Object {
   public:
    explicit Registry(MemorySiblings& siblings) : siblings_(siblings) {}
    Value Call(StringView member, std::span<Value> arguments) override {
      if (member == u"SetCurrPath") return !siblings_.Record.empty();
      if (member != u"GetValue") return true;
      auto& holder = dynamic_cast<Properties&>(*arguments[0].ToObject());
      const auto found = siblings_.Record.find(holder.Get(u"ValueName").ToString());
      if (found == siblings_.Record.end()) return false;
      holder.Set(u"Value", found->second);
      return true;
    }

   private:
    MemorySiblings& siblings_;
  };

  class OneUser : public ProjectUser {
   public:
    explicit OneUser(User user) : user_(std::move(user)) {}
    StringView GetEMailAddress() override { return user_.Address; }
    bool IsMailAccepted() override { return user_.Accepted; }
    std::int32_t GetUserKey() override { return user_.Key; }

   private:
    User user_;
  };

  class AllUsers : public ProjectUsers {
   public:
    explicit AllUsers(MemorySiblings& siblings) : siblings_(siblings) {
      for (const User& user : siblings.Users) users_.push_back(std::make_shared<OneUser>(user));
    }
    std::int32_t Count() override {
      if (!siblings_.Failures.empty()) siblings_.Asked("Count");
      return static_cast<std::int32_t>(users_.size());
    }
    std::shared_ptr<ProjectUser> Item(std::int32_t position) override {
      return users_.at(static_cast<std::size_t>(position - 1));
    }

   private:
    MemorySiblings& siblings_;
    std::vector<std::shared_ptr<ProjectUser>> users_;
  };

  class Discussion : public Object {
   public:
    explicit Discussion(MemorySiblings& siblings) : siblings_(siblings) {}
    Value Call(StringView member, std::span<Value> arguments) override {
      siblings_.Asked(ToUtf8(member), siblings_.Quiet ? std::string()
                                                      : "(" + ToUtf8(arguments[0].ToString()) + "|" +
                                                            ToUtf8(arguments[1].ToString()) + ")");
      return false;
    }

   private:
    MemorySiblings& siblings_;
  };

  class OpenedProject : public Project {
   public:
    explicit OpenedProject(MemorySiblings& siblings)
        : siblings_(siblings), users_(std::make_shared<AllUsers>(siblings)) {}
    std::shared_ptr<ProjectUsers> GetUsers() override {
      return siblings_.Asked("GetUsers") ? users_ : nullptr;
    }
    String GetName() override { return u"Apollo"; }
    bool IsMailBoxAllowed() override { return true; }
    ObjectRef GetDiscussion(std::int32_t number) override {
      return siblings_.Asked("GetDiscussion", "(" + std::to_string(number) + ")")
                 ? std::make_shared<Discussion>(siblings_)
                 : nullptr;
    }
    bool SetActingUser(const Value& key, std::int32_t kind, const Value& logon) override {
      return siblings_.Asked("SetActingUser", "(" + ToUtf8(key.ToString()) + "|" + std::to_string(kind) +
                                                  "|" + ToUtf8(logon.ToString()) + ")");
    }

   private:
    MemorySiblings& siblings_;
    std::shared_ptr<AllUsers> users_;
  };

  class Status : public ApplicationStatus {
    String GetFailureText() override { return u"wrong password"; }
  };
  class Logon : public ApplicationLogon {
    String GetLogonText() override { return u"logon"; }
  };

  class Application : public Object, public TalvaneApplication {
   public:
    explicit Application(MemorySiblings& siblings) : siblings_(siblings) {}
    std::shared_ptr<Project> OpenProject(const Value& path, std::int32_t mode, const String& userId,
                                         const String& password, std::int32_t options,
                                         std::int32_t access) override {
      const std::string arguments = "(" + ToUtf8(path.ToString()) + "|" + std::to_string(mode) + "|" +
                                    ToUtf8(userId) + "|" + ToUtf8(password) + "|" + std::to_string(options) +
                                    "|" + std::to_string(access) + ")";
      return siblings_.Asked("OpenProject", arguments) ? std::make_shared<OpenedProject>(siblings_) : nullptr;
    }
    std::shared_ptr<ApplicationStatus> GetStatus() override { return std::make_shared<Status>(); }
    std::shared_ptr<ApplicationLogon> GetLogon() override {
      return siblings_.Asked("GetLogon") ? std::make_shared<Logon>() : nullptr;
    }

   private:
    MemorySiblings& siblings_;
  };
};

}  // namespace Tests
