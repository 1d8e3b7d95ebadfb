#include "siblings/Talvane40/MailUnderWay.h"

namespace Talvane40 {

std::optional<MailUnderWay>& MailOfThisThread() {
  thread_local std::optional<MailUnderWay> mail;
  return mail;
}

}  // namespace Talvane40
