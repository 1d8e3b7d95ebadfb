#include "mime/Base64.h"

#include <glib.h>

namespace Mime {

void Base64Decoder::Append(std::string& bytes, std::string_view encoded) {
  constexpr std::size_t kSlack = 6;
  if (encoded.empty()) return;
  const std::size_t start = bytes.size();
  bytes.resize(start + encoded.size() / 4 * 3 + kSlack);
  const gsize written = g_base64_decode_step(
      encoded.data(), encoded.size(), reinterpret_cast<guchar*>(bytes.data() + start), &state_, &pending_);
  bytes.resize(start + written);
}

void Base64Decoder::Finish(std::string& bytes) {
  Append(bytes, "==");
  state_ = 0;
  pending_ = 0;
}

std::string EncodeBase64(std::string_view bytes) {
  gchar* const encoded = g_base64_encode(reinterpret_cast<const guchar*>(bytes.data()), bytes.size());
  std::string text(encoded);
  g_free(encoded);
  return text;
}

}  // namespace Mime
