// KeyStore: creates the key stores that OstrCipherCOM reads. platform/contracts/Cipher.h is the contract.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"

namespace OstrCipherCOM {

using namespace Platform;

extern std::atomic<long> liveObjects;

class KeyStore : public ObjectWithMembers<KeyStore> {
 public:
  static const Table& Members();

 private:
  Value CreateKey(std::span<Value> arguments);

  LiveObject live_{liveObjects};
};

}  // namespace OstrCipherCOM
