// NoticeSummary: what a mailbox has to send, for administrators and monitoring.
#pragma once

#include "gateway/notices/NoticeSettings.h"
#include "platform/contracts/NoticeQueue.h"

namespace Gateway {

struct NoticeSummary {
  Platform::NoticeState State;
  String Problem;       // why nothing can be sent, or why the state can't be read; empty if all is well
  bool Failed = false;  // the project or its database can't be read; what waits is unknown
};

// Nothing for a mailbox without a record. There is no problem if the settings switch sending off. Raises
// nothing but std::bad_alloc. Any thread.
NoticeSummary ReadNoticeSummary(StringView mailbox, const NoticeSettings& settings);

}  // namespace Gateway
