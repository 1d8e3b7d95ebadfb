// Application: what opens projects, the factory that makes it, and what both classes of the library register.
//
// Made by the run time on the thread that uses it.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"
#include "platform/contracts/ProjectLibrary.h"

namespace Talvane40 {

using namespace Platform;

extern std::atomic<long> liveObjects;

class Application : public Object, public TalvaneApplication {
 public:
  Application();

  // Opens the project file at path: mode 1 (an existing project), options 0 and access 3 (reading and
  // writing) are all that there is. Blanks around the path and the user's name don't count. Gives nothing,
  // and never raises, whatever is wrong; the status tells it. An unknown user and a wrong password give one
  // text after the same time.
  std::shared_ptr<Project> OpenProject(const Value& path, std::int32_t mode, const String& userId,
                                       const String& password, std::int32_t options,
                                       std::int32_t access) override;

  // The outcome of the last OpenProject, as it was when this was called; an empty text after a success.
  std::shared_ptr<ApplicationStatus> GetStatus() override;

  // The text is a secret that each application draws for itself. Its projects alone take it.
  std::shared_ptr<ApplicationLogon> GetLogon() override;

 private:
  String failureText_;
  String logonText_;
  LiveObject live_{liveObjects};
};

class ApplicationFactory : public Object, public TalvaneApplicationFactory {
 public:
  // A new application. Nothing is shared with others of the process, so shared comes back as false.
  std::shared_ptr<TalvaneApplication> CreateApplication(Boolean& shared) override;

 private:
  LiveObject live_{liveObjects};
};

}  // namespace Talvane40
