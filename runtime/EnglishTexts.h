// EnglishTexts: the English catalogue of the programs, compiled in.
#pragma once

#include <string_view>

namespace Runtime {

// The bytes of the catalogue's file at the time of the build. Any thread.
std::string_view EnglishTexts();

}  // namespace Runtime
