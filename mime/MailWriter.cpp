#include "mime/MailWriter.h"

#include <algorithm>

#include "mime/Base64.h"

namespace Mime {
namespace {

// Neither quoted-printable nor base64 can hold this line.
constexpr const char* kBoundary = "=_talvane";

// With LF as line ends, the last one included.
std::string Lines(const String& text) {
  const std::string bytes = WellFormedUtf8(text);
  std::string lines;
  lines.reserve(bytes.size() + 1);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    if (bytes[i] != '\r') {
      lines += bytes[i];
    } else if (i + 1 == bytes.size() || bytes[i + 1] != '\n') {
      lines += '\n';
    }
  }
  return lines += '\n';
}

// RFC 2045, section 6.7. A line never begins with "From " or a point, which programs on the way may change.
std::string QuotedPrintable(std::string_view lines) {
  constexpr std::size_t kLongestLine = 76;
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  text.reserve(lines.size() + lines.size() / 16);
  std::size_t lineStart = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const char c = lines[i];
    if (c == '\n') {
      text += c;
      lineStart = text.size();
      continue;
    }
    const bool atEnd = lines[i + 1] == '\n';  // the last character is a line end
    const auto plainAt = [&](std::size_t column) {
      if (c == ' ') return !atEnd;
      if (column == 0 && (c == '.' || lines.substr(i, 5) == "From ")) return false;
      return c > ' ' && c < 0x7F && c != '=';
    };
    // An equals sign continues the line; it needs the last column.
    const std::size_t column = text.size() - lineStart;
    if (column + (plainAt(column) ? 1 : 3) > kLongestLine - (atEnd ? 0 : 1)) {
      text += "=\n";
      lineStart = text.size();
    }
    if (plainAt(text.size() - lineStart)) {
      text += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      text += {'=', kDigits[byte >> 4], kDigits[byte & 0xF]};
    }
  }
  return text;
}

// RFC 2045, section 6.8: the line ends of the text are CR LF.
std::string Base64Lines(std::string_view lines) {
  constexpr std::size_t kBytesOfLine = 57;
  std::string bytes;
  bytes.reserve(lines.size() + lines.size() / 16);
  for (const char c : lines) {
    if (c == '\n') bytes += '\r';
    bytes += c;
  }
  std::string text;
  text.reserve(bytes.size() * 3 / 2);
  for (std::size_t at = 0; at < bytes.size(); at += kBytesOfLine)
    text += EncodeBase64(std::string_view(bytes).substr(at, kBytesOfLine)) + '\n';
  return text;
}

void AddPart(std::string& mail, const char* subtype, const String& text) {
  const std::string lines = Lines(text);
  // Quoted-printable takes three bytes for each byte beyond ASCII, base64 four for any three.
  const auto beyondAscii = std::ranges::count_if(lines, [](char c) { return (c & 0x80) != 0; });
  const bool base64 = static_cast<std::size_t>(beyondAscii) * 6 > lines.size();
  mail.append("Content-Type: text/").append(subtype).append("; charset=UTF-8\nContent-Transfer-Encoding: ");
  mail += base64 ? "base64\n\n" + Base64Lines(lines) : "quoted-printable\n\n" + QuotedPrintable(lines);
}

}  // namespace

std::string WriteMail(const TextMail& mail) {
  HeaderWriter header;
  header.AddDate("Date", mail.Date);
  header.AddCorrespondent("From", mail.From);
  header.AddCorrespondent("Reply-To", mail.ReplyTo);
  header.AddCorrespondent("To", mail.To);
  header.AddText("Subject", mail.Subject);
  header.AddIds("Message-ID", std::span(&mail.MessageId, 1));
  header.AddIds("In-Reply-To", std::span(&mail.InReplyTo, 1));
  header.AddIds("References", mail.References);
  if (!mail.ListId.empty()) header.AddList(mail.ListName, mail.ListId);
  for (const auto& [name, value] : mail.Fields) header.AddWord(name, value);
  header.AddWord("MIME-Version", "1.0");
  std::string bytes = header.Text();
  if (mail.Html.empty()) {
    AddPart(bytes, "plain", mail.Text);
    return bytes;
  }
  bytes.append("Content-Type: multipart/alternative; boundary=\"").append(kBoundary).append("\"\n");
  for (const auto& [subtype, text] : {std::pair("plain", &mail.Text), std::pair("html", &mail.Html)}) {
    bytes.append("\n--").append(kBoundary).append("\n");
    AddPart(bytes, subtype, *text);
  }
  return bytes.append("\n--").append(kBoundary).append("--\n");
}

}  // namespace Mime
