#include "siblings/Talvane40/Application.h"

#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"
#include "siblings/Talvane40/OpenedProject.h"
#include "siblings/Talvane40/PasswordHash.h"
#include "siblings/Talvane40/ProjectLocation.h"

namespace Talvane40 {
namespace {

[[noreturn]] void Refuse(StringView why, std::int32_t number = FailureNumber::DeviceFailed) {
  throw Failure(number, u"Talvane40.TalvaneApplication.OpenProject", String(why));
}

class Status : public ApplicationStatus {
 public:
  explicit Status(String text) : text_(std::move(text)) {}
  String GetFailureText() override { return text_; }

 private:
  String text_;
  LiveObject live_{liveObjects};
};

class OwnLogon : public ApplicationLogon {
 public:
  explicit OwnLogon(String text) : text_(std::move(text)) {}
  String GetLogonText() override { return text_; }

 private:
  String text_;
  LiveObject live_{liveObjects};
};

}  // namespace

Application::Application() : logonText_(RandomToken()) {}

std::shared_ptr<Project> Application::OpenProject(const Value& path, std::int32_t mode, const String& userId,
                                                  const String& password, std::int32_t options,
                                                  std::int32_t access) {
  failureText_.clear();
  try {
    if (mode != 1 || options != 0 || access != 3) {
      Refuse(u"A project can be opened with mode 1, options 0 and access 3 only.");
    }
    ProjectLocation project = ReadProjectLocation(path.ToString());
    const auto state = std::make_shared<OpenState>(project.Database.string());
    const auto logon = state->Database.FindLogon(Trim(userId));
    if (!MatchesHash(password, logon ? logon->PasswordHash : std::nullopt)) {
      Refuse(Runtime::TextOf(TextNumber::kWrongLogon), FailureNumber::WrongPassword);
    }
    state->Author = logon->UserKey;
    return std::make_shared<OpenedProject>(state, std::move(project.Name), logonText_);
  } catch (...) {
    failureText_ = CurrentFailure().Description();
    return nullptr;
  }
}

std::shared_ptr<ApplicationStatus> Application::GetStatus() {
  return std::make_shared<Status>(failureText_);
}

std::shared_ptr<ApplicationLogon> Application::GetLogon() {
  return std::make_shared<OwnLogon>(logonText_);
}

std::shared_ptr<TalvaneApplication> ApplicationFactory::CreateApplication(Boolean& shared) {
  shared = False;
  return std::make_shared<Application>();
}

}  // namespace Talvane40
