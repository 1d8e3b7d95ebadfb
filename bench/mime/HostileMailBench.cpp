// The time and the memory for reading hostile mails, each at 1, 2, 4 and 8 times its size.
//
//   HostileMailBench [NAME]      all of them, or those whose name contains NAME
//
// Times that double along a row are linear; times that grow by four are a fault. The peak of memory is that
// of the largest mail and includes it; the limit for a mail of its size is printed beside it. Each mail is
// read in a process of its own. Exits with 1 if a process was killed, or took more memory or more than a
// minute.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <string>

#include "bench/mime/HostileMails.h"
#include "mime/LimitCheck.h"
#include "mime/Mail.h"

namespace {

struct Cost {
  double Milliseconds = 0;
  std::size_t Peak = 0;  // bytes
  std::string End;       // "read", "refused", or what killed the process
};

// The result that the reading process sends to the measuring one.
struct Result {
  double Milliseconds;
  bool Refused;
};

Result Read(std::string mail) {
  const auto start = std::chrono::steady_clock::now();
  bool refused = false;
  try {
    Mime::ReadMail(mail);  // a copy: the mail is kept beside it, as a delivery does
  } catch (const Mime::LimitExceeded&) {
    refused = true;
  }
  const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
  return {time.count(), refused};
}

Cost CostOf(const HostileMail& mail, std::size_t size) {
  constexpr unsigned kLongest = 60;  // seconds
  int channel[2];
  if (pipe(channel) != 0) return {0, 0, "no pipe"};
  const pid_t child = fork();
  if (child == 0) {
    alarm(kLongest);
    const Result result = Read(mail.OfSize(size));
    _exit(write(channel[1], &result, sizeof result) == sizeof result ? 0 : 1);
  }
  close(channel[1]);
  Result result{};
  const bool sent = read(channel[0], &result, sizeof result) == sizeof result;
  close(channel[0]);
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  std::string end = result.Refused ? "refused" : "read";
  if (!sent) end = WIFSIGNALED(status) ? "signal " + std::to_string(WTERMSIG(status)) : "no memory";
  return {result.Milliseconds, static_cast<std::size_t>(usage.ru_maxrss) << 10, end};
}

// Prints a row. False if the mail exceeded a limit.
bool Measure(const HostileMail& mail) {
  const std::size_t size = mail.Kilobytes << 10;
  std::printf("%-33s %6zu", mail.Name, mail.Kilobytes);
  Cost cost;
  for (const std::size_t factor : {1u, 2u, 4u, 8u}) {
    cost = CostOf(mail, size * factor);
    std::printf(" %8.1f", cost.Milliseconds);
    std::fflush(stdout);
  }
  const std::size_t allowed = 8 * 8 * size + (std::size_t{64} << 20);
  std::printf(" %6zu %7zu  %s\n", cost.Peak >> 20, allowed >> 20, cost.End.c_str());
  return cost.Peak <= allowed && (cost.End == "read" || cost.End == "refused");
}

}  // namespace

int main(int argc, char** argv) {
  // bench/run.sh passes an option for the other benchmarks; it is ignored.
  const std::string wanted = argc > 1 && argv[1][0] != '-' ? argv[1] : "";
  std::printf("%-33s %6s %8s %8s %8s %8s %6s %7s\n", "mail", "KB", "ms", "x2", "x4", "x8", "MB", "allowed");
  bool harmless = true;
  for (const HostileMail& mail : HostileMails()) {
    if (std::string(mail.Name).find(wanted) != std::string::npos) harmless = Measure(mail) && harmless;
  }
  return harmless ? 0 : 1;
}
