#include "mime/MailWriter.h"

#include <algorithm>
#include <iomanip>
#include <span>
#include <sstream>

#include "mime/Base64.h"
#include "mime/GMimeReference.h"

namespace Mime {
namespace {

using Platform::StringView;

constexpr std::size_t kUsualLine = 76;     // RFC 2047, section 2, and RFC 2045, section 6.7
constexpr std::size_t kLongestWord = 900;  // with a field's name less than the 998 of RFC 5322, section 2.1.1

// With U+FFFD for each lone surrogate, which UTF-8 doesn't have.
std::string WellFormedUtf8(String text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (Platform::IsSurrogatePair(text, i)) {
      ++i;
    } else if (Platform::IsSurrogate(text[i])) {
      text[i] = u'\uFFFD';
    }
  }
  return Platform::ToUtf8(text);
}

std::string OneLine(StringView text) {
  String line(text);
  std::ranges::replace_if(
      line, [](char16_t c) { return Platform::IsControl(c) || c == u'\u2028' || c == u'\u2029'; }, u' ');
  return WellFormedUtf8(line);
}

// True if every reader shows the text as it is written: without blanks that may be lost, and without anything
// that looks like an encoded word, which GMime would write as it is.
bool IsPlain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c < 0x7F; }) && !text.starts_with(' ') &&
         !text.ends_with(' ') && text.find("  ") == std::string_view::npos &&
         text.find("=?") == std::string_view::npos;
}

// The texts as encoded words, one on each line. GMime encodes only the words of a text that need it, divides
// it at any blank, and has no limit for the length of an encoded word in a name.
std::string EncodedWords(std::span<const std::string> pieces) {
  // So that a line has at most 76 characters, also the first one with a field's name of ten.
  constexpr std::size_t kMostOnFirstLine = 39, kMost = 45;
  std::string words, bytes;
  const auto room = [&] { return (words.empty() ? kMostOnFirstLine : kMost) - bytes.size(); };
  const auto finish = [&] {
    if (bytes.empty()) return;
    words += (words.empty() ? "=?UTF-8?B?" : "\n =?UTF-8?B?") + EncodeBase64(bytes) + "?=";
    bytes.clear();
  };
  for (std::string_view piece : pieces) {
    if (piece.size() > room()) finish();
    while (piece.size() > room()) {
      std::size_t size = room();
      while ((piece[size] & 0xC0) == 0x80) --size;  // whole characters
      bytes = piece.substr(0, size);
      piece.remove_prefix(size);
      finish();
    }
    bytes += piece;
  }
  finish();
  return words;
}

// Appends a word behind a blank, or on a new line if this one would be too long and has more than the field's
// name. GMime folds inside long words.
void AppendWord(std::string& field, std::string_view word) {
  const std::size_t column = field.size() - (field.rfind('\n') + 1);
  const bool tooLong = column + 1 + word.size() > kUsualLine && field.find(' ') != std::string::npos;
  field.append(tooLong ? "\n " : " ") += word;
}

// GMime folds at any blank, and so inside of a piece.
std::string SubjectField(std::span<const String> pieces) {
  std::string field = "Subject:";
  bool encodedBefore = false;
  for (std::size_t begin = 0, end = 0; begin < pieces.size(); begin = end) {
    std::vector<std::string> run;
    std::string text;
    do {
      run.push_back(OneLine(pieces[end]));
      text += run.back();
    } while (++end < pieces.size() && !pieces[end].starts_with(u' '));

    const bool first = begin == 0;
    if (!first) text.erase(0, 1);
    const bool plain = IsPlain(text) && text.size() <= kLongestWord;
    // The blank in front belongs to the fold, but between two encoded words, where it would be lost.
    if (!first && !encodedBefore) run.front().erase(0, 1);
    if (plain) AppendWord(field, text);
    if (!plain) field += (first ? " " : "\n ") + EncodedWords(run);
    encodedBefore = !plain;
  }
  return field + '\n';
}

std::string Phrase(StringView name) {
  constexpr std::size_t kLongestPlain = 60;
  const std::string text = OneLine(Platform::Trim(name));
  if (!IsPlain(text) || text.size() > kLongestPlain) return EncodedWords(std::span(&text, 1));
  g_autofree gchar* phrase = g_mime_utils_header_encode_phrase(nullptr, text.c_str(), nullptr);
  return phrase ? phrase : "";
}

// True if a reader takes the whole text for one address, and for nothing else.
bool IsAddress(std::string text) {
  // GMime also reads a local part alone.
  if (text.size() > kLongestWord || text.find('@') == std::string::npos || text.ends_with('"')) return false;
  // GMime decodes a domain with this prefix (RFC 5890), and can't encode each of them again.
  for (std::size_t at = 0; (at = text.find("xn--", at)) != std::string::npos;) text[at] = 'a';
  const Owned<InternetAddressList> list(internet_address_list_parse(nullptr, text.c_str()));
  InternetAddress* const first = list ? internet_address_list_get_address(list.get(), 0) : nullptr;
  return INTERNET_ADDRESS_IS_MAILBOX(first) &&
         text == internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(first));
}

// GMime writes any text as an address. One that isn't valid becomes the local part of an address that nobody
// has (RFC 6761, section 6.4).
std::string AddressText(StringView address) {
  constexpr std::size_t kLongest = 256;  // in characters; RFC 5321, section 4.5.3.1.3
  const std::string text = OneLine(address.substr(0, kLongest));
  if (text.empty() || (address.size() <= kLongest && IsAddress(text))) return text;
  std::ostringstream quoted;
  quoted << std::quoted(text) << "@invalid";
  return quoted.str();
}

std::string MailboxField(const std::string& name, StringView phrase, const std::string& address) {
  if (address.empty()) return {};
  std::string field = name + ':';
  if (const std::string text = Phrase(phrase); !text.empty()) field += ' ' + text;
  AppendWord(field, '<' + address + '>');
  return field + '\n';
}

std::string IdsField(const std::string& name, std::span<const std::string> ids) {
  const auto isPlain = [](char c) { return c > ' ' && c < 0x7F && c != '"'; };
  std::string field = name + ':';
  for (const std::string& id : ids)
    if (std::ranges::all_of(id, isPlain) && IsAddress(id)) AppendWord(field, '<' + id + '>');
  return field.ends_with(':') ? std::string() : field + '\n';
}

std::string DateField(std::time_t time) {
  g_autoptr(GDateTime) date = g_date_time_new_from_unix_utc(time);
  if (!date) return {};  // beyond the year 9999
  g_autofree gchar* text = g_mime_utils_header_format_date(date);
  return std::string("Date: ") + text + '\n';
}

std::string Header(const TextMail& mail) {
  std::string header =
      DateField(mail.Date) + MailboxField("From", mail.From.Name, AddressText(mail.From.Address)) +
      MailboxField("Reply-To", mail.ReplyTo.Name, AddressText(mail.ReplyTo.Address)) +
      MailboxField("To", mail.To.Name, AddressText(mail.To.Address)) + SubjectField(mail.Subject) +
      IdsField("Message-ID", std::span(&mail.MessageId, 1)) +
      IdsField("In-Reply-To", std::span(&mail.InReplyTo, 1)) + IdsField("References", mail.References) +
      MailboxField("List-Id", mail.ListName, mail.ListId);
  for (const auto& [name, value] : mail.Fields) header.append(name).append(": ").append(value) += '\n';
  return header + "MIME-Version: 1.0\n";
}

// With CR LF as line ends, the last one included.
std::string Lines(const String& text) {
  const std::string bytes = WellFormedUtf8(text);
  std::string lines;
  lines.reserve(bytes.size() + bytes.size() / 16);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] == '\n' || (bytes[i] == '\r' && bytes[i + 1] != '\n')) {
      lines += "\r\n";
    } else if (bytes[i] != '\r') {
      lines += bytes[i];
    }
  }
  return lines += "\r\n";
}

// GMime's quoted-printable has lines that begin with "From " or a point, which programs on the way may
// change, and lines of 77 characters that end with an encoded blank.
std::string WithSafeLines(std::string_view encoded) {
  constexpr std::size_t kCodeSize = 3, kBlankAtEnd = 4;  // "=2E" and "=20\n"
  std::string text;
  text.reserve(encoded.size() + encoded.size() / 16);
  while (!encoded.empty()) {
    std::string_view line = encoded.substr(0, encoded.find('\n') + 1);
    encoded.remove_prefix(line.size());
    while (line.starts_with('.') || line.starts_with("From ")) {
      text += line.starts_with('.') ? "=2E" : "=46";
      line.remove_prefix(1);
      if (kCodeSize + line.size() <= kUsualLine + 1) break;
      text += "=\n";
    }
    if (line.size() > kUsualLine + 1) {
      text.append(line.substr(0, line.size() - kBlankAtEnd)) += "=\n";
      line.remove_prefix(line.size() - kBlankAtEnd);
    }
    text += line;
  }
  return text;
}

std::string Part(const std::string& subtype, const String& text) {
  const std::string lines = Lines(text);
  const GMimeContentEncoding encoding =
      g_mime_utils_best_encoding(reinterpret_cast<const unsigned char*>(lines.data()), lines.size());
  GMimeEncoding state;
  g_mime_encoding_init_encode(&state, encoding);
  std::string encoded(g_mime_encoding_outlen(&state, lines.size()), '\0');
  encoded.resize(g_mime_encoding_flush(&state, lines.data(), lines.size(), encoded.data()));
  return "Content-Type: text/" + subtype +
         "; charset=UTF-8\nContent-Transfer-Encoding: " + g_mime_content_encoding_to_string(encoding) +
         "\n\n" + WithSafeLines(encoded);
}

}  // namespace

// Joins what GMime's functions encode. GMime's objects for a message, its header and its parts would take ten
// times as long for a short mail, since each keeps the others up to date.
std::string WriteMail(const TextMail& mail) {
  static const bool started = (g_mime_init(), true);
  static_cast<void>(started);
  const std::string plain = Part("plain", mail.Text);
  if (mail.Html.empty()) return Header(mail) + plain;
  // Neither quoted-printable nor base64 can hold this boundary.
  return Header(mail) + "Content-Type: multipart/alternative; boundary=\"=_talvane\"\n\n--=_talvane\n" +
         plain + "\n--=_talvane\n" + Part("html", mail.Html) + "\n--=_talvane--\n";
}

}  // namespace Mime
