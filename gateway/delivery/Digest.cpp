#include "gateway/delivery/Digest.h"

#include <openssl/evp.h>

#include <array>
#include <memory>
#include <span>

#include "platform/Failure.h"
#include "platform/Hex.h"

namespace Gateway {
namespace {

struct ContextFreer {
  void operator()(EVP_MD_CTX* context) const { EVP_MD_CTX_free(context); }
};

void Require(bool done) {
  if (!done)
    throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                            u"a SHA-256 digest can't be computed: check the installation of OpenSSL");
}

}  // namespace

std::string Sha256(std::initializer_list<std::string_view> pieces) {
  // Fetching the algorithm costs more than a short digest.
  static EVP_MD* const kAlgorithm = EVP_MD_fetch(nullptr, "SHA256", nullptr);
  const std::unique_ptr<EVP_MD_CTX, ContextFreer> context(EVP_MD_CTX_new());
  Require(kAlgorithm && context && EVP_DigestInit_ex2(context.get(), kAlgorithm, nullptr) == 1);
  for (const std::string_view piece : pieces)
    Require(EVP_DigestUpdate(context.get(), piece.data(), piece.size()) == 1);
  std::array<unsigned char, EVP_MAX_MD_SIZE> digest;
  unsigned length = 0;
  Require(EVP_DigestFinal_ex(context.get(), digest.data(), &length) == 1);
  return Platform::ToUtf8(Platform::HexText(std::span(digest).first(length), Platform::HexCase::Lower));
}

}  // namespace Gateway
