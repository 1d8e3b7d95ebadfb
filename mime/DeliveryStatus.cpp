#include "mime/DeliveryStatus.h"

#include <glib.h>

#include <algorithm>
#include <string_view>
#include <utility>

#include "mime/Charset.h"
#include "mime/HeaderText.h"
#include "mime/MailHeader.h"
#include "mime/MemoryNeed.h"
#include "mime/MessageParser.h"
#include "mime/PartText.h"

namespace Mime {
namespace {

// A status of 100,000 recipients has 10 MB; a field of a server's whole dialog some kilobytes.
constexpr std::size_t kLongestStatus = std::size_t{1} << 20;
constexpr std::size_t kLongestField = std::size_t{4} << 10;
constexpr std::size_t kLongestText = 500;  // of a failure's member, for a person

bool IsType(GMimeObject* object, const char* type, std::initializer_list<const char*> subtypes) {
  GMimeContentType* content = g_mime_object_get_content_type(object);
  return std::ranges::any_of(subtypes,
                             [&](const char* s) { return g_mime_content_type_is_type(content, type, s); });
}

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) c = g_ascii_tolower(c);
  return lower;
}

// Calls take with the name, in lower case, and the unfolded value of each field, and with an empty name for
// an empty line and at the end, until it returns false.
template <class Take>
void EachField(std::string_view text, Take take) {
  text = text.substr(0, kLongestStatus);
  for (std::size_t begin = 0; begin < text.size();) {
    std::size_t end = std::min(text.find('\n', begin), text.size());
    while (end + 1 < text.size() && (text[end + 1] == ' ' || text[end + 1] == '\t'))
      end = std::min(text.find('\n', end + 1), text.size());
    const std::string_view field = text.substr(begin, end - begin);
    const std::size_t colon = field.find(':');
    if (field.empty() || field == "\r") {
      if (!take({}, {})) return;
    } else if (colon != std::string_view::npos) {
      const std::string_view name =
          field.substr(0, std::min(field.find_last_not_of(" \t", colon - 1) + 1, colon));
      if (!name.empty() && !take(LowerCase(name), UnfoldHeader(field.substr(colon + 1, kLongestField))))
        return;
    }
    begin = end + 1;
  }
  take({}, {});
}

// A value for a person, on one line.
String Readable(std::string_view value) {
  String text = GuessText(value);
  std::ranges::replace_if(text, Platform::IsControl, u' ');
  if (text.size() > kLongestText) text.replace(kLongestText, String::npos, u"...");
  return Platform::Trim(text);
}

// The value behind the type of an address or a diagnosis, such as "rfc822;" (RFC 3464, section 2.1.2).
std::string_view WithoutType(std::string_view value) {
  const std::size_t semicolon = value.find(';');
  if (semicolon == std::string_view::npos) return value;
  std::string_view type = value.substr(0, semicolon);
  type.remove_prefix(std::min(type.find_first_not_of(" \t"), type.size()));
  type = type.substr(0, type.find_last_not_of(" \t") + 1);
  return type.find_first_of(" @<:") == std::string_view::npos ? value.substr(semicolon + 1) : value;
}

String Address(std::string_view value) {
  const std::string text = WithoutComments(value);
  const std::string_view address = WithoutType(text);
  return OnlyAddress(address).value_or(Readable(address));
}

// The code in front of its comment; empty for another text.
std::string StatusCode(std::string_view value) {
  const std::size_t begin = std::min(value.find_first_not_of(' '), value.size());
  const std::string_view code = value.substr(begin, value.find_first_not_of("0123456789.", begin) - begin);
  constexpr std::size_t kLongestCode = 9;  // "5.123.123"
  const bool valid = code.size() <= kLongestCode && code.size() > 2 && code[1] == '.';
  return valid ? std::string(code) : std::string();
}

// Reads the fields about recipients (RFC 3464, section 2.3). Those about the mail, which stand in front,
// have other names.
class StatusReader {
 public:
  explicit StatusReader(std::vector<DeliveryStatus::Failure>& failures) : failures_(failures) {}

  bool Take(const std::string& name, std::string_view value) {
    const bool recipient = name == "final-recipient";
    // Some programs write no empty line between two recipients.
    if (name.empty() || (recipient && std::exchange(recipientSeen_, true))) Finish(recipient);
    const bool original = name == "original-recipient" && failure_.Original.empty();
    if (original) failure_.Original = Address(value);
    if (recipient || (original && !recipientSeen_)) failure_.Recipient = Address(value);
    if (name == "action") action_ = LowerCase(WithoutComments(value));
    if (name == "status") failure_.Status = Platform::FromUtf8(StatusCode(value));
    if (name == "diagnostic-code") failure_.Diagnostic = Readable(WithoutType(value));
    return failures_.size() < DeliveryStatus::kMostFailures;
  }

 private:
  // Without an action the status decides: its class 5 is a failure.
  void Finish(bool recipientSeen) {
    const bool failed = action_.empty() ? failure_.Status.starts_with(u"5.") : action_ == "failed";
    if (failed && !failure_.Recipient.empty()) failures_.push_back(std::move(failure_));
    failure_ = {};
    action_.clear();
    recipientSeen_ = recipientSeen;
  }

  std::vector<DeliveryStatus::Failure>& failures_;
  DeliveryStatus::Failure failure_;
  std::string action_;
  bool recipientSeen_ = false;
};

// "<...>" in the value of a Message-ID or In-Reply-To; empty without one.
String IdIn(std::string_view value) {
  const std::size_t begin = value.find('<');
  const std::size_t end = value.find('>', std::min(begin, value.size()));
  if (end == std::string_view::npos) return {};
  return Platform::FromUtf8(value.substr(begin, end + 1 - begin));
}

// The parts of a report that are looked for.
struct ReportParts {
  GMimeObject* Status = nullptr;
  GMimeObject* Returned = nullptr;  // the mail, or its header
};

// The first ones outside of attached mails: a person may forward a report.
void FindParts(GMimeObject* object, ReportParts& parts) {
  if (!object) return;
  if (IsType(object, "message", {"delivery-status", "global-delivery-status"})) {
    if (!parts.Status) parts.Status = object;
  } else if (GMIME_IS_MESSAGE_PART(object) || IsType(object, "text", {"rfc822-headers", "rfc822-header"}) ||
             IsType(object, "message", {"rfc822", "global", "global-headers"})) {
    if (!parts.Returned) parts.Returned = object;
  } else if (GMIME_IS_MULTIPART(object)) {
    GMimeMultipart* multipart = GMIME_MULTIPART(object);
    for (int i = 0; i < g_mime_multipart_get_count(multipart); ++i)
      FindParts(g_mime_multipart_get_part(multipart, i), parts);
  }
}

// The raw value of the first field of a name; empty without one.
std::string ReturnedField(const ParsedMessage& report, GMimeObject* returned, std::string name) {
  std::string found;
  if (GMIME_IS_MESSAGE_PART(returned)) {
    GMimeMessage* mail = g_mime_message_part_get_message(GMIME_MESSAGE_PART(returned));
    GMimeHeaderList* list = mail ? g_mime_object_get_header_list(GMIME_OBJECT(mail)) : nullptr;
    GMimeHeader* field = list ? g_mime_header_list_get_header(list, name.c_str()) : nullptr;
    name[0] = 'X';  // by which it is hidden from the parser: see CheckLimits
    if (list && !field) field = g_mime_header_list_get_header(list, name.c_str());
    const char* value = field ? g_mime_header_get_raw_value(field) : nullptr;
    if (value) found = UnfoldHeader(std::string_view(value).substr(0, kLongestField));
  } else if (GMIME_IS_PART(returned)) {
    const std::string wanted = LowerCase(name);
    std::string storage;
    EachField(ContentOf(report, GMIME_PART(returned), storage),
              [&](const std::string& present, std::string_view value) {
                if (present == wanted) found = value;
                return !present.empty() && found.empty();
              });
  }
  return found;
}

}  // namespace

std::optional<DeliveryStatus> ReadDeliveryStatus(const std::string& bytes) {
  RequireMemoryFor(bytes.size());
  const ParsedMessage report(bytes);
  ReportParts parts;
  FindParts(report.Root(), parts);
  if (!parts.Status || !GMIME_IS_PART(parts.Status)) return std::nullopt;
  DeliveryStatus status;
  if (parts.Returned) {
    status.MessageId = IdIn(ReturnedField(report, parts.Returned, "Message-ID"));
    status.ReturnedTo = OnlyAddress(ReturnedField(report, parts.Returned, "To")).value_or(String());
  }
  if (status.MessageId.empty()) status.MessageId = IdIn(report.Field("In-Reply-To"));
  std::string storage;
  StatusReader reader(status.Failures);
  EachField(ContentOf(report, GMIME_PART(parts.Status), storage),
            [&](const std::string& name, std::string_view value) { return reader.Take(name, value); });
  return status;
}

}  // namespace Mime
