#include "siblings/Talvane40/PasswordHash.h"

#include <malloc.h>
#include <openssl/crypto.h>
#include <openssl/evp.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "platform/Failure.h"
#include "platform/Hex.h"
#include "platform/ReasonTexts.h"
#include "runtime/Texts.h"

namespace Talvane40 {
namespace {

constexpr std::uint64_t kMemoryLimit = 64 << 20;  // bytes of memory for the costs in a stored hash
constexpr std::size_t kSaltLength = 16;
constexpr std::size_t kKeyLength = 32;

using ByteString = std::vector<unsigned char>;

struct Costs {
  unsigned long long N = 1 << 13;
  unsigned long long R = 8;
  unsigned long long P = 1;
};

[[noreturn]] void Fail(StringView what) {
  throw Failure(FailureNumber::DeviceFailed, u"Talvane40", String(what));
}

ByteString RandomBytes(std::size_t count) {
  ByteString bytes(count);
  // Not by OpenSSL, whose own generator takes a millisecond to start.
  if (getentropy(bytes.data(), bytes.size()) != 0) Fail(u"The system gives no random bytes.");
  return bytes;
}

// A stored hash has lower-case letters, and is compared as text.
String HashDigits(const ByteString& bytes) {
  return HexText(bytes, HexCase::Lower);
}

// Lets the next memory of a size that is allocated consist of large pages, which the system provides in a
// fraction of the time that small ones take: OpenSSL allocates the memory of scrypt itself. glibc maps the
// first block of such a size, and takes the next ones from its heap, where a freed block is found again.
// Changes nothing with another allocator, or where the system gives no large pages.
void PreferLargePages(std::size_t size) {
  constexpr std::size_t kSmallPage = 4096;
  void* volatile block = std::malloc(size);  // volatile, or the compiler leaves out what isn't used
  std::free(block);
  block = std::malloc(size);
  void* begin = block;
  std::size_t space = size;
  if (block && std::align(kSmallPage, kSmallPage, begin, space)) madvise(begin, space, MADV_HUGEPAGE);
  std::free(block);
}

ByteString Derive(StringView password, const ByteString& salt, const Costs& costs) {
  std::string bytes = ToUtf8(password);
  ByteString key(kKeyLength);
  // Another thread's heap would keep the memory for good.
  const bool mainThread = gettid() == getpid();
  if (const auto memory = 128 * costs.N * costs.R; mainThread && memory <= kMemoryLimit)
    PreferLargePages(memory);
  const bool good = EVP_PBE_scrypt(bytes.data(), bytes.size(), salt.data(), salt.size(), costs.N, costs.R,
                                   costs.P, kMemoryLimit, key.data(), key.size()) == 1;
  OPENSSL_cleanse(bytes.data(), bytes.size());
  if (mainThread) malloc_trim(0);
  if (!good) Fail(Runtime::TextOf(TextNumber::kPasswordHashDamaged));
  return key;
}

String Format(const Costs& costs, const ByteString& salt, const ByteString& key) {
  return FromUtf8("scrypt$" + std::to_string(costs.N) + "$" + std::to_string(costs.R) + "$" +
                  std::to_string(costs.P)) +
         u"$" + HashDigits(salt) + u"$" + HashDigits(key);
}

}  // namespace

String HashPassword(StringView password) {
  const Costs costs;
  const ByteString salt = RandomBytes(kSaltLength);
  return Format(costs, salt, Derive(password, salt, costs));
}

bool MatchesHash(StringView password, const std::optional<String>& hash) {
  if (!hash) {
    Derive(password, ByteString(kSaltLength), Costs{});
    return false;
  }
  Costs costs;
  std::array<char, 2 * kSaltLength + 1> saltText{};
  std::sscanf(ToUtf8(*hash).c_str(), "scrypt$%9llu$%9llu$%9llu$%32[0-9a-f]$", &costs.N, &costs.R, &costs.P,
              saltText.data());
  const ByteString salt = ParseHex(FromUtf8(saltText.data())).value_or(ByteString());
  return EqualSecrets(*hash, Format(costs, salt, Derive(password, salt, costs)));
}

bool EqualSecrets(StringView left, StringView right) {
  return left.size() == right.size() &&
         CRYPTO_memcmp(left.data(), right.data(), left.size() * sizeof(char16_t)) == 0;
}

String RandomToken() {
  return HashDigits(RandomBytes(16));
}

}  // namespace Talvane40
