#include "siblings/OstrCipherCOM/Sealing.h"

#include <openssl/core_names.h>
#include <openssl/crypto.h>
#include <openssl/err.h>
#include <openssl/evp.h>
#include <openssl/kdf.h>
#include <openssl/rand.h>

#include <memory>

#include "platform/CheckedArithmetic.h"

namespace OstrCipherCOM {
namespace {

constexpr std::size_t kNonceSize = 12;
constexpr std::size_t kTagSize = 16;
constexpr std::uint64_t kMemoryLimit = std::uint64_t{256} << 20;

template <auto Free>
struct Freer {
  template <class T>
  void operator()(T* object) const {
    Free(object);
  }
};
using CipherContext = std::unique_ptr<EVP_CIPHER_CTX, Freer<EVP_CIPHER_CTX_free>>;

void Require(bool done) {
  if (done) return;
  const char* reason = ERR_reason_error_string(ERR_get_error());
  ERR_clear_error();
  Refuse(u"OpenSSL failed: " + FromUtf8(reason ? reason : "no reason given"));
}

const unsigned char* Octets(std::string_view text) {
  return reinterpret_cast<const unsigned char*>(text.data());
}

CipherContext BeginGcm(const SealingKey& key, const std::uint8_t* nonce, std::string_view associated,
                       bool sealing) {
  CipherContext context(EVP_CIPHER_CTX_new());
  Require(context != nullptr);
  Require(EVP_CipherInit_ex(context.get(), EVP_aes_128_gcm(), nullptr, key.Octets.data(), nonce, sealing) ==
          1);
  int written = 0;
  Require(EVP_CipherUpdate(context.get(), nullptr, &written, Octets(associated),
                           Narrow<int>(associated.size())) == 1);
  return context;
}

}  // namespace

void Refuse(const String& description, std::int32_t number) {
  throw Failure(number, u"OstrCipherCOM", description);
}

SealingKey::~SealingKey() {
  OPENSSL_cleanse(Octets.data(), Octets.size());
}

SealingKey KeyFromBytes(const Bytes& bytes) {
  if (bytes.empty()) Refuse(u"The key is empty.");
  const std::unique_ptr<EVP_KDF, Freer<EVP_KDF_free>> hkdf(EVP_KDF_fetch(nullptr, "HKDF", nullptr));
  Require(hkdf != nullptr);
  const std::unique_ptr<EVP_KDF_CTX, Freer<EVP_KDF_CTX_free>> context(EVP_KDF_CTX_new(hkdf.get()));
  Require(context != nullptr);
  char digest[] = "SHA256";
  char purpose[] = "OstrCipherCOM AES-128-GCM 1";
  const OSSL_PARAM parameters[] = {
      OSSL_PARAM_construct_utf8_string(OSSL_KDF_PARAM_DIGEST, digest, 0),
      OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_KEY, const_cast<std::uint8_t*>(bytes.data()),
                                        bytes.size()),
      OSSL_PARAM_construct_octet_string(OSSL_KDF_PARAM_INFO, purpose, sizeof purpose - 1),
      OSSL_PARAM_construct_end()};
  SealingKey key;
  Require(EVP_KDF_derive(context.get(), key.Octets.data(), key.Octets.size(), parameters) == 1);
  return key;
}

SealingKey KeyFromPassword(const String& password, const Bytes& salt, const ScryptCost& cost) {
  std::string octets = ToUtf8(password);
  SealingKey key;
  const int done = EVP_PBE_scrypt(octets.data(), octets.size(), salt.data(), salt.size(),
                                  std::uint64_t{1} << cost.LogarithmOfN, cost.BlockSize, cost.Parallelism,
                                  kMemoryLimit, key.Octets.data(), key.Octets.size());
  OPENSSL_cleanse(octets.data(), octets.size());
  Require(done == 1);
  return key;
}

Bytes RandomBytes(std::size_t count) {
  Bytes bytes(count);
  Require(RAND_bytes(bytes.data(), Narrow<int>(count)) == 1);
  return bytes;
}

Bytes Seal(const SealingKey& key, std::string_view associated, const Bytes& content) {
  Bytes sealed = RandomBytes(kNonceSize);
  const CipherContext context = BeginGcm(key, sealed.data(), associated, true);
  sealed.resize(kNonceSize + content.size() + kTagSize);
  std::uint8_t* const tag = sealed.data() + kNonceSize + content.size();
  int written = 0;
  Require(EVP_CipherUpdate(context.get(), sealed.data() + kNonceSize, &written, content.data(),
                           Narrow<int>(content.size())) == 1);
  Require(EVP_CipherFinal_ex(context.get(), tag, &written) == 1);
  Require(EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_GET_TAG, kTagSize, tag) == 1);
  return sealed;
}

std::optional<Bytes> Open(const SealingKey& key, std::string_view associated, const Bytes& sealed) {
  if (sealed.size() < kNonceSize + kTagSize) return {};
  const CipherContext context = BeginGcm(key, sealed.data(), associated, false);
  Bytes content(sealed.size() - kNonceSize - kTagSize);
  Bytes tag(sealed.end() - kTagSize, sealed.end());
  int written = 0;
  Require(EVP_CipherUpdate(context.get(), content.data(), &written, sealed.data() + kNonceSize,
                           Narrow<int>(content.size())) == 1);
  Require(EVP_CIPHER_CTX_ctrl(context.get(), EVP_CTRL_GCM_SET_TAG, kTagSize, tag.data()) == 1);
  if (EVP_CipherFinal_ex(context.get(), tag.data(), &written) != 1) return {};
  return content;
}

std::string ToBase64(const Bytes& bytes) {
  std::string text((bytes.size() + 2) / 3 * 4 + 1, '\0');  // EVP_EncodeBlock ends with a null
  text.resize(static_cast<std::size_t>(EVP_EncodeBlock(reinterpret_cast<unsigned char*>(text.data()),
                                                       bytes.data(), Narrow<int>(bytes.size()))));
  return text;
}

std::optional<Bytes> FromBase64(std::string_view text) {
  if (text.size() % 4 != 0) return {};
  Bytes bytes(text.size() / 4 * 3);
  const int decoded = EVP_DecodeBlock(bytes.data(), Octets(text), Narrow<int>(text.size()));
  if (decoded != Narrow<int>(bytes.size())) return {};
  for (int padding = 0; padding < 2 && text.ends_with(padding ? "==" : "="); ++padding) bytes.pop_back();
  // EVP_DecodeBlock accepts blanks and unused bits.
  if (ToBase64(bytes) != text) return {};
  return bytes;
}

}  // namespace OstrCipherCOM
