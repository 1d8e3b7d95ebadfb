#include "mime/MemoryNeed.h"

#include <sys/mman.h>

#include <chrono>
#include <new>

namespace Mime {
namespace {

// The memory in addition to the mail itself: a part that grows with its size, and a fixed part, which the
// limits keep below the second number.
constexpr std::size_t kBytesPerByte = 7;
constexpr std::size_t kBytesPerMail = std::size_t{40} << 20;

// So long the memory that a thread has found is taken to be there, for mails of the same size.
constexpr std::chrono::milliseconds kRecent{100};

}  // namespace

void RequireMemoryFor(std::size_t mailSize) {
  thread_local std::size_t foundFor = 0;
  thread_local std::chrono::steady_clock::time_point foundAt;
  const auto now = std::chrono::steady_clock::now();
  if (mailSize <= foundFor && now - foundAt < kRecent) return;
  foundFor = 0;
  const std::size_t size = kBytesPerByte * mailSize + kBytesPerMail;
  void* place = mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (place == MAP_FAILED) throw std::bad_alloc();
  munmap(place, size);
  foundFor = mailSize;
  foundAt = now;
}

}  // namespace Mime
