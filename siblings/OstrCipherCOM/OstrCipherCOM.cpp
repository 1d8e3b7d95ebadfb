#include "siblings/OstrCipherCOM/OstrCipherCOM.h"

#include "siblings/OstrCipherCOM/KeyStoreFile.h"
#include "siblings/OstrCipherCOM/Sealing.h"

namespace OstrCipherCOM {
namespace {

constexpr std::string_view kPrefix = "OC1:";

// The positions of the arguments.
enum StringArgument : std::size_t { Text, Length, Output, Reserved, Key, StringErrorText };
enum KeyStoreArgument : std::size_t { File, Password, Label, Buffer, KeyStoreErrorText };

// Runs an operation. Returns 1, or 0 with the description of its failure in the error text.
template <class Operation>
Value Attempt(Value& errorText, Operation operation) {
  try {
    operation();
    return std::int32_t{1};
  } catch (...) {
    errorText = CurrentFailure().Description();
    return std::int32_t{0};
  }
}

String TakeText(std::span<Value> arguments) {
  const String text = arguments[Text].ToString();
  if (arguments[Length].ToDouble() != 2.0 * static_cast<double>(text.size())) {
    Refuse(u"The length in bytes doesn't match the text; pass twice its number of characters.");
  }
  return text;
}

String TextOf(const Bytes& bytes) {
  String text;
  for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
    text += static_cast<char16_t>(bytes[i] | bytes[i + 1] << 8);
  }
  return text;
}

}  // namespace

const OstrCipherCOM::Table& OstrCipherCOM::Members() {
  static const Table table = {Method(u"AES128EncryptString", 6, &OstrCipherCOM::AES128EncryptString),
                              Method(u"AES128DecryptString", 6, &OstrCipherCOM::AES128DecryptString),
                              Method(u"Keywell_GetKSKey", 5, &OstrCipherCOM::Keywell_GetKSKey)};
  return table;
}

Value OstrCipherCOM::AES128EncryptString(std::span<Value> arguments) {
  return Attempt(arguments[StringErrorText], [&] {
    const Bytes content = Value(TakeText(arguments)).ToBytes();
    const SealingKey key = KeyFromBytes(arguments[Key].ToBytes());
    arguments[Output] = FromUtf8(std::string(kPrefix) + ToBase64(Seal(key, kPrefix, content)));
  });
}

Value OstrCipherCOM::AES128DecryptString(std::span<Value> arguments) {
  return Attempt(arguments[StringErrorText], [&] {
    const std::string text = ToUtf8(TakeText(arguments));
    const SealingKey key = KeyFromBytes(arguments[Key].ToBytes());
    if (!text.starts_with(kPrefix))
      Refuse(u"The text can't be decrypted: it wasn't encrypted by this component.");
    const auto sealed = FromBase64(std::string_view(text).substr(kPrefix.size()));
    const auto content = sealed ? Open(key, kPrefix, *sealed) : std::nullopt;
    if (!content) Refuse(u"The text can't be decrypted: the key is wrong, or the text was changed.");
    arguments[Output] = TextOf(*content);
  });
}

Value OstrCipherCOM::Keywell_GetKSKey(std::span<Value> arguments) {
  return Attempt(arguments[KeyStoreErrorText], [&] {
    if (arguments[Buffer].ToBytes().size() != kStoredKeySize) {
      Refuse(u"The buffer for the key has the wrong size; pass one of 121 bytes.");
    }
    const KeyStoreFile file(arguments[File].ToString());
    const StoredKeys keys = file.Read(arguments[Password].ToString());
    const String label = arguments[Label].ToString();
    const auto found = keys.find(label);
    if (found == keys.end())
      Refuse(u"The key store " + file.Path() + u" has no key with the label " + label +
             u"; name another label or store.");
    arguments[Buffer] = found->second;
  });
}

}  // namespace OstrCipherCOM
