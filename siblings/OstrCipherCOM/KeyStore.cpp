#include "siblings/OstrCipherCOM/KeyStore.h"

#include "siblings/OstrCipherCOM/KeyStoreFile.h"
#include "siblings/OstrCipherCOM/OstrCipherCOM.h"
#include "siblings/OstrCipherCOM/Sealing.h"

namespace OstrCipherCOM {

const KeyStore::Table& KeyStore::Members() {
  static const Table table = {Method(u"CreateKey", 3, &KeyStore::CreateKey)};
  return table;
}

Value KeyStore::CreateKey(std::span<Value> arguments) {
  const KeyStoreFile file(arguments[0].ToString());
  const String password = arguments[1].ToString();
  const String label = arguments[2].ToString();
  if (password.empty()) Refuse(u"A key store needs a password; enter one.", FailureNumber::RefusedInput);
  if (label.empty()) Refuse(u"A key needs a label; enter one.", FailureNumber::RefusedInput);

  file.Add(password, label, RandomBytes(kStoredKeySize));
  return {};
}

}  // namespace OstrCipherCOM
