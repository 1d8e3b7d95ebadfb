// KeyStoreFuzz: any text as a key store, and any bytes as what a key store seals.
//
// The first byte of an input decides which of the two the rest is.
#include "fuzz/FuzzFiles.h"
#include "siblings/OstrCipherCOM/KeyStoreFile.h"
#include "siblings/OstrCipherCOM/OstrCipherCOM.h"
#include "siblings/OstrCipherCOM/Sealing.h"

namespace {

using namespace OstrCipherCOM;

// A key store with those bytes in it, at the lowest cost that is taken.
std::string Sealed(std::string_view packed) {
  const Bytes salt(16, 7);
  const ScryptCost cost{10, 8, 1};
  const std::string header = "OstrCipherCOM key store 1\nscrypt 10 8 1 " + ToBase64(salt) + "\n";
  const SealingKey key = KeyFromPassword(u"pw", salt, cost);
  return header + ToBase64(Seal(key, header, Bytes(packed.begin(), packed.end()))) + "\n";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const std::string_view rest = Fuzz::TextOf(data + 1, size - 1);
  const Fuzz::FileInMemory file(data[0] % 2 == 0 ? std::string(rest) : Sealed(rest));
  try {
    for (const auto& [label, key] : KeyStoreFile(FromUtf8(file.Path())).Read(u"pw"))
      Fuzz::Require(key.size() == kStoredKeySize);
  } catch (const Failure& failure) {
    Fuzz::Require(failure.Number() == FailureNumber::RefusedInput ||
                  failure.Number() == FailureNumber::DeviceFailed ||
                  failure.Number() == FailureNumber::WrongPassword);
  }
  return 0;
}
