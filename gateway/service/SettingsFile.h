// SettingsFile: a TOML file (toml.io, version 1.0) as a tree whose nodes know their places, for messages.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Gateway {

// A place in a file, counted from 1.
struct FilePlace {
  std::uint32_t Line = 1;
  std::uint32_t Column = 1;
};

struct SettingsNode {
  enum class Kind { Text, Number, Flag, Table, List, Other };
  Kind Type = Kind::Other;
  std::string Key;  // of a table's member; empty for an element of a list. UTF-8
  FilePlace Place;  // of the key; of the value where there is no key
  std::string Text;
  std::int64_t Number = 0;
  bool Flag = false;
  std::vector<SettingsNode> Members;  // of a table, ordered by key, or of a list
};

// Why a file is no TOML.
class SettingsError {
 public:
  SettingsError(FilePlace place, std::string text) : place_(place), text_(std::move(text)) {}
  FilePlace Place() const { return place_; }
  const std::string& Text() const { return text_; }  // in English, from the parser

 private:
  FilePlace place_;
  std::string text_;
};

// The root table. Raises a SettingsError for bytes that are no TOML; only the first error is known then. The
// bytes may be of any content; the caller limits their number. Any thread.
SettingsNode ParseSettings(std::string_view bytes);

}  // namespace Gateway
