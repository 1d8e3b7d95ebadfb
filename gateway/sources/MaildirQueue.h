// MaildirQueue: the folder new of a Maildir as a queue.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "gateway/sources/Interruption.h"
#include "gateway/sources/MailQueue.h"
#include "runtime/DurableFile.h"

namespace Gateway {

// Mails are passed in the order of arrival, which their names begin with. A mail that is settled moves to cur
// with the mark of a mail that was read (":2,S"), so that mail programs show it so. Only new is the queue:
// what is in cur is never read. The folder is watched with inotify, and read again after PollInterval,
// since a network file system doesn't report what other machines do.
//
// The owner of the folder may be less trusted than this program: symbolic links, pipes, devices and folders
// in new are never opened; they are passed as faults, once while they are there. After a power failure, a
// mail that was moved last may be in new again.
class MaildirQueue : public MailQueue {
 public:
  explicit MaildirQueue(const QueueSettings& settings);

  bool Pass(const MailSink& sink) override;
  void Wait(std::chrono::milliseconds longest) override;
  void Interrupt() override { interruption_.Set(); }
  void Check() override;

 private:
  // new and cur, opened for a pass.
  struct Folders {
    Runtime::Descriptor New;
    Runtime::Descriptor Cur;
  };

  Folders OpenFolders() const;
  Runtime::Descriptor OpenFolder(const char* name) const;
  std::vector<std::string> WaitingNames(const Folders& folders) const;

  static Runtime::Descriptor OpenMail(const Folders& folders, const std::string& name, std::size_t& size);

  // Nothing if the mail is there no longer.
  std::optional<RawMail> Read(const Folders& folders, const std::string& name) const;

  // Syncs both folders. An error is ignored: mail that returns to new is recognised.
  static void Sync(const Folders& folders);

  // Watches new from now on, if the system has a watch left, and forgets earlier events.
  void StartWatch();
  void ForgetEvents();

  std::string path_;
  std::chrono::milliseconds pollInterval_;
  std::unordered_set<std::string> noMails_;  // the names in new that the last pass found to be no mails
  Interruption interruption_;
  Runtime::Descriptor watch_;
};

}  // namespace Gateway
