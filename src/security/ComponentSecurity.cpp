// The key tables, and AES-128 by the crypto component. The two encoders of ComponentSecurity are in
// PasswordEncoder.cpp and OldEncoder.cpp.
#include "src/security/ComponentSecurity.h"

#include "platform/Services.h"

namespace TvEmailServices {
namespace {

// True for empty bytes, an empty array and an empty text.
bool HasNoLength(const Value& value) {
  if (value.IsBytes()) return value.ToBytes().empty();
  if (value.IsArray()) return value.ToArray().empty();
  return value.ToString().empty();
}

}  // namespace

// The key tables. An encoded string can be read only with the table that wrote it, so no character may ever
// change. Each is built from several pieces, so that the library file doesn't contain it as one text.

// 111 characters. The first 81 are start characters: their first occurrence is at their own position, and
// none is a blank, which would be trimmed from a record's value, or has code 126 or 127, which replace others
// in an encoded string.
String ComponentSecurity::GetKeyTable() {
  String table = u"3%SHi,vEWn$X!]PRj;(&us-p1Dg=orGVe+*_>FAM#QZ4:";
  table += char16_t{29};
  table += u"/x9)'L[IBObY.?@C|z2\"dhwa0^6Kc\\k{NmlUfqy`8}5TtJ7<8oYlCq1F6OLU^!T#5";
  return table;
}

// 127 characters. The first 97 are start characters; none has code 255.
String ComponentSecurity::GetOldKeyTable() {
  String table = u"&ZW\u00FE4JwuVcb6>/F8kh9HXpt\u00BFK\u00A4Dsm@\u00E5`1]PT;}Q";
  table += char16_t{172};
  table +=
      u"7rO\u00A1\u00B6\"d\u00A7R-=E|\u00C6C^gelBU'NLY2fI\\o+j*M{.\u00DF%vq(0nGA\u00D85:iS?[zy<_~,)\u00F6$"
      u"\u00B0a!#3x7lPRSp1E2BwT_8%U5NoL";
  return table;
}

// 26 bytes: the table's positions 2 to 27.
Bytes ComponentSecurity::GetFixedKey() {
  constexpr std::size_t kSize = 26;
  Bytes key;
  for (std::size_t i = 0; i < kSize; ++i) key.push_back(static_cast<std::uint8_t>(GetKeyTable()[i + 1]));
  return key;
}

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

// The key is every fifth byte of the buffer, from byte 20 on.
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
    if (index >= buffer.size()) Raise(FailureNumber::Subscript);  // the component has shortened it
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
