#include "gateway/sources/EtpanStream.h"

#include <cstdlib>
#include <new>

#include "gateway/sources/SourceFailure.h"
#include "platform/ProgramTexts.h"

namespace Gateway {

template <class Act>
ssize_t EtpanStream::Do(Act act) {
  if (failure_) return -1;
  try {
    return static_cast<ssize_t>(act());
  } catch (...) {
    failure_ = std::current_exception();
    return -1;
  }
}

std::size_t EtpanStream::Read(char* buffer, std::size_t size) {
  const std::size_t count = connection_.Read(buffer, size);
  if (!nesting_.Allows({buffer, count}))
    RaiseSource(Platform::TextNumber::kAnswerNotUnderstood, connection_.Name(), "((((...");
  return count;
}

mailstream_low_driver EtpanStream::MakeDriver() {
  mailstream_low_driver driver{};
  driver.mailstream_read = [](mailstream_low* low, void* buffer, std::size_t size) {
    EtpanStream& stream = Of(low);
    return stream.Do([&] { return stream.Read(static_cast<char*>(buffer), size); });
  };
  driver.mailstream_write = [](mailstream_low* low, const void* bytes, std::size_t size) {
    EtpanStream& stream = Of(low);
    return stream.Do([&] {
      stream.connection_.Write({static_cast<const char*>(bytes), size});
      return size;
    });
  };
  driver.mailstream_close = [](mailstream_low*) { return 0; };
  driver.mailstream_get_fd = [](mailstream_low*) { return -1; };
  driver.mailstream_free = [](mailstream_low* low) { free(low); };
  return driver;
}

mailstream* EtpanStream::Open() {
  constexpr std::size_t kBuffer = 8192;  // bytes
  static mailstream_low_driver driver = MakeDriver();
  const EtpanLibrary& etpan = EtpanLibrary::Get();
  mailstream_low* const low = etpan.mailstream_low_new(this, &driver);
  if (!low) throw std::bad_alloc();
  mailstream* const stream = etpan.mailstream_new(low, kBuffer);
  if (!stream) throw std::bad_alloc();
  return stream;
}

void EtpanStream::RaiseFailure() const {
  if (failure_) std::rethrow_exception(failure_);
}

void EtpanStream::SendLast(std::string_view text) {
  Do([&] {
    connection_.Write(text);
    return 0;
  });
  if (!failure_) failure_ = std::make_exception_ptr(0);
}

}  // namespace Gateway
