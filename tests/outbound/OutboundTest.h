// OutboundTest: a user's real registry, and numbered texts.
#pragma once

#include "platform/StoredNames.h"
#include "runtime/RegistryStore.h"
#include "src/outbound/OutboundStore.h"
#include "src/services/modResource.h"
#include "tests/services/NumberedTexts.h"
#include "tests/support/World.h"

namespace TvEmailServices {

using Runtime::RegistryStore;
using Texts = std::vector<std::string>;

inline void AddProfile(const String& name, const String& system = {}) {
  RegistryStore::CreateKey(Hive::CurrentUser, u"Software\\Microsoft\\" + system +
                                                  u"Windows Messaging Subsystem\\Profiles\\" + name);
}

// The six values of the outbound key, "-" for one that isn't there.
inline std::string StoredIn(const Tests::World& world) {
  std::string values;
  for (const StringView name :
       {SendingValue::kEnabled, SendingValue::kTransportId, SendingValue::kMapiProfile,
        SendingValue::kHostName, SendingValue::kAddress, SendingValue::kRealName}) {
    const std::string value = world.Registry(Hive::CurrentUser, RegistryPath::kOutbound, name);
    values += (values.empty() ? "" : "|") + (value == "(none)" ? "-" : value);
  }
  return values;
}

class OutboundTest : public testing::Test {
 protected:
  OutboundTest() {
    world.Services.Instead["TvResourceServices.Resource"] = [] {
      return std::make_shared<Tests::NumberedTexts>();
    };
    GetCachedResourceObject();  // kept by the thread, so it comes before the watchers
    world.Services.Watching = true;
  }

  std::string Stored() const { return StoredIn(world); }

  // Plans these faults; their occurrences are counted from now on.
  void Plan(std::vector<Tests::Fault> faults) {
    world.Services.Occurrences.clear();
    world.Services.Faults = std::move(faults);
  }

  Tests::World world;
  const Failure boom{57, u"test", u"boom"};
};

}  // namespace TvEmailServices
