#include "gateway/delivery/MailboxAddress.h"

#include <sys/stat.h>

#include "platform/Services.h"
#include "platform/StoredNames.h"
#include "platform/contracts/GeneralServices.h"

namespace Gateway {
namespace {

bool SameTime(const std::timespec& left, const std::timespec& right) {
  return left.tv_sec == right.tv_sec && left.tv_nsec == right.tv_nsec;
}

}  // namespace

bool MailboxAddress::Same(const State& left, const State& right) {
  return left.Device == right.Device && left.Inode == right.Inode && left.Size == right.Size &&
         SameTime(left.Modified, right.Modified) && SameTime(left.Changed, right.Changed);
}

const String& MailboxAddress::Of(const String& projectPath) {
  // If the state of the file can't be read, the file is read again, which raises the reason.
  struct stat file = {};
  State state;
  if (stat(Platform::ToUtf8(Platform::Trim(projectPath)).c_str(), &file) == 0)
    state = {file.st_dev, file.st_ino, file.st_size, file.st_mtim, file.st_ctim};
  if (state.Inode != 0 && projectPath == path_ && Same(state, state_)) return address_;
  path_.clear();
  const Platform::Files files(Platform::Services().CreateByName(u"TvGeneralServices.Files"));
  const Platform::Value address =
      files.RetrieveTVSFile(projectPath)
          .KeyValue(Platform::ProjectSection::kRead, Platform::SendingValue::kAddress);
  address_ = address.IsString() ? Platform::Trim(address.ToString()) : String();
  path_ = projectPath;
  state_ = state;
  return address_;
}

}  // namespace Gateway
