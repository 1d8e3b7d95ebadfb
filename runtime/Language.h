// Language: the user's language.
#pragma once

#include <string>
#include <string_view>

namespace Runtime {

// The language part of LC_ALL, LC_MESSAGES or LANG, the first of them that is set, in lower case, such as
// "de". "en" if none is set or it names no language. Any thread, but not while another one calls setenv.
std::string UserLanguage();

// True for small letters, such as "de", in the length of a language's code. Any thread.
bool IsLanguage(std::string_view code);

}  // namespace Runtime
