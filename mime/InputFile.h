// InputFile: a file, or standard input, read from its beginning to its end through a buffer of fixed size.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace Mime {

class InputFile {
 public:
  // Raises std::system_error, with the reason, for a file that can't be opened. "-" is standard input.
  // stopWanted is asked before each read, and while a read would wait several times a second.
  explicit InputFile(const std::string& path, std::function<bool()> stopWanted = {});
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  // All of these raise std::system_error when reading fails, or when stopWanted says so.

  // The next line with its end, without taking it; the whole buffer where the line is longer. Empty at the
  // end of the file. Waits for no more than the line, since a pipe may go on much later. Valid until the next
  // call.
  std::string_view PeekLine(char lineEnd);

  // Drops bytes that were peeked at.
  void Skip(std::size_t count) { begin_ += count; }

  // Appends to bytes up to and with the next line end, or to the end of the file. keep is how many bytes it
  // may have in all; those beyond are read and dropped. Gives how many were read: 0 at the end of the file.
  // Raises std::bad_alloc with nothing lost but what was appended.
  std::size_t TakeLine(std::string& bytes, char lineEnd, std::size_t keep);

  // The same with the rest of the file.
  std::size_t TakeAll(std::string& bytes, std::size_t keep);

 private:
  static constexpr std::size_t kBufferSize = 1 << 16;

  // Returns when there is something to read, or the reading would tell why not.
  void WaitForInput();

  // Reads on behind the bytes that are there. False at the end of the file.
  bool Fill();

  std::unique_ptr<char[]> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  int descriptor_ = -1;
  std::function<bool()> stopWanted_;
};

}  // namespace Mime
