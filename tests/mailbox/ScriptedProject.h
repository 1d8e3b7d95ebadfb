// ScriptedProject: a project library with one project, whose results and failures a test sets.
#pragma once

#include "platform/contracts/ProjectLibrary.h"
#include "tests/mailbox/MailboxWorld.h"

namespace Tests {

class ScriptedProject : public Object,
                        public TalvaneApplication,
                        public Project,
                        public std::enable_shared_from_this<ScriptedProject> {
 public:
  Boolean Allowed = False;
  std::string Raising;  // the operation that fails
  Strings Opened;       // "user id|password" as they came

  // The one that this world's project library gives from here on.
  static std::shared_ptr<ScriptedProject> In(World& world) {
    const auto project = std::make_shared<ScriptedProject>();
    world.Services.InsteadOfClass[TalvaneApplicationClass] = [project] { return project; };
    return project;
  }

  std::shared_ptr<Project> OpenProject(const Value&, std::int32_t, const String& userId,
                                       const String& password, std::int32_t, std::int32_t) override {
    Opened.push_back(Utf8(userId) + "|" + Utf8(password));
    return shared_from_this();
  }
  String GetName() override { return Give("GetName", String(u"Apollo")); }
  Boolean IsMailBoxAllowed() override { return Give("IsMailBoxAllowed", Allowed); }

  std::shared_ptr<ApplicationStatus> GetStatus() override { return nullptr; }
  std::shared_ptr<ApplicationLogon> GetLogon() override { return nullptr; }
  std::shared_ptr<ProjectUsers> GetUsers() override { return nullptr; }
  ObjectRef GetDiscussion(std::int32_t) override { return nullptr; }
  Boolean SetActingUser(const Value&, std::int32_t, const Value&) override { return false; }

 private:
  template <class T>
  T Give(const std::string& operation, T result) {
    if (operation == Raising) throw Failure(57, u"", u"Disk full");
    return result;
  }
};

}  // namespace Tests
