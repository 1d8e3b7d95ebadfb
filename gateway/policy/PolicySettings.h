// PolicySettings: which mail a mailbox takes beyond the replies of the project's users.
#pragma once

#include <cstddef>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;

// By default only the replies of users that a person wrote are handed over. Each of the first three members
// allows one more kind of mail.
struct PolicySettings {
  bool PostStrangers = false;  // of senders whom the project doesn't know, or who don't take part by mail
  bool PostAutomatic = false;  // of programs: out-of-office mail, delivery reports, lists; never notices
  bool PostEmpty = false;      // without a text of its own

  // The authserv-id of RFC 8601 of the server whose result a mail needs; empty if none is required.
  String RequireAuthenticated = {};

  std::size_t SizeLimit = std::size_t{25} << 20;  // of the whole mail, in bytes

  friend bool operator==(const PolicySettings&, const PolicySettings&) = default;
};

}  // namespace Gateway
