#include "mime/MemoryNeed.h"

#include <sys/mman.h>

#include <new>

namespace Mime {
namespace {

// The memory in addition to the mail itself: a part that grows with its size, and a fixed part, which the
// limits keep below the second number.
constexpr std::size_t kBytesPerByte = 7;
constexpr std::size_t kBytesPerMail = std::size_t{40} << 20;

}  // namespace

void RequireMemoryFor(std::size_t mailSize) {
  const std::size_t size = kBytesPerByte * mailSize + kBytesPerMail;
  void* place = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (place == MAP_FAILED) throw std::bad_alloc();
  munmap(place, size);
}

}  // namespace Mime
