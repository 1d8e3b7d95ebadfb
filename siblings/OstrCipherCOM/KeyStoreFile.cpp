#include "siblings/OstrCipherCOM/KeyStoreFile.h"

#include <sys/stat.h>

#include <sstream>

#include "siblings/OstrCipherCOM/OstrCipherCOM.h"
#include "siblings/OstrCipherCOM/Sealing.h"

namespace OstrCipherCOM {
namespace {

constexpr std::string_view kFormatLine = "OstrCipherCOM key store 1\n";
constexpr std::size_t kSaltSize = 16;
constexpr std::size_t kLargestFile = std::size_t{16} << 20;
constexpr int kAttempts = 8;

// Limits of the cost in a header, so that a changed file can't take all memory or time.
constexpr std::uint32_t kLowestLogarithmOfN = 10;
constexpr std::uint32_t kHighestLogarithmOfN = 17;
constexpr std::uint32_t kHighestParallelism = 16;

std::string CostLine(const ScryptCost& cost, const Bytes& salt) {
  std::ostringstream line;
  line << "scrypt " << cost.LogarithmOfN << ' ' << cost.BlockSize << ' ' << cost.Parallelism << ' '
       << ToBase64(salt) << '\n';
  return line.str();
}

// False unless the line is exactly what CostLine writes for a cost within the limits.
bool ReadCostLine(const std::string& line, ScryptCost& cost, Bytes& salt) {
  std::istringstream words(line);
  std::string scheme, saltText;
  words >> scheme >> cost.LogarithmOfN >> cost.BlockSize >> cost.Parallelism >> saltText;
  salt = FromBase64(saltText).value_or(Bytes());
  return words && salt.size() == kSaltSize && line == CostLine(cost, salt) &&
         cost.LogarithmOfN >= kLowestLogarithmOfN && cost.LogarithmOfN <= kHighestLogarithmOfN &&
         cost.BlockSize == ScryptCost().BlockSize && cost.Parallelism >= 1 &&
         cost.Parallelism <= kHighestParallelism;
}

// Each key as the two bytes of its label's length, the label in UTF-8, and the key's own bytes.
Bytes Pack(const StoredKeys& keys) {
  Bytes packed;
  for (const auto& [label, key] : keys) {
    const std::string octets = ToUtf8(label);
    if (octets.size() > 0xFFFF)
      Refuse(u"The label of the key is too long; name a shorter one.", FailureNumber::RefusedInput);
    packed.push_back(static_cast<std::uint8_t>(octets.size() & 0xFF));
    packed.push_back(static_cast<std::uint8_t>(octets.size() >> 8));
    packed.insert(packed.end(), octets.begin(), octets.end());
    packed.insert(packed.end(), key.begin(), key.end());
  }
  return packed;
}

// False if the bytes end inside a key.
bool Unpack(const Bytes& packed, StoredKeys& keys) {
  for (auto at = packed.begin(); at != packed.end();) {
    if (packed.end() - at < 2) return false;
    const std::ptrdiff_t labelSize = at[0] | at[1] << 8;
    at += 2;
    constexpr auto kKeySize = static_cast<std::ptrdiff_t>(kStoredKeySize);
    if (packed.end() - at < labelSize + kKeySize) return false;
    const String label = FromUtf8(std::string(at, at + labelSize));
    at += labelSize;
    keys[label] = Bytes(at, at + kKeySize);
    at += kKeySize;
  }
  return true;
}

// The file's text, with a new salt.
std::string Sealed(const String& password, const StoredKeys& keys) {
  const Bytes salt = RandomBytes(kSaltSize);
  const ScryptCost cost;
  const std::string header = std::string(kFormatLine) + CostLine(cost, salt);
  return header + ToBase64(Seal(KeyFromPassword(password, salt, cost), header, Pack(keys))) + '\n';
}

}  // namespace

KeyStoreFile::KeyStoreFile(const String& path) : path_(path), name_(ToUtf8(path)) {
  if (name_.empty()) Refuse(u"The key store has no file name; enter one.", FailureNumber::RefusedInput);
  if (name_.find('\0') != std::string::npos)
    RefuseFile(u"its name holds a null character; enter another name", FailureNumber::RefusedInput);
}

StoredKeys KeyStoreFile::Read(const String& password) const {
  return Unseal(Runtime::ReadSmallFile(name_, kLargestFile), password);
}

void KeyStoreFile::Add(const String& password, const String& label, const Bytes& key) const {
  // If another program creates the file in between, the next attempt adds the key to it.
  for (int attempt = 1;; ++attempt) {
    try {
      const Runtime::LockedFile file(name_, kLargestFile);
      StoredKeys keys = Unseal(file.Read(), password);
      if (!keys.emplace(label, key).second)
        Refuse(u"The key store " + path_ + u" has a key with the label " + label +
                   u" already; name another label.",
               FailureNumber::AlreadyExists);
      return file.Replace(Sealed(password, keys));
    } catch (const Failure& failure) {
      if (failure.Number() != FailureNumber::PathNotFound) throw;
    }
    try {
      return Runtime::CreateSmallFile(name_, Sealed(password, {{label, key}}));
    } catch (const Failure& failure) {
      if (failure.Number() != FailureNumber::AlreadyExists || attempt == kAttempts) throw;
    }
  }
}

StoredKeys KeyStoreFile::Unseal(const Runtime::SmallFile& file, const String& password) const {
  if ((file.Mode & (S_IRWXG | S_IRWXO)) != 0)
    RefuseFile(u"other users can read or change it; run \"chmod 600\" on it");
  const std::string& text = file.Content;
  if (!text.starts_with(kFormatLine)) RefuseFile(u"it isn't a key store; name another file");
  const std::size_t costEnd = text.find('\n', kFormatLine.size());
  ScryptCost cost;
  Bytes salt;
  if (costEnd == std::string::npos || !text.ends_with('\n') ||
      !ReadCostLine(text.substr(kFormatLine.size(), costEnd + 1 - kFormatLine.size()), cost, salt)) {
    RefuseFile(u"it is damaged; restore it from a backup");
  }
  const std::string_view header = std::string_view(text).substr(0, costEnd + 1);
  std::string_view body = std::string_view(text).substr(header.size());
  if (!body.empty()) body.remove_suffix(1);
  const auto sealed = FromBase64(body);
  if (!sealed) RefuseFile(u"it is damaged; restore it from a backup");
  const auto packed = Open(KeyFromPassword(password, salt, cost), header, *sealed);
  StoredKeys keys;
  if (!packed || !Unpack(*packed, keys))
    RefuseFile(u"the password is wrong, or the file was changed", FailureNumber::WrongPassword);
  return keys;
}

void KeyStoreFile::RefuseFile(StringView reason, std::int32_t number) const {
  Refuse(u"The key store " + path_ + u" can't be used: " + String(reason) + u".", number);
}

}  // namespace OstrCipherCOM
