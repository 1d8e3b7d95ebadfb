// SettledMails: the unique ids of the mails that were handled and stay on a POP3 server, which has no marks.
#pragma once

#include <string>
#include <unordered_set>

namespace Gateway {

// A text file in HOME/state, mode 0600, one id a line. One thread and one process: a POP3 server lets one
// session at a time into a mailbox. Every failure is raised with number 57 or as DurableFile does.
class SettledMails {
 public:
  // user@host names the file.
  explicit SettledMails(const std::string& account);

  bool Contains(const std::string& id) const { return ids_.contains(id); }

  // The id is on disk when this returns.
  void Add(const std::string& id);

  // Forgets the ids of mails that the server has no longer.
  void KeepOnly(const std::unordered_set<std::string>& present);

 private:
  void Load();
  void Save() const;

  std::string path_;
  std::unordered_set<std::string> ids_;
};

}  // namespace Gateway
