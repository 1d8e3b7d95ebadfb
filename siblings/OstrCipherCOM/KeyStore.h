// KeyStore: makes the key stores that OstrCipherCOM reads. Its programmatic name is "OstrCipherCOM.KeyStore".
//
// An object known by its members' names, used on the thread that created it.
//
//   CreateKey(file, password, label)
//
// Puts a new random key of 121 bytes under the label into the store; a store that doesn't exist is made, mode
// 0600, sealed with the password. All three are strings. Gives no value.
//
// Raises a failure, with a description for the user, and leaves the store as it was: 380 if the password or
// the label can't be taken, 58 if the label is taken, 419 if the password isn't the one of the existing
// store, 57 if the store is damaged or open to others, or its folder can't be written. When it returns, the
// key is on the disk; a crash at any time leaves the old store or the new one. Processes that add keys to one
// store at once wait for each other.
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
