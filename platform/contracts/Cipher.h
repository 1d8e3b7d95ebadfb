// Cipher: typed proxies for the crypto component OstrCipherCOM, its key stores, and the provider of key store
// settings.
//
// See ObjectProxy for what every operation may raise, and for threads and ownership. An operation that gives
// a CipherResult reports all other failures in it.
#pragma once

#include <cstdint>

#include "platform/CheckedArithmetic.h"
#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// The result of the crypto component: Number is 1 or more on success; otherwise ErrorText says why.
struct CipherResult {
  std::int32_t Number = 0;
  String Output;
  String ErrorText;
};

class Cipher : public ObjectProxy {
 public:
  static constexpr std::size_t KeyBufferSize = 121;  // bytes
  using ObjectProxy::ObjectProxy;

  // Encrypts by AES-128-GCM under a key that is derived from all bytes of the given one (HKDF, SHA-256). The
  // output differs at each call. Fails for an empty key.
  CipherResult AES128EncryptString(const String& text, const Bytes& key) const {
    return Run(u"AES128EncryptString", text, key);
  }
  // Fails for another key, and for a text that was changed or isn't such an output.
  CipherResult AES128DecryptString(const String& text, const Bytes& key) const {
    return Run(u"AES128DecryptString", text, key);
  }

  // Reads the key of a label into the buffer, which must have KeyBufferSize bytes. Fails, with the buffer
  // unchanged, if there is no such key, the password is wrong, or the file is missing, damaged or accessible
  // to others.
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

// Creates keys in key stores.
class KeyStore : public ObjectProxy {
 public:
  static constexpr StringView kName = u"OstrCipherCOM.KeyStore";  // the programmatic name
  using ObjectProxy::ObjectProxy;

  // Adds a new random key under a label. Creates a store that doesn't exist, mode 0600, encrypted with the
  // password. The key is on disk when this returns. Raises 380 for refused input, 58 for a label that exists,
  // 419 for a wrong password, 57 for a store that is damaged, accessible to others or can't be written; then
  // the store is as before.
  void CreateKey(const String& file, const String& password, const String& label) const {
    Call(u"CreateKey", file, password, label);
  }
};

// The caller's settings of the key store that ComponentSecurity reads its AES-128 key from.
class KeyStoreProvider : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  String KeyDBFileName() const { return Get(u"KeyDBFileName").ToString(); }
  String KeyDBPassword() const { return Get(u"KeyDBPassword").ToString(); }
  String KeyLabel() const { return Get(u"KeyLabel").ToString(); }
};

}  // namespace Platform
