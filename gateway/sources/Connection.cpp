#include "gateway/sources/Connection.h"

#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <cerrno>

#include "gateway/sources/SourceFailure.h"
#include "platform/ProgramTexts.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;
using std::chrono::milliseconds;

constexpr milliseconds kTimeAfterInterruption(500);
constexpr std::size_t kSlowestRate = 1024;  // bytes a second

}  // namespace

Connection::Connection(const QueueSettings& settings, int usualPort, const Interruption& interruption)
    : settings_(settings), interruption_(interruption) {
  const int port = settings.Port == 0 ? usualPort : settings.Port;
  name_ = settings.Host + ":" + std::to_string(port);
  const auto addresses = LookUpHost(settings.Host, port, interruption, settings.ConnectTimeout);
  std::string reason;
  if (std::none_of(addresses.begin(), addresses.end(),
                   [&](const HostAddress& address) { return Connect(address, reason); }))
    RaiseSource(TextNumber::kSourceUnreachable, name_, reason);
  if (settings.Security == QueueSecurity::Tls) StartTls();
}

bool Connection::Connect(const HostAddress& address, std::string& reason) {
  socket_ = Runtime::Descriptor(
      socket(address.Address.ss_family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, IPPROTO_TCP));
  int error = errno;
  if (socket_) {
    const int on = 1;
    setsockopt(socket_.Number(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    setsockopt(socket_.Number(), SOL_SOCKET, SO_KEEPALIVE, &on, sizeof on);
    const auto* generic = reinterpret_cast<const sockaddr*>(&address.Address);
    error = connect(socket_.Number(), generic, address.Length) == 0 ? 0 : errno;
    if (error == EINPROGRESS || error == EINTR) {
      socklen_t size = sizeof error;
      if (!WaitUntil(POLLOUT, Clock::now() + settings_.ConnectTimeout))
        error = ETIMEDOUT;
      else if (getsockopt(socket_.Number(), SOL_SOCKET, SO_ERROR, &error, &size) != 0)
        error = errno;
    }
  }
  if (error != 0) reason = Runtime::SystemReason(error);
  return error == 0;
}

void Connection::StartTls() {
  auto session = std::make_unique<TlsSession>(socket_.Number(), settings_.Host, settings_.CaFile, name_);
  arrived_ = Clock::now() + settings_.ReadTimeout;
  for (;;) {
    const TlsSession::Result result = session->Handshake();
    if (result == TlsSession::Result::Done) break;
    Await(result);
  }
  tls_ = std::move(session);
}

void Connection::Expect(std::size_t bytes, std::size_t likely) {
  allowed_ = bytes;
  arrived_ = Clock::now() + settings_.ReadTimeout + std::chrono::seconds(likely / kSlowestRate);
}

bool Connection::WaitUntil(short events, Clock::time_point end) {
  const auto left = [](Clock::time_point time) {
    return std::max(milliseconds(0), std::chrono::ceil<milliseconds>(time - Clock::now()));
  };
  if (!interruption_.IsSet()) {
    if (interruption_.Wait(socket_.Number(), events, left(end))) return true;
    if (!interruption_.IsSet()) return false;
  }
  if (!settling_) RaiseSource(TextNumber::kSourceInterrupted);
  if (lastChance_ == Clock::time_point::max()) lastChance_ = Clock::now() + kTimeAfterInterruption;
  if (Interruption::WaitUninterrupted(socket_.Number(), events, left(std::min(end, lastChance_))))
    return true;
  RaiseSource(TextNumber::kSourceInterrupted);
}

void Connection::Await(short events) {
  if (!WaitUntil(events, std::min(Clock::now() + settings_.ReadTimeout, arrived_)))
    RaiseSource(TextNumber::kSourceTimeout, name_);
}

void Connection::Await(TlsSession::Result wanted) {
  if (wanted == TlsSession::Result::Closed) RaiseSource(TextNumber::kSourceClosed, name_);
  Await(static_cast<short>(wanted == TlsSession::Result::WantsRead ? POLLIN : POLLOUT));
}

std::size_t Connection::Read(char* buffer, std::size_t size) {
  if (allowed_ == 0) RaiseSource(TextNumber::kAnswerTooLarge, name_);
  size = std::min(size, allowed_);
  for (;;) {
    std::size_t count = 0;
    if (tls_) {
      const TlsSession::Result result = tls_->Read(buffer, size, count);
      if (result != TlsSession::Result::Done) Await(result);
    } else {
      const ssize_t received = recv(socket_.Number(), buffer, size, 0);
      if (received > 0) count = static_cast<std::size_t>(received);
      if (received == 0 || (received < 0 && errno != EAGAIN && errno != EINTR))
        RaiseSource(TextNumber::kSourceClosed, name_);
      if (received < 0) Await(POLLIN);
    }
    allowed_ -= count;
    if (count > 0) return count;
  }
}

void Connection::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    std::size_t count = 0;
    if (tls_) {
      const TlsSession::Result result = tls_->Write(bytes, count);
      if (result != TlsSession::Result::Done) Await(result);
    } else {
      const ssize_t sent = send(socket_.Number(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (sent > 0) count = static_cast<std::size_t>(sent);
      if (sent < 0 && errno != EAGAIN && errno != EINTR) RaiseSource(TextNumber::kSourceClosed, name_);
      if (sent < 0) Await(POLLOUT);
    }
    bytes.remove_prefix(count);
  }
}

bool Connection::WaitForInput(milliseconds longest) {
  return (tls_ && tls_->HasPending()) || interruption_.Wait(socket_.Number(), POLLIN, longest);
}

}  // namespace Gateway
