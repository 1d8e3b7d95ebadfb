#include "src/services/ResourceObjects.h"

#include "platform/Services.h"
#include "src/services/PassOver.h"

namespace TvEmailServices {
namespace {

// The resource files lie beside the component's own file, which is found by an address of its code.
String ComponentFolder() {
  return Services().FolderOf(reinterpret_cast<const void*>(&CreateResourceObject));
}

Resource CreateWithTexts(StringView file, StringView name) {
  ObjectRef object;
  PassOver([&] { object = Services().CreateByName(u"TvResourceServices.Resource"); });
  Resource resource(object);
  if (resource) PassOver([&] { resource.LoadResources(ComponentFolder().append(u"\\").append(file), name); });
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
