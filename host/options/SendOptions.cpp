#include "host/options/SendOptions.h"

#include <CLI/CLI.hpp>

#include "host/CommandError.h"
#include "host/terminal/Terminal.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

String AskText(const Terminal& terminal, StringView prompt) {
  const auto answer = terminal.ReadLine(prompt);
  if (!answer) throw CommandError(Cancelled, "the input ended: nothing was changed");
  return Trim(*answer);
}

void Ask(SendSettings& settings, const String& mapi, const String& smtp) {
  const Terminal terminal;
  if (!terminal.Interactive())
    throw CommandError(
        WrongUse,
        "the transport of the project's mail is missing: give --transport smtp with --host and "
        "--address, or --transport mapi with --profile");
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
      throw CommandError(DataRefused,
                         "\"" + TerminalLine(*setting) +
                             "\", a setting for sending the project's mail, contains a line end or "
                             "another control character: replace it with its option");
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
  if (settings.Transport.empty()) throw CommandError(WrongUse, "--transport is missing: give smtp or mapi");
  const bool isMapi = settings.Transport == mapi;
  if (isMapi && (options.HostName || options.Address || options.RealName))
    throw CommandError(WrongUse, "--host, --address and --real-name belong to --transport smtp: omit them");
  if (!isMapi && options.Profile)
    throw CommandError(WrongUse, "--profile belongs to --transport mapi: omit it");
  Put(settings.HostName, options.HostName);
  Put(settings.Address, options.Address);
  Put(settings.RealName, options.RealName);
  Put(settings.MapiProfile, options.Profile);
  if (isMapi && settings.MapiProfile.empty())
    throw CommandError(WrongUse, "--profile is missing: name the MAPI profile that sends");
  if (!isMapi && settings.HostName.empty())
    throw CommandError(WrongUse, "--host is missing: name the SMTP host");
  if (!isMapi && settings.Address.empty())
    throw CommandError(WrongUse, "--address is missing: give the sender's e-mail address");
  RequireNoControls(settings);
  return settings;
}

}  // namespace Host
