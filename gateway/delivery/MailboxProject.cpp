#include "gateway/delivery/MailboxProject.h"

#include <utility>

#include "gateway/delivery/MailboxAddress.h"
#include "gateway/delivery/MailboxRecords.h"
#include "platform/ProgramTexts.h"
#include "platform/Services.h"
#include "runtime/Texts.h"

namespace Gateway {

MailboxProject::MailboxProject(String mailbox, String address)
    : mailbox_(std::move(mailbox)),
      setAddress_(std::move(address)),
      intake_(Platform::Services().CreateByName(Platform::MailIntake::kName)) {}

bool MailboxProject::Open() {
  auto record = FindMailbox(mailbox_);
  if (!record)
    throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                            Runtime::TextOf(Platform::TextNumber::kMailboxMissing, mailbox_));
  path_ = std::move(record->ProjectPath);
  const bool changed = intake_.Open(path_);
  if (changed) address_.reset();
  return changed;
}

const String& MailboxProject::Address() {
  if (!address_) address_ = setAddress_.empty() ? ReadMailboxAddress(path_) : setAddress_;
  return *address_;
}

}  // namespace Gateway
