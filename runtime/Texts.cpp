#include "runtime/Texts.h"

#include <exception>

#include "platform/Services.h"
#include "platform/contracts/ResourceServices.h"
#include "runtime/Folders.h"

namespace Runtime {

String TextOf(std::int32_t number, StringView first, StringView second) {
  try {
    const Platform::Resource texts(Platform::Services().CreateByName(u"TvResourceServices.Resource"));
    texts.LoadResources(LibraryFolder() + u"\\TvMailRes.dll", u"TvMail");
    return texts.ResourceStrings(number, first, second);
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace Runtime
