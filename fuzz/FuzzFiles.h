// FuzzFiles: temporary files for the fuzzers.
#pragma once

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>

namespace Fuzz {

inline void Require(bool holds) {
  if (!holds) std::abort();
}

inline std::string_view TextOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// A file of mode 0600 with the bytes. It is in memory and is removed with the object.
class FileInMemory {
 public:
  explicit FileInMemory(std::string_view bytes) : descriptor_(memfd_create("fuzz", MFD_CLOEXEC)) {
    Require(descriptor_ >= 0 && fchmod(descriptor_, 0600) == 0);
    Require(write(descriptor_, bytes.data(), bytes.size()) == static_cast<ssize_t>(bytes.size()));
  }
  FileInMemory(const FileInMemory&) = delete;
  FileInMemory& operator=(const FileInMemory&) = delete;
  ~FileInMemory() { close(descriptor_); }

  std::string Path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }

 private:
  int descriptor_;
};

// A folder for the stores of this process, named in TALVANE_HOME and removed at its end.
class Home {
 public:
  Home() : path_((std::filesystem::temp_directory_path() / "fuzz-XXXXXX").string()) {
    Require(mkdtemp(path_.data()) != nullptr);
    setenv("TALVANE_HOME", path_.c_str(), 1);
  }
  Home(const Home&) = delete;
  Home& operator=(const Home&) = delete;
  ~Home() { std::filesystem::remove_all(path_); }

 private:
  std::string path_;
};

}  // namespace Fuzz
