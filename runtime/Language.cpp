#include "runtime/Language.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>

namespace Runtime {

std::string UserLanguage() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (!value || !*value) continue;
    std::string language;
    for (const char* c = value; *c && !std::strchr("_.@", *c); ++c) {
      if (!((*c >= 'a' && *c <= 'z') || (*c >= 'A' && *c <= 'Z'))) return "en";
      language += static_cast<char>(*c | 0x20);
    }
    return language == "c" || language == "posix" || language.empty() ? "en" : language;
  }
  return "en";
}

bool IsLanguage(std::string_view code) {
  constexpr std::size_t kShortest = 2, kLongest = 8;  // RFC 5646, section 2.1
  return code.size() >= kShortest && code.size() <= kLongest &&
         std::ranges::all_of(code, [](char c) { return c >= 'a' && c <= 'z'; });
}

}  // namespace Runtime
