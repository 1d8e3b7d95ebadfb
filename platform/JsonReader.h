// JsonReader: reads back an object of texts that Json wrote.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Text.h"

namespace Platform {

// The members of one JSON object (RFC 8259) whose values are all texts. Nothing for anything else: other
// values, two members of one name, text after the object, or an unknown escape. Linear; any thread.
std::optional<std::map<std::string, String>> ReadJsonTexts(std::string_view json);

}  // namespace Platform
