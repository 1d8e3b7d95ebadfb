// LoopbackServer: a server on loopback whose behaviour is a function of the test.
#pragma once

#include <arpa/inet.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace Tests {

inline sockaddr_in LoopbackAddress(std::uint16_t port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(port);
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

// A connected socket, or -1.
inline int ConnectTo(std::uint16_t port) {
  const int number = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in address = LoopbackAddress(port);
  if (connect(number, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0) return number;
  close(number);
  return -1;
}

class LoopbackServer {
 public:
  // The handler serves one connection after the other, until the server is destroyed.
  explicit LoopbackServer(std::function<void(LoopbackServer&, int)> handler)
      : listener_(socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address = LoopbackAddress(0);
    socklen_t size = sizeof address;
    bind(listener_, reinterpret_cast<sockaddr*>(&address), size);
    listen(listener_, 8);
    getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size);
    Port = ntohs(address.sin_port);
    thread_ = std::jthread([this, handler = std::move(handler)] {
      while (Readable(listener_)) {
        const int client = accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC);
        handler(*this, client);
        close(client);
      }
    });
  }
  ~LoopbackServer() {
    stopped_ = true;
    thread_.join();
    close(listener_);
  }
  LoopbackServer(const LoopbackServer&) = delete;
  LoopbackServer& operator=(const LoopbackServer&) = delete;

  bool Running() const { return !stopped_; }

  // Waits for input; false at the end of the test.
  bool Readable(int number) const {
    pollfd input{number, POLLIN, 0};
    while (!stopped_) {
      if (poll(&input, 1, 20) > 0) return true;
    }
    return false;
  }

  // The next line, or what there is of it at the end of the connection.
  std::string Line(int client) const {
    std::string line;
    for (char c; !line.ends_with('\n') && Readable(client) && recv(client, &c, 1, 0) == 1;) line += c;
    return line;
  }

  static bool Send(int client, std::string_view bytes) {
    return send(client, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
  }

  std::uint16_t Port = 0;

 private:
  int listener_;
  std::atomic<bool> stopped_ = false;
  std::jthread thread_;
};

}  // namespace Tests
