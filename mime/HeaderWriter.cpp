#include "mime/HeaderWriter.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "mime/Base64.h"

namespace Mime {
namespace {

constexpr std::size_t kUsualLine = 76;     // RFC 2047, section 2, for a line with encoded words
constexpr std::size_t kLongestLine = 998;  // RFC 5322, section 2.1.1
constexpr std::string_view kQStart = "=?UTF-8?Q?", kBStart = "=?UTF-8?B?", kWordEnd = "?=";
constexpr std::string_view kAtomSigns = "!#$%&'*+-/=?^_`{|}~";
constexpr std::string_view kDays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

bool IsPrintable(char c) {
  return c >= ' ' && c < 0x7F;
}

bool IsAlphanumeric(char c) {
  return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool IsAtomCharacter(char c) {
  return IsAlphanumeric(c) || kAtomSigns.find(c) != std::string_view::npos;
}

// Characters that RFC 6532 allows in an atom of an address.
bool IsBeyondAscii(char c) {
  return (c & 0x80) != 0;
}

std::string OneLine(StringView text) {
  String line(text);
  std::ranges::replace_if(
      line, [](char16_t c) { return Platform::IsControl(c) || c == u'\u2028' || c == u'\u2029'; }, u' ');
  return WellFormedUtf8(line);
}

// True if every reader shows the text as it is written: without blanks that may be lost, and without anything
// that looks like an encoded word.
bool IsPlain(std::string_view text) {
  return std::ranges::all_of(text, IsPrintable) && !text.ends_with(' ') &&
         text.find("  ") == std::string_view::npos && text.find("=?") == std::string_view::npos;
}

// The characters that RFC 2047 section 5 allows unencoded in every place.
bool IsPlainInQ(char c) {
  return IsAlphanumeric(c) || c == ' ' || std::string_view("!*+-/").find(c) != std::string_view::npos;
}

std::string EncodeQ(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (IsPlainInQ(c)) {
      text += c == ' ' ? '_' : c;
    } else {
      text += {'=', kDigits[byte >> 4], kDigits[byte & 0xF]};
    }
  }
  return text;
}

std::size_t EncodedSize(std::string_view bytes, bool base64) {
  if (base64) return (bytes.size() + 2) / 3 * 4;
  const auto plain = static_cast<std::size_t>(std::ranges::count_if(bytes, IsPlainInQ));
  return plain + 3 * (bytes.size() - plain);
}

// The bytes of the first character.
std::string_view FirstCharacter(std::string_view utf8) {
  std::size_t size = 1;
  while (size < utf8.size() && (utf8[size] & 0xC0) == 0x80) ++size;
  return utf8.substr(0, size);
}

bool IsDotAtom(std::string_view text) {
  return !text.empty() && !text.starts_with('.') && !text.ends_with('.') &&
         text.find("..") == std::string_view::npos &&
         std::ranges::all_of(text, [](char c) { return c == '.' || IsAtomCharacter(c); });
}

bool IsLiteral(std::string_view domain) {
  return domain.size() > 2 && domain.starts_with('[') && domain.ends_with(']') &&
         std::ranges::all_of(domain.substr(1, domain.size() - 2),
                             [](char c) { return c > ' ' && c < 0x7F && c != '[' && c != ']' && c != '\\'; });
}

bool IsMessageId(std::string_view id) {
  const std::size_t at = id.find('@');
  constexpr std::size_t kLongestId = 900;
  return id.size() <= kLongestId && at != std::string_view::npos && IsDotAtom(id.substr(0, at)) &&
         (IsDotAtom(id.substr(at + 1)) || IsLiteral(id.substr(at + 1)));
}

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + '"';
}

std::string LocalPart(std::string_view local) {
  const bool inQuotes = local.size() >= 2 && local.front() == '"' && local.back() == '"';
  std::string text;
  for (std::size_t i = inQuotes ? 1 : 0; i < local.size() - (inQuotes ? 1 : 0); ++i) {
    if (inQuotes && local[i] == '\\' && i + 2 < local.size()) ++i;
    text += local[i];
  }
  std::string ascii = text;
  std::ranges::replace_if(ascii, IsBeyondAscii, 'x');
  return IsDotAtom(ascii) && !inQuotes ? text : Quoted(text);
}

std::string Domain(std::string_view domain) {
  if (domain.empty()) return "invalid";  // RFC 6761, section 6.4
  if (IsLiteral(domain)) return std::string(domain);
  std::string text(domain);
  const auto isForeign = [](char c) { return !IsBeyondAscii(c) && !IsAtomCharacter(c); };
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool inside = i > 0 && i + 1 < text.size() && text[i] == '.' && text[i - 1] != '.';
    if (!inside && isForeign(text[i])) text[i] = '-';
  }
  return text;
}

std::string AddressText(StringView address) {
  constexpr std::size_t kLongestPart = 256;  // in characters; RFC 5321 has less
  const std::size_t at = address.rfind(u'@');
  const bool whole = at != StringView::npos;
  return LocalPart(OneLine(address.substr(0, at).substr(0, kLongestPart / 2))) + '@' +
         Domain(whole ? OneLine(address.substr(at + 1).substr(0, kLongestPart)) : std::string());
}

}  // namespace

std::string WellFormedUtf8(StringView text) {
  String whole(text);
  for (std::size_t i = 0; i < whole.size(); ++i) {
    if (Platform::IsSurrogatePair(whole, i)) {
      ++i;
    } else if (Platform::IsSurrogate(whole[i])) {
      whole[i] = u'\uFFFD';
    }
  }
  return Platform::ToUtf8(whole);
}

void HeaderWriter::Begin(std::string_view name) {
  lineStart_ = text_.size();
  text_.append(name) += ": ";
}

void HeaderWriter::Fold() {
  text_ += '\n';
  lineStart_ = text_.size();
  text_ += ' ';
}

void HeaderWriter::AddFolded(std::string_view word) {
  if (Column() + 1 + word.size() > kUsualLine) {
    Fold();
  } else {
    text_ += ' ';
  }
  text_ += word;
}

void HeaderWriter::AddEncoded(std::span<const std::string> pieces) {
  std::size_t base64Size = 0, qSize = 0;
  for (const std::string& piece : pieces) {
    base64Size += EncodedSize(piece, true);
    qSize += EncodedSize(piece, false);
  }
  const bool base64 = base64Size < qSize;
  std::string word;
  const auto finish = [&] {
    if (word.empty()) return;
    text_.append(base64 ? kBStart : kQStart) += base64 ? EncodeBase64(word) : EncodeQ(word);
    text_ += kWordEnd;
    word.clear();
  };
  const auto fits = [&](std::string_view more) {
    const std::size_t encoded = EncodedSize(word + std::string(more), base64);
    return Column() + kQStart.size() + encoded + kWordEnd.size() <= kUsualLine;
  };
  for (std::string_view piece : pieces) {
    if (!word.empty() && !fits(piece)) {
      finish();
      Fold();
    }
    while (!piece.empty()) {
      const std::string_view next = fits(piece) ? piece : FirstCharacter(piece);
      if (!fits(next)) {
        finish();
        Fold();
      }
      word += next;
      piece.remove_prefix(next.size());
    }
  }
  finish();
}

void HeaderWriter::AddText(std::string_view name, std::span<const String> pieces) {
  Begin(name);
  bool first = true, encodedBefore = false;
  for (std::size_t begin = 0, end = 0; begin < pieces.size(); begin = end) {
    std::vector<std::string> run;
    std::string joined;
    do {
      run.push_back(OneLine(pieces[end]));
      joined += run.back();
    } while (++end < pieces.size() && !pieces[end].starts_with(u' '));

    // The blank in front belongs to the fold, but between two encoded words, where it would be lost.
    const std::string_view text = std::string_view(joined).substr(first || !joined.starts_with(' ') ? 0 : 1);
    const bool plain =
        IsPlain(text) && !text.starts_with(' ') && text.size() < kLongestLine - (first ? Column() : 0);
    if (!first && (plain || !encodedBefore)) run.front().erase(0, 1);
    if (plain && first) {
      text_ += text;
    } else if (plain) {
      AddFolded(text);
    } else {
      if (!first) Fold();
      AddEncoded(run);
    }
    encodedBefore = !plain;
    first = false;
  }
  End();
}

void HeaderWriter::AddWord(std::string_view name, std::string_view value) {
  Begin(name);
  for (const char c : value.substr(0, kLongestLine - Column())) text_ += IsPrintable(c) ? c : ' ';
  End();
}

void HeaderWriter::AddPhrase(StringView phrase) {
  const std::string text = OneLine(Platform::Trim(phrase));
  if (text.empty()) return;
  const bool words = std::ranges::all_of(text, [](char c) { return c == ' ' || IsAtomCharacter(c); });
  const std::string quoted = words ? text : Quoted(text);
  if (IsPlain(text) && Column() + quoted.size() <= kUsualLine) {
    text_ += quoted;
  } else {
    AddEncoded(std::span(&text, 1));
  }
}

void HeaderWriter::AddCorrespondent(std::string_view name, const Correspondent& correspondent) {
  if (correspondent.Address.empty()) return;
  Begin(name);
  AddPhrase(correspondent.Name);
  const std::string address = '<' + AddressText(correspondent.Address) + '>';
  if (text_.ends_with(": ")) {
    text_ += address;
  } else {
    AddFolded(address);
  }
  End();
}

void HeaderWriter::AddList(StringView listName, std::string_view id) {
  Begin("List-Id");
  AddPhrase(listName);
  AddFolded('<' + std::string(id) + '>');
  End();
}

void HeaderWriter::AddDate(std::string_view name, std::time_t time) {
  std::tm t{};
  if (!gmtime_r(&time, &t)) return;
  char day[16], rest[64];
  std::snprintf(day, sizeof day, ", %02d ", t.tm_mday);
  std::snprintf(rest, sizeof rest, " %d %02d:%02d:%02d +0000", t.tm_year + 1900, t.tm_hour, t.tm_min,
                t.tm_sec);
  Begin(name);
  text_.append(kDays[t.tm_wday]).append(day).append(kMonths[t.tm_mon]).append(rest);
  End();
}

void HeaderWriter::AddIds(std::string_view name, std::span<const std::string> ids) {
  bool first = true;
  for (const std::string& id : ids) {
    if (!IsMessageId(id)) continue;
    if (std::exchange(first, false)) {
      Begin(name);
      text_ += '<' + id + '>';
    } else {
      AddFolded('<' + id + '>');
    }
  }
  if (!first) End();
}

}  // namespace Mime
