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

// Above any password. A wrong file, such as a device or a disk image, isn't read to its end.
constexpr std::size_t kLongestSecret = std::size_t{64} << 10;

// Some editors write it at the start of a UTF-8 text.
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::string ReadBytes(std::istream& in, const std::string& name) {
  std::string bytes;
  for (char c; bytes.size() <= kLongestSecret && in.get(c);) bytes += c;
  if (in.bad())
    throw CommandError(TryAgain, "the password file " + name + " can't be read to its end: try again");
  if (bytes.size() > kLongestSecret)
    throw CommandError(
        DataRefused, name + " is too long for a password file: name a file that contains only the password");
  return bytes;
}

// The permissions of a pipe, as in --password-file <(command), don't matter.
void WarnOfReaders(const std::string& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return;
  if ((status.st_mode & (S_IRGRP | S_IROTH)) == 0) return;
  std::cerr << "tvmail: warning: other users may read the password file " << Platform::TerminalText(file)
            << ": remove that permission with chmod 600\n";
}

// HoldStandardStreams opens a closed one for writing only.
bool IsStandardInputClosed() {
  return (fcntl(STDIN_FILENO, F_GETFL) & O_ACCMODE) == O_WRONLY;
}

std::string ReadBytesOf(const std::string& file) {
  if (file == "-") {
    if (IsStandardInputClosed())
      throw CommandError(TryAgain, "standard input is closed: give the password there, or name a file");
    return ReadBytes(std::cin, "standard input");
  }
  std::ifstream in(file, std::ios::binary);
  // A folder can be opened, but not read.
  if (in.peek() == std::ifstream::traits_type::eof() && (!in.is_open() || in.bad()))
    throw CommandError(DataRefused,
                       "the password file " + file + " can't be read: check its name and its permissions");
  WarnOfReaders(file);
  in.clear();
  return ReadBytes(in, file);
}

Platform::String ReadFile(const std::string& file) {
  if (file.empty())
    throw CommandError(WrongUse, "--password-file is empty: name the file that contains the password");
  const std::string name = file == "-" ? "standard input" : file;
  std::string bytes = ReadBytesOf(file);
  if (bytes.starts_with(kByteOrderMark)) bytes.erase(0, kByteOrderMark.size());
  if (bytes.ends_with('\n')) bytes.pop_back();
  if (bytes.ends_with('\r')) bytes.pop_back();
  if (bytes.empty())
    throw CommandError(DataRefused, "the password in " + name + " is empty: write the password into it");
  if (!Platform::IsUtf8(bytes))
    throw CommandError(DataRefused, "the password in " + name + " isn't UTF-8: save the file as UTF-8");
  return Platform::FromUtf8(bytes);
}

Platform::String Ask(const std::string& prompt) {
  Terminal terminal;
  if (!terminal.Interactive())
    throw CommandError(WrongUse, "no password was given: name a file that contains it with --password-file");
  for (;;) {
    const auto answer = terminal.ReadHidden(Platform::FromUtf8(prompt + ": "));
    if (!answer) throw CommandError(Cancelled, "no password was typed: nothing was done");
    if (!answer->empty()) return *answer;
    std::cerr << "tvmail: the password is empty: type it\n";
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
    if (Ask(prompt + " again") == first) return first;
    std::cerr << "tvmail: the two passwords differ: type it twice\n";
  }
}

}  // namespace Host
