#include "runtime/Language.h"

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

}  // namespace Runtime
