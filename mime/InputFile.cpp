#include "mime/InputFile.h"

#include <fcntl.h>
#include <poll.h>
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

InputFile::InputFile(int descriptor, std::function<bool()> stopWanted)
    : buffer_(new char[kBufferSize]), descriptor_(descriptor), stopWanted_(std::move(stopWanted)) {
  if (descriptor_ < 0) throw std::system_error(errno, std::generic_category());
}

InputFile::~InputFile() {
  if (descriptor_ != STDIN_FILENO) close(descriptor_);
}

void InputFile::WaitForInput() {
  // A signal just before the wait doesn't interrupt it.
  constexpr int kMilliseconds = 200;
  for (;;) {
    if (stopWanted_ && stopWanted_()) throw std::system_error(EINTR, std::generic_category());
    pollfd input{descriptor_, POLLIN, 0};
    const int ready = poll(&input, 1, kMilliseconds);
    if (ready > 0 || (ready < 0 && errno != EINTR)) return;
  }
}

bool InputFile::Fill() {
  if (begin_ > 0) {
    std::memmove(buffer_.get(), buffer_.get() + begin_, end_ - begin_);
    end_ -= begin_;
    begin_ = 0;
  }
  for (;;) {
    WaitForInput();
    const ssize_t count = read(descriptor_, buffer_.get() + end_, kBufferSize - end_);
    if (count > 0) end_ += static_cast<std::size_t>(count);
    if (count >= 0) return count > 0;
    if (errno != EINTR) throw std::system_error(errno, std::generic_category());
  }
}

std::string_view InputFile::PeekLine(char lineEnd) {
  for (std::size_t searched = 0;;) {
    const std::string_view there(buffer_.get() + begin_, end_ - begin_);
    const std::size_t end = there.find(lineEnd, searched);
    if (end != std::string_view::npos) return there.substr(0, end + 1);
    searched = there.size();
    if (there.size() == kBufferSize || !Fill()) return {buffer_.get() + begin_, end_ - begin_};
  }
}

std::string_view InputFile::PeekLinesBefore(bool (*isLast)(std::string_view), char lineEnd) const {
  const std::string_view there(buffer_.get() + begin_, end_ - begin_);
  std::size_t taken = 0;
  do {
    const std::size_t end = there.find(lineEnd, taken);
    if (end == std::string_view::npos) break;
    taken = end + 1;
  } while (!isLast(there.substr(taken)));
  return there.substr(0, taken);
}

std::size_t InputFile::TakeLine(std::string& bytes, char lineEnd, std::size_t keep) {
  std::size_t total = 0;
  while (begin_ < end_ || Fill()) {
    const char* start = buffer_.get() + begin_;
    const auto* found = static_cast<const char*>(std::memchr(start, lineEnd, end_ - begin_));
    const std::size_t length = found ? static_cast<std::size_t>(found - start) + 1 : end_ - begin_;
    bytes.append(start, std::min(length, keep - std::min(keep, bytes.size())));
    begin_ += length;
    total += length;
    if (found) break;
  }
  return total;
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
