// TlsSession: an encrypted connection to a server whose certificate and host name are checked.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace Gateway {

// Uses a connected, non-blocking socket. The caller owns the socket and waits until it is ready. TLS 1.2 or
// later. One thread.
class TlsSession {
 public:
  enum class Result { Done, WantsRead, WantsWrite, Closed };

  // The certificate must name the host (RFC 6125), which may be an address, and lead to an authority of the
  // file, or, if that is empty, of the system. name is for failures. Raises 57 for a file that can't be used.
  TlsSession(int socket, const std::string& host, const std::string& caFile, std::string name);
  ~TlsSession();

  // To be repeated until Done, when the socket is ready for what it wants. Raises 57 for a certificate that
  // isn't accepted. Nothing is sent over the session before Done.
  Result Handshake();

  // Reads at least one byte, or writes some, if Done. Raises 57.
  Result Read(char* buffer, std::size_t size, std::size_t& count);
  Result Write(std::string_view bytes, std::size_t& count);

  // True if Read returns bytes without the socket.
  bool HasPending() const;

 private:
  struct Parts;

  Result ResultOf(int returned);

  std::unique_ptr<Parts> parts_;
  std::string name_;
};

}  // namespace Gateway
