#include "src/mail/DiscussionSubject.h"

#include "platform/Failure.h"
#include "platform/NumberReader.h"
#include "platform/StoredNames.h"
#include "src/services/modResource.h"

namespace TvEmailServices {
namespace {

constexpr StringView kDiscussionMarker = u"Ostrand Talvane Discussion ";
constexpr StringView kDiscussionWord = u"Discussion";
constexpr StringView kProjectMarker = u"(Ostrand Talvane Project ";

// The line without its tabs and line ends.
String Unfold(StringView line) {
  String unfolded(line);
  std::erase_if(unfolded, [](char16_t c) { return c == u'\t' || c == u'\r' || c == u'\n'; });
  return unfolded;
}

// The text from the first occurrence on; the whole text if there is none.
StringView From(StringView text, StringView wanted) {
  const auto found = text.find(wanted);
  return found == StringView::npos ? text : text.substr(found);
}

// The text before the first occurrence. Raises 5 if there is none.
StringView Before(StringView text, StringView wanted) {
  const auto found = text.find(wanted);
  if (found == StringView::npos) Raise(FailureNumber::InvalidArgument);
  return text.substr(0, found);
}

// The text between the first blank and the first closing bracket; in a text without a blank all before the
// bracket. Raises 5 if there is no bracket, or if the first blank is after it.
StringView NumberText(StringView text) {
  const StringView head = Before(text, u")");
  const auto blank = text.find(u' ');
  if (blank == StringView::npos) return head;
  if (blank > head.size()) Raise(FailureNumber::InvalidArgument);
  return head.substr(blank + 1);
}

}  // namespace

bool ParseDiscussionSubject(StringView line, std::int32_t& number, String& subjectText, String& errorText) {
  try {
    const String unfolded = Unfold(line);
    const StringView numberText = NumberText(From(From(unfolded, kDiscussionMarker), kDiscussionWord));
    subjectText = Before(unfolded, kProjectMarker);
    if (const std::int32_t read = IsNumeric(numberText) ? ReadInt32(numberText) : 0; read >= 1) {
      number = read;
      return true;
    }
    errorText = LoadTvResourceString(TextNumber::kNoDiscussionSubject);
  } catch (...) {
    errorText = CurrentFailure().Description();
  }
  return false;
}

}  // namespace TvEmailServices
