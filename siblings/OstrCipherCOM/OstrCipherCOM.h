// OstrCipherCOM: the crypto component: encrypts strings with AES-128 and reads key stores.
// platform/contracts/Cipher.h is the contract. No member raises a failure for its arguments: each returns 1,
// or 0 with the reason in its error text.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"

namespace OstrCipherCOM {

using namespace Platform;

extern std::atomic<long> liveObjects;

// The size of a key in a key store, and of the buffer for it.
inline constexpr std::size_t kStoredKeySize = 121;

class OstrCipherCOM : public ObjectWithMembers<OstrCipherCOM> {
 public:
  static const Table& Members();

 private:
  // (text, its length in bytes, out output, reserved, key bytes, out error text). The output is "OC1:" and
  // base64 of a random nonce, the encrypted UTF-16 and the tag.
  Value AES128EncryptString(std::span<Value> arguments);
  Value AES128DecryptString(std::span<Value> arguments);

  // (file, password, label, buffer, out error text). After a failure the buffer is unchanged.
  Value Keywell_GetKSKey(std::span<Value> arguments);

  LiveObject live_{liveObjects};
};

}  // namespace OstrCipherCOM
