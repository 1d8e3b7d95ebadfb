// Projects: a project created through the loaded library, and shortcuts for tests.
#pragma once

#include "platform/contracts/ProjectAdministration.h"
#include "platform/contracts/ProjectLibrary.h"
#include "runtime/Database.h"
#include "tests/support/World.h"

namespace Tests {

inline ProjectAdministration Administration() {
  return ProjectAdministration(Platform::Services().CreateByName(ProjectAdministration::kName));
}

// A world with the project "Apollo" of the owner "Ann", the user "ben" and the discussion 1.
class ProjectWorld : public World {
 public:
  ProjectWorld() {
    Administer.CreateProject(Path, u"Apollo", u"Ann", u"ann@example.org", u"secret");
    Ben = Administer.AddUser(Path, u"ben", u"ben@example.org", true);
    Administer.AddDiscussion(Path, u"Release plan");
    App = NewApplication();
    // The hash of "secret" at the lowest cost: most tests open the project, and the cost doesn't matter.
    Sql("UPDATE users SET password_hash = "
        "'scrypt$2$8$1$00000000000000000000000000000000$"
        "06412461a921be0185a718bc456182c5fe6c93abbdf78b840bfc1b4eeb51e6d2' WHERE name = 'Ann'");
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

  std::vector<DescribedReply> Replies() const { return Administer.Describe(Path).Discussions.at(0).Replies; }

  // Runs SQL on the database with a connection of its own.
  void Sql(const char* sql) const { Runtime::Database(Database().string()).Run(sql); }

  std::filesystem::path Database() const { return Home.Path() / "apollo.db"; }

  const String Path = PathOf("apollo.TVS");
  const ProjectAdministration Administer = Administration();
  std::int32_t Ben = 0;
  std::shared_ptr<TalvaneApplication> App;
};

inline void Reply(Project& project, StringView subject, StringView body, std::int32_t discussion = 1) {
  Discussion(project.GetDiscussion(discussion)).Reply(String(subject), String(body));
}

}  // namespace Tests
