#include "src/services/modResource.h"

#include "platform/Forms/FormsToolkit.h"
#include "platform/Services.h"
#include "src/services/ResourceObjects.h"

namespace TvEmailServices {
namespace {

thread_local Resource keptResource;

}  // namespace

Resource GetCachedResourceObject() {
  if (!keptResource) keptResource = CreateResourceObject();
  return keptResource;
}

String LoadTvResourceString(std::int32_t number) {
  return TextOf(GetCachedResourceObject(),
                [&](const Resource& resource) { return resource.ResourceString(number); });
}

String LoadTVResourceStringV(std::int32_t number, const Array& arguments) {
  return TextOf(GetCachedResourceObject(),
                [&](const Resource& resource) { return resource.ResourceStringV(number, arguments); });
}

String LoadTVResourceStringS(std::int32_t number, const String& first, const String& second) {
  return TextOf(GetCachedResourceObject(),
                [&](const Resource& resource) { return resource.ResourceStrings(number, first, second); });
}

bool IsResourceLoaded(bool report) {
  if (GetCachedResourceObject()) return true;
  if (report) IgnoreFailure([] { Services().Toolkit().MessageBox(ResourceServiceMissing, std::nullopt); });
  return false;
}

}  // namespace TvEmailServices
