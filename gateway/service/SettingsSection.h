// SettingsSection: reads one section of the configuration and collects everything that is wrong in it.
#pragma once

#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "gateway/service/SettingsFile.h"
#include "platform/Text.h"

namespace Gateway {

// What is wrong in a file, each with its place.
class SettingsProblems {
 public:
  explicit SettingsProblems(std::string path) : path_(std::move(path)) {}

  void Add(FilePlace place, const Platform::String& text);
  bool Any() const { return !problems_.empty(); }

  // One line for each, ordered by place: "PATH:LINE:COLUMN: TEXT".
  std::vector<std::string> Lines() const;

 private:
  struct Problem {
    FilePlace Place;
    std::string Text;
  };
  std::string path_;
  std::vector<Problem> problems_;
};

// Each reading operation returns nothing if the key is absent, and also if its value is wrong, which is added
// to the problems. The node and the problems must outlive the object. One thread.
class SettingsSection {
 public:
  SettingsSection(const SettingsNode& table, SettingsProblems& problems)
      : table_(table), problems_(problems) {}

  // A text without control characters. An empty one is refused unless it is allowed.
  std::optional<std::string> Text(std::string_view key, bool mayBeEmpty = false);

  // A path that begins with "/".
  std::optional<std::string> Path(std::string_view key);

  std::optional<int> Number(std::string_view key, int smallest, int largest);

  // true or false, without quotation marks.
  std::optional<bool> Flag(std::string_view key);

  // The position of the value in the list of words.
  std::optional<std::size_t> Choice(std::string_view key, std::span<const std::string_view> words);

  // The place of the key, or of the section if it is absent.
  FilePlace PlaceOf(std::string_view key) const;
  bool Has(std::string_view key) const { return Find(key) != nullptr; }

  // Adds a problem at the place of the key.
  void Refuse(std::string_view key, const Platform::String& text);

  // Adds a warning for a file of a password that can't be read now, or that others may read. The file may be
  // on a disk that is mounted later. Nothing for an empty path.
  void WarnOfPasswordFile(const std::string& path, SettingsProblems& warnings) const;

  // Adds a problem for each key that no operation has asked for.
  void RefuseUnknown();

 private:
  const SettingsNode* Find(std::string_view key) const;

  // The value, if the key is present with a value of that type.
  const SettingsNode* Take(std::string_view key, SettingsNode::Kind kind, std::int32_t wrongType);

  const SettingsNode& table_;
  SettingsProblems& problems_;
  std::set<std::string, std::less<>> known_;
};

}  // namespace Gateway
