// ProjectText: the text of a project file (.TVS) as sections, keys and values. docs/formats.md describes the
// format.
//
// The text is kept line by line: comments, order, blank lines and unknown lines are not changed. Section
// names and keys are compared without regard to case; of duplicates the first counts. No input or output; one
// thread at a time.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/Text.h"

namespace Runtime {

using namespace Platform;

class ProjectText {
 public:
  static constexpr std::size_t kLargestFile = 1 << 20;  // bytes

  // Raises 380 for bytes that are no UTF-8 text.
  explicit ProjectText(std::string_view bytes);

  // Raises 380, with the reason, unless the text begins with the section [Project] of format 1.
  void RequireProject() const;

  std::string ToBytes() const;

  // Nothing if the key is absent. LiteralValue returns escape sequences as they are in the file.
  std::optional<String> KeyValue(StringView section, StringView key) const;
  std::optional<String> LiteralValue(StringView section, StringView key) const;
  bool HasSection(StringView section) const;

  // Replaces the key's value. A new key is added at the end of its section, a new section at the end.
  void SetKey(StringView section, StringView key, StringView value);

  // Removes every section of the name. Comments and blank lines after its last key remain, since they belong
  // to the next section.
  void RemoveSection(StringView section);

 private:
  enum class LineKind { Section, Key, Comment, Unknown };  // a blank line counts as a comment
  struct Line {
    String Text;  // without its end
    String End;   // empty, LF or CR LF
    LineKind Kind = LineKind::Comment;
    String Name;   // of the section or the key
    String Value;  // of the key
  };

  static Line Read(String text, String end);
  const Line* FindKey(StringView section, StringView key) const;
  std::size_t FindSection(StringView section) const;
  std::size_t EndOfSection(std::size_t header) const;
  void Insert(std::size_t position, String text);

  std::vector<Line> lines_;
  String lineEnd_ = u"\n";  // of new lines
  bool byteOrderMark_ = false;
};

}  // namespace Runtime
