#include "host/terminal/Secret.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <iostream>
#include <iterator>

#include "host/CommandError.h"
#include "host/terminal/Terminal.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

namespace TextNumber = Platform::TextNumber;

// Above any password. A wrong file, such as a device or a disk image, isn't read to its end.
constexpr std::size_t kLongestSecret = std::size_t{64} << 10;

// Some editors write it at the start of a UTF-8 text.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

void Complain(std::int32_t text, Platform::StringView argument = {}) {
  std::cerr << "tvmail: " << Platform::TerminalText(Runtime::TextOf(text, argument)) << '\n';
}

// For texts about a password file, where "-" stands for standard input.
std::string NameOf(const std::string& file) {
  return file == "-" ? Platform::ToUtf8(Runtime::TextOf(TextNumber::kStandardInputName)) : file;
}

std::string ReadBytes(std::istream& in, const std::string& name) {
  std::string bytes;
  for (char c; bytes.size() <= kLongestSecret && in.get(c);) bytes += c;
  if (in.bad()) throw CommandError(TryAgain, TextNumber::kPasswordFileBroken, Platform::FromUtf8(name));
  if (bytes.size() > kLongestSecret)
    throw CommandError(DataRefused, TextNumber::kPasswordFileTooLong, Platform::FromUtf8(name));
  return bytes;
}

// The permissions of a pipe, as in --password-file <(command), don't matter.
void WarnOfReaders(const std::string& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if ((status.st_mode & (S_IRGRP | S_IROTH)) == 0) return;
  const Platform::String name = Platform::FromUtf8(Platform::TerminalText(file));
  Complain(TextNumber::kPasswordFileReaders, name);
}

// HoldStandardStreams opens a closed one for writing only.
bool IsStandardInputClosed() {
  return (fcntl(STDIN_FILENO, F_GETFL) & O_ACCMODE) == O_WRONLY;
}

std::string ReadBytesOf(const std::string& file) {
  if (file == "-") {
    if (IsStandardInputClosed()) throw CommandError(TryAgain, TextNumber::kPasswordInputClosed);
    return ReadBytes(std::cin, NameOf(file));
  }
  std::ifstream in(file, std::ios::binary);
  // A folder can be opened, but not read.
  if (in.peek() == std::ifstream::traits_type::eof() && (!in.is_open() || in.bad()))
    throw CommandError(DataRefused, TextNumber::kPasswordFileUnreadable, Platform::FromUtf8(file));
  WarnOfReaders(file);
  in.clear();
  return ReadBytes(in, file);
}

Platform::String ReadFile(const std::string& file) {
  if (file.empty()) throw CommandError(WrongUse, TextNumber::kPasswordOptionEmpty);
  const Platform::String name = Platform::FromUtf8(NameOf(file));
  std::string bytes = ReadBytesOf(file);
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  if (bytes.ends_with('\n')) bytes.pop_back();
  if (bytes.ends_with('\r')) bytes.pop_back();
  if (bytes.empty()) throw CommandError(DataRefused, TextNumber::kPasswordInFileEmpty, name);
  if (!Platform::IsUtf8(bytes)) throw CommandError(DataRefused, TextNumber::kPasswordFileNotUtf8, name);
  return Platform::FromUtf8(bytes);
}

Platform::String Ask(const std::string& prompt) {
  Terminal terminal;
  if (!terminal.Interactive()) throw CommandError(WrongUse, TextNumber::kPasswordNotGiven);
  for (;;) {
    const auto answer = terminal.ReadHidden(Platform::FromUtf8(prompt + ": "));
    if (!answer) throw CommandError(Cancelled, TextNumber::kPasswordNotTyped);
    if (!answer->empty()) return *answer;
    Complain(TextNumber::kPasswordTypedEmpty);
  }
}

}  // namespace

Platform::String ReadSecret(const std::optional<std::string>& file, const std::string& prompt) {
  return file ? ReadFile(*file) : Ask(prompt);
}

Platform::String ReadNewSecret(const std::optional<std::string>& file, const std::string& prompt) {
  if (file) return ReadFile(*file);
  for (;;) {
    const Platform::String first = Ask(prompt);
    if (Ask(Platform::ToUtf8(Runtime::TextOf(TextNumber::kPasswordAgain, Platform::FromUtf8(prompt)))) ==
        first)
      return first;
    Complain(TextNumber::kPasswordsDiffer);
  }
}

}  // namespace Host
