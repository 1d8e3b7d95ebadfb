// Base64: the transfer encoding, decoded piece by piece.
#pragma once

#include <string>
#include <string_view>

namespace Mime {

// Takes what is no base64 for absent, and a text that ends without its padding for complete, since there are
// writers who leave it out or cut in the middle of a group. One thread.
class Base64Decoder {
 public:
  // Appends what the next piece of encoded text completes.
  void Append(std::string& bytes, std::string_view encoded);

  // Appends what is left of a group without padding, and stands at the beginning again.
  void Finish(std::string& bytes);

 private:
  int state_ = 0;
  unsigned pending_ = 0;
};

}  // namespace Mime
