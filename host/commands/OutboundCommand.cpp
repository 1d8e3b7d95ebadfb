// tvmail outbound: the user's settings for sending discussion mail, through the component's own dialog.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "gateway/delivery/HandlerObject.h"
#include "gateway/notices/ProjectSending.h"
#include "host/CommandError.h"
#include "host/OutboundSettings.h"
#include "host/RegistryKey.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
#include "host/options/OptionToolkit.h"
#include "host/options/SendOptions.h"
#include "host/terminal/ToolkitChoice.h"
#include "platform/Json.h"
#include "platform/ProgramTexts.h"
#include "platform/StoredNames.h"
#include "platform/TerminalText.h"
#include "runtime/ProcessServices.h"
#include "runtime/RegistryStore.h"
#include "runtime/Texts.h"

namespace Host {

namespace {

constexpr const char* kProfileNotes =
    R"(The command is run by /bin/sh as the user who sends, with the mail on standard input; it takes the recipient from
the mail's To field. Without one, or after --command "", it is: sendmail -t -i
A profile that exists keeps its command unless --command is given.)";

struct OutboundOptions {
  bool Enable = false;
  bool Disable = false;
  SendOptions Send;
  bool Any() const { return Enable || Disable || Send.Any(); }
};

// The positions of the dialog's list of transports.
constexpr std::int32_t kMapi = 0;
constexpr std::int32_t kSmtp = 1;

void ChooseTransport(Form& form, UserInput& input, const std::string& transport) {
  Control& list = form[u"cmbProvider"];
  const std::int32_t wanted = EqualsIgnoreCase(ArgumentText(transport), u"mapi") ? kMapi : kSmtp;
  input.Choose(list, wanted);
  // Without a MAPI profile the dialog says so and goes back to SMTP.
  if (list.ListIndex() != wanted) throw CommandError(DataRefused, TextNumber::kNoMapiProfileYet);
}

void ChooseProfile(Form& form, UserInput& input, const String& profile) {
  Control& list = form[u"cmbProfile"];
  if (!list.Visible()) throw CommandError(WrongUse, TextNumber::kProfileNeedsMapi);
  String known;
  for (std::size_t i = 0; i < list.List().size(); ++i) {
    if (EqualsIgnoreCase(list.List()[i], profile)) {
      input.Choose(list, static_cast<std::int32_t>(i));
      return;
    }
    known += (known.empty() ? u"" : u", ") + list.List()[i];
  }
  throw CommandError(DataRefused, TextNumber::kProfileUnknown, profile, known);
}

void TypeSmtp(Form& form, UserInput& input, StringView box, const std::string& option,
              const std::optional<std::string>& text) {
  if (!text) return;
  if (!form[box].Visible()) throw CommandError(WrongUse, TextNumber::kOptionNeedsSmtp, FromUtf8(option));
  TypeOption(form, input, box, option, ArgumentText(*text));
}

// The dialog loads the stored address and name only if a host is stored, and saves what it shows. Raises a
// CommandError if a stored one would be lost that way.
void RequireSmtpShown(Form& form, const SendOptions& given) {
  if (form[u"chkEnableEmail"].Value() == 0 || form[u"cmbProvider"].ListIndex() != kSmtp) return;
  const auto key = RegistryKey::Open(Hive::CurrentUser, RegistryPath::kOutbound);
  if (!key) return;
  const struct {
    StringView Value, Box;
    bool Given;
    const char* Option;
  } entries[] = {{SendingValue::kAddress, u"txtEMailAddress", given.Address.has_value(), "--address"},
                 {SendingValue::kRealName, u"txtRealName", given.RealName.has_value(), "--real-name"}};
  for (const auto& [value, box, isGiven, option] : entries) {
    const String stored = Trim(key->Text(value));
    if (isGiven || stored.empty() || stored == form[box].Text()) continue;
    throw CommandError(WrongUse, TextNumber::kStoredTextWouldBeLost, FromUtf8(option),
                       FromUtf8(TerminalLine(stored)));
  }
}

void Fill(const OutboundOptions& options, Form& form, UserInput& input) {
  Control& enabled = form[u"chkEnableEmail"];
  if (options.Enable || options.Disable) input.Check(enabled, options.Enable);
  if (options.Send.Any() && enabled.Value() == 0) throw CommandError(WrongUse, TextNumber::kOutboundDisabled);
  const SendOptions& send = options.Send;
  if (send.Transport) ChooseTransport(form, input, *send.Transport);
  if (send.Profile) ChooseProfile(form, input, ArgumentText(*send.Profile));
  TypeSmtp(form, input, u"txtHost", "--host", send.HostName);
  TypeSmtp(form, input, u"txtEMailAddress", "--address", send.Address);
  TypeSmtp(form, input, u"txtRealName", "--real-name", send.RealName);
  RequireSmtpShown(form, send);
  input.Enter();
}

// "mapi", "smtp", or any other stored text.
String TransportWord(const OutboundSettings& settings) {
  return settings.Transport == TransportId::kMapi   ? u"mapi"
         : settings.Transport == TransportId::kSmtp ? u"smtp"
                                                    : settings.StoredTransport;
}

void Line(const char* name, const String& text) {
  std::cout << name << (text.empty() ? "(none)" : TerminalLine(text)) << '\n';
}

int Show(bool json) {
  RequireStores();
  const OutboundSettings settings = ReadOutboundSettings();
  const String transport = TransportWord(settings), command = Gateway::CommandOfProfile(settings.Profile);
  if (json) {
    std::cout << JsonObject()
                     .Add("configured", settings.Configured)
                     .Add("enabled", settings.Enabled)
                     .Add("transport", transport)
                     .Add("profile", settings.Profile)
                     .Add("command", command)
                     .Add("host", settings.HostName)
                     .Add("address", settings.Address)
                     .Add("realName", settings.RealName)
                     .Text()
              << '\n';
    return Done;
  }
  if (!settings.Configured) {
    std::cout << "Outbound e-mail isn't configured yet. Configure it with tvmail outbound.\n";
    return Done;
  }
  std::cout << "Discussions send e-mail: " << (settings.Enabled ? "yes" : "no") << '\n';
  Line("Transport:    ", transport);
  Line("MAPI profile: ", settings.Profile);
  if (!settings.Profile.empty())
    Line("Command:      ", command.empty() ? String(Gateway::kUsualCommand) : command);
  Line("SMTP host:    ", settings.HostName);
  Line("Address:      ", settings.Address);
  Line("Real name:    ", settings.RealName);
  return Done;
}

int Configure(const OutboundOptions& options) {
  RequireStores();
  std::shared_ptr<OptionToolkit> toolkit;
  std::shared_ptr<RecordingToolkit> dialog;
  if (options.Any()) {
    toolkit = std::make_shared<OptionToolkit>(
        [&options](Form& form, UserInput& user) { Fill(options, form, user); });
    Runtime::InstallToolkit(toolkit);
  } else {
    dialog = InstallChosenToolkit();
  }
  const Gateway::HandlerObject handler;
  const FailureWatch watch;
  const bool configured{handler.Manager().ConfigureOutBoundEmail()};
  if (toolkit) toolkit->Finish();
  // The component reports success even if the last setting could not be written.
  const bool stored = configured && !(toolkit && CodeOf(watch, Done) == TryAgain);
  if (stored) return Show(false);
  if (dialog && dialog->Shown())
    throw CommandError(Cancelled, Runtime::TextOf(TextNumber::kSettingsCancelled));
  if (dialog) throw CommandError(CodeOf(watch, TryAgain), Runtime::TextOf(TextNumber::kDialogNotOpened));
  throw CommandError(CodeOf(watch, DataRefused), TextNumber::kSettingsNotSaved);
}

struct ProfileOptions {
  std::string Name;
  std::optional<std::string> Command;
};

int AddProfile(const ProfileOptions& options) {
  RequireStores();
  const String name = Trim(ArgumentText(options.Name));
  if (!Runtime::RegistryStore::IsKeyName(name))
    throw CommandError(DataRefused, TextNumber::kProfileNameInvalid);
  const std::optional<String> typed =
      options.Command ? std::optional(Trim(ArgumentText(*options.Command))) : std::nullopt;
  const String key = Gateway::ProfileKey(name);
  Runtime::RegistryStore::CreateKey(Hive::CurrentUser, key);
  if (typed)
    Runtime::RegistryStore::Write(Hive::CurrentUser, key, SendingValue::kProfileCommand,
                                  {RegValue::StringType, Value(*typed)});
  const String command = Gateway::CommandOfProfile(name);
  std::cout << "MAPI profile " << TerminalLine(name) << " is defined. It sends by the command: "
            << TerminalLine(command.empty() ? Gateway::kUsualCommand : StringView(command)) << '\n';
  return Done;
}

}  // namespace

void AddOutboundCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* outbound = program.add_subcommand("outbound", "Configure how discussions send e-mail");
  outbound->require_subcommand(0, 1);
  auto options = std::make_shared<OutboundOptions>();
  CLI::Option* enable = outbound->add_flag("--enable", options->Enable, "Discussions send e-mail");
  outbound->add_flag("--disable", options->Disable, "Discussions send no e-mail")->excludes(enable);
  options->Send.AddTo(*outbound);
  outbound->callback([&invocation, options] {
    if (!invocation.Run)
      invocation.Run = [options] { return Configure(*options); };
    else if (options->Any())
      invocation.Run = []() -> int { throw CommandError(WrongUse, TextNumber::kOptionsBeforeSubcommand); };
  });

  CLI::App* show = outbound->add_subcommand("show", "Show the settings");
  auto json = std::make_shared<bool>(false);
  show->add_flag("--json", *json, "Print one JSON object");
  show->callback([&invocation, json] { invocation.Run = [json] { return Show(*json); }; });

  CLI::App* profile = outbound->add_subcommand("add-profile", "Define or change a MAPI profile of this user");
  auto profileOptions = std::make_shared<ProfileOptions>();
  profile->add_option("NAME", profileOptions->Name, "The profile's name")->required();
  profile->add_option("--command", profileOptions->Command,
                      "The sendmail-compatible command that sends its mail, such as \"msmtp -a office -t\"");
  profile->footer(kProfileNotes);
  profile->callback([&invocation, profileOptions] {
    invocation.Run = [profileOptions] { return AddProfile(*profileOptions); };
  });
  // Set last, since subcommands copy the footer when they are added.
  outbound->footer(
      "Without options the dialog opens. Options are entered into the dialog, which is then closed with OK.\n"
      "Settings that aren't given are kept. While no SMTP host is stored, give --address and --real-name\n"
      "together with --host.");
}

}  // namespace Host
