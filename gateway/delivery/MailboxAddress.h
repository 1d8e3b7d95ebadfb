// MailboxAddress: the e-mail address of a project's mailbox, which the project's file names.
#pragma once

#include <sys/types.h>

#include <ctime>
#include <string>

#include "platform/Text.h"

namespace Gateway {

using Platform::String;
using Platform::StringView;

// One thread.
class MailboxAddress {
 public:
  // The address in the project file's section [Email]; empty if there is none. The file is read again only
  // after a change of its inode, size or times. Raises as Platform::Files::RetrieveTVSFile does.
  const String& Of(const String& projectPath);

 private:
  struct State {
    dev_t Device = 0;
    ino_t Inode = 0;
    off_t Size = 0;
    std::timespec Modified{}, Changed{};
  };
  static bool Same(const State& left, const State& right);

  String path_;
  State state_;
  String address_;
};

}  // namespace Gateway
