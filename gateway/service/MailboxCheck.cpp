#include "gateway/service/MailboxCheck.h"

#include <unistd.h>

#include <cerrno>
#include <functional>

#include "gateway/delivery/FailureJudge.h"
#include "gateway/delivery/HandlerObject.h"
#include "gateway/delivery/HeldFolder.h"
#include "gateway/delivery/MailboxRecords.h"
#include "gateway/delivery/MessageObject.h"
#include "gateway/notices/ProjectSending.h"
#include "gateway/service/MailboxFile.h"
#include "gateway/sources/MailQueue.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/MailIntake.h"
#include "platform/contracts/ResourceServices.h"
#include "runtime/Folders.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

[[noreturn]] void Refuse(const String& text) {
  throw Platform::Failure(Platform::FailureNumber::RefusedInput, u"Gateway", text);
}

MailboxRecord RequireRecord(StringView mailbox) {
  const auto record = FindMailbox(mailbox);
  if (!record) Refuse(Runtime::TextOf(Platform::TextNumber::kMailboxMissing, mailbox));
  if (!record->Complete()) Refuse(Runtime::TextOf(Platform::TextNumber::kRecordIncomplete, record->Name));
  return *record;
}

void OpenProject(const String& path) {
  const Platform::MailIntake intake(Platform::Services().CreateByName(Platform::MailIntake::kName));
  intake.Open(path);
}

// The component's text without the notice in front of it, which is about a mail.
String WithoutNotice(const String& failure) {
  const Platform::Resource texts(Platform::Services().CreateByName(u"TvResourceServices.Resource"));
  texts.LoadResources(Runtime::LibraryFolder() + u"\\TvEmailServicesRes.dll", u"TvEmailServices");
  const String notice = texts.ResourceString(Platform::TextNumber::kMailNotice) + u" ";
  return failure.starts_with(notice) ? failure.substr(notice.size()) : failure;
}

// The component logs on before it reads a mail, and then refuses one without a sender.
void LogOn(const String& mailbox) {
  const HandlerObject handler;
  handler.Mail().MailHandler_Initialize(mailbox, nullptr);
  const String failure = handler.Mail().MailHandler_HandleMessage(MakeMessageObject(Mime::Mail()));
  handler.Mail().MailHandler_Finalize();
  const Verdict verdict = FailureJudge().Judge(failure);
  if (verdict.Result != Outcome::Refused) Refuse(WithoutNotice(verdict.Reason));
}

// The folder itself, or the nearest above it that exists, in which it would be created.
void RequireWritableHeldFolder(StringView mailbox) {
  std::string folder = HeldFolder(mailbox);
  while (access(folder.c_str(), F_OK) != 0 && folder.size() > Runtime::HomePath().size())
    folder = Runtime::FolderOfPath(folder);
  if (access(folder.c_str(), W_OK | X_OK) != 0) RaiseFolderDenied(folder, errno);
}

void CheckSending(const String& projectPath, const NoticeSettings& notices) {
  const ProjectSending sending = ReadMailboxSending(projectPath, notices.Address);
  if (const String problem = SendingProblem(sending); !problem.empty()) Refuse(problem);
  const auto transport = sending.Transport == Platform::TransportId::kSmtp
                             ? MakeSmtpTransport(sending.HostName, notices.ServerOf(sending.HostName))
                             : MakeCommandTransport(CommandOfProfile(sending.MapiProfile));
  transport->Check();
}

}  // namespace

std::vector<CheckResult> CheckMailbox(StringView mailbox, const MailboxSettings* settings,
                                      const NoticeSettings& notices) {
  std::vector<CheckResult> results;
  const auto holds = [&](const char* name, const std::function<void()>& check) {
    CheckResult& result = results.emplace_back(CheckResult{name, {}});
    try {
      check();
    } catch (const std::exception&) {
      result.Problem = Platform::CurrentFailure().Description();
    }
    return result.Problem.empty();
  };
  MailboxRecord record;
  if (holds("record", [&] { record = RequireRecord(mailbox); }) &&
      holds("project", [&] { OpenProject(record.ProjectPath); }))
    holds("logon", [&] { LogOn(record.Name); });
  holds("held", [&] { RequireWritableHeldFolder(mailbox); });
  if (settings && settings->Source) holds("source", [&] { MakeQueue(*settings->Source)->Check(); });
  if (notices.Send && !record.ProjectPath.empty())
    holds("sending", [&] { CheckSending(record.ProjectPath, notices); });
  return results;
}

}  // namespace Gateway
