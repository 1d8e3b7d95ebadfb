// Cipher: the typed windows on the crypto component and on the provider of key store settings.
#pragma once

#include <cstdint>

#include "platform/CheckedArithmetic.h"
#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// What an operation of the crypto component gives: a number, 1 or more on success, and its two out strings.
struct CipherResult {
  std::int32_t Number = 0;
  String Output;
  String ErrorText;
};

class Cipher : public ObjectProxy {
 public:
  static constexpr std::size_t KeyBufferSize = 121;
  using ObjectProxy::ObjectProxy;

  CipherResult AES128EncryptString(const String& text, const Bytes& key) const {
    return Run(u"AES128EncryptString", text, key);
  }
  CipherResult AES128DecryptString(const String& text, const Bytes& key) const {
    return Run(u"AES128DecryptString", text, key);
  }

  // Fills the buffer, which is KeyBufferSize bytes long on entry, from the key store.
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

class KeyStoreProvider : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  String KeyDBFileName() const { return Get(u"KeyDBFileName").ToString(); }
  String KeyDBPassword() const { return Get(u"KeyDBPassword").ToString(); }
  String KeyLabel() const { return Get(u"KeyLabel").ToString(); }
};

}  // namespace Platform
