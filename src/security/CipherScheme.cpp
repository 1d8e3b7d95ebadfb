// AES-128 through the crypto component, with a caller's key, the key store's or the fixed one.
#include "src/security/ComponentSecurity.h"

#include "platform/Services.h"

namespace TvEmailServices {
namespace {

// Whatever holds nothing, be it text or bytes.
bool HasNoLength(const Value& value) {
  if (value.IsBytes()) return value.ToBytes().empty();
  if (value.IsArray()) return value.ToArray().empty();
  return value.ToString().empty();
}

}  // namespace

String ComponentSecurity::Encrypt71(const String& text, const Value& key, Boolean useCipher) {
  String description;
  try {
    if (!useCipher) return Encrypt(text);
    if (text.empty()) return {};
    const Bytes keyBytes = KeyBytesOf(key);
    CipherResult result = GetOstrCipherCOM().AES128EncryptString(text, keyBytes);
    if (result.Number >= 1) return std::move(result.Output);
    description = result.ErrorText.empty() ? u"Error encrypting data." : result.ErrorText;
  } catch (...) {
    description = CurrentFailure().Description();
  }
  throw Failure(SecurityFailure::kCipher, u"TvEmailServices.ComponentSecurity.Encrypt71", description);
}

String ComponentSecurity::Decrypt71(const Value& encoded, const Value& key, Boolean useCipher) {
  String description;
  try {
    if (useCipher && HasNoLength(encoded)) return {};
    String text = encoded.ToString();
    if (!useCipher) return Decrypt(text);
    const Bytes keyBytes = KeyBytesOf(key);
    CipherResult result = GetOstrCipherCOM().AES128DecryptString(text, keyBytes);
    if (result.Number >= 1) return std::move(result.Output);
    description = result.ErrorText;
  } catch (...) {
    description = CurrentFailure().Description();
  }
  throw Failure(SecurityFailure::kCipher, u"TvEmailServices.ComponentSecurity.Decrypt71", description);
}

String ComponentSecurity::EncryptFixed(const String& text) {
  return Encrypt71(text, GetFixedKey(), True);
}

String ComponentSecurity::DecryptFixed(const Value& encoded) {
  return Decrypt71(encoded, GetFixedKey(), True);
}

void ComponentSecurity::TakeKeyStoreSettings(const ObjectRef& provider) {
  const KeyStoreProvider settings(provider);
  keyDBFileName_ = settings.KeyDBFileName();
  keyDBPassword_ = settings.KeyDBPassword();
  keyLabel_ = settings.KeyLabel();
}

Bytes ComponentSecurity::KeyBytesOf(const Value& key) {
  if (key.IsObject() && !key.ToObject()) return PWKeyFIPS();
  if (key.IsEmpty()) return PWKeyFIPS();
  return key.ToBytes();
}

// Every fifth byte of the buffer from 20 on makes the key.
Bytes ComponentSecurity::PWKeyFIPS() {
  constexpr std::size_t kSize = 21, kFirst = 20, kStep = 5;
  if (keyDBFileName_.empty()) throw Failure(SecurityFailure::kNoKeyStore, {}, u"Key DB filename is not set.");
  Bytes buffer(Cipher::KeyBufferSize);
  const CipherResult result =
      GetOstrCipherCOM().Keywell_GetKSKey(keyDBFileName_, keyDBPassword_, keyLabel_, buffer);
  if (result.Number <= 0) throw Failure(1, u"PWKeyFIPS", result.ErrorText);
  Bytes key;
  for (std::size_t j = 0; j < kSize; ++j) {
    const std::size_t index = kFirst + kStep * j;
    if (index >= buffer.size()) Raise(FailureNumber::Subscript);  // the buffer came back shorter than it went
    key.push_back(buffer[index]);
  }
  return key;
}

Cipher ComponentSecurity::GetOstrCipherCOM() {
  if (!cipherObject_) cipherObject_ = Services().CreateByName(u"OstrCipherCOM.OstrCipherCOM");
  if (!cipherObject_) {
    throw Failure(SecurityFailure::kCipher, u"TvEmailServices.ComponentSecurity.GetOstrCipherCOM",
                  u"Cannot load OstrCipherCom.dll");
  }
  return Cipher(cipherObject_);
}

}  // namespace TvEmailServices
