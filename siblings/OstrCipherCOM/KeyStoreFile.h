// KeyStoreFile: the file of a key store, sealed with a password.
//
// Three lines of text: the format's name, "scrypt" with its cost and salt, and base64 of the sealed keys,
// with the first two lines bound to them. Each operation raises a failure with the file's name, the reason
// and what to do: 419 for a wrong password, 57 for what isn't told below.
#pragma once

#include <map>
#include <string>

#include "platform/Failure.h"
#include "platform/Value.h"
#include "runtime/DurableFile.h"

namespace OstrCipherCOM {

using namespace Platform;

// Keys of kStoredKeySize bytes by their labels.
using StoredKeys = std::map<String, Bytes>;

class KeyStoreFile {
 public:
  explicit KeyStoreFile(const String& path);

  const String& Path() const { return path_; }

  // All keys. Refuses a file that others than its owner may read or write.
  StoredKeys Read(const String& password) const;

  // Puts one more key into the file, which is made where it doesn't exist; durable when it returns. Raises 58
  // if there is a key with the label. Others that add keys meanwhile lose none.
  void Add(const String& password, const String& label, const Bytes& key) const;

 private:
  StoredKeys Unseal(const Runtime::SmallFile& file, const String& password) const;
  [[noreturn]] void RefuseFile(StringView reason, std::int32_t number = FailureNumber::DeviceFailed) const;

  String path_;
  std::string name_;  // as the system calls want it
};

}  // namespace OstrCipherCOM
