#include "gateway/delivery/MailKey.h"

#include "gateway/delivery/Digest.h"
#include "runtime/MailAddress.h"

namespace Gateway {
namespace {

using Platform::String;

constexpr std::string_view kNul("\0", 1);

}  // namespace

std::string MailKey(const Mime::Mail& mail, std::string_view bytes) {
  if (mail.MessageId.empty()) return Sha256({"mail", kNul, bytes});
  const String sender =
      mail.FromAddress ? Platform::FoldCase(Runtime::CanonicalAddress(*mail.FromAddress)) : String();
  return Sha256({"id", kNul, Platform::ToUtf8(mail.MessageId), kNul, Platform::ToUtf8(sender)});
}

}  // namespace Gateway
