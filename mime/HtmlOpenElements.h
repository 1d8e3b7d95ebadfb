// HtmlOpenElements: the stack of open elements at a position of an HTML document.
#pragma once

#include <array>
#include <deque>
#include <functional>

#include "mime/HtmlElements.h"

namespace Mime {

// Each operation takes constant time for each element that it opens or closes, for any document: a search
// covers only the innermost elements.
class HtmlOpenElements {
 public:
  struct Open {
    std::uint8_t Number = 0;
    bool Hides = false;
    bool Preformats = false;
    bool Tight = false;  // a paragraph without empty lines around it
  };

  // Called for each element that is closed, the innermost first.
  using Closed = std::function<void(const Open&)>;

  explicit HtmlOpenElements(Closed closed) : closed_(std::move(closed)) {}

  void Push(const Open& element);

  // Closes the elements that a start tag ends implicitly, such as a paragraph in front of a list.
  void CloseBefore(const HtmlElement& next);

  // Closes an element and everything opened in it. If an inline element's end tag is inside a block, the
  // element ends there and the block stays open. Returns false if no element of this number is open.
  bool Close(std::uint8_t number);

 private:
  using Test = bool (*)(const HtmlElement&);
  static constexpr std::size_t kNearest = 64;

  void Pop();
  void CloseNearest(Test wanted, Test barrier);
  bool CloseInline(std::uint8_t number);

  Closed closed_;
  std::deque<Open> open_;  // grows without copying
  std::array<std::size_t, kElementCount> counts_{};
};

}  // namespace Mime
