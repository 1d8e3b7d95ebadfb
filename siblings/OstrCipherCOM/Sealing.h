// Sealing: AES-128-GCM with a fresh random nonce for each sealing, and the derivation of its keys.
//
// The only file of this library that speaks to OpenSSL. Any thread. Raises 57, with the reason, where OpenSSL
// itself fails.
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

// Raises the number with a description for the person who has to act on it.
[[noreturn]] void Refuse(const String& description, std::int32_t number = FailureNumber::DeviceFailed);

// A key, wiped from memory when it goes.
struct SealingKey {
  std::array<std::uint8_t, 16> Octets{};
  SealingKey() = default;
  SealingKey(const SealingKey&) = default;
  SealingKey& operator=(const SealingKey&) = default;
  ~SealingKey();
};

// HKDF-SHA256 of a key of any length but 0, which it refuses.
SealingKey KeyFromBytes(const Bytes& bytes);

// What one derivation by scrypt costs: 2^LogarithmOfN * BlockSize * 128 bytes of memory, and time in
// proportion.
struct ScryptCost {
  std::uint32_t LogarithmOfN = 15;
  std::uint32_t BlockSize = 8;
  std::uint32_t Parallelism = 1;
};

SealingKey KeyFromPassword(const String& password, const Bytes& salt, const ScryptCost& cost);

Bytes RandomBytes(std::size_t count);

// Nonce, sealed content and tag. The associated text isn't sealed in, but Open wants the same one.
Bytes Seal(const SealingKey& key, std::string_view associated, const Bytes& content);

// The content, or nothing if the key or the associated text is another or a single bit was changed.
std::optional<Bytes> Open(const SealingKey& key, std::string_view associated, const Bytes& sealed);

// Base64 in one line. Back only what ToBase64 writes, to the bit; nothing for anything else.
std::string ToBase64(const Bytes& bytes);
std::optional<Bytes> FromBase64(std::string_view text);

}  // namespace OstrCipherCOM
