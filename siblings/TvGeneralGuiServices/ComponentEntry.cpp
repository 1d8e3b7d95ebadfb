// What the library says of itself, and its exports.
#include "siblings/TvGeneralGuiServices/Help.h"

namespace TvGeneralGuiServices {

std::atomic<long> liveObjects{0};

namespace {

ObjectRef CreateHelp() {
  return std::make_shared<Help>();
}

constexpr ClassDescription kClasses[] = {{.Name = u"Help",
                                          .Id = "{5A1D7C30-2F64-4B0E-A3C9-81E6B2D75001}"_identity,
                                          .Version = u"1.0",
                                          .Attributes = u"",
                                          .Create = CreateHelp,
                                          .DefaultInterface = nullptr,
                                          .MoreInterfaces = {}}};

constexpr ComponentDescription kDescription = {.ProjectName = u"TvGeneralGuiServices",
                                               .ProjectDescription = u"Talvane general dialogs and help",
                                               .HelpDirectory = u"",
                                               .ThreadingModel = u"Apartment",
                                               .Classes = kClasses,
                                               .TypeLibrary = nullptr,
                                               .Version = nullptr,
                                               .LiveObjects = &liveObjects};

}  // namespace
}  // namespace TvGeneralGuiServices

PLATFORM_COMPONENT_EXPORTS(TvGeneralGuiServices::kDescription)
