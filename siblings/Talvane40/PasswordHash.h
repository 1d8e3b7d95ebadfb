// PasswordHash: the stored form of a password.
//
// "scrypt$N$R$P$SALT$KEY": the three costs of scrypt in decimal, a random salt of 16 bytes and the derived
// key of 32 bytes in hexadecimal. A hash or a check takes about 20 ms. Any thread.
#pragma once

#include <optional>

#include "platform/Text.h"

namespace Talvane40 {

using namespace Platform;

String HashPassword(StringView password);

// True if the hash is that of the password. Without a hash (an unknown user, or one without a password) the
// result is false after the same time as for a wrong password. A hash of another form matches no password.
// Raises 57 for costs that scrypt rejects.
bool MatchesHash(StringView password, const std::optional<String>& hash);

// True if the texts are equal. The time taken does not depend on where they differ.
bool EqualSecrets(StringView left, StringView right);

// 32 random hexadecimal digits.
String RandomToken();

}  // namespace Talvane40
