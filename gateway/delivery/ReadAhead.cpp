#include "gateway/delivery/ReadAhead.h"

#include <signal.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "gateway/sources/StopSignal.h"

namespace Gateway {
namespace {

// So many that the reader goes on while the password is hashed, and that the threads rarely wait for each
// other.
constexpr std::size_t kMostMails = 256;
constexpr std::size_t kFewMails = 128;  // the reader goes on when so many are left: it is woken less often
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

// The mails that were read and wait to be handled. Prepared by one thread, taken by another one.
class Reader {
 public:
  Reader(const std::vector<std::string>& sources, StandardInput input, const PolicySettings& policy)
      : sources_(sources), input_(input), policy_(policy) {
    // Signals go to the threads that wait for something else than the source, which is asked again and again.
    sigset_t all, before;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before);
    try {
      thread_ = std::thread([this] { Read(); });
    } catch (...) {
      pthread_sigmask(SIG_SETMASK, &before, nullptr);
      throw;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
  }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  ~Reader() {
    {
      const std::lock_guard lock(mutex_);
      dropped_ = true;
    }
    room_.notify_one();
    thread_.join();
  }

  // The next mail, when the one before was handled, and whether there is one after it; nothing at the end.
  std::optional<std::pair<PreparedMail, bool>> Next() {
    std::unique_lock lock(mutex_);
    idle_ = true;
    if (count_ == 0) room_.notify_one();
    ready_.wait(lock, [this] { return count_ > 0 || ended_; });
    idle_ = false;
    if (count_ == 0) {
      if (failure_) std::rethrow_exception(failure_);
      return {};
    }
    PreparedMail mail = std::move(mails_[first_]);
    first_ = (first_ + 1) % kMostMails;
    --count_;
    bytes_ -= mail.Raw.Bytes.size();
    const bool room = count_ <= kFewMails, more = count_ > 0;
    lock.unlock();
    if (room) room_.notify_one();
    return std::pair(std::move(mail), more);
  }

  // True if all sources were read to their ends; after the last mail.
  bool IsComplete() const { return complete_; }

 private:
  void Read() {
    bool complete = false;
    std::exception_ptr failure;
    try {
      const auto stopWanted = [this] { return StopWanted() || dropped_; };
      complete = std::all_of(sources_.begin(), sources_.end(), [&](const std::string& source) {
        return ReadMailSource(
            source, input_, [this](RawMail raw) { return Add(std::move(raw)); }, stopWanted);
      });
    } catch (...) {
      failure = std::current_exception();
    }
    const std::lock_guard lock(mutex_);
    complete_ = complete;
    failure_ = failure;
    ended_ = true;
    ready_.notify_one();
  }

  // Prepares a mail and adds it. Nothing if no mail is wanted any more.
  std::optional<Outcome> Add(RawMail raw) {
    const std::size_t size = raw.Bytes.size();
    const bool large = size > kMostBytes;
    if (large && !WaitUntilAllAreHandled()) return {};
    PreparedMail mail = PrepareMail(std::move(raw), policy_);
    {
      std::unique_lock lock(mutex_);
      if (!HasRoomFor(size, kMostMails - 1))
        room_.wait(lock, [&] { return dropped_ || HasRoomFor(size, kFewMails); });
      if (dropped_) return {};
      mails_[(first_ + count_) % kMostMails] = std::move(mail);
      ++count_;
      bytes_ += size;
    }
    ready_.notify_one();
    if (large && !WaitUntilAllAreHandled()) return {};
    return Outcome::Retry;  // of no meaning: the sources that are only read don't ask for it
  }

  bool HasRoomFor(std::size_t size, std::size_t mails) const {
    return count_ == 0 || (count_ <= mails && bytes_ + size <= kMostBytes);
  }

  bool WaitUntilAllAreHandled() {
    std::unique_lock lock(mutex_);
    room_.wait(lock, [this] { return dropped_ || (count_ == 0 && idle_); });
    return !dropped_;
  }

  const std::vector<std::string>& sources_;
  const StandardInput input_;
  const PolicySettings& policy_;

  std::mutex mutex_;
  std::condition_variable ready_, room_;        // for the one who takes mails, and the one who adds them
  std::array<PreparedMail, kMostMails> mails_;  // a ring, so that adding a mail needs no memory
  std::size_t first_ = 0, count_ = 0, bytes_ = 0;
  bool idle_ = false;  // the one who takes mails has handled all that were taken
  bool ended_ = false, complete_ = false;
  std::atomic<bool> dropped_ = false;
  std::exception_ptr failure_;
  std::thread thread_;
};

bool ReadOneByOne(const std::vector<std::string>& sources, StandardInput input, const PolicySettings& policy,
                  const std::function<bool(PreparedMail, bool)>& handle) {
  const auto sink = [&](RawMail raw) {
    return handle(PrepareMail(std::move(raw), policy), false) ? std::optional(Outcome::Retry) : std::nullopt;
  };
  return std::all_of(sources.begin(), sources.end(),
                     [&](const std::string& source) { return ReadMailSource(source, input, sink); });
}

}  // namespace

bool ReadAhead(const std::vector<std::string>& sources, StandardInput input, const PolicySettings& policy,
               const std::function<bool(PreparedMail, bool)>& handle) {
  const bool oneMail =
      sources.size() == 1 && input == StandardInput::OneMail && IsStandardInput(sources.front());
  // Not on the stack: there ThreadSanitizer (clang 14) doesn't see what this thread does with its members.
  std::unique_ptr<Reader> reader;
  try {
    if (!oneMail) reader = std::make_unique<Reader>(sources, input, policy);
  } catch (const std::system_error&) {
  } catch (const std::bad_alloc&) {
  }
  if (!reader) return ReadOneByOne(sources, input, policy, handle);
  while (auto next = reader->Next()) {
    if (!handle(std::move(next->first), next->second)) return false;
  }
  return reader->IsComplete();
}

}  // namespace Gateway
