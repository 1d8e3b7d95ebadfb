#include "host/terminal/EditLibrary.h"

namespace Host {

Runtime::SystemLibrary::Address EditLibrary::Find(const char* name) {
  static const Runtime::SystemLibrary library("libedit.so.2", "libedit2");
  return library.Find(name);
}

const EditLibrary& EditLibrary::Get() {
  static const EditLibrary library;
  return library;
}

}  // namespace Host
