#include "siblings/OstrCipherCOM/KeyStoreFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <sstream>
#include <system_error>

#include "siblings/OstrCipherCOM/OstrCipherCOM.h"
#include "siblings/OstrCipherCOM/Sealing.h"

namespace OstrCipherCOM {
namespace {

constexpr std::string_view kFormatLine = "OstrCipherCOM key store 1\n";
constexpr std::size_t kSaltSize = 16;
constexpr std::size_t kLargestFile = std::size_t{16} << 20;

// What a header may ask for, so that a changed one can't take all memory or time.
constexpr std::uint32_t kLowestLogarithmOfN = 10;
constexpr std::uint32_t kHighestLogarithmOfN = 17;
constexpr std::uint32_t kHighestParallelism = 16;

std::string CostLine(const ScryptCost& cost, const Bytes& salt) {
  std::ostringstream line;
  line << "scrypt " << cost.LogarithmOfN << ' ' << cost.BlockSize << ' ' << cost.Parallelism << ' '
       << ToBase64(salt) << '\n';
  return line.str();
}

// False unless the line is to the letter what CostLine writes for a bearable cost.
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

// A file descriptor, closed when it goes.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int Number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

 private:
  int number_;
};

bool WriteAll(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(file, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

KeyStoreFile::KeyStoreFile(const String& path) : path_(path) {
  const std::string given = ToUtf8(path);
  if (given.empty()) Refuse(u"The key store's file isn't named.", FailureNumber::RefusedInput);
  if (given.find('\0') != std::string::npos) RefuseFile(u"the name holds a null character");
  std::error_code error;
  const auto absolute = std::filesystem::absolute(given, error);
  const auto resolved = std::filesystem::weakly_canonical(absolute, error);
  const auto& target = error ? absolute : resolved;
  name_ = target.string();
  folder_ = target.parent_path().string();
}

bool KeyStoreFile::Exists() const {
  struct stat status {};
  if (lstat(name_.c_str(), &status) == 0) return true;
  if (errno != ENOENT) RefuseForSystemError(u"it can't be looked up");
  return false;
}

std::string KeyStoreFile::ReadText() const {
  const Descriptor file(open(name_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  if (!file) RefuseForSystemError(u"it can't be opened");
  struct stat status {};
  if (fstat(file.Number(), &status) != 0) RefuseForSystemError(u"it can't be read");
  if (!S_ISREG(status.st_mode)) RefuseFile(u"it is no file");
  if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    RefuseFile(u"others than its owner can read or change it; allow its owner alone (chmod 600)");
  }
  if (static_cast<std::uint64_t>(status.st_size) > kLargestFile)
    RefuseFile(u"it is too large for a key store");
  std::string text(static_cast<std::size_t>(status.st_size), '\0');
  std::size_t filled = 0;
  while (filled < text.size()) {
    const ssize_t got = read(file.Number(), text.data() + filled, text.size() - filled);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) RefuseForSystemError(u"it can't be read");
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
  }
  text.resize(filled);
  return text;
}

StoredKeys KeyStoreFile::Read(const String& password) const {
  const std::string text = ReadText();
  if (!text.starts_with(kFormatLine)) RefuseFile(u"it isn't a key store of this component");
  const std::size_t costEnd = text.find('\n', kFormatLine.size());
  ScryptCost cost;
  Bytes salt;
  if (costEnd == std::string::npos || !text.ends_with('\n') ||
      !ReadCostLine(text.substr(kFormatLine.size(), costEnd + 1 - kFormatLine.size()), cost, salt)) {
    RefuseFile(u"it is damaged");
  }
  const std::string_view header = std::string_view(text).substr(0, costEnd + 1);
  std::string_view body = std::string_view(text).substr(header.size());
  if (!body.empty()) body.remove_suffix(1);
  const auto sealed = FromBase64(body);
  if (!sealed) RefuseFile(u"it is damaged");
  const auto packed = Open(KeyFromPassword(password, salt, cost), header, *sealed);
  StoredKeys keys;
  if (!packed || !Unpack(*packed, keys))
    RefuseFile(u"the password is wrong, or the file was changed", FailureNumber::WrongPassword);
  return keys;
}

void KeyStoreFile::Write(const String& password, const StoredKeys& keys) const {
  const Bytes salt = RandomBytes(kSaltSize);
  const ScryptCost cost;
  const std::string header = std::string(kFormatLine) + CostLine(cost, salt);
  const std::string text =
      header + ToBase64(Seal(KeyFromPassword(password, salt, cost), header, Pack(keys))) + '\n';

  std::string newName = name_ + ".XXXXXX";
  const Descriptor file(mkostemp(newName.data(), O_CLOEXEC));  // mode 0600
  if (!file) RefuseForSystemError(u"no new file can be made in its folder");
  if (!WriteAll(file.Number(), text) || fsync(file.Number()) != 0 ||
      rename(newName.c_str(), name_.c_str()) != 0) {
    const int error = errno;
    unlink(newName.c_str());
    errno = error;
    RefuseForSystemError(u"it can't be written");
  }
  const Descriptor folder(open(folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder || fsync(folder.Number()) != 0)
    RefuseForSystemError(u"its folder can't be brought to the disk");
}

void KeyStoreFile::RefuseFile(StringView reason, std::int32_t number) const {
  Refuse(u"The key store " + path_ + u" can't be used: " + String(reason) + u".", number);
}

void KeyStoreFile::RefuseForSystemError(StringView attempt) const {
  RefuseFile(String(attempt) + u" (" + FromUtf8(std::generic_category().message(errno)) + u")");
}

KeyStoreFile::Lock::Lock(const KeyStoreFile& file)
    : folder_(open(file.folder_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
  if (folder_ < 0) file.RefuseForSystemError(u"its folder can't be opened");
  while (flock(folder_, LOCK_EX) != 0) {
    if (errno == EINTR) continue;
    const int error = errno;
    close(folder_);
    errno = error;
    file.RefuseForSystemError(u"its folder can't be locked");
  }
}

KeyStoreFile::Lock::~Lock() {
  close(folder_);
}

}  // namespace OstrCipherCOM
