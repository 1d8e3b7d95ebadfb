// modResource: the component's own numbered texts.
//
// The resource object is created by the first text that a thread asks for and kept until the thread ends; as
// long as it can't be created, every text asks again. No failure leaves these functions: without the service
// a text is ResourceServiceMissing, and a text whose call fails is the empty string.
#pragma once

#include "platform/contracts/ResourceServices.h"
#include "src/services/PassOver.h"

namespace TvEmailServices {

using namespace Platform;

inline constexpr StringView ResourceServiceMissing =
    u"Failed to retrieve resource string.  Please locate and register TvResourceServices.dll";

// The thread's resource object, or nothing.
Resource GetCachedResourceObject();

String LoadTvResourceString(std::int32_t number);
String LoadTVResourceStringV(std::int32_t number, const Array& arguments);
String LoadTVResourceStringS(std::int32_t number, const String& first, const String& second);

// What ask gets from the object: ResourceServiceMissing without an object, the empty string if ask fails.
template <class Ask>
String TextOf(const Resource& resource, Ask&& ask) {
  if (!resource) return String(ResourceServiceMissing);
  String text;
  PassOver([&] { text = ask(resource); });
  return text;
}

// True if the resource object can be had. If not and report is on, shows ResourceServiceMissing in a box
// without a title of its own.
bool IsResourceLoaded(bool report);

}  // namespace TvEmailServices
