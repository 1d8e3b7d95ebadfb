// SteadyFacts: what a connection has read of a project's users and discussions, valid until another
// connection commits something.
//
// They are read for each mail, and hardly ever change: asking the index of the database's log, which takes no
// lock and no system call (runtime/DatabaseState.h), is enough to know that they are valid. One's own replies
// change none of them.
#pragma once

#include <map>
#include <optional>

#include "runtime/DatabaseState.h"

namespace Talvane40 {

class SteadyFacts {
 public:
  struct Facts {
    std::optional<std::int64_t> UsersVersion;
    std::map<std::int32_t, std::optional<bool>> MailAccepted;  // by user
    std::map<std::int32_t, bool> HasDiscussion;                // by number
  };

  explicit SteadyFacts(Runtime::Database& database) : watch_(database) {}

  // The facts that are known to be valid now. What is read afterwards may be added to them.
  Facts& Valid();

  // To be called in a write transaction that changes none of them, and after its commit.
  void BeginOwnChange() { Valid(); }
  void EndOwnChange();

 private:
  Runtime::DatabaseWatch watch_;
  std::optional<Runtime::DatabaseState> validAt_;
  Facts facts_;
};

}  // namespace Talvane40
