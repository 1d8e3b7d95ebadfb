// ProjectText: the text of a project file as sections, keys and values.
//
// The text is kept line by line, so that comments, order, blank lines and lines that mean nothing here stand
// as they were. Section names and keys match without regard to case; where one occurs twice, the first
// counts. The format is told in docs/formats.md. Pure; one thread at a time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace TvGeneralServices {

using namespace Platform;

class ProjectText {
 public:
  // Raises 57, with what is wrong in words, for bytes that are no project file of this format.
  explicit ProjectText(std::string_view bytes);

  std::string ToBytes() const;

  std::optional<String> KeyValue(StringView section, StringView key) const;
  bool HasSection(StringView section) const;

  // Replaces the key's value, or adds the key behind the others of its section, or the section at the end.
  void SetKey(StringView section, StringView key, StringView value);

  // Removes every section of the name. Comments and blank lines behind its last key stay: they stand in front
  // of the next section.
  void RemoveSection(StringView section);

 private:
  enum class LineKind { Section, Key, Comment, Unknown };  // a blank line counts as a comment
  struct Line {
    String Text;  // without its end
    String End;   // empty, a line feed, or both characters
    LineKind Kind = LineKind::Comment;
    String Name;   // of the section or the key
    String Value;  // of the key
  };

  static Line Read(String text, String end);
  void RequireProject() const;
  const Line* FindKey(StringView section, StringView key) const;
  std::size_t FindSection(StringView section) const;
  std::size_t EndOfSection(std::size_t header) const;
  void Insert(std::size_t position, String text);

  std::vector<Line> lines_;
  String lineEnd_ = u"\n";  // of new lines
  bool byteOrderMark_ = false;
};

}  // namespace TvGeneralServices
