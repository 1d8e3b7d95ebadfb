// ComponentSecurity: the encoders that keep a project password out of a mailbox record in plain form.
//
// Three schemes that know nothing of each other: the password encoder (Encrypt, Decrypt), an older reversible
// encoder, and AES-128 through the crypto component. No encoded string says which scheme made it; the caller
// selects it by the operation. The first two are an obfuscation with a fixed table, not a cipher: who has
// this library can read what they write.
//
// A caller makes an object for one use, on the thread that uses it. What an object keeps is the settings of
// the key store and the crypto component's object, which is created at its first use and dropped with this
// one.
//
// A single-byte code is that of ISO 8859-1: codes 0 to 255 are the first 256 characters, and a character
// above them has none.
#pragma once

#include "platform/contracts/Cipher.h"

namespace TvEmailServices {

using namespace Platform;

// The numbers of the failures that ComponentSecurity raises. They name no texts.
namespace SecurityFailure {
inline constexpr std::int32_t kCipher = 10005;  // a text can't be decoded, or the cipher failed
inline constexpr std::int32_t kNotEncrypted = 10006;
inline constexpr std::int32_t kNoKeyStore = 10007;  // no file name of a key store is set
}  // namespace SecurityFailure

class ComponentSecurity {
 public:
  ComponentSecurity() = default;
  ComponentSecurity(const ComponentSecurity&) = delete;
  ComponentSecurity& operator=(const ComponentSecurity&) = delete;

  // The encoded password string, drawn anew at each call: 30 characters up to a password of 21, no vertical
  // bar and no semicolon. Raises 10006 for a character outside the codes 14 to 124, for a password of more
  // than 97 characters, whose length couldn't be read back after every draw, and for anything else that
  // fails.
  String Encrypt(const String& password);

  // The password of an encoded password string; empty for an empty one. Codes 127 and 126 of the argument
  // stand as 124 and 59 afterwards, also after a failure. A damaged string that reads to its end gives a
  // wrong password; raises 10005 where one can't be read.
  String Decrypt(String& encoded);

  // The older scheme. Raises nothing: whatever fails gives the empty string. A text reads back if it has at
  // most 252 characters of the codes 1 to 253; a character above code 255 is a failure. DecryptOld leaves
  // code 255 of its argument as 124.
  String EncryptOld(const String& text);
  String DecryptOld(String& encoded);

  // With useCipher false, Encrypt and Decrypt, and the key isn't looked at. Otherwise AES-128; the key is
  // taken as bytes, or from the key store where it is no value or an object reference to nothing. An empty
  // text gives the empty string. Every failure is raised as 10005, with the description of what failed
  // beneath.
  String Encrypt71(const String& text, const Value& key, Boolean useCipher);
  String Decrypt71(const Value& encoded, const Value& key, Boolean useCipher);

  // AES-128 with the key that the key table holds.
  String EncryptFixed(const String& text);
  String DecryptFixed(const Value& encoded);

  // Reads KeyDBFileName, KeyDBPassword and KeyLabel of the provider; a failure of one passes, with those read
  // before it kept.
  void TakeKeyStoreSettings(const ObjectRef& provider);

 private:
  friend class ComponentSecurityTestAccess;

  static String GetKeyTable();
  static String GetOldKeyTable();
  static Bytes GetFixedKey();

  // The 21 bytes of the key store's key. Raises 10007 without a file name, 1 with the key store's own text.
  Bytes PWKeyFIPS();

  // The key that a caller handed in, or the key store's.
  Bytes KeyBytesOf(const Value& key);

  // Raises 10005, or the platform's own failure, if the crypto component can't be had.
  Cipher GetOstrCipherCOM();

  String keyDBFileName_;
  String keyDBPassword_;
  String keyLabel_;
  ObjectRef cipherObject_;
};

}  // namespace TvEmailServices
