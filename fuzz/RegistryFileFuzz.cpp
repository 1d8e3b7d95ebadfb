// RegistryFileFuzz: any bytes as the file of the machine-wide hive, read, written and searched for classes.
#include <fstream>

#include "fuzz/FuzzFiles.h"
#include "platform/Failure.h"
#include "platform/Services.h"
#include "runtime/RegistryStore.h"

namespace {

using namespace Platform;
using Runtime::RegistryStore;

constexpr Hive kHive = Hive::LocalMachine;

// Every operation gives a result or raises a failure.
template <class Operation>
void Try(Operation operation) {
  try {
    operation();
  } catch (const Failure& failure) {
    Fuzz::Require(!failure.Description().empty());
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const Fuzz::Home home;
  const std::string file = ToUtf8(RegistryStore::FileOf(kHive));
  for (const char* end : {"", "-wal", "-shm"}) std::filesystem::remove(file + end);
  std::ofstream(file, std::ios::binary) << Fuzz::TextOf(data, size);
  std::filesystem::permissions(file, std::filesystem::perms(0600));
  Try([] { RegistryStore::SubKeys(kHive, u"Software"); });
  Try([] { RegistryStore::Read(kHive, u"Software\\A", u"v"); });
  Try([] { Services().CreateByName(u"A.B"); });
  Try([] { RegistryStore::Create(kHive); });
  Try([] { RegistryStore::CreateKey(kHive, u"Software\\A\\B"); });
  Try([] { RegistryStore::Write(kHive, u"Software\\A", u"v", {1, u"text"}); });
  Try([] { RegistryStore::DeleteKey(kHive, u"Software"); });
  return 0;
}
