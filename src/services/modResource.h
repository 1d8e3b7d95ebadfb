// modResource: the component's own numbered texts.
//
// Each thread creates its resource object for its first text and keeps it until it ends; a failed creation is
// tried again for the next text. No function raises a failure: without the service a text is
// ResourceServiceMissing; a text whose call fails is the empty string.
#pragma once

#include "platform/contracts/ResourceServices.h"
#include "src/services/IgnoreFailure.h"

namespace TvEmailServices {

using namespace Platform;

inline constexpr StringView ResourceServiceMissing =
    u"Failed to retrieve resource string.  Please locate and register TvResourceServices.dll";

// The thread's resource object; empty if it can't be created.
Resource GetCachedResourceObject();

String LoadTvResourceString(std::int32_t number);
String LoadTVResourceStringV(std::int32_t number, const Array& arguments);
String LoadTVResourceStringS(std::int32_t number, const String& first, const String& second);

// The result of ask; ResourceServiceMissing without an object, the empty string if ask fails.
template <class Ask>
String TextOf(const Resource& resource, Ask&& ask) {
  if (!resource) return String(ResourceServiceMissing);
  String text;
  IgnoreFailure([&] { text = ask(resource); });
  return text;
}

// True if there is a resource object. If not, and report is true, shows ResourceServiceMissing in a box with
// the toolkit's default title.
bool IsResourceLoaded(bool report);

}  // namespace TvEmailServices
