// MailKey: the idempotency key of a mail, by which a project recognises a mail that comes again.
#pragma once

#include <string>
#include <string_view>

#include "mime/Mail.h"

namespace Gateway {

// 64 hexadecimal digits, which are equal for copies of one mail: a digest of its Message-ID (RFC 5322 section
// 3.6.4) and its sender's address in canonical form, without regard to case. The sender is included because
// two programs may give the same Message-ID, and because others can read and use the Message-ID of a mail. A
// mail without a Message-ID has the digest of all its bytes. Raises as Sha256 does. Any thread.
//
// The keys are stored in projects: if their form changed, mails that come again would be stored twice.
std::string MailKey(const Mime::Mail& mail, std::string_view bytes);

}  // namespace Gateway
