#include "bench/mime/HostileMails.h"

namespace {

const std::string kPlain = "From: a@b\n\n";
const std::string kHtml = "From: a@b\nContent-Type: text/html\n\n";
const std::string kParts = "From: a@b\nContent-Type: multipart/mixed; boundary=b\n\n";
const std::string kType = "From: a@b\nContent-Type: text/plain";

std::string Encoded(const std::string& encoding) {
  return "From: a@b\nContent-Transfer-Encoding: " + encoding + "\n\n";
}

// A part of about this size in bytes, with a field that repeats a piece.
std::string PartOf(const std::string& field, const std::string& piece, std::size_t size) {
  std::string part = "--b\n" + field;
  while (part.size() < size) part += piece;
  return part + "\n\n";
}

// This number of equal boundaries around the rest.
std::string AlikeBoundaries(int count) {
  std::string head = "From: a@b\n";
  for (int i = 10; i < 10 + count; ++i) {
    const std::string boundary = std::string(60, 'x') + std::to_string(i);
    head.append("Content-Type: multipart/mixed; boundary=").append(boundary);
    head.append("\n\n--").append(boundary) += '\n';
  }
  return head + '\n';
}

const HostileMail kMails[] = {
    {"text", 4096, kPlain, "A line of text.\n"},
    {"one line", 4096, kPlain, "x"},
    {"empty lines", 2048, kPlain, "\n"},
    {"base64", 4096, Encoded("base64"), std::string(76, 'Q') + "\n"},
    {"quoted-printable", 4096, Encoded("quoted-printable"), "=41=42=\n"},
    {"uuencoded files", 1024, kPlain, "begin 644 a\n#86)C\n`\nend\n"},
    {"uuencoded files that never end", 1024, kPlain, "begin 644 a\n"},
    {"UTF-16", 4096, kType + "; charset=utf-16\n\n", "x"},
    {"bytes that stand for four", 4096, kType + "; charset=scsu\n\n\x0B\xE2\x01", "\x80\x81"},
    {"broken UTF-8", 1024, kType + "; charset=utf-8\n\n", "\xFF"},
    {"ISO-2022-JP escapes", 1024, kType + "; charset=iso-2022-jp\n\n", "\x1B$B\x1B(B"},
    {"flowed lines", 1024, kType + "; format=flowed\n\n", "a \n"},
    {"quote signs", 1024, kType + "; format=flowed\n\n", ">"},
    {"preamble", 4096, kParts, "text\n"},
    {"parts, refused", 64, kParts, "--b\n\n"},
    {"parts of text", 4096, kParts, "--b\n\n" + std::string(10000, 'x') + "\n"},
    {"parts with headers", 512, kParts,
     "--b\n" + std::string("X: y\nZ:\n\nx\n") + std::string(1000, ' ') + "\n"},
    {"messages", 512, kParts,
     "--b\nContent-Type: message/rfc822\n\nTo: a@b\n\n" + std::string(1000, 'x') + "\n"},
    {"lines like delimiters", 1024, AlikeBoundaries(90), "--" + std::string(61, 'x') + "\n"},
    {"delimiters of nothing", 1024, AlikeBoundaries(90), "--\n"},
    {"nested groups, refused", 8, "From: ", "a:", "\n"},
    {"From of commas and quotes", 1, "From: ", "\",", "\n"},
    {"To of commas and quotes", 16, "From: a@b\nTo: ", "\",", "\n"},
    {"messages with such To", 2048, kParts, PartOf("Content-Type: message/rfc822\n\nTo: ", "a b, ", 200000)},
    {"messages with such Subject", 2048, kParts,
     PartOf("Content-Type: message/rfc822\n\nSubject: ", "=?a?q?x", 200000)},
    {"parts with such encodings", 2048, kParts, PartOf("Content-Transfer-Encoding: ", "=?a?q?x", 200000)},
    {"types of word beginnings", 1024, kParts,
     PartOf("Content-Type: text/plain; p=\"" + PartOf("", "=?a?q?x", 300).substr(4, 150), "x", 7000)},
    {"types of comments", 1024, kParts,
     PartOf("Content-Type: text/plain; p=" + std::string(50, '('), "x", 8000)},
    {"types of parameters", 256, kParts, PartOf("Content-Type: text/plain", "; p=\"x\"", 1000)},
    {"names in pieces", 256, kParts, PartOf("Content-Type: text/plain; n*0*=utf-8''", "%41", 10000)},
    {"fields", 1, "From: a@b\n", "X-#: y\n"},
    {"subject of encoded words", 1, "Subject: ", "=?utf-8?Q?a?= =?koi8-r?Q?b?= "},
    {"subject of word beginnings", 1, "Subject: ", "=?a?q?x"},
    {"subject of folds", 1, "Subject: ", "\n\t "},
    {"HTML: text", 1024, kHtml, "<p>A line of text.</p>\n"},
    {"HTML: attributes of a tag", 1024, kHtml + "<p", " a#=1"},
    {"HTML: equal attributes", 1024, kHtml + "<p", " a=1"},
    {"HTML: tag names", 1024, kHtml, "<t#>x"},
    {"HTML: C1 characters", 1024, kHtml, "&#150;"},
    {"HTML: nested tags", 1024, kHtml, "<div>"},
    {"HTML: end tags without beginning", 1024, kHtml, "<b></i>"},
    {"HTML: nested lists", 1024, kHtml, "<ul><li>"},
    {"HTML: a long link", 4096, kHtml + "<a href=", "x", ">t"},
    {"HTML: nested links", 1024, kHtml, "<a href=x>"},
    {"HTML: nested tables", 1024, kHtml, "<table><tr><td>"},
    {"HTML: angles", 1024, kHtml, "<"},
    {"HTML: declarations", 1024, kHtml, "<!["},
    {"HTML: comments that never end", 1024, kHtml, "<!--"},
    {"HTML: scripts that never end", 1024, kHtml, "<script>"},
    {"HTML: entities", 1024, kHtml, "&amp"},
    {"HTML: styles", 1024, kHtml, "<p style='display:none'>"},
    {"HTML: line breaks", 1024, kHtml, "<br>"},
};

}  // namespace

std::string HostileMail::OfSize(std::size_t bytes) const {
  std::string mail;
  mail.reserve(bytes + Piece.size());
  mail = Head;
  const std::size_t number = Piece.find('#');
  for (std::size_t i = 0; mail.size() < bytes; ++i) {
    if (number == std::string::npos) {
      mail += Piece;
    } else {
      mail.append(Piece, 0, number).append(std::to_string(i)).append(Piece, number + 1);
    }
  }
  return mail += Tail;
}

std::span<const HostileMail> HostileMails() {
  return kMails;
}
