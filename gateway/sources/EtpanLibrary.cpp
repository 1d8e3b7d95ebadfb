#include "gateway/sources/EtpanLibrary.h"

namespace Gateway {

Runtime::SystemLibrary::Address EtpanLibrary::Find(const char* name) {
  static const Runtime::SystemLibrary library("libetpan.so.20", "libetpan20");
  return library.Find(name);
}

const EtpanLibrary& EtpanLibrary::Get() {
  static const EtpanLibrary library;
  return library;
}

}  // namespace Gateway
