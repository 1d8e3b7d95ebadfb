#include "src/services/ResourceObjects.h"

#include "platform/Services.h"
#include "src/services/IgnoreFailure.h"

namespace TvEmailServices {
namespace {

// The folder of the resource files, which is that of the component's library.
String ComponentFolder() {
  return Services().FolderOf(reinterpret_cast<const void*>(&CreateResourceObject));
}

Resource CreateWithTexts(StringView file, StringView name) {
  ObjectRef object;
  IgnoreFailure([&] { object = Services().CreateByName(u"TvResourceServices.Resource"); });
  Resource resource(object);
  if (resource)
    IgnoreFailure([&] { resource.LoadResources(ComponentFolder().append(u"\\").append(file), name); });
  return resource;
}

}  // namespace

Resource CreateResourceObject() {
  return CreateWithTexts(u"TvEmailServicesRes.dll", u"TvEmailServices");
}

Resource CreateComResourceObject() {
  return CreateWithTexts(u"TvComRes.dll", u"Talvane40");
}

}  // namespace TvEmailServices
