#include "gateway/delivery/AttributionSentence.h"

#include <algorithm>
#include <optional>

#include "gateway/delivery/AttributionLanguages.h"
#include "mime/MailCharacters.h"

namespace Gateway {

using namespace Mime;

namespace {

bool IsDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}

StringView TrimmedView(StringView text) {
  const auto first = text.find_first_not_of(u' ');
  return first == StringView::npos ? StringView()
                                   : text.substr(first, text.find_last_not_of(u' ') - first + 1);
}

// Removes the number at the start of text. Returns the number of its digits.
std::size_t TakeNumber(StringView& text, int& number) {
  std::size_t digits = 0;
  number = 0;
  for (; digits < text.size() && IsDigit(text[digits]); ++digits) {
    if (digits < 5) number = number * 10 + (text[digits] - u'0');
  }
  text.remove_prefix(digits);
  return digits;
}

// Removes ".", "/" or "-" and a blank after it.
bool TakeDateSign(StringView& text) {
  if (text.empty() || !IsOneOf(text[0], u"./-")) return false;
  text.remove_prefix(1);
  if (text.starts_with(u' ')) text.remove_prefix(1);
  return true;
}

bool BeginsWithDate(StringView text, std::ptrdiff_t mostWords) {
  const auto digit = std::find_if(text.begin(), text.end(), IsDigit);
  return digit != text.end() && std::count(text.begin(), digit, u' ') <= mostWords && HoldsDate(text);
}

// False for the end of a sentence whose opening bracket is on the line above.
bool HasWholeBrackets(StringView text) {
  return std::count(text.begin(), text.end(), u'<') == std::count(text.begin(), text.end(), u'>');
}

// The first mail address of a text, with the brackets around it.
struct Address {
  StringView Front, Behind;  // the text before and after it
  bool Bracketed = false;
};

std::optional<Address> FindAddress(StringView text) {
  const auto isPart = [](char16_t c) { return !IsOneOf(c, u" <>()[]\"@,;:"); };
  for (auto sign = text.find(u'@', 1); sign < text.size() - 1; sign = text.find(u'@', sign + 1)) {
    if (!isPart(text[sign - 1]) || !isPart(text[sign + 1])) continue;
    std::size_t begin = sign, end = sign + 1;
    while (begin > 0 && isPart(text[begin - 1])) --begin;
    while (end < text.size() && isPart(text[end])) ++end;
    const bool bracketed =
        begin > 0 && IsOneOf(text[begin - 1], u"<([:") && end < text.size() && IsOneOf(text[end], u">)]");
    while (bracketed && end < text.size() && IsOneOf(text[end], u">)]")) ++end;
    return Address{text.substr(0, begin), TrimmedView(text.substr(end)), bracketed};
  }
  return std::nullopt;
}

// True for a sender as a program writes it: a name with an address in brackets, or the address and then maybe
// the name in brackets. A date may follow. A person would write other words.
bool IsSender(StringView text) {
  const auto address = FindAddress(text);
  if (!address || !HasWholeBrackets(text)) return false;
  if (!address->Bracketed && !address->Front.empty()) return false;
  return address->Behind.empty() || address->Behind.starts_with(u'(') || HoldsDate(address->Behind);
}

// True for a date with the sender after it. In front of the first digit only a weekday with its comma or
// point is accepted.
bool IsDateAndSender(StringView text) {
  const auto address = FindAddress(text);
  const StringView weekday = TrimmedView(text.substr(0, text.find_first_of(u"0123456789")));
  return address && address->Bracketed && address->Behind.empty() && HasWholeBrackets(text) &&
         BeginsWithDate(text, 1) && (weekday.empty() || IsOneOf(weekday.back(), u",."));
}

// True if a part of a sentence matches its placeholder.
bool Fits(StringView part, StringView place, bool first) {
  part = TrimmedView(part);
  if (part.empty()) return false;
  if (place == u"date") return BeginsWithDate(part, first ? 1 : 3);
  if (place == u"address") return IsSender(part);
  if (place == u"name") return HasWholeBrackets(part);
  return IsDateAndSender(part);
}

// Compares the sentence with one of the table, both without the colon.
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

bool HoldsDate(StringView text) {
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

bool HoldsTime(StringView text) {
  bool inNumber = false;  // or in a date of numbers
  while (!text.empty()) {
    int number = 0;
    const std::size_t digits = TakeNumber(text, number);
    if (digits > 0 && digits <= 2 && !inNumber && !text.empty() && IsOneOf(text[0], u":.h")) {
      const char16_t sign = text[0];
      StringView rest = text.substr(1);
      const bool dateGoesOn = TakeNumber(rest, number) != 2 ||
                              (sign == u'.' && rest.size() > 1 && rest[0] == u'.' && IsDigit(rest[1]));
      if (!dateGoesOn) return true;
    }
    if (text.empty()) break;
    inNumber = digits > 0 && IsOneOf(text[0], u"./-");
    text.remove_prefix(1);
  }
  return false;
}

bool IsAttributionSentence(StringView sentence, SentenceBegin begin) {
  const std::size_t whole = sentence.size();
  while (!sentence.empty() && IsDash(sentence.front())) sentence.remove_prefix(1);
  const bool dashed = sentence.size() < whole && !sentence.empty() && IsDash(sentence.back());
  while (dashed && IsDash(sentence.back())) sentence.remove_suffix(1);
  const bool colon = sentence.ends_with(u':') || sentence.ends_with(u'\uFF1A');
  if (!colon && !dashed) return false;
  sentence = TrimmedView(sentence.substr(0, sentence.size() - (colon ? 1 : 0)));
  // Without a time of day and an address it could be a person's: "On 2 Nov 2026 the customer wrote:".
  const auto address = FindAddress(sentence);
  if (!HoldsTime(sentence) && !(address && (address->Bracketed || address->Front.empty()))) return false;
  for (const AttributionLanguage& language : AttributionLanguages()) {
    for (StringView rest = language.Sentences; !rest.empty();) {
      const StringView pattern = TakeAlternative(rest);
      const bool named = pattern.starts_with(u"{name}") || pattern.starts_with(u"{address}");
      if (named == (begin == SentenceBegin::Name) && Matches(sentence, pattern.substr(0, pattern.size() - 1)))
        return true;
    }
  }
  return false;
}

}  // namespace Gateway
