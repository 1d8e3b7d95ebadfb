// Language: the language in which the person in front of the program reads.
#pragma once

#include <string>

namespace Runtime {

// The language of LC_ALL, LC_MESSAGES or LANG, the first that is set, in lower case, such as "de". "en" where
// none names a language. Any thread that doesn't race with setenv.
std::string UserLanguage();

}  // namespace Runtime
