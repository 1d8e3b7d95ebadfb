#include "mime/LimitCheck.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

#include "mime/AddressDepth.h"
#include "mime/DelimiterLines.h"
#include "mime/GMimeReference.h"
#include "platform/ProgramTexts.h"

namespace Mime {
namespace {

constexpr std::string_view kBlanks = " \t\r";

namespace TextNumber = Platform::TextNumber;

[[noreturn]] void Refuse(std::int32_t text, std::size_t limit) {
  throw LimitExceeded(text, limit);
}

std::string_view WithoutBlanksBehind(std::string_view text) {
  return text.substr(0, text.find_last_not_of(kBlanks) + 1);
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = g_ascii_tolower(c);
  return lower;
}

bool IsAddressField(const std::string& name) {
  return name == "from" || name == "sender" || name == "reply-to" || name == "to" || name == "cc" ||
         name == "bcc";
}

// The other fields that the parser decodes while it parses.
bool IsDecodedField(const std::string& name) {
  constexpr std::string_view kNames[] = {
      "content-description",       "content-id", "content-location", "content-md5",
      "content-transfer-encoding", "date",       "message-id"};
  return std::ranges::find(kNames, name) != std::end(kNames);
}

// True for the usual content type of a text. The parser reads it like that whatever follows, and finds no
// boundary.
bool IsPlainlyText(std::string_view value) {
  constexpr std::string_view kText = "text/";
  value.remove_prefix(std::min(value.find_first_not_of(' '), value.size()));
  return value.size() > kText.size() && g_ascii_strncasecmp(value.data(), kText.data(), kText.size()) == 0 &&
         g_ascii_isalnum(value[kText.size()]);
}

// The content type in a header.
struct Content {
  std::vector<std::string> Boundaries;  // with "--" in front; those of a second Content-Type, too
  bool Message = false;
  bool TypeRead = false;
};

// Reads the lines as the parser does: a header up to an empty line, then the content up to a delimiter of an
// enclosing multipart.
class Scan {
 public:
  Scan(std::string& bytes, const MailLimits& limits) : bytes_(bytes), limits_(limits) {}

  void Run() {
    for (std::size_t at = 0; at < bytes_.size();) {
      if (!inHeader_) at = NextDelimiterLine(bytes_, at);
      if (at == bytes_.size()) break;
      const std::size_t end = std::min(bytes_.find('\n', at), bytes_.size());
      std::string_view line(bytes_.data() + at, end - at);
      if (line.ends_with('\r')) line.remove_suffix(1);
      if (!(line.starts_with("--") && TakeDelimiter(line)) && inHeader_) TakeHeaderLine(at, line);
      at = end + 1;
    }
    EndField();
  }

 private:
  // True for a delimiter of an open or closed multipart, which begins another part or ends the multipart.
  bool TakeDelimiter(std::string_view line) {
    const std::string delimiter(WithoutBlanksBehind(line));
    const bool begins = seen_.contains(delimiter);
    const std::string boundary =
        delimiter.ends_with("--") ? delimiter.substr(0, delimiter.size() - 2) : std::string();
    const bool ends = !begins && seen_.contains(boundary);
    if (!begins && !ends) return false;

    const auto open = std::find_if(levels_.rbegin(), levels_.rend(), [&](const std::string& level) {
      return level == (begins ? delimiter : boundary);
    });
    // In a header the parser may take the line for a field, and stay inside all these levels.
    if (inHeader_ && !atMessageStart_) {
      EndHeader();
      inHeader_ = true;
    } else if (open != levels_.rend()) {
      levels_.erase(ends ? open.base() - 1 : open.base(), levels_.end());
      inHeader_ = begins;
    } else if (begins) {
      ++lostLevels_;  // the parser may take it for open
      inHeader_ = true;
    }
    if (begins) BeginPart();
    return true;
  }

  void BeginPart() {
    atMessageStart_ = false;
    BeginHeader();
    if (++parts_ > limits_.Parts) Refuse(TextNumber::kTooManyParts, limits_.Parts);
    CheckDepth();
  }

  void BeginHeader() {
    inHeader_ = true;
    ownHeader_ = false;
    headerFields_ = 0;
    headerSize_ = 0;
    content_ = {};
  }

  void TakeHeaderLine(std::size_t at, std::string_view line) {
    atMessageStart_ = false;
    if (line.empty()) return EndHeader();
    const bool folded = line.starts_with(' ') || line.starts_with('\t');
    if (!folded || !inField_) {
      EndField();
      inField_ = true;
      fieldStart_ = at;
    }
    fieldEnd_ = at + line.size();
  }

  void EndHeader() {
    EndField();
    inHeader_ = false;
    for (std::string& boundary : content_.Boundaries) {
      seen_.insert(boundary);
      levels_.push_back(std::move(boundary));
    }
    // In a digest an entity without a readable type is a message (RFC 2046, section 5.1.5).
    const bool message = content_.Message || (digestSeen_ && !content_.TypeRead);
    if (message) {
      levels_.emplace_back();
      BeginPart();
      atMessageStart_ = true;
    } else {
      content_ = {};
    }
    CheckDepth();
  }

  void CheckDepth() const {
    if (levels_.size() + lostLevels_ > limits_.Depth) Refuse(TextNumber::kPartsTooDeep, limits_.Depth);
  }

  void EndField() {
    if (!inField_) return;
    inField_ = false;
    const std::string_view field(bytes_.data() + fieldStart_, fieldEnd_ - fieldStart_);
    if (field.size() > limits_.FieldSize) Refuse(TextNumber::kHeaderFieldTooLong, limits_.FieldSize >> 10);
    const std::size_t colon = field.find(':');
    if (colon == std::string_view::npos) return;  // the parser drops it
    headerSize_ += field.size();
    if (headerSize_ > limits_.HeaderSize) Refuse(TextNumber::kHeaderTooLarge, limits_.HeaderSize >> 10);
    if (++headerFields_ > limits_.HeaderFields)
      Refuse(TextNumber::kTooManyHeaderFields, limits_.HeaderFields);
    if (++fields_ > limits_.Fields) Refuse(TextNumber::kTooManyFields, limits_.Fields);

    const std::string name = LowerCase(WithoutBlanksBehind(field.substr(0, colon)));
    const std::string_view value = field.substr(colon + 1);
    if (IsAddressField(name)) CheckAddresses(name, value);
    if (name == "subject") CheckSubject(value);
    if (IsDecodedField(name)) HideDecoded(name, value);
    if (name == "content-type" || name == "content-disposition") CheckParameters(value);
    if (name == "content-type") ReadContentType(std::string(value));
  }

  void CheckAddresses(const std::string& name, std::string_view value) {
    if (!ownHeader_ || name != "from") {
      bytes_[fieldStart_] = 'X';
      return;
    }
    if (++fromFields_ > limits_.FromFields) Refuse(TextNumber::kTooManyFromFields, limits_.FromFields);
    if (value.size() > limits_.FromSize) Refuse(TextNumber::kFromTooLong, limits_.FromSize >> 10);
    if (AddressDepth(value) > limits_.AddressDepth)
      Refuse(TextNumber::kAddressesTooDeep, limits_.AddressDepth);
  }

  void CheckSubject(std::string_view value) {
    if (!ownHeader_ || std::exchange(subjectSeen_, true)) {
      bytes_[fieldStart_] = 'X';
    } else if (value.size() > limits_.SubjectSize) {
      Refuse(TextNumber::kSubjectTooLong, limits_.SubjectSize >> 10);
    }
  }

  void HideDecoded(const std::string& name, std::string_view value) {
    const bool read = name == "content-transfer-encoding" || (ownHeader_ && name == "message-id");
    if (!read || value.size() > limits_.ShortFieldSize) bytes_[fieldStart_] = 'X';
  }

  void CheckParameters(std::string_view value) {
    const auto count = [&](char c) {
      return static_cast<std::size_t>(std::count(value.begin(), value.end(), c));
    };
    if (value.size() > limits_.ContentFieldSize)
      Refuse(TextNumber::kContentFieldTooLong, limits_.ContentFieldSize >> 10);
    if (count('(') > limits_.ContentFieldComments)
      Refuse(TextNumber::kTooManyComments, limits_.ContentFieldComments);
    std::size_t words = 0;
    for (std::size_t at = value.find("=?"); at != std::string_view::npos; at = value.find("=?", at + 2))
      ++words;
    if (words > limits_.ContentFieldWords)
      Refuse(TextNumber::kTooManyEncodedWords, limits_.ContentFieldWords);
    if (count(';') > limits_.FieldParameters)
      Refuse(TextNumber::kTooManyFieldParameters, limits_.FieldParameters);
    parameters_ += count(';');
    if (parameters_ > limits_.Parameters) Refuse(TextNumber::kTooManyParameters, limits_.Parameters);
  }

  // Parsed by GMime's own function, so that both find the same boundary. GMime has removed every CR by then.
  void ReadContentType(std::string value) {
    if (IsPlainlyText(value)) {
      content_.TypeRead = true;
      return;
    }
    std::erase(value, '\r');
    const Owned<GMimeContentType> type(g_mime_content_type_parse(nullptr, value.c_str()));
    if (!type) return;
    const bool fallback = g_mime_content_type_is_type(type.get(), "application", "octet-stream") &&
                          LowerCase(value).find("octet-stream") == std::string::npos;
    content_.TypeRead = content_.TypeRead || !fallback;
    content_.Message = content_.Message || g_mime_content_type_is_type(type.get(), "message", "*");
    digestSeen_ = digestSeen_ || g_mime_content_type_is_type(type.get(), "multipart", "digest");
    const char* boundary = g_mime_content_type_get_parameter(type.get(), "boundary");
    if (boundary && g_mime_content_type_is_type(type.get(), "multipart", "*"))
      content_.Boundaries.emplace_back(WithoutBlanksBehind(std::string("--") + boundary));
  }

  std::string& bytes_;
  const MailLimits& limits_;

  bool inHeader_ = true;
  bool ownHeader_ = true;        // the header of the mail, not of a part
  bool atMessageStart_ = false;  // before the first line of a message's header
  bool inField_ = false;
  std::size_t fieldStart_ = 0;
  std::size_t fieldEnd_ = 0;
  Content content_;

  std::vector<std::string> levels_;  // the boundaries around the current line; empty for a message
  std::size_t lostLevels_ = 0;       // delimiters of closed multiparts
  std::unordered_set<std::string> seen_;
  bool digestSeen_ = false;

  std::size_t parts_ = 0;
  std::size_t fields_ = 0;
  std::size_t headerFields_ = 0;
  std::size_t headerSize_ = 0;
  std::size_t fromFields_ = 0;
  bool subjectSeen_ = false;
  std::size_t parameters_ = 0;
};

}  // namespace

void CheckLimits(std::string& bytes, const MailLimits& limits) {
  Scan(bytes, limits).Run();
}

}  // namespace Mime
