#include "gateway/notices/SmtpSockets.h"

#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>

namespace Gateway {

int SmtpSockets::Open(int family, int type, int protocol) {
  const std::scoped_lock lock(mutex_);
  if (shut_ || open_.size() == kMost) return -1;
  const int number = socket(family, type | SOCK_CLOEXEC, protocol);
  if (number >= 0) open_.push_back(number);
  return number;
}

int SmtpSockets::Close(int socket) {
  const std::scoped_lock lock(mutex_);
  std::erase(open_, socket);
  return close(socket);
}

void SmtpSockets::StopReading() {
  const std::scoped_lock lock(mutex_);
  for (const int number : open_) shutdown(number, SHUT_RD);
}

void SmtpSockets::Shut() {
  const std::scoped_lock lock(mutex_);
  shut_ = true;
  for (const int number : open_) shutdown(number, SHUT_RDWR);
}

}  // namespace Gateway
