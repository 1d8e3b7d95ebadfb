#include "gateway/service/SettingsFile.h"

#include <toml++/toml.h>

#include <algorithm>

namespace Gateway {
namespace {

FilePlace PlaceOf(const toml::source_region& region) {
  return {region.begin.line, region.begin.column};
}

// Each dot of a key nests a table, which the parser doesn't limit.
void RequireShortLines(std::string_view bytes) {
  constexpr std::size_t kLongestLine = 8192;
  FilePlace place;
  for (; !bytes.empty(); ++place.Line) {
    const std::size_t length = std::min(bytes.find('\n'), bytes.size() - 1) + 1;
    if (length > kLongestLine) throw SettingsError(place, "the line is longer than 8192 bytes");
    bytes.remove_prefix(length);
  }
}

// The parser limits how deep lists and tables in braces are nested.
SettingsNode NodeOf(const toml::node& value) {
  using Kind = SettingsNode::Kind;
  SettingsNode node;
  node.Place = PlaceOf(value.source());
  if (const auto* text = value.as_string()) {
    node.Type = Kind::Text;
    node.Text = text->get();
  } else if (const auto* number = value.as_integer()) {
    node.Type = Kind::Number;
    node.Number = number->get();
  } else if (const auto* flag = value.as_boolean()) {
    node.Type = Kind::Flag;
    node.Flag = flag->get();
  } else if (const auto* table = value.as_table()) {
    node.Type = Kind::Table;
    for (const auto& [key, member] : *table) {
      SettingsNode& added = node.Members.emplace_back(NodeOf(member));
      added.Key = std::string(key.str());
      if (!member.is_table() && !member.is_array()) added.Place = PlaceOf(key.source());
    }
  } else if (const auto* list = value.as_array()) {
    node.Type = Kind::List;
    for (const toml::node& element : *list) node.Members.push_back(NodeOf(element));
  }
  return node;
}

}  // namespace

SettingsNode ParseSettings(std::string_view bytes) try {
  RequireShortLines(bytes);
  return NodeOf(toml::parse(bytes));
} catch (const toml::parse_error& error) {
  throw SettingsError(PlaceOf(error.source()), std::string(error.description()));
}

}  // namespace Gateway
