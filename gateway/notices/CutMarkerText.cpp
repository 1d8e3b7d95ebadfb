#include "gateway/notices/CutMarkerText.h"

#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/ResourceServices.h"
#include "runtime/Folders.h"

namespace Gateway {

Platform::String LoadCutMarkerText() {
  const Platform::Resource texts(Platform::Services().CreateByName(u"TvResourceServices.Resource"));
  texts.LoadResources(Runtime::LibraryFolder() + u"\\TvComRes.dll", u"Talvane40");
  return texts.ResourceString(Platform::TextNumber::kCutMarker);
}

}  // namespace Gateway
