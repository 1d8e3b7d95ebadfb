#include "host/options/SendOptions.h"

#include <CLI/CLI.hpp>

#include "host/CommandError.h"
#include "host/terminal/Terminal.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

String AskText(const Terminal& terminal, StringView prompt) {
  const auto answer = terminal.ReadLine(prompt);
  if (!answer) throw CommandError(Cancelled, TextNumber::kInputEnded);
  return Trim(*answer);
}

void Ask(SendSettings& settings, const String& mapi, const String& smtp) {
  const Terminal terminal;
  if (!terminal.Interactive()) throw CommandError(WrongUse, TextNumber::kTransportNotGiven);
  while (settings.Transport.empty()) {
    const String answer = AskText(terminal, u"Transport of the project's mail (smtp/mapi) [smtp]: ");
    if (answer.empty() || EqualsIgnoreCase(answer, u"smtp")) settings.Transport = smtp;
    if (EqualsIgnoreCase(answer, u"mapi")) settings.Transport = mapi;
  }
  if (settings.Transport == mapi) {
    settings.MapiProfile = AskText(terminal, u"MAPI profile: ");
  } else {
    settings.HostName = AskText(terminal, u"SMTP host: ");
    settings.Address = AskText(terminal, u"Sender's e-mail address: ");
    settings.RealName = AskText(terminal, u"Sender's name (may be empty): ");
  }
}

// The settings from the project file are checked as well.
void RequireNoControls(const SendSettings& settings) {
  for (const String* setting :
       {&settings.HostName, &settings.Address, &settings.RealName, &settings.MapiProfile}) {
    if (HasControl(*setting))
      throw CommandError(DataRefused, TextNumber::kSettingWithControl, FromUtf8(TerminalLine(*setting)));
  }
}

void Put(String& setting, const std::optional<std::string>& option) {
  if (option) setting = ArgumentText(*option);
}

}  // namespace

void SendOptions::AddTo(CLI::App& command) {
  command.add_option("--transport", Transport, "How mail is sent: smtp or mapi")
      ->check(CLI::IsMember({"smtp", "mapi"}, CLI::ignore_case));
  command.add_option("--host", HostName, "The SMTP host");
  command.add_option("--address", Address, "The sender's e-mail address");
  command.add_option("--real-name", RealName, "The sender's name");
  command.add_option("--profile", Profile, "The MAPI profile");
}

bool SendOptions::Any() const {
  return Transport || HostName || Address || RealName || Profile;
}

SendSettings ResolveSendSettings(const SendOptions& options, const SendSettings& present) {
  const String mapi = MapiTransportName();
  const String smtp = SmtpTransportName();
  SendSettings settings = present;
  if (options.Transport)
    settings.Transport = EqualsIgnoreCase(ArgumentText(*options.Transport), u"mapi") ? mapi : smtp;
  if (settings.Transport.empty() && !options.Any()) Ask(settings, mapi, smtp);
  if (settings.Transport.empty()) throw CommandError(WrongUse, TextNumber::kTransportOptionMissing);
  const bool isMapi = settings.Transport == mapi;
  if (isMapi && (options.HostName || options.Address || options.RealName))
    throw CommandError(WrongUse, TextNumber::kSmtpOptionsWithMapi);
  if (!isMapi && options.Profile) throw CommandError(WrongUse, TextNumber::kMapiOptionWithSmtp);
  Put(settings.HostName, options.HostName);
  Put(settings.Address, options.Address);
  Put(settings.RealName, options.RealName);
  Put(settings.MapiProfile, options.Profile);
  if (isMapi && settings.MapiProfile.empty()) throw CommandError(WrongUse, TextNumber::kProfileOptionMissing);
  if (!isMapi && settings.HostName.empty()) throw CommandError(WrongUse, TextNumber::kHostOptionMissing);
  if (!isMapi && settings.Address.empty()) throw CommandError(WrongUse, TextNumber::kAddressOptionMissing);
  RequireNoControls(settings);
  return settings;
}

}  // namespace Host
