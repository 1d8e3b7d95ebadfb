#include "host/RefusalCode.h"

#include "platform/Failure.h"
#include "platform/Object.h"
#include "platform/Services.h"
#include "platform/contracts/ProjectLibrary.h"

namespace Host {

using namespace Platform;

ExitCode CodeOfRefusal() {
  try {
    Services().CreateByName(u"TvGeneralServices.Files");
    Services().CreateByName(u"TvResourceServices.Resource");
    Services().CreateByClass(TalvaneApplicationClass);
    return DataRefused;
  } catch (const Failure&) {
    return TryAgain;
  }
}

}  // namespace Host
