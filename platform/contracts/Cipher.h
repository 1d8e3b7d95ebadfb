// Cipher: typed proxies for the crypto component OstrCipherCOM, its key stores, and the provider of key store
// settings.
//
// See ObjectProxy for what every operation may raise.
#pragma once

#include <cstdint>

#include "platform/CheckedArithmetic.h"
#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// What an operation of the crypto component gives: 1 or more on success with the output, otherwise a number
// below 1 with the reason.
struct CipherResult {
  std::int32_t Number = 0;
  String Output;
  String ErrorText;
};

class Cipher : public ObjectProxy {
 public:
  static constexpr std::size_t KeyBufferSize = 121;  // bytes
  using ObjectProxy::ObjectProxy;

  // AES-128 with the first 16 bytes of the key. The output is another one at each call.
  CipherResult AES128EncryptString(const String& text, const Bytes& key) const {
    return Run(u"AES128EncryptString", text, key);
  }
  // Number 0 for another key, and for a text that was changed or isn't such an output.
  CipherResult AES128DecryptString(const String& text, const Bytes& key) const {
    return Run(u"AES128DecryptString", text, key);
  }

  // Fills the buffer, which has KeyBufferSize bytes on entry, with the key of a label. Number 0, and the
  // buffer unchanged, where there is no such key, the password is wrong, or the file is missing, damaged or
  // open to others.
  CipherResult Keywell_GetKSKey(const String& fileName, const String& password, const String& label,
                                Bytes& buffer) const {
    Value arguments[] = {fileName, password, label, buffer, String()};
    const std::int32_t number = CallByReference(u"Keywell_GetKSKey", arguments).ToInt32();
    if (number >= 1) buffer = arguments[3].ToBytes();
    return {number, {}, arguments[4].ToString()};
  }

 private:
  CipherResult Run(StringView member, const String& text, const Bytes& key) const {
    const auto length = Narrow<std::int32_t>(text.size() * 2);
    Value arguments[] = {text, length, String(), std::int32_t{0}, key, String()};
    const std::int32_t number = CallByReference(member, arguments).ToInt32();
    return {number, arguments[2].ToString(), arguments[5].ToString()};
  }
};

// Makes key stores. Created by KeyStore::kName.
class KeyStore : public ObjectProxy {
 public:
  static constexpr StringView kName = u"OstrCipherCOM.KeyStore";
  using ObjectProxy::ObjectProxy;

  // Puts a new random key under a label into the store. A store that doesn't exist is created, mode 0600,
  // sealed with the password. The key is on disk when this returns. A failure leaves the store as it was: 380 for
  // refused input, 58 for a label that exists, 419 for a wrong password, 57 for a store that is damaged, open
  // to others or can't be written.
  void CreateKey(const String& file, const String& password, const String& label) const {
    Call(u"CreateKey", file, password, label);
  }
};

// Where the key of the AES-128 encoder lies. A member may raise; see ComponentSecurity.
class KeyStoreProvider : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  String KeyDBFileName() const { return Get(u"KeyDBFileName").ToString(); }
  String KeyDBPassword() const { return Get(u"KeyDBPassword").ToString(); }
  String KeyLabel() const { return Get(u"KeyLabel").ToString(); }
};

}  // namespace Platform
