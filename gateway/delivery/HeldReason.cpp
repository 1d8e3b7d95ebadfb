#include "gateway/delivery/HeldReason.h"

#include "platform/Failure.h"
#include "platform/Json.h"
#include "platform/JsonReader.h"
#include "runtime/DurableFile.h"
#include "runtime/Folders.h"

namespace Gateway {
namespace {

constexpr std::size_t kLargest = std::size_t{64} << 10;  // a reason has at most some hundred characters

}  // namespace

void WriteHeldReason(const std::string& path, const HeldReason& reason) {
  Platform::JsonObject object;
  object.Add("mailbox", reason.Mailbox)
      .Add("rule", Platform::FromUtf8(reason.Rule))
      .Add("reason", reason.Reason);
  if (reason.EnvelopeSender) object.Add("envelopeSender", Platform::FromUtf8(*reason.EnvelopeSender));
  const std::string folder = Runtime::FolderOfPath(path);
  Runtime::StagedFile file(folder);
  file.Write(object.Text() + "\n");
  file.PublishOver(path);
  file.Keep();
  Runtime::SyncFolder(folder);
}

HeldReason ReadHeldReason(const std::string& path) {
  HeldReason reason;
  try {
    const auto texts = Platform::ReadJsonTexts(Runtime::ReadSmallFile(path, kLargest).Content);
    if (!texts) return reason;
    const auto text = [&](const char* name) {
      const auto found = texts->find(name);
      return found == texts->end() ? String() : found->second;
    };
    reason.Mailbox = text("mailbox");
    reason.Rule = Platform::ToUtf8(text("rule"));
    reason.Reason = text("reason");
    if (texts->contains("envelopeSender")) reason.EnvelopeSender = Platform::ToUtf8(text("envelopeSender"));
  } catch (const Platform::Failure&) {
    // The mail is shown without it.
  }
  return reason;
}

}  // namespace Gateway
