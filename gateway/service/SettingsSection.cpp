#include "gateway/service/SettingsSection.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "platform/NoticeTexts.h"
#include "platform/ProgramTexts.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Gateway {

namespace TextNumber = Platform::TextNumber;
using Kind = SettingsNode::Kind;
using Platform::FromUtf8;
using Platform::String;
using Runtime::TextOf;

namespace {

std::string Joined(const auto& words) {
  std::string text;
  for (const auto& word : words) text.append(text.empty() ? "" : ", ").append(word);
  return text;
}

}  // namespace

void SettingsProblems::Add(FilePlace place, const Platform::String& text) {
  problems_.push_back({place, Platform::ToUtf8(text)});
}

std::vector<std::string> SettingsProblems::Lines() const {
  std::vector<Problem> sorted = problems_;
  std::ranges::stable_sort(sorted, {},
                           [](const Problem& p) { return std::pair(p.Place.Line, p.Place.Column); });
  std::vector<std::string> lines;
  lines.reserve(sorted.size());
  for (const auto& [place, text] : sorted)
    lines.push_back(path_ + ":" + std::to_string(place.Line) + ":" + std::to_string(place.Column) + ": " +
                    text);
  return lines;
}

const SettingsNode* SettingsSection::Find(std::string_view key) const {
  const auto found = std::ranges::find(table_.Members, key, &SettingsNode::Key);
  return found == table_.Members.end() ? nullptr : &*found;
}

const SettingsNode* SettingsSection::Take(std::string_view key, Kind kind, std::int32_t wrongType) {
  known_.emplace(key);
  const SettingsNode* node = Find(key);
  if (!node || node->Type == kind) return node;
  Refuse(key, TextOf(wrongType, FromUtf8(key)));
  return nullptr;
}

std::optional<std::string> SettingsSection::Text(std::string_view key, bool mayBeEmpty) {
  const SettingsNode* node = Take(key, Kind::Text, TextNumber::kSettingNotText);
  if (!node) return std::nullopt;
  const Platform::String text = FromUtf8(node->Text);
  if ((mayBeEmpty || !Platform::Trim(text).empty()) && !Platform::HasControl(text)) return node->Text;
  Refuse(key, TextOf(TextNumber::kSettingNotUsable, FromUtf8(key)));
  return std::nullopt;
}

std::optional<std::string> SettingsSection::Path(std::string_view key) {
  std::optional<std::string> path = Text(key);
  if (!path || path->front() == '/') return path;
  Refuse(key, TextOf(TextNumber::kSettingNotPath, FromUtf8(key)));
  return std::nullopt;
}

std::optional<int> SettingsSection::Number(std::string_view key, int smallest, int largest) {
  const String range = FromUtf8(std::to_string(smallest) + "-" + std::to_string(largest));
  known_.emplace(key);
  const SettingsNode* node = Find(key);
  if (!node) return std::nullopt;
  if (node->Type == Kind::Number && node->Number >= smallest && node->Number <= largest)
    return static_cast<int>(node->Number);
  Refuse(key, TextOf(TextNumber::kSettingNotNumber, FromUtf8(key), range));
  return std::nullopt;
}

std::optional<bool> SettingsSection::Flag(std::string_view key) {
  const SettingsNode* node = Take(key, Kind::Flag, TextNumber::kSettingNotFlag);
  return node ? std::optional(node->Flag) : std::nullopt;
}

std::optional<std::size_t> SettingsSection::Choice(std::string_view key,
                                                   std::span<const std::string_view> words) {
  known_.emplace(key);
  const SettingsNode* node = Find(key);
  if (!node) return std::nullopt;
  const auto found = std::ranges::find(words, std::string_view(node->Text));
  if (node->Type == Kind::Text && found != words.end())
    return static_cast<std::size_t>(found - words.begin());
  Refuse(key, TextOf(TextNumber::kSettingNotListed, FromUtf8(key), FromUtf8(Joined(words))));
  return std::nullopt;
}

FilePlace SettingsSection::PlaceOf(std::string_view key) const {
  const SettingsNode* node = Find(key);
  return node ? node->Place : table_.Place;
}

void SettingsSection::Refuse(std::string_view key, const String& text) {
  problems_.Add(PlaceOf(key), text);
}

void SettingsSection::WarnOfPasswordFile(const std::string& path, SettingsProblems& warnings) const {
  if (path.empty()) return;
  const String shown = FromUtf8(path);
  struct stat status {};
  const int error = stat(path.c_str(), &status) != 0 ? errno : access(path.c_str(), R_OK) != 0 ? errno : 0;
  const FilePlace place = PlaceOf("password-file");
  if (error != 0)
    warnings.Add(place,
                 TextOf(TextNumber::kPasswordFileMissing, shown, FromUtf8(Runtime::SystemReason(error))));
  else if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
    warnings.Add(place, TextOf(TextNumber::kPasswordFileOpen, shown));
}

void SettingsSection::RefuseUnknown() {
  for (const SettingsNode& member : table_.Members) {
    if (!known_.contains(member.Key))
      problems_.Add(member.Place,
                    TextOf(TextNumber::kSettingUnknown, FromUtf8(member.Key), FromUtf8(Joined(known_))));
  }
}

}  // namespace Gateway
