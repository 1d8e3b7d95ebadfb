#include "mime/MailBody.h"

#include <algorithm>
#include <optional>

#include "mime/Charset.h"
#include "mime/HardWraps.h"
#include "mime/PartText.h"
#include "mime/SignedContent.h"

namespace Mime {
namespace {

// The greatest depth of signed mail in signed mail: a mailing list may sign what its writer signed.
constexpr int kMostSignedDepth = 2;

// The number of signed mails that are opened in one mail, since the limits apply to each of them separately.
constexpr int kMostSigned = 8;

// The position of a part in its multipart.
struct Place {
  bool First = true;
  bool Related = false;  // in multipart/related only the first part is text
};

// A text that is built part by part.
struct Joined {
  String Text;
  bool Blank = true;

  void Add(String more) {
    const bool blank = IsBlankText(more);
    if (Blank && (!blank || Text.empty())) {
      Text = std::move(more);
    } else if (!blank) {
      if (Text.back() != u'\n' && Text.back() != u'\r') Text += u'\n';
      Text += more;
    }
    Blank = Blank && blank;
  }
};

bool IsType(GMimeObject* object, const char* type, const char* subtype) {
  return g_mime_content_type_is_type(g_mime_object_get_content_type(object), type, subtype);
}

// A part that may contain a whole signed mail. Gateways change its type, but keep its file name.
bool IsCms(GMimePart* part) {
  GMimeObject* object = GMIME_OBJECT(part);
  if (IsType(object, "application", "pkcs7-mime") || IsType(object, "application", "x-pkcs7-mime"))
    return true;
  const char* name = g_mime_part_get_filename(part);
  return name && IsType(object, "application", "octet-stream") && g_str_has_suffix(name, ".p7m");
}

bool IsAttachment(GMimePart* part, Place place) {
  return g_mime_part_is_attachment(part) ||
         (!place.First && (place.Related || g_mime_part_get_filename(part) != nullptr));
}

constexpr int kPlainRank = 0, kHtmlRank = 1, kLastRank = 2;

// The distance of a part from plain text; nothing for parts without text. An alternative counts as its
// plainest part.
std::optional<int> RankOf(GMimeObject* object) {
  if (GMIME_IS_PART(object)) {
    if (IsCms(GMIME_PART(object))) return kPlainRank;
    const TextKind kind = KindOf(GMIME_PART(object));
    if (kind == TextKind::None) return std::nullopt;
    return kind == TextKind::Plain ? kPlainRank : kind == TextKind::Html ? kHtmlRank : kLastRank;
  }
  if (!GMIME_IS_MULTIPART(object)) return std::nullopt;
  const bool alternative = IsType(object, "multipart", "alternative");
  const int count = g_mime_multipart_get_count(GMIME_MULTIPART(object));
  std::optional<int> rank;
  for (int i = 0; i < count; ++i) {
    const std::optional<int> part = RankOf(g_mime_multipart_get_part(GMIME_MULTIPART(object), i));
    if (part && (!rank || (alternative ? *part < *rank : *part > *rank))) rank = part;
  }
  return rank;
}

// Removes an encrypted OpenPGP message (RFC 9580 section 6.2) from the start of a text. Returns false if
// there is none.
bool RemoveArmor(String& text) {
  constexpr StringView kBegin = u"-----BEGIN PGP MESSAGE-----";
  constexpr StringView kEnd = u"-----END PGP MESSAGE-----";
  const std::size_t first = std::min(text.find_first_not_of(u" \t\r\n"), text.size());
  const std::size_t end =
      text.compare(first, kBegin.size(), kBegin) == 0 ? text.find(kEnd, first) : String::npos;
  if (end == String::npos) return false;
  text.erase(0, end + kEnd.size());
  return true;
}

// Finds the text of one message.
class TextFinder {
 public:
  TextFinder(const ParsedMessage& message, int depth, int& opened)
      : message_(message), depth_(depth), opened_(opened) {}

  BodyText Find() {
    GMimeObject* root = message_.Root();
    if (!root) return {};
    Joined text;
    text.Add(TextIn(root, {}));
    if (text.Blank && !encrypted_) AddAttached(root, text);
    const bool partless = GMIME_IS_MULTIPART(root) && g_mime_multipart_get_count(GMIME_MULTIPART(root)) == 0;
    if (partless) text.Add(GuessText(message_.RawBody()));  // the boundary doesn't occur
    return {std::move(text.Text), std::move(charset_), encrypted_};
  }

 private:
  String TextIn(GMimeObject* object, Place place) {
    if (GMIME_IS_PART(object)) {
      GMimePart* part = GMIME_PART(object);
      if (IsCms(part)) return SignedText(part);
      if (KindOf(part) == TextKind::None || IsAttachment(part, place)) return {};
      String text = TextOf(message_, part, charset_);
      encrypted_ = RemoveArmor(text) || encrypted_;
      return text;
    }
    if (!GMIME_IS_MULTIPART(object)) return {};
    if (IsType(object, "multipart", "encrypted")) {
      encrypted_ = true;
      return {};
    }
    if (IsType(object, "multipart", "alternative")) return AlternativeText(GMIME_MULTIPART(object));
    return JoinedText(GMIME_MULTIPART(object), std::nullopt).Text;
  }

  // The texts of a multipart's parts, or only of those of a rank.
  Joined JoinedText(GMimeMultipart* multipart, std::optional<int> rank) {
    const bool related = IsType(GMIME_OBJECT(multipart), "multipart", "related");
    const int count = g_mime_multipart_get_count(multipart);
    Joined text;
    for (int i = 0; i < count; ++i) {
      GMimeObject* part = g_mime_multipart_get_part(multipart, i);
      if (!rank || RankOf(part) == rank) text.Add(TextIn(part, {.First = i == 0, .Related = related}));
    }
    return text;
  }

  String AlternativeText(GMimeMultipart* multipart) {
    Joined text;
    for (int rank = 0; rank <= kLastRank && text.Blank; ++rank) {
      text.Add(JoinedText(multipart, rank).Text);
      if (rank == kPlainRank && MayBeWrapped(text.Text))
        text.Text = WithoutHardWraps(text.Text, JoinedText(multipart, kHtmlRank).Text);
    }
    return std::move(text.Text);
  }

  String SignedText(GMimePart* part) {
    if (depth_ == kMostSignedDepth || opened_ == kMostSigned) return {};
    ++opened_;
    std::optional<std::string> entity;
    {
      std::string storage;
      entity = SignedContent(ContentOf(message_, part, storage));
    }
    if (!entity) {
      const std::string kind = ParameterOf(part, "smime-type");
      if (kind.empty() || kind.find("nveloped") != std::string::npos) encrypted_ = true;
      return {};
    }
    const ParsedMessage content(std::move(*entity));
    BodyText body = TextFinder(content, depth_ + 1, opened_).Find();
    if (charset_.empty()) charset_ = std::move(body.Charset);
    encrypted_ = encrypted_ || body.Encrypted;
    return std::move(body.Text);
  }

  // Adds the first non-blank attached text, and the only part of a mail if it is of an unknown text type,
  // which RFC 2046 section 4.1.4 treats as plain text.
  void AddAttached(GMimeObject* object, Joined& text) {
    if (GMIME_IS_PART(object)) {
      const bool only = object == message_.Root() && IsType(object, "text", "*");
      if (only || KindOf(GMIME_PART(object)) != TextKind::None)
        text.Add(TextOf(message_, GMIME_PART(object), charset_));
    } else if (GMIME_IS_MULTIPART(object) && !IsType(object, "multipart", "encrypted")) {
      const int count = g_mime_multipart_get_count(GMIME_MULTIPART(object));
      for (int i = 0; i < count && text.Blank; ++i)
        AddAttached(g_mime_multipart_get_part(GMIME_MULTIPART(object), i), text);
    }
  }

  const ParsedMessage& message_;
  int depth_;    // signed mails around the message
  int& opened_;  // signed mails so far
  std::string charset_;
  bool encrypted_ = false;
};

}  // namespace

BodyText BodyOf(const ParsedMessage& message) {
  int opened = 0;
  return TextFinder(message, 0, opened).Find();
}

}  // namespace Mime
