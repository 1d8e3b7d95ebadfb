// CutMarker: the line of a notification above which its reader writes, as answering mail programs deform it.
//
// The component cuts a reply in front of the marker, and finds it only as it was sent. Here it is found with
// all that programs do to it: it is wrapped, its blanks are doubled or become no-break spaces, soft hyphens
// and zero-width characters come in between, its hyphens become dashes. One object a handler; main thread.
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
  // Puts the marker as it was sent in the place of the first one of body, deformed or not, and takes away
  // what the mail program put in front of it: quote signs, blank lines and the attribution ("On ... wrote:").
  // All else of body stays as it is. A marker that begins so late that the text in front of it is too long
  // for a reply is not looked for. Gives the marker's position; npos where body has none, and where its text
  // can't be had. Takes time in proportion to the text in front of the marker at most.
  std::size_t Repair(String& body);

  // The marker as it is sent, in words for a report; empty where it can't be had.
  String Words();

 private:
  // What the text of the marker consists of.
  struct Step {
    enum { Letter, Dashes, Gap } Kind;
    char16_t Character = 0;  // of a letter
    std::size_t Count = 0;   // of dashes
  };
  struct Place {
    std::size_t Begin, End;
    bool Alone = false;  // the dashes differ so much that the marker has to fill its lines to be one
  };

  const std::optional<String>& Text();
  void TakeSteps();
  std::optional<Place> Find(StringView text) const;
  std::optional<Place> MatchAt(StringView text, std::size_t begin) const;
  bool MatchDashes(StringView text, std::size_t& at, const Step& step, Place& place) const;

  std::optional<String> text_;  // fetched for the first body, and again for the next if that went wrong
  std::vector<Step> steps_;
};

}  // namespace Gateway
