#include "gateway/sources/MailQueue.h"
#include "gateway/sources/MaildirQueue.h"
#include "gateway/sources/SourceFailure.h"
#include "platform/StoredNames.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

void RequireAbsolute(const char* setting, const std::string& path) {
  if (path.empty()) RaiseSetting(TextNumber::kSourceSettingMissing, setting);
  if (path[0] != '/') RaiseSetting(TextNumber::kSourceSettingWrong, setting, path);
}

}  // namespace

std::unique_ptr<MailQueue> MakeQueue(const QueueSettings& settings) {
  RequireAbsolute("folder", settings.Folder);
  return std::make_unique<MaildirQueue>(settings);
}

}  // namespace Gateway
