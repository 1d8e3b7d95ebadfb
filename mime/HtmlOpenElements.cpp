#include "mime/HtmlOpenElements.h"

#include <algorithm>

namespace Mime {
namespace {

using Role = HtmlElement::Role;

template <Role... Roles>
bool Is(const HtmlElement& element) {
  return ((element.Part == Roles) || ...);
}

bool EndsSearchForParagraph(const HtmlElement& element) {
  return element.IsBlock() || element.Part == Role::Cell;
}

}  // namespace

void HtmlOpenElements::Push(const Open& element) {
  open_.push_back(element);
  ++counts_[element.Number];
}

void HtmlOpenElements::CloseBefore(const HtmlElement& next) {
  if (next.IsBlock()) CloseNearest(Is<Role::Paragraph>, EndsSearchForParagraph);
  switch (next.Part) {
    case Role::Item:
      return CloseNearest(Is<Role::Item>, Is<Role::NumberedList, Role::BulletList, Role::Cell>);
    case Role::Term:
      return CloseNearest(Is<Role::Term>, Is<Role::DescriptionList, Role::Cell>);
    case Role::Cell:
      return CloseNearest(Is<Role::Cell>, Is<Role::Row, Role::Table>);
    case Role::Row:
      return CloseNearest(Is<Role::Row>, Is<Role::Table>);
    default:
      return;
  }
}

bool HtmlOpenElements::Close(std::uint8_t number) {
  if (counts_[number] == 0) return false;
  const HtmlElement& element = ElementOf(number);
  if (!element.IsBlock() && element.Part != Role::Cell) return CloseInline(number);
  while (open_.back().Number != number) Pop();
  Pop();
  return true;
}

void HtmlOpenElements::Pop() {
  const Open element = open_.back();
  open_.pop_back();
  --counts_[element.Number];
  closed_(element);
}

void HtmlOpenElements::CloseNearest(Test wanted, Test barrier) {
  const std::size_t looked = std::min(open_.size(), kNearest);
  for (std::size_t i = 1; i <= looked; ++i) {
    const HtmlElement& element = ElementOf(open_[open_.size() - i].Number);
    if (wanted(element)) {
      for (std::size_t pops = i; pops > 0; --pops) Pop();
      return;
    }
    if (barrier(element)) return;
  }
}

bool HtmlOpenElements::CloseInline(std::uint8_t number) {
  const std::size_t looked = std::min(open_.size(), kNearest);
  bool crossed = false;
  for (std::size_t i = 1; i <= looked; ++i) {
    Open& found = open_[open_.size() - i];
    if (found.Number != number) {
      crossed = crossed || ElementOf(found.Number).IsBlock();
      continue;
    }
    if (!crossed) {
      for (std::size_t pops = i; pops > 0; --pops) Pop();
      return true;
    }
    const Open ended = found;
    found = {};
    --counts_[number];
    ++counts_[0];
    closed_(ended);
    return true;
  }
  return false;
}

}  // namespace Mime
