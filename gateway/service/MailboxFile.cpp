#include "gateway/service/MailboxFile.h"

#include <sys/stat.h>

#include <cerrno>

#include "gateway/delivery/MailboxFileName.h"
#include "platform/Failure.h"
#include "platform/ProgramTexts.h"
#include "runtime/Folders.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Gateway {

std::string MailboxFile(const char* folder, Platform::StringView mailbox) {
  return Runtime::HomePath() + "/" + folder + "/" + MailboxFileName(mailbox);
}

std::string MakeMailboxFile(const char* folder, Platform::StringView mailbox) {
  const std::string path = Runtime::HomePath() + "/" + folder;
  if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) RaiseFolderDenied(path, errno);
  return MailboxFile(folder, mailbox);
}

void RaiseFolderDenied(const std::string& path, int error) {
  throw Platform::Failure(Platform::FailureNumber::DeviceFailed, u"Gateway",
                          Runtime::TextOf(Platform::TextNumber::kFolderDenied, Platform::FromUtf8(path),
                                          Platform::FromUtf8(Runtime::SystemReason(error))));
}

}  // namespace Gateway
