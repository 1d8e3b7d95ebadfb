#include "mime/SignedContent.h"

#include <openssl/asn1.h>
#include <openssl/cms.h>
#include <openssl/err.h>

#include <memory>

namespace Mime {
namespace {

// A signed mail with a chain of certificates has some hundreds of elements, plus one for each 4 kB of
// content. Each may need 200 bytes of memory, even an empty one.
constexpr std::size_t kMostElements = 100000;

struct FreeCms {
  void operator()(CMS_ContentInfo* cms) const { CMS_ContentInfo_free(cms); }
};

// Counts all elements without building the structure.
bool HasFewElements(std::string_view bytes) {
  const auto* position = reinterpret_cast<const unsigned char*>(bytes.data());
  const unsigned char* const end = position + bytes.size();
  for (std::size_t elements = 0; position < end; ++elements) {
    long length = 0;
    int tag = 0, kind = 0;
    const int form = ASN1_get_object(&position, &length, &tag, &kind, end - position);
    if ((form & 0x80) != 0 || elements == kMostElements) return false;
    if ((form & V_ASN1_CONSTRUCTED) == 0) position += length;
  }
  return true;
}

std::optional<std::string> ContentOf(std::string_view bytes) {
  if (!HasFewElements(bytes)) return std::nullopt;
  const auto* position = reinterpret_cast<const unsigned char*>(bytes.data());
  const std::unique_ptr<CMS_ContentInfo, FreeCms> cms(
      d2i_CMS_ContentInfo(nullptr, &position, static_cast<long>(bytes.size())));
  if (!cms || OBJ_obj2nid(CMS_get0_type(cms.get())) != NID_pkcs7_signed) return std::nullopt;
  ASN1_OCTET_STRING** content = CMS_get0_content(cms.get());
  if (!content || !*content) return std::nullopt;
  return std::string(reinterpret_cast<const char*>(ASN1_STRING_get0_data(*content)),
                     static_cast<std::size_t>(ASN1_STRING_length(*content)));
}

}  // namespace

std::optional<std::string> SignedContent(std::string_view bytes) {
  std::optional<std::string> content = ContentOf(bytes);
  ERR_clear_error();
  return content;
}

}  // namespace Mime
