// PasswordHash: what a project keeps of a password.
//
// "scrypt$N$R$P$SALT$KEY": the three costs of scrypt in decimal, a random salt of 16 bytes and the derived
// key of 32 bytes in hexadecimal. A hash or a check takes about 20 ms. Pure but for the salt; any thread.
#pragma once

#include <optional>

#include "platform/Text.h"

namespace Talvane40 {

using namespace Platform;

String HashPassword(StringView password);

// True if the hash is that of the password. No hash (an unknown user, or one without a password) gives false
// after the same time as a wrong password. A hash of another form is that of no password; raises 57 for costs
// that scrypt refuses.
bool MatchesHash(StringView password, const std::optional<String>& hash);

// True if the texts are equal, in a time that tells nothing of the place of the first difference.
bool EqualSecrets(StringView left, StringView right);

// 32 hexadecimal digits that nobody can guess.
String RandomToken();

}  // namespace Talvane40
