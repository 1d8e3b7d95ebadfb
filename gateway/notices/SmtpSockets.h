// SmtpSockets: the sockets of a connection under way, so that another thread can end it.
#pragma once

#include <mutex>
#include <vector>

namespace Gateway {

// Any thread.
class SmtpSockets {
 public:
  SmtpSockets() { open_.reserve(kMost); }

  // A new socket, or -1. It is closed when a program is run. After Shut there is none.
  int Open(int family, int type, int protocol);
  int Close(int socket);

  // Ends all waits for what the server sends. What is being sent still arrives.
  void StopReading();

  // Ends all waits, now and later.
  void Shut();

 private:
  static constexpr std::size_t kMost = 16;  // the addresses of a host that are tried at the same time

  std::mutex mutex_;
  bool shut_ = false;
  std::vector<int> open_;
};

}  // namespace Gateway
