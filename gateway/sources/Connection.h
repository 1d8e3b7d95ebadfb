// Connection: a connection to a mail server, with limits of time and of bytes.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include "gateway/sources/HostLookup.h"
#include "gateway/sources/Interruption.h"
#include "gateway/sources/QueueSettings.h"
#include "gateway/sources/TlsSession.h"

namespace Gateway {

// One thread. Every failure is raised with number 57 and ends the use of the connection. An interruption ends
// each wait for the server at once.
class Connection {
 public:
  // While one exists, all operations together have 0.5 s left after an interruption, so that a mail that was
  // handled is still settled on the server and not read again.
  class Settling {
   public:
    explicit Settling(Connection& connection) : connection_(connection) { connection_.settling_ = true; }
    ~Settling() { connection_.settling_ = false; }
    Settling(const Settling&) = delete;
    Settling& operator=(const Settling&) = delete;

   private:
    Connection& connection_;
  };

  // Connects to the first address that answers, and begins the encryption if Security is Tls.
  Connection(const QueueSettings& settings, int usualPort, const Interruption& interruption);

  // "host:port", for failures.
  const std::string& Name() const { return name_; }

  // Encrypts from now on; both sides have agreed on it.
  void StartTls();

  // Limits the number of bytes that the server may send from now on. They must arrive within the read
  // timeout, plus a second for each kB of the likely number.
  void Expect(std::size_t bytes, std::size_t likely = 0);

  // Reads at least one byte.
  std::size_t Read(char* buffer, std::size_t size);

  // Writes all bytes.
  void Write(std::string_view bytes);

  // Waits for input. Returns false after the time or an interruption.
  bool WaitForInput(std::chrono::milliseconds longest);

 private:
  using Clock = std::chrono::steady_clock;

  // Returns false if the server can't be reached at the address, with the reason.
  bool Connect(const HostAddress& address, std::string& reason);

  // Waits until the socket is ready. Returns false at the end of the time; raises an interruption.
  bool WaitUntil(short events, Clock::time_point end);
  void Await(short events);
  void Await(TlsSession::Result wanted);

  const QueueSettings& settings_;
  const Interruption& interruption_;
  std::string name_;
  Runtime::Descriptor socket_;
  std::unique_ptr<TlsSession> tls_;
  std::size_t allowed_ = 0;                                  // bytes that the server may still send
  Clock::time_point arrived_ = Clock::time_point::max();     // when all of them must have arrived
  Clock::time_point lastChance_ = Clock::time_point::max();  // the end of all waits after an interruption
  bool settling_ = false;
};

}  // namespace Gateway
