// EtpanStream: lets libetpan read from a Connection and write to it.
#pragma once

#include <exception>
#include <string_view>

#include "gateway/sources/Connection.h"
#include "gateway/sources/EtpanLibrary.h"
#include "gateway/sources/ImapNesting.h"

namespace Gateway {

// libetpan is written in C, so a failure of the connection is kept until libetpan's function has returned,
// and nothing is read or written after it. One thread.
class EtpanStream {
 public:
  explicit EtpanStream(Connection& connection) : connection_(connection) {}
  EtpanStream(const EtpanStream&) = delete;
  EtpanStream& operator=(const EtpanStream&) = delete;

  // A new stream for libetpan's functions, which must not be used after this object is destroyed. The caller,
  // or the session that takes it, closes it.
  mailstream* Open();

  // Raises the failure that was kept, if there is one.
  void RaiseFailure() const;

  // Writes the text; nothing is read or written afterwards. Raises nothing.
  void SendLast(std::string_view text);

 private:
  static mailstream_low_driver MakeDriver();
  static EtpanStream& Of(mailstream_low* low) { return *static_cast<EtpanStream*>(low->data); }

  // Returns what the act returns, or -1 after a failure, as libetpan expects it.
  template <class Act>
  ssize_t Do(Act act);
  std::size_t Read(char* buffer, std::size_t size);

  Connection& connection_;
  ImapNesting nesting_;
  std::exception_ptr failure_;
};

}  // namespace Gateway
