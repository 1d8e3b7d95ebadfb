// Answerers: what mail programs make of the texts of a mail when they answer it.
#pragma once

#include <cctype>
#include <cstdio>
#include <functional>
#include <string>
#include <utility>

#include "mime/Base64.h"
#include "tests/support/Texts.h"

namespace Tests {

inline std::string Replaced(const std::string& text, const std::string& from, const std::string& to) {
  std::string result;
  std::size_t done = 0;
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, done)) {
    result.append(text, done, at - done) += to;
    done = at + from.size();
  }
  return result.append(text, done, std::string::npos);
}

inline std::string InWords(const std::string& bytes, std::size_t size, bool base64) {
  std::string words;
  for (std::size_t at = 0; at < bytes.size(); at += size) {
    const std::string piece = bytes.substr(at, size);
    std::string q;
    for (const char c : piece) {
      char code[4];
      std::snprintf(code, sizeof code, "=%02X", static_cast<unsigned char>(c));
      q += c == ' ' ? "_" : std::isalnum(static_cast<unsigned char>(c)) ? std::string(1, c) : code;
    }
    words += (at ? "\r\n " : "") + std::string("=?utf-8?") +
             (base64 ? "B?" + Mime::EncodeBase64(piece) : "q?" + q) + "?=";
  }
  return words;
}

// Each blank behind so many characters of a line becomes the fold.
inline std::string FoldedAt(const std::string& text, std::size_t column, const std::string& fold) {
  std::string folded;
  std::size_t width = 0;
  for (const char c : text) {
    const bool full = c == ' ' && width >= column;
    folded += full ? fold : std::string(1, c);
    width = full || c == '\n' ? 0 : width + 1;
  }
  return folded;
}

// What mail programs make of a subject in the mails that answer it, given as it was written and as it is
// read.
using Answerer = std::function<std::string(const std::string& raw, const std::string& read)>;

inline const std::pair<const char*, Answerer> kAnswerers[] = {
    {"as it came", [](const auto& raw, const auto&) { return "Re: " + raw; }},
    {"as it came, CR LF",
     [](const auto& raw, const auto&) { return "Antw: " + Replaced(raw, "\n", "\r\n"); }},
    {"folded by a tab", [](const auto& raw, const auto&) { return "SV: " + Replaced(raw, "\n ", " \n\t"); }},
    {"folded by a tab alone",
     [](const auto& raw, const auto&) { return "Re: " + Replaced(raw, "\n ", "\n\t"); }},
    {"unfolded", [](const auto& raw, const auto&) { return "Re: " + Replaced(raw, "\n", ""); }},
    {"8-bit", [](const auto&, const auto& read) { return "AW: " + read; }},
    {"8-bit, folded", [](const auto&, const auto& read) { return FoldedAt("Re: AW: " + read, 70, "\r\n "); }},
    {"folded at each blank",
     [](const auto&, const auto& read) { return Replaced("Re: " + read, " ", "\r\n "); }},
    {"folded by blank and tab",
     [](const auto&, const auto& read) { return FoldedAt("Re: " + read, 40, " \r\n\t"); }},
    {"one long word",
     [](const auto&, const auto& read) { return InWords("\u56DE\u590D: " + read, 10000, true); }},
    {"base64", [](const auto&, const auto& read) { return InWords("\u56DE\u590D\uFF1A" + read, 45, true); }},
    {"base64, split inside characters",
     [](const auto&, const auto& read) { return InWords("RE: " + read, 7, true); }},
    {"quoted-printable",
     [](const auto&, const auto& read) { return "[EXT] Re[2]: " + InWords(read, 20, false); }},
    {"no-break spaces become blanks",
     [](const auto&, const auto& read) { return "Re: " + Replaced(read, "\u00A0", " "); }},
    {"255 characters",
     [](const auto&, const auto& read) {
       return Utf8(Platform::FromUtf8("Re: AW: Fwd: " + read).substr(0, 255));
     }},
};

}  // namespace Tests
