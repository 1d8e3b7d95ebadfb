#include "mime/Mbox.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <new>
#include <utility>

#include "mime/Limits.h"

namespace Mime {
namespace {

constexpr std::string_view kDays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// Removes the next word from the line.
std::string_view TakeWord(std::string_view& line) {
  line.remove_prefix(std::min(line.size(), line.find_first_not_of(" \t\r\n")));
  const std::string_view word = line.substr(0, line.find_first_of(" \t\r\n"));
  line.remove_prefix(word.size());
  return word;
}

bool IsDigit(char c) {
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// A weekday, a month, a day and a time of day, in this order.
bool HasTime(std::string_view line) {
  while (!line.empty()) {
    if (std::find(std::begin(kDays), std::end(kDays), TakeWord(line)) == std::end(kDays)) continue;
    std::string_view rest = line;
    const std::string_view month = TakeWord(rest);
    const std::string_view day = TakeWord(rest);
    const std::string_view time = TakeWord(rest);
    if (std::find(std::begin(kMonths), std::end(kMonths), month) != std::end(kMonths) && !day.empty() &&
        IsDigit(day[0]) && time.size() >= 4 && IsDigit(time[0]) && time.find(':') != std::string_view::npos)
      return true;
  }
  return false;
}

// The sender of a line "From sender time".
std::string SenderOf(std::string_view line) {
  line.remove_prefix(kMboxStart.size());
  const std::string_view sender = TakeWord(line);
  const bool isDay = std::find(std::begin(kDays), std::end(kDays), sender) != std::end(kDays);
  const std::string_view next = TakeWord(line);
  const bool timeAlone =
      isDay && std::find(std::begin(kMonths), std::end(kMonths), next) != std::end(kMonths);
  return timeAlone ? std::string() : std::string(sender);
}

bool EndsWithEmptyLine(std::string_view lines, char lineEnd) {
  if (lines.empty()) return false;
  const std::string_view before = lines.substr(0, lines.size() - 1);
  return lines.substr(before.rfind(lineEnd) + 1).find_first_not_of("\r\n") == std::string_view::npos;
}

// True for a line "From ...", also after ">".
bool IsSpecial(std::string_view line) {
  return line.substr(std::min(line.size(), line.find_first_not_of('>'))).starts_with(kMboxStart);
}

// The length of the line end of the message's last, empty line.
void DropEmptyLineAtEnd(std::string& bytes) {
  for (const std::string_view lineEnd : {"\r\n", "\n", "\r"}) {
    if (!bytes.ends_with(lineEnd)) continue;
    const std::string_view rest(bytes.data(), bytes.size() - lineEnd.size());
    if (rest.ends_with('\n') || rest.ends_with('\r')) bytes.resize(rest.size());
    return;
  }
}

}  // namespace

bool IsMboxSeparator(std::string_view line, bool behindEmptyLine) {
  if (!line.starts_with(kMboxStart)) return false;
  line.remove_prefix(kMboxStart.size());
  if (HasTime(line)) return true;
  const std::string_view sender = TakeWord(line);
  return behindEmptyLine && sender.find('@') != std::string_view::npos && TakeWord(line).empty();
}

char LineEndOf(InputFile& file) {
  const std::string_view start = file.PeekLine('\n');
  const std::size_t end = start.find('\r');
  return end != std::string_view::npos && start.substr(end, 2) != "\r\n" ? '\r' : '\n';
}

bool BeginsAnMbox(InputFile& file) {
  return IsMboxSeparator(file.PeekLine(LineEndOf(file)), true);
}

std::optional<std::string> SkipEnvelopeLine(InputFile& file) {
  const char lineEnd = LineEndOf(file);
  const std::string_view line = file.PeekLine(lineEnd);
  if (!line.starts_with(kMboxStart)) return std::nullopt;
  const std::size_t next = line.find_first_not_of(" \t", kMboxStart.size());
  if (next != std::string_view::npos && line[next] == ':') return std::nullopt;
  std::string sender = SenderOf(line);
  std::string dropped;
  file.TakeLine(dropped, lineEnd, 0);
  return sender;
}

MboxReader::MboxReader(InputFile& file) : file_(file), lineEnd_(LineEndOf(file)) {
  TakeSeparator(file_.PeekLine(lineEnd_));
}

void MboxReader::TakeSeparator(std::string_view line) {
  more_ = !line.empty();
  if (!more_) return;
  nextSender_ = SenderOf(line);
  std::string dropped;
  file_.TakeLine(dropped, lineEnd_, 0);
}

bool MboxReader::Add(std::string_view lines, std::string& bytes, std::size_t& size) {
  try {
    if (lines.empty()) size += file_.TakeLine(bytes, lineEnd_, kLargestMail);
    bytes.append(lines.substr(0, kLargestMail - std::min(kLargestMail, bytes.size())));
    size += lines.size();
    return true;
  } catch (const std::bad_alloc&) {
    bytes = {};
    return false;
  }
}

bool MboxReader::Next(std::string& bytes, std::size_t& size) {
  if (!more_) return false;
  bytes.clear();
  size = 0;
  more_ = false;
  sender_ = std::move(nextSender_);
  bool noMemory = false;
  bool behindEmptyLine = false;
  for (;;) {
    const std::string_view line = file_.PeekLine(lineEnd_);
    if (line.empty()) break;
    if (IsMboxSeparator(line, behindEmptyLine)) {
      TakeSeparator(line);
      break;
    }
    if (line.starts_with('>') && IsSpecial(line)) file_.Skip(1);
    const std::string_view lines = file_.PeekLinesBefore(IsSpecial, lineEnd_);
    behindEmptyLine = EndsWithEmptyLine(lines, lineEnd_);
    // The rest of a message that doesn't fit is still searched for the next separator.
    noMemory = noMemory || !Add(lines, bytes, size);
    std::string dropped;
    if (noMemory && lines.empty()) file_.TakeLine(dropped, lineEnd_, 0);
    file_.Skip(lines.size());
  }
  if (noMemory) throw std::bad_alloc();
  DropEmptyLineAtEnd(bytes);
  return true;
}

}  // namespace Mime
