// NoticeReader: everything that is needed to compose the mail of a notice.
#pragma once

#include "platform/contracts/NoticeQueue.h"
#include "runtime/Database.h"
#include "siblings/Talvane40/NoticeIds.h"

namespace Talvane40 {

using namespace Platform;

class NoticeReader {
 public:
  // Both must outlive the object.
  NoticeReader(Runtime::Database& database, const NoticeIds& ids);

  // Nothing if the notice is gone. Raises 57 if the database can't be read.
  std::optional<DueNotice> Read(std::int64_t id);

 private:
  void AddReply(DueNotice& notice, std::int64_t reply, std::int64_t earliest);
  void AddEarlierIds(DueNotice& notice, std::int64_t earliest);
  void AddAnswer(DueNotice& notice, std::int64_t answer);

  const NoticeIds& ids_;
  Runtime::Statement notice_, reply_, earlier_, answer_;
};

}  // namespace Talvane40
