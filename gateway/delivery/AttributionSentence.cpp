#include "gateway/delivery/AttributionSentence.h"

#include <algorithm>

#include "gateway/delivery/AttributionLanguages.h"
#include "gateway/delivery/MailCharacters.h"

namespace Gateway {
namespace {

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

StringView TrimmedView(StringView text) {
  const auto first = text.find_first_not_of(u' ');
  return first == StringView::npos ? StringView()
                                   : text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

// Takes the number that text begins with. Gives how many digits it has.
std::size_t TakeNumber(StringView& text, int& number) {
  std::size_t digits = 0;
  number = 0;
  for (; digits < text.size() && IsDigit(text[digits]); ++digits) {
    if (digits < 5) number = number * 10 + (text[digits] - u'0');
  }
  text.remove_prefix(digits);
  return digits;
}

// Takes ".", "/" or "-" and a blank behind it.
bool TakeDateSign(StringView& text) {
  if (text.empty() || !IsOneOf(text[0], u"./-")) return false;
  text.remove_prefix(1);
  if (text.starts_with(u' ')) text.remove_prefix(1);
  return true;
}

// True if a year of four digits stands in the text, or a date of numbers with a year of two, as in
// "02.11.26".
bool HasDate(StringView text) {
  while (!text.empty()) {
    if (!IsDigit(text[0])) {
      text.remove_prefix(1);
      continue;
    }
    int number = 0;
    const std::size_t digits = TakeNumber(text, number);
    if (digits == 4 && number >= 1970 && number < 2100) return true;
    StringView rest = text;
    if (digits > 2 || !TakeDateSign(rest)) continue;
    const std::size_t second = TakeNumber(rest, number);
    if (second >= 1 && second <= 2 && TakeDateSign(rest) && TakeNumber(rest, number) == 2) return true;
  }
  return false;
}

bool BeginsWithDate(StringView text, std::ptrdiff_t mostWords) {
  const auto digit = std::find_if(text.begin(), text.end(), IsDigit);
  return digit != text.end() && std::count(text.begin(), digit, u' ') <= mostWords && HasDate(text);
}

// False for the end of a sentence whose beginning is on the line above.
bool HasWholeBrackets(StringView text) {
  return std::count(text.begin(), text.end(), u'<') == std::count(text.begin(), text.end(), u'>');
}

bool HasAddress(StringView text) {
  const auto isPart = [](char16_t c) { return !IsOneOf(c, u" <>()[]\"@,;:"); };
  for (auto sign = text.find(u'@', 1); sign < text.size() - 1; sign = text.find(u'@', sign + 1)) {
    if (isPart(text[sign - 1]) && isPart(text[sign + 1])) return HasWholeBrackets(text);
  }
  return false;
}

// Whether a part of a sentence is what its place is for.
bool Fits(StringView part, StringView place, bool first) {
  part = TrimmedView(part);
  if (part.empty()) return false;
  if (place == u"date") return BeginsWithDate(part, first ? 1 : 3);
  if (place == u"address") return HasAddress(part);
  if (place == u"name") return HasWholeBrackets(part);
  return BeginsWithDate(part, 1) && HasAddress(part.substr(part.rfind(u' ') + 1));
}

// Compares sentence with one of the table, both without their colon.
bool Matches(StringView sentence, StringView pattern) {
  bool first = true;
  while (true) {
    const auto open = std::min(pattern.find(u'{'), pattern.size());
    if (!sentence.starts_with(pattern.substr(0, open))) return false;
    if (open == pattern.size()) return sentence.size() == open;
    sentence.remove_prefix(open);
    const auto close = pattern.find(u'}');
    const StringView place = pattern.substr(open + 1, close - open - 1);
    first = first && open == 0;
    pattern.remove_prefix(close + 1);
    const StringView next = pattern.substr(0, pattern.find(u'{'));
    if (next.size() == pattern.size() && !sentence.ends_with(next)) return false;
    const auto end = next.size() == pattern.size() ? sentence.size() - next.size() : sentence.find(next);
    if (end == StringView::npos || !Fits(sentence.substr(0, end), place, first)) return false;
    sentence.remove_prefix(end);
    first = false;
  }
}

}  // namespace

bool IsAttributionSentence(StringView sentence, SentenceBegin begin) {
  const std::size_t whole = sentence.size();
  while (!sentence.empty() && IsDash(sentence.front())) sentence.remove_prefix(1);
  const bool dashed = sentence.size() < whole && !sentence.empty() && IsDash(sentence.back());
  while (dashed && IsDash(sentence.back())) sentence.remove_suffix(1);
  const bool colon = sentence.ends_with(u':') || sentence.ends_with(u'\uFF1A');
  if (!colon && !dashed) return false;
  sentence = TrimmedView(sentence.substr(0, sentence.size() - (colon ? 1 : 0)));
  for (const AttributionLanguage& language : AttributionLanguages()) {
    for (StringView rest = language.Sentences; !rest.empty();) {
      const StringView pattern = rest.substr(0, rest.find(u'|'));
      rest.remove_prefix(std::min(pattern.size() + 1, rest.size()));
      const bool named = pattern.starts_with(u"{name}") || pattern.starts_with(u"{address}");
      if (named == (begin == SentenceBegin::Name) && Matches(sentence, pattern.substr(0, pattern.size() - 1)))
        return true;
    }
  }
  return false;
}

}  // namespace Gateway
