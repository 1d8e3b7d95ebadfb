// InputFile: reads a file or standard input through a buffer of fixed size.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace Mime {

class InputFile {
 public:
  // Opens a file; "-" is standard input. stopWanted is called before each read, and several times a second
  // while a read blocks. Raises std::system_error if the file can't be opened.
  explicit InputFile(const std::string& path, std::function<bool()> stopWanted = {});

  // Reads from an open descriptor, which is closed with the object. Raises std::system_error with errno for
  // a negative one.
  explicit InputFile(int descriptor, std::function<bool()> stopWanted = {});
  InputFile(const InputFile&) = delete;
  InputFile& operator=(const InputFile&) = delete;
  ~InputFile();

  // All of these raise std::system_error on a read error, or if stopWanted returns true.

  // Returns the next line with its line end without consuming it; the whole buffer if the line is longer;
  // empty at the end of the file. Doesn't wait for input after the line, since a pipe may pause there. Valid
  // until the next call.
  std::string_view PeekLine(char lineEnd);

  // The next line, whatever it is, and those after it before the first one for which isLast returns true.
  // Only lines that are in the buffer with their line ends; empty if PeekLine has found a longer one. isLast
  // gets the buffer from the start of a line. Valid until the next call.
  std::string_view PeekLinesBefore(bool (*isLast)(std::string_view), char lineEnd) const;

  // Consumes bytes that were returned by PeekLine or PeekLinesBefore.
  void Skip(std::size_t count) { begin_ += count; }

  // Appends to bytes up to and including the next line end, or up to the end of the file. Bytes beyond keep,
  // the largest total size, are read and dropped. Returns the number of bytes read: 0 at the end of the file.
  // Raises std::bad_alloc; only what was appended is lost then.
  std::size_t TakeLine(std::string& bytes, char lineEnd, std::size_t keep);

  // The same for the rest of the file.
  std::size_t TakeAll(std::string& bytes, std::size_t keep);

 private:
  static constexpr std::size_t kBufferSize = 1 << 16;

  // Waits until reading won't block.
  void WaitForInput();

  // Reads more bytes into the buffer. Returns false at the end of the file.
  bool Fill();

  std::unique_ptr<char[]> buffer_;
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  int descriptor_ = -1;
  std::function<bool()> stopWanted_;
};

}  // namespace Mime
