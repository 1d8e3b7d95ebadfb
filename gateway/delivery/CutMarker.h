// CutMarker: finds the cut marker in a reply and restores it.
//
// The cut marker is the line of a notification above which its reader writes. The component cuts a reply at
// the marker, and recognises only the marker's original text. Mail programs change it: they wrap it, double
// its blanks or replace them with no-break spaces, insert soft hyphens and zero-width characters, and turn
// its hyphens into dashes. One object for each handler; main thread.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

class CutMarker {
 public:
  // Replaces the first marker in body, changed or not, with its original text, and deletes what the mail
  // program put in front of it: quote signs, blank lines and the attribution ("On ... wrote:"). The rest of
  // body is unchanged. A marker after more text than a reply may have is not searched. Returns the position
  // of the marker; npos if body has none, or if the marker's text isn't available. Linear in the text in
  // front of the marker.
  std::size_t Repair(String& body);

  // The original text of the marker, for a report; empty if it isn't available.
  String OriginalText();

 private:
  // The elements of the marker's text.
  struct Step {
    enum { Letter, Dashes, Gap } Kind;
    char16_t Character = 0;  // if a letter
    std::size_t Count = 0;   // if dashes
  };
  struct Place {
    std::size_t Begin, End;
    bool Alone = false;  // the dashes differ so much that nothing else may be on the marker's lines
  };

  const std::optional<String>& Text();
  void TakeSteps();
  std::optional<Place> Find(StringView text) const;
  std::optional<Place> MatchAt(StringView text, std::size_t begin) const;
  bool MatchDashes(StringView text, std::size_t& at, const Step& step, Place& place) const;

  std::optional<String> text_;  // loaded for the first body; after an error, again for the next
  std::vector<Step> steps_;
};

}  // namespace Gateway
