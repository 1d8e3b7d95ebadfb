// OstrCipherCOM: the crypto component: AES-128 for strings, and the reading of a key store.
//
// An object known by its members' names, used on the thread that created it. No member raises a failure for
// what it is given: each gives 1, or 0 with the reason in its error text.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"

namespace OstrCipherCOM {

using namespace Platform;

extern std::atomic<long> liveObjects;

// The size of a key in a key store, and so of the buffer that takes it.
inline constexpr std::size_t kStoredKeySize = 121;

class OstrCipherCOM : public ObjectWithMembers<OstrCipherCOM> {
 public:
  static const Table& Members();

 private:
  // AES128EncryptString(text, its length in bytes, out output, out 0, key bytes, out error text). The output
  // is "OC1:" and base64 of nonce, sealed UTF-16 and tag, other for each call. A length that isn't the text's
  // is refused, so that no text is sealed in part.
  Value AES128EncryptString(std::span<Value> arguments);

  // AES128DecryptString, with the same six: the text that such an output holds. 0 for another key, and for a
  // text that was changed or isn't such an output.
  Value AES128DecryptString(std::span<Value> arguments);

  // Keywell_GetKSKey(file, password, label, out buffer of 121 bytes, out error text). The buffer stays as it
  // was where there is no such key, the password is wrong, or the file is missing, damaged or open to others.
  Value Keywell_GetKSKey(std::span<Value> arguments);

  LiveObject live_{liveObjects};
};

}  // namespace OstrCipherCOM
