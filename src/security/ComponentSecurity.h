// ComponentSecurity: the encoders of passwords, so that a mailbox record doesn't hold a project's password in
// plain form.
//
// There are three independent schemes, each in a file of its own:
//   - PasswordEncoder.cpp: Encrypt and Decrypt, for the passwords of mailbox records;
//   - OldEncoder.cpp: EncryptOld and DecryptOld, an older reversible encoder;
//   - ComponentSecurity.cpp: AES-128 by the crypto component, and the key tables of the two encoders.
// An encoded string doesn't contain its scheme: the caller selects it by the operation. The first two are an
// obfuscation with a fixed table, not a cipher: anyone who has this library can decode their strings.
//
// An object is created for one use, and used on one thread. It keeps the settings of the key store and the
// crypto component's object, which is created on its first use and released with this object.
//
// A single-byte code is a code of ISO 8859-1, 0 to 255; other characters have none.
#pragma once

#include "platform/contracts/Cipher.h"

namespace TvEmailServices {

using namespace Platform;

class ComponentSecurity {
 public:
  ComponentSecurity() = default;
  ComponentSecurity(const ComponentSecurity&) = delete;
  ComponentSecurity& operator=(const ComponentSecurity&) = delete;

  // The encoded password string, different at each call, without vertical bars and semicolons; 30 characters
  // for a password of up to 21. Raises SecurityFailure::kNotEncrypted for a character outside the codes 14 to
  // 124, for more than 97 characters, whose number could not always be decoded, and for any other failure.
  String Encrypt(const String& password);

  // The password of an encoded password string; empty for an empty one. Replaces codes 127 and 126 of the
  // argument by 124 and 59, also if it fails. A damaged string may give a wrong password; raises
  // SecurityFailure::kCipher if it can't be decoded.
  String Decrypt(String& encoded);

  // The older encoder. Both give the empty string on failure and raise nothing. A text can be decoded if it
  // has at most 252 characters of the codes 1 to 253; a character above code 255 is a failure. DecryptOld
  // replaces code 255 of its argument by 124.
  String EncryptOld(const String& text);
  String DecryptOld(String& encoded);

  // Without useCipher: Encrypt and Decrypt; the key is ignored. Otherwise AES-128; the key is converted to
  // bytes, or read from the key store if it is no value or nothing. An empty text gives the empty string.
  // Every failure is raised as SecurityFailure::kCipher with the original description.
  String Encrypt71(const String& text, const Value& key, Boolean useCipher);
  String Decrypt71(const Value& encoded, const Value& key, Boolean useCipher);

  // AES-128 with the fixed key, which is part of the key table.
  String EncryptFixed(const String& text);
  String DecryptFixed(const Value& encoded);

  // Reads KeyDBFileName, KeyDBPassword and KeyLabel, in this order, from a KeyStoreProvider. Raises what it
  // raises; the settings read before that are kept.
  void TakeKeyStoreSettings(const ObjectRef& provider);

 private:
  friend class ComponentSecurityTestAccess;

  static String GetKeyTable();
  static String GetOldKeyTable();
  static Bytes GetFixedKey();

  // The 21 bytes of the key in the key store. Raises SecurityFailure::kNoKeyStore without a file name, 1 with
  // the crypto component's description if the key can't be read.
  Bytes PWKeyFIPS();

  // The caller's key, or the key store's.
  Bytes KeyBytesOf(const Value& key);

  // Raises SecurityFailure::kCipher, or the failure of its creation, if there is no crypto component.
  Cipher GetOstrCipherCOM();

  String keyDBFileName_;
  String keyDBPassword_;
  String keyLabel_;
  ObjectRef cipherObject_;
};

}  // namespace TvEmailServices
