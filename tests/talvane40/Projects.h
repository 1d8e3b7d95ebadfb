// Projects: a project made through the loaded library, and the windows through which tests use it.
#pragma once

#include "platform/contracts/ObjectProxy.h"
#include "platform/contracts/ProjectLibrary.h"
#include "runtime/Database.h"
#include "tests/support/World.h"

namespace Tests {

class Administration : public ObjectProxy {
 public:
  Administration() : ObjectProxy(Platform::Services().CreateByName(u"Talvane40.ProjectAdministration")) {}
  void CreateProject(StringView path, StringView name, StringView owner, StringView address,
                     StringView password) const {
    Call(u"CreateProject", path, name, owner, address, password);
  }
  std::int32_t AddUser(StringView path, StringView name, StringView address, bool accepted = true) const {
    return Call(u"AddUser", path, name, address, accepted).ToInt32();
  }
  std::int32_t AddDiscussion(StringView path, StringView title) const {
    return Call(u"AddDiscussion", path, title).ToInt32();
  }
  Array Describe(StringView path) const { return Call(u"Describe", path).ToArray(); }
};

// A world with the project "Apollo" of the owner "Ann", the user "ben" and the discussion 1.
class ProjectWorld : public World {
 public:
  ProjectWorld() {
    Administer.CreateProject(Path, u"Apollo", u"Ann", u"ann@example.org", u"secret");
    Ben = Administer.AddUser(Path, u"ben", u"ben@example.org");
    Administer.AddDiscussion(Path, u"Release plan");
    App = NewApplication();
  }

  static std::shared_ptr<TalvaneApplication> NewApplication() {
    return std::dynamic_pointer_cast<TalvaneApplication>(
        Platform::Services().CreateByClass(TalvaneApplicationClass));
  }

  std::shared_ptr<Project> Open(StringView path, const String& user = u"Ann",
                                const String& password = u"secret") {
    return App->OpenProject(path, 1, user, password, 0, 3);
  }
  std::shared_ptr<Project> Open() { return Open(Path); }

  // Why the project at path doesn't open; "(opened)" if it does.
  std::string Refusal(StringView path, const String& user = u"Ann", const String& password = u"secret") {
    return Open(path, user, password) ? "(opened)" : Utf8(App->GetStatus()->GetFailureText());
  }

  // The replies of the first discussion, each an array of subject, body, user name and time.
  Array Replies() const { return Administer.Describe(Path)[2].ToArray()[0].ToArray()[2].ToArray(); }

  // Works on the database from outside.
  void Sql(const char* sql) const { Runtime::Database(Database().string()).Run(sql); }

  std::filesystem::path Database() const { return Home.Path() / "apollo.db"; }

  const String Path = PathOf("apollo.TVS");
  const Administration Administer;
  std::int32_t Ben = 0;
  std::shared_ptr<TalvaneApplication> App;
};

inline void Reply(Project& project, StringView subject, StringView body, std::int32_t discussion = 1) {
  CallWith(*project.GetDiscussion(discussion), u"Reply", {subject, body});
}

}  // namespace Tests
