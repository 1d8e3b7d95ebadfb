// KeyStoreFile: the file of a key store, encrypted with a password. docs/formats.md describes the format.
//
// Every failure's description has the file's name, the reason and what to do: 419 for a wrong password or a
// changed file, 76 for a missing file or folder, 70 for a missing permission, 380 for a folder in the place
// of the file, 57 otherwise. Any thread.
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

  // All keys. Raises 380 if other users may read or write the file.
  StoredKeys Read(const String& password) const;

  // Adds a key. A file that doesn't exist is created. The key is on disk when this returns. Raises 58 if the
  // label is used. Several processes may add keys at the same time.
  void Add(const String& password, const String& label, const Bytes& key) const;

 private:
  StoredKeys Unseal(const Runtime::SmallFile& file, const String& password) const;
  [[noreturn]] void RefuseFile(StringView reason, std::int32_t number = FailureNumber::RefusedInput) const;

  String path_;
  std::string name_;  // the path in UTF-8
};

}  // namespace OstrCipherCOM
