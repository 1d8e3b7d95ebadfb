#include "gateway/sources/MaildirQueue.h"

#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <exception>
#include <memory>
#include <new>
#include <system_error>
#include <utility>

#include "gateway/sources/MaildirName.h"
#include "gateway/sources/SourceFailure.h"
#include "mime/InputFile.h"
#include "mime/Limits.h"
#include "mime/Mbox.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/SystemReason.h"

namespace Gateway {
namespace {

using Mime::kLargestMail;
using Runtime::Descriptor;
using Runtime::SystemReason;
namespace TextNumber = Platform::TextNumber;

// Of a mail that is too large, the header is passed on.
constexpr std::size_t kLargestHeader = Mime::MailLimits{}.HeaderSize;

// The folders are synced once for this number of mails.
constexpr std::size_t kMovesBeforeSync = 256;

// True for a link, a pipe and the like, of which nothing can be held.
bool IsNoMail(const RawMail& mail) {
  return !mail.Fault.empty() && mail.FaultOutcome == Outcome::Refused && mail.Bytes.empty();
}

std::exception_ptr MoveFailure(const std::string& path, int error) {
  try {
    RaiseSource(TextNumber::kMailNotMoved, path, SystemReason(error));
  } catch (...) {
    return std::current_exception();
  }
}

// Moves a mail from new to cur. Never replaces another mail there. Returns an errno, 0 after success and for
// a mail that a mail program has moved or removed in the meantime.
int MoveToCur(int from, int to, const std::string& name) {
  for (int copy = 0; copy < 100; ++copy) {
    const std::string target = NameOfReadMail(name, copy);
    if (renameat2(from, name.c_str(), to, target.c_str(), RENAME_NOREPLACE) == 0) return 0;
    if (errno == EINVAL) {  // a file system without RENAME_NOREPLACE
      if (linkat(from, name.c_str(), to, target.c_str(), 0) == 0)
        return unlinkat(from, name.c_str(), 0) == 0 || errno == ENOENT ? 0 : errno;
    }
    if (errno == ENOENT) return 0;
    if (errno != EEXIST) return errno;
  }
  return EEXIST;
}

}  // namespace

MaildirQueue::MaildirQueue(const QueueSettings& settings)
    : path_(settings.Folder), pollInterval_(settings.PollInterval) {}

Descriptor MaildirQueue::OpenFolder(const char* name) const {
  const std::string path = path_ + "/" + name;
  Descriptor folder(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (folder && faccessat(folder.Number(), ".", R_OK | W_OK | X_OK, AT_EACCESS) == 0) return folder;
  if (errno == ENOENT || errno == ENOTDIR)
    RaiseSource(TextNumber::kNoMaildir, path_, name + (": " + SystemReason(errno)));
  RaiseSource(TextNumber::kMaildirDenied, path, SystemReason(errno));
}

MaildirQueue::Folders MaildirQueue::OpenFolders() const {
  return {OpenFolder("new"), OpenFolder("cur")};
}

void MaildirQueue::Check() {
  const Folders folders = OpenFolders();
  WaitingNames(folders);
}

std::vector<std::string> MaildirQueue::WaitingNames(const Folders& folders) const {
  const auto closeFolder = [](DIR* folder) { closedir(folder); };
  const int copy = openat(folders.New.Number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  const std::unique_ptr<DIR, decltype(closeFolder)> folder(copy < 0 ? nullptr : fdopendir(copy), closeFolder);
  std::vector<std::string> names;
  errno = 0;
  if (folder) {
    while (const dirent* entry = readdir(folder.get())) {
      if (entry->d_name[0] != '.') names.emplace_back(entry->d_name);
      errno = 0;
    }
  }
  if (!folder || errno != 0) RaiseSource(TextNumber::kMaildirDenied, path_ + "/new", SystemReason(errno));
  SortByArrival(names);
  return names;
}

// Opens a mail. Returns an empty descriptor if it is no ordinary file; raises std::system_error.
Descriptor MaildirQueue::OpenMail(const Folders& folders, const std::string& name, std::size_t& size) {
  // Without O_NONBLOCK, opening a pipe would wait for its writer.
  Descriptor mail(openat(folders.New.Number(), name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!mail && (errno == ELOOP || errno == ENXIO)) return mail;
  struct stat status {};
  if (!mail || fstat(mail.Number(), &status) != 0) throw std::system_error(errno, std::generic_category());
  size = static_cast<std::size_t>(status.st_size);
  return S_ISREG(status.st_mode) ? std::move(mail) : Descriptor();
}

std::optional<RawMail> MaildirQueue::Read(const Folders& folders, const std::string& name) const {
  RawMail mail{path_ + "/new/" + name, {}, {}, Outcome::Retry};
  try {
    std::size_t size = 0;
    const Descriptor opened = OpenMail(folders, name, size);
    if (!opened) {
      mail.Fault = SourceText(TextNumber::kNoOrdinaryMail);
      mail.FaultOutcome = Outcome::Refused;
      return mail;
    }
    Mime::InputFile file(dup(opened.Number()), [this] { return interruption_.IsSet(); });
    TakeEnvelopeLine(file, mail);
    if (size <= kLargestMail) {
      if (file.TakeAll(mail.Bytes, kLargestMail) <= kLargestMail) return mail;
      throw std::system_error(EFBIG, std::generic_category());  // it grows; the next pass sees its size
    }
    // Up to the empty line after the header.
    while (mail.Bytes.size() < kLargestHeader && file.TakeLine(mail.Bytes, '\n', kLargestHeader) > 2)
      continue;
    RefuseAsTooLarge(mail);
    return mail;
  } catch (const std::system_error& error) {
    if (error.code() == std::errc::no_such_file_or_directory) return std::nullopt;
    mail.Fault = SourceText(TextNumber::kMailUnreadable, SystemReason(error.code().value()));
  } catch (const std::bad_alloc&) {
    mail.Fault = SourceText(TextNumber::kMailUnreadable, SystemReason(ENOMEM));
  }
  mail.Bytes = {};
  return mail;
}

bool MaildirQueue::Pass(const MailSink& sink) {
  const Folders folders = OpenFolders();
  StartWatch();
  const std::unordered_set<std::string> reported = std::exchange(noMails_, {});
  std::exception_ptr failure;
  std::size_t moved = 0;
  bool ended = false;
  for (const std::string& name : WaitingNames(folders)) {
    ended = interruption_.IsSet();
    if (ended) break;
    std::optional<RawMail> mail = Read(folders, name);
    if (!mail || interruption_.IsSet()) continue;
    if (IsNoMail(*mail) && noMails_.insert(name).second && reported.contains(name)) continue;
    const std::optional<Outcome> outcome = sink(std::move(*mail));
    ended = !outcome;
    if (ended) break;
    if (!IsSettled(*outcome)) continue;
    const int error = MoveToCur(folders.New.Number(), folders.Cur.Number(), name);
    // One mail that can't be moved doesn't stop the others.
    if (error != 0 && !failure) failure = MoveFailure(path_ + "/new/" + name, error);
    if (error == 0 && ++moved % kMovesBeforeSync == 0) Sync(folders);
  }
  if (moved > 0) Sync(folders);
  if (failure) std::rethrow_exception(failure);
  return !ended && !interruption_.IsSet();
}

void MaildirQueue::Sync(const Folders& folders) {
  static_cast<void>(fsync(folders.Cur.Number()));
  static_cast<void>(fsync(folders.New.Number()));
}

void MaildirQueue::Wait(std::chrono::milliseconds longest) {
  const auto time = std::min(longest, pollInterval_);
  if (interruption_.Wait(watch_.Number(), POLLIN, time)) ForgetEvents();
}

void MaildirQueue::StartWatch() {
  if (!watch_) watch_ = Descriptor(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  // Adding a watch again changes nothing, unless the folder is another one now.
  if (watch_)
    inotify_add_watch(watch_.Number(), (path_ + "/new").c_str(),
                      IN_MOVED_TO | IN_CREATE | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR);
  ForgetEvents();
}

void MaildirQueue::ForgetEvents() {
  char events[4096];
  while (watch_ && read(watch_.Number(), events, sizeof events) > 0) continue;
}

}  // namespace Gateway
