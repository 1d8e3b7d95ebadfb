// Service: serves the mailboxes of a configuration until a stop signal.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "gateway/service/Configuration.h"
#include "gateway/service/ServedMailbox.h"
#include "gateway/service/ServiceLog.h"

namespace Gateway {

// Signals: SIGTERM and SIGINT finish the mails under way and end the service; a second one kills it. SIGHUP
// reads the configuration again: mailboxes that fail, or whose settings have changed, are stopped and
// started, the others go on. What waits to be sent again is tried at once, and a mailbox that has nothing to
// do any more ends; a service without a mailbox waits for the next signal.
//
// The service manager is told that the service is ready as soon as the configuration is read: a server that
// is down must not keep the other mailboxes from being served. Its watchdog is answered while every thread is
// alive. Main thread.
class Service {
 public:
  // Reads the configuration. only names the mailboxes to serve; all of the configuration if it is empty.
  // Blocks the signals above on this thread and those that it starts from now on. Raises as ReadConfiguration
  // and MailboxesOf; 57 if each mailbox is served by another process.
  Service(std::string configurationPath, std::vector<String> only);

  // Returns after SIGTERM or SIGINT.
  void Run();

 private:
  void Start(const MailboxSettings& mailbox);
  std::vector<MailboxSettings> MailboxesToServe(const Configuration& configuration);
  void Reload();
  void Apply(const std::vector<MailboxSettings>& wanted);
  void Report();
  void Stop();

  const std::string path_;
  const std::vector<String> only_;
  ServiceLog log_;
  std::string reportedStatus_;
  std::vector<std::unique_ptr<ServedMailbox>> served_;
};

// What a mailbox must have.
enum class MailboxNeeds {
  Nothing,
  Source,
  SourceOrNotices,  // a source, or that users are told of new replies
};

// The mailboxes of the configuration that have these names, or all that have what is needed if there are no
// names. Raises 380 for a name that the file doesn't have, or whose mailbox doesn't have what is needed, and
// if no mailbox is left.
std::vector<MailboxSettings> MailboxesOf(const Configuration& configuration, const std::vector<String>& names,
                                         MailboxNeeds needs);

}  // namespace Gateway
