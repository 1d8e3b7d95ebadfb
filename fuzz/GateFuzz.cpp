// GateFuzz: any bytes after the From field of a mail.
//
// Judging its header must end in a decision. Where the origin must be proved, a mail is handed over only if
// its header holds the word "pass" and the server's name, whatever quotes, comments and folds hide.
#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>

#include "gateway/policy/Gate.h"
#include "mime/LimitCheck.h"

namespace {

bool Holds(const std::string& bytes, std::string_view word) {
  return std::search(bytes.begin(), bytes.end(), word.begin(), word.end(), [](char left, char right) {
           return std::tolower(static_cast<unsigned char>(left)) == right;
         }) != bytes.end();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  try {
    const Mime::Mail mail = Mime::ReadMail("From: ann@x.org\n" + bytes);
    Gateway::PolicySettings settings;
    const auto handedOver = [&] {
      return !RefusalOf({mail, std::nullopt, {true, true, 1, {}}, u"desk@x.org", {}}, settings);
    };
    handedOver();
    settings.PostAutomatic = true;
    settings.RequireAuthenticated = u"mx";
    if (handedOver() && !(Holds(bytes, "pass") && Holds(bytes, "mx"))) std::abort();
  } catch (const Mime::LimitExceeded&) {
  }
  return 0;
}
