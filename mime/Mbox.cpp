#include "mime/Mbox.h"

#include <algorithm>
#include <cctype>
#include <iterator>

#include "mime/Limits.h"

namespace Mime {
namespace {

constexpr std::string_view kDays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

// Takes the next word off the front of the line.
std::string_view TakeWord(std::string_view& line) {
  line.remove_prefix(std::min(line.size(), line.find_first_not_of(" \t\r\n")));
  const std::string_view word = line.substr(0, line.find_first_of(" \t\r\n"));
  line.remove_prefix(word.size());
  return word;
}

bool IsDigit(char c) {
  return std::isdigit(static_cast<unsigned char>(c)) != 0;
}

// A weekday, a month, a day and a time of day in a row.
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

bool IsEmptyLine(std::string_view line) {
  return line.find_first_not_of("\r\n") == std::string_view::npos;
}

// The bytes of the line end that the message's last, empty line is made of.
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

MboxReader::MboxReader(InputFile& file) : file_(file) {
  const std::string_view start = file.PeekLine();
  const std::size_t end = start.find_first_of("\r\n");
  if (end != std::string_view::npos && start[end] == '\r' && start.substr(end, 2) != "\r\n") lineEnd_ = '\r';
  file.TakeLine(line_, lineEnd_, kLargestMail);
}

bool MboxReader::Next(std::string& bytes, std::size_t& size) {
  if (line_.empty()) return false;
  bytes.clear();
  size = 0;
  bool behindEmptyLine = false;
  for (;;) {
    line_.clear();
    if (!file_.TakeLine(line_, lineEnd_, kLargestMail + 1)) break;
    if (IsMboxSeparator(line_, behindEmptyLine)) break;
    behindEmptyLine = IsEmptyLine(line_);
    std::string_view line = line_;
    if (line.starts_with('>') &&
        line.substr(std::min(line.size(), line.find_first_not_of('>'))).starts_with(kMboxStart))
      line.remove_prefix(1);
    size += line.size();
    if (size <= kLargestMail) bytes += line;
  }
  DropEmptyLineAtEnd(bytes);
  return true;
}

}  // namespace Mime
