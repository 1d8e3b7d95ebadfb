#include "gateway/service/NoticeSummary.h"

#include "gateway/delivery/MailboxRecords.h"
#include "gateway/notices/ProjectSending.h"
#include "platform/Failure.h"
#include "platform/Services.h"

namespace Gateway {

NoticeSummary ReadNoticeSummary(StringView mailbox, const NoticeSettings& settings) {
  NoticeSummary summary;
  try {
    const auto record = FindMailbox(mailbox);
    if (!record || record->ProjectPath.empty()) return summary;
    const Platform::NoticeQueue queue(Platform::Services().CreateByName(Platform::NoticeQueue::kName));
    queue.Open(record->ProjectPath);
    summary.State = queue.State();
    if (settings.Send)
      summary.Problem = SendingProblem(ReadMailboxSending(record->ProjectPath, settings.Address));
  } catch (const std::exception&) {
    summary.Problem = Platform::CurrentFailure().Description();
    summary.Failed = true;
  }
  return summary;
}

}  // namespace Gateway
