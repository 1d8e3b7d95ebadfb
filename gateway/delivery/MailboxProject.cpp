#include "gateway/delivery/MailboxProject.h"

#include <utility>

#include "gateway/delivery/MailboxRecords.h"
#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "runtime/Texts.h"

namespace Gateway {

MailboxProject::MailboxProject(String mailbox)
    : mailbox_(std::move(mailbox)), intake_(Platform::Services().CreateByName(Platform::MailIntake::kName)) {}

bool MailboxProject::Open() {
  auto record = FindMailbox(mailbox_);
  if (!record)
    throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                            Runtime::TextOf(Platform::TextNumber::kMailboxMissing, mailbox_));
  path_ = std::move(record->ProjectPath);
  return intake_.Open(path_);
}

}  // namespace Gateway
