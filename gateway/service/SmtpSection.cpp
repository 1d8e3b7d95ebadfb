#include "gateway/service/SmtpSection.h"

#include <array>

#include "gateway/notices/SmtpHost.h"
#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using Platform::FromUtf8;
using Runtime::TextOf;

constexpr std::array<std::string_view, 4> kSecurities = {"auto", "tls", "starttls", "none"};
constexpr int kLargestPort = 65535;

void Require(SettingsSection& section, std::string_view key) {
  if (!section.Has(key)) section.Refuse(key, TextOf(TextNumber::kSmtpSettingMissing, FromUtf8(key)));
}

void ReadHost(SettingsSection& section, SmtpServer& server) {
  Require(section, "host");
  const auto text = section.Text("host");
  if (!text) return;
  const auto host = ParseSmtpHost(FromUtf8(*text));
  // The port is a setting of its own.
  if (host && host->Port == 0)
    server.Host = *text;
  else
    section.Refuse("host", TextOf(TextNumber::kSettingNotUsable, u"host"));
}

// What can't be together.
void CheckLogon(SettingsSection& section, const SmtpServer& server) {
  if (section.Has("user")) Require(section, "password-file");
  if (section.Has("password-file")) Require(section, "user");
  if (server.Security != SmtpSecurity::None) return;
  const auto host = ParseSmtpHost(FromUtf8(server.Host));
  if (!server.User.empty() && host && !host->IsThisMachine())
    section.Refuse("security", TextOf(TextNumber::kSmtpPasswordUnprotected, FromUtf8(server.Host)));
  if (section.Has("ca-file")) section.Refuse("ca-file", TextOf(TextNumber::kSmtpSettingUnused, u"ca-file"));
}

}  // namespace

SmtpServer ReadSmtpServer(const SettingsNode& table, SettingsProblems& problems, SettingsProblems& warnings) {
  SettingsSection section(table, problems);
  SmtpServer server;
  ReadHost(section, server);
  server.Port = section.Number("port", 1, kLargestPort).value_or(0);
  if (const auto choice = section.Choice("security", kSecurities))
    server.Security = static_cast<SmtpSecurity>(*choice);
  server.User = section.Text("user").value_or("");
  server.PasswordFile = section.Path("password-file").value_or("");
  server.CaFile = section.Path("ca-file").value_or("");
  section.RefuseUnknown();
  CheckLogon(section, server);
  section.WarnOfPasswordFile(server.PasswordFile, warnings);
  return server;
}

}  // namespace Gateway
