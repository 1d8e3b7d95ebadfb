// What the library says of itself, and its exports.
#include "siblings/TvResourceServices/Resource.h"

namespace TvResourceServices {

std::atomic<long> liveObjects{0};

namespace {

ObjectRef CreateResource() {
  return std::make_shared<Resource>();
}

constexpr ClassDescription kClasses[] = {{.Name = u"Resource",
                                          .Id = "{9C42E81B-70D5-4F13-B6A8-2D94C1F05001}"_identity,
                                          .Version = u"1.0",
                                          .Attributes = u"",
                                          .Create = CreateResource,
                                          .DefaultInterface = nullptr,
                                          .MoreInterfaces = {}}};

constexpr ComponentDescription kDescription = {.ProjectName = u"TvResourceServices",
                                               .ProjectDescription = u"Talvane texts by number",
                                               .HelpDirectory = u"",
                                               .ThreadingModel = u"Apartment",
                                               .Classes = kClasses,
                                               .TypeLibrary = nullptr,
                                               .Version = nullptr,
                                               .LiveObjects = &liveObjects};

}  // namespace
}  // namespace TvResourceServices

PLATFORM_COMPONENT_EXPORTS(TvResourceServices::kDescription)
