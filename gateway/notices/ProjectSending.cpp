#include "gateway/notices/ProjectSending.h"

#include "gateway/notices/SmtpHost.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/NumberReader.h"
#include "platform/ReasonTexts.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/GeneralServices.h"
#include "runtime/MailAddress.h"
#include "runtime/RegistryStore.h"
#include "runtime/Texts.h"

namespace Gateway {

using namespace Platform;
using Runtime::RegistryStore;

ProjectSending ReadProjectSending(const String& projectPath) {
  const Files files(Services().CreateByName(u"TvGeneralServices.Files"));
  const ProjectFile project = files.RetrieveTVSFile(projectPath);
  if (!project) return {};
  const auto key = [&](StringView section, StringView name) {
    return Trim(project.KeyValue(section, name).ToString());
  };
  const StringView sending = ProjectSection::kWritten;
  return {key(ProjectHeader::kSection, ProjectHeader::kName),
          TransportNumber(key(sending, SendingValue::kTransportId)),
          key(sending, SendingValue::kMapiProfile),
          key(sending, SendingValue::kHostName),
          key(sending, SendingValue::kAddress),
          key(sending, SendingValue::kRealName)};
}

ProjectSending ReadMailboxSending(const String& projectPath, StringView mailboxAddress) {
  ProjectSending sending = ReadProjectSending(projectPath);
  if (!mailboxAddress.empty()) sending.Address = mailboxAddress;
  return sending;
}

String RouteProblem(const ProjectSending& sending) {
  const bool hasHost = sending.Transport != TransportId::kSmtp || !sending.HostName.empty();
  if (sending.Transport == 0 || !hasHost) return Runtime::TextOf(TextNumber::kProjectSendsNoMail);
  if (sending.Transport == TransportId::kSmtp && !ParseSmtpHost(sending.HostName))
    return Runtime::TextOf(TextNumber::kSmtpHostInvalid, sending.HostName);
  return {};
}

String AddressProblem(const ProjectSending& sending) {
  if (sending.Address.empty()) return Runtime::TextOf(TextNumber::kMailboxAddressMissing);
  const String fault = Runtime::AddressFault(sending.Address);
  return fault.empty() ? String() : Runtime::TextOf(TextNumber::kAddressRefused, sending.Address, fault);
}

String SendingProblem(const ProjectSending& sending) {
  const String problem = RouteProblem(sending);
  return problem.empty() ? AddressProblem(sending) : problem;
}

std::int32_t TransportNumber(StringView stored) {
  try {
    const std::int32_t number = ReadInt32(stored);
    return number == TransportId::kMapi || number == TransportId::kSmtp ? number : 0;
  } catch (const Failure&) {
    return 0;  // no number, or out of range
  }
}

String ProfileKey(StringView profile) {
  return String(RegistryPath::kMapiProfiles) + u"\\" + String(profile);
}

String CommandOfProfile(StringView profile) {
  if (!RegistryStore::IsKeyName(profile)) return {};
  const auto command =
      RegistryStore::Read(Hive::CurrentUser, ProfileKey(profile), SendingValue::kProfileCommand);
  return command && command->Content.IsString() ? Trim(command->Content.ToString()) : String();
}

}  // namespace Gateway
