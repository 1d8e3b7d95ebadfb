#include "mime/InputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <system_error>
#include <utility>

namespace Mime {

InputFile::InputFile(const std::string& path, std::function<bool()> stopWanted)
    : buffer_(new char[kBufferSize]), stopWanted_(std::move(stopWanted)) {
  descriptor_ = path == "-" ? STDIN_FILENO : open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor_ < 0) throw std::system_error(errno, std::generic_category());
}

InputFile::~InputFile() {
  if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

bool InputFile::Fill() {
  if (begin_ > 0) {
    std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  for (;;) {
    const ssize_t count = read(descriptor_, buffer_.get() + end_, kBufferSize - end_);
    if (count > 0) end_ += static_cast<std::size_t>(count);
    if (count >= 0) return count > 0;
    if (errno != EINTR || (stopWanted_ && stopWanted_()))
      throw std::system_error(errno, std::generic_category());
  }
}

std::string_view InputFile::Peek(std::size_t count) {
  while (end_ - begin_ < count && Fill()) {
  }
  return {buffer_.get() + begin_, std::min(count, end_ - begin_)};
}

std::string_view InputFile::PeekLine() {
  for (;;) {
    const std::string_view there(buffer_.get() + begin_, end_ - begin_);
    const std::size_t lineEnd = there.find_first_of("\r\n");
    const bool enough = lineEnd != std::string_view::npos && lineEnd + 1 < there.size();
    if (enough || there.size() == kBufferSize || !Fill()) return there;
  }
}

bool InputFile::TakeLine(std::string& line, char lineEnd, std::size_t keep) {
  bool any = false;
  while (begin_ < end_ || Fill()) {
    any = true;
    const char* start = buffer_.get() + begin_;
    const auto* found = static_cast<const char*>(std::memchr(start, lineEnd, end_ - begin_));
    const std::size_t length = found ? static_cast<std::size_t>(found - start) + 1 : end_ - begin_;
    line.append(start, std::min(length, keep - std::min(keep, line.size())));
    begin_ += length;
    if (found) return true;
  }
  return any;
}

std::size_t InputFile::TakeAll(std::string& bytes, std::size_t keep) {
  std::size_t total = 0;
  while (begin_ < end_ || Fill()) {
    const std::size_t length = end_ - begin_;
    bytes.append(buffer_.get() + begin_, std::min(length, keep - std::min(keep, bytes.size())));
    total += length;
    begin_ = end_;
  }
  return total;
}

}  // namespace Mime
