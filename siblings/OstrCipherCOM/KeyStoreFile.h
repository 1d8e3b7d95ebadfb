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

namespace OstrCipherCOM {

using namespace Platform;

// Keys of kStoredKeySize bytes by their labels.
using StoredKeys = std::map<String, Bytes>;

class KeyStoreFile {
 public:
  explicit KeyStoreFile(const String& path);

  const String& Path() const { return path_; }

  // True also for a link that leads nowhere.
  bool Exists() const;

  // All keys. Refuses a file that others than its owner may read or write.
  StoredKeys Read(const String& password) const;

  // Replaces the file in one step, durable when it returns.
  void Write(const String& password, const StoredKeys& keys) const;

  // Held while a store is read and written anew; others that want it wait.
  class Lock {
   public:
    explicit Lock(const KeyStoreFile& file);
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;
    ~Lock();

   private:
    int folder_;
  };

 private:
  std::string ReadText() const;
  [[noreturn]] void RefuseFile(StringView reason, std::int32_t number = FailureNumber::DeviceFailed) const;
  [[noreturn]] void RefuseForSystemError(StringView attempt) const;

  String path_;
  std::string name_;    // of the file itself, links resolved, as the system calls want it
  std::string folder_;  // the folder that holds it
};

}  // namespace OstrCipherCOM
