#include "gateway/sources/SslLibrary.h"

namespace Gateway {

Runtime::SystemLibrary::Address SslLibrary::Find(const char* name) {
  static const Runtime::SystemLibrary library("libssl.so.3", "libssl3");
  return library.Find(name);
}

const SslLibrary& SslLibrary::Get() {
  static const SslLibrary library;
  return library;
}

}  // namespace Gateway
