// Application: opens projects; and the factory of applications. platform/contracts/ProjectLibrary.h is the
// contract.
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

  // Blanks around the path and the user's name are ignored. Never raises: after a failure the result is null
  // and GetStatus has the reason. An unknown user and a wrong password give the same text after the same
  // time. mode 1 means an existing project, access 3 reading and writing.
  std::shared_ptr<Project> OpenProject(const Value& path, std::int32_t mode, const String& userId,
                                       const String& password, std::int32_t options,
                                       std::int32_t access) override;

  // A snapshot of the outcome of the last OpenProject. The text is empty after a success.
  std::shared_ptr<ApplicationStatus> GetStatus() override;

  // The text is a random secret of this application. Only its projects accept it.
  std::shared_ptr<ApplicationLogon> GetLogon() override;

 private:
  String failureText_;
  String logonText_;
  LiveObject live_{liveObjects};
};

class ApplicationFactory : public Object, public TalvaneApplicationFactory {
 public:
  // A new application, which shares nothing with others: shared is set to false.
  std::shared_ptr<TalvaneApplication> CreateApplication(Boolean& shared) override;

 private:
  LiveObject live_{liveObjects};
};

}  // namespace Talvane40
