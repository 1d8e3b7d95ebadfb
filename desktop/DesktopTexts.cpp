#include "desktop/DesktopTexts.h"

#include "platform/Services.h"
#include "platform/contracts/ResourceServices.h"
#include "runtime/Folders.h"

namespace Desktop {

using namespace Platform;

String DesktopText(std::int32_t number, const Array& arguments) {
  try {
    const Resource texts(Services().CreateByName(u"TvResourceServices.Resource"));
    texts.LoadResources(Runtime::LibraryFolder() + u"\\TvDesktopRes.dll", u"TvDesktop");
    return texts.ResourceStringV(number, arguments);
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace Desktop
