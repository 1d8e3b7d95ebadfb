// DecryptFuzz: any text as an encoded string and as a password.
//
// Run it as "DecryptFuzz -max_total_time=60". The first byte of an input decides whether the rest are
// single-byte codes or UTF-16.
#include <algorithm>
#include <cstdlib>

#include "src/security/ComponentSecurity.h"

namespace {

using Platform::Failure;
using Platform::String;
using TvEmailServices::ComponentSecurity;

void Require(bool holds) {
  if (!holds) std::abort();
}

String TextOf(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return {};
  if (data[0] % 2 == 0) return String(data + 1, data + size);
  String text;
  for (std::size_t i = 1; i + 1 < size; i += 2) text += static_cast<char16_t>(data[i] | data[i + 1] << 8);
  return text;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const String text = TextOf(data, size);
  ComponentSecurity security;

  String encoded = text;
  try {
    Require(security.Decrypt(encoded).size() <= 110);
  } catch (const Failure& failure) {
    Require(failure.Number() == 10005 && !text.empty());
  }
  encoded = text;
  Require(security.DecryptOld(encoded).size() <= 253);

  try {
    encoded = security.Encrypt(text);
    Require(encoded.size() >= 30 && encoded.find_first_of(u"|;") == String::npos);
    Require(security.Decrypt(encoded) == text);
  } catch (const Failure& failure) {
    Require(failure.Number() == 10006);
  }
  encoded = security.EncryptOld(text);
  const bool carried = text.size() <= 252 &&
                       std::all_of(text.begin(), text.end(), [](char16_t c) { return c >= 1 && c <= 253; });
  if (carried) Require(security.DecryptOld(encoded) == text);
  return 0;
}
