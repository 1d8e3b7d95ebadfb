// HtmlOpenElements: the elements that are open at a place of an HTML document.
#pragma once

#include <array>
#include <deque>
#include <functional>

#include "mime/HtmlElements.h"

namespace Mime {

// Every operation takes constant time for each element that it opens or closes, whatever the document holds:
// where an element has to be searched, only the nearest ones are looked at.
class HtmlOpenElements {
 public:
  struct Open {
    std::uint8_t Number = 0;
    bool Hides = false;
    bool Preformats = false;
    bool Tight = false;  // a paragraph without empty lines around it
  };

  // Is told of each element that is closed, the innermost first.
  using Closed = std::function<void(const Open&)>;

  explicit HtmlOpenElements(Closed closed) : closed_(std::move(closed)) {}

  void Push(const Open& element);

  // Closes what a start tag ends without an end tag, such as a paragraph in front of a list.
  void CloseBefore(const HtmlElement& next);

  // Closes an element and all that was opened in it. An inline element whose end tag lies in a block of its
  // own has no effect from here on; the block stays open. False where none of that number is open.
  bool Close(std::uint8_t number);

 private:
  using Test = bool (*)(const HtmlElement&);
  static constexpr std::size_t kNearest = 64;

  void Pop();
  void CloseNearest(Test wanted, Test barrier);
  bool CloseInline(std::uint8_t number);

  Closed closed_;
  std::deque<Open> open_;  // grows without a copy
  std::array<std::size_t, kElementCount> counts_{};
};

}  // namespace Mime
