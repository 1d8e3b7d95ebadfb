// Sealing: authenticated encryption with AES-128-GCM and a random nonce, and the derivation of keys.
//
// The only file of this library that uses OpenSSL. Any thread. Raises 57, with the reason, if OpenSSL fails.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Failure.h"
#include "platform/Value.h"

namespace OstrCipherCOM {

using namespace Platform;

// Raises a failure with a description for the user.
[[noreturn]] void Refuse(const String& description, std::int32_t number = FailureNumber::DeviceFailed);

// A key. The destructor erases it from memory.
struct SealingKey {
  std::array<std::uint8_t, 16> Octets{};
  SealingKey() = default;
  SealingKey(const SealingKey&) = default;
  SealingKey& operator=(const SealingKey&) = default;
  ~SealingKey();
};

// HKDF-SHA256 (RFC 5869) of a key of any length. Raises 57 for an empty one.
SealingKey KeyFromBytes(const Bytes& bytes);

// The cost of scrypt (RFC 7914): 2^LogarithmOfN * BlockSize * 128 bytes of memory; the time is proportional
// to that and to Parallelism.
struct ScryptCost {
  std::uint32_t LogarithmOfN = 15;
  std::uint32_t BlockSize = 8;
  std::uint32_t Parallelism = 1;
};

SealingKey KeyFromPassword(const String& password, const Bytes& salt, const ScryptCost& cost);

Bytes RandomBytes(std::size_t count);

// Nonce, encrypted content and tag. The associated text is authenticated but not encrypted or stored: Open
// needs the same text.
Bytes Seal(const SealingKey& key, std::string_view associated, const Bytes& content);

// The content; nothing if the key or the associated text is wrong, or any bit was changed.
std::optional<Bytes> Open(const SealingKey& key, std::string_view associated, const Bytes& sealed);

// Base64 in one line. FromBase64 accepts only what ToBase64 writes, and gives nothing for other text.
std::string ToBase64(const Bytes& bytes);
std::optional<Bytes> FromBase64(std::string_view text);

}  // namespace OstrCipherCOM
