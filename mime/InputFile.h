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
  // stopWanted is asked when a signal interrupts a read.
  explicit InputFile(const std::string& path, std::function<bool()> stopWanted = {});
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  // The bytes at the present position without taking them: fewer than asked for only near the end.
  // Raises std::system_error when reading fails, or is interrupted while stopWanted says so.
  std::string_view Peek(std::size_t count);

  // The same, up to one byte behind the first line end or further; the whole buffer where no line ends in it.
  // Waits for no more than that, since a pipe may go on much later.
  std::string_view PeekLine();

  // Appends to line the bytes up to and with the next line end, or to the end of the file. keep is how many
  // bytes line may have in all; those beyond are read and dropped. False at the end of the file.
  bool TakeLine(std::string& line, char lineEnd, std::size_t keep);

  // Appends the rest of the file under the same limit, and gives how many bytes there were.
  std::size_t TakeAll(std::string& bytes, std::size_t keep);

 private:
  static constexpr std::size_t kBufferSize = 1 << 16;

  // Reads on behind the bytes that are there. False at the end of the file.
  bool Fill();

  std::unique_ptr<char[]> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  int descriptor_ = -1;
  std::function<bool()> stopWanted_;
};

}  // namespace Mime
