// Base64: a decoder for data that arrives in pieces, and an encoder.
#pragma once

#include <string>
#include <string_view>

namespace Mime {

// Skips characters outside of base64, and accepts a text that ends without its padding, since some programs
// omit it or cut inside a group. One thread.
class Base64Decoder {
 public:
  // Decodes the next piece of text and appends the completed bytes.
  void Append(std::string& bytes, std::string_view encoded);

  // Appends the bytes of an unpadded last group and resets the decoder.
  void Finish(std::string& bytes);

 private:
  int state_ = 0;
  unsigned pending_ = 0;
};

// The bytes in base64, with padding and without line ends (RFC 4648 section 4). Any thread.
std::string EncodeBase64(std::string_view bytes);

}  // namespace Mime
