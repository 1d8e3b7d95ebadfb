#include "gateway/sources/ImapQueue.h"
#include "gateway/sources/MaildirQueue.h"
#include "gateway/sources/Pop3Queue.h"
#include "gateway/sources/SourceFailure.h"
#include "platform/ProgramTexts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

// A setting is sent as part of a line to the server, which it must not end.
void RequireText(const char* setting, const std::string& value) {
  if (value.empty()) RaiseSetting(TextNumber::kSourceSettingMissing, setting);
  if (value.size() > 255 || !Platform::IsUtf8(value) || Platform::HasControl(Platform::FromUtf8(value)))
    RaiseSetting(TextNumber::kSourceSettingWrong, setting, value.substr(0, 255));
}

void RequireAbsolute(const char* setting, const std::string& path) {
  if (path.empty()) RaiseSetting(TextNumber::kSourceSettingMissing, setting);
  if (path[0] != '/') RaiseSetting(TextNumber::kSourceSettingWrong, setting, path);
}

void RequireServer(const QueueSettings& settings) {
  RequireText("host", settings.Host);
  RequireText("user", settings.User);
  RequireAbsolute("password-file", settings.PasswordFile);
  if (!settings.CaFile.empty()) RequireAbsolute("ca-file", settings.CaFile);
  if (settings.Port < 0 || settings.Port > 65535)
    RaiseSetting(TextNumber::kSourceSettingWrong, "port", std::to_string(settings.Port));
}

}  // namespace

std::unique_ptr<MailQueue> MakeQueue(const QueueSettings& settings) {
  switch (settings.Kind) {
    case QueueKind::Imap:
      RequireServer(settings);
      RequireText("folder", settings.Mailbox);
      if (settings.After == AfterSuccess::Move) {
        RequireText("move-to", settings.MoveTo);
        // With it, the mail that was moved would be passed again.
        if (settings.MoveTo == settings.Mailbox)
          RaiseSetting(TextNumber::kSourceSettingWrong, "move-to", settings.MoveTo);
      }
      return std::make_unique<ImapQueue>(settings);
    case QueueKind::Pop3:
      RequireServer(settings);
      if (settings.After == AfterSuccess::Move)
        RaiseSetting(TextNumber::kSourceSettingWrong, "after", "move");
      return std::make_unique<Pop3Queue>(settings);
    case QueueKind::Maildir:
      break;
  }
  RequireAbsolute("folder", settings.Folder);
  return std::make_unique<MaildirQueue>(settings);
}

}  // namespace Gateway
