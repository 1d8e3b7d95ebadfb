#include "siblings/Talvane40/OpenedProject.h"

#include "platform/Object.h"
#include "runtime/MailAddress.h"
#include "siblings/Talvane40/MailUnderWay.h"
#include "siblings/Talvane40/PasswordHash.h"

namespace Talvane40 {
namespace {

// Small, and with its address beside that of the next user, since the component walks all users for each
// mail.
class SnapshotUser : public ProjectUser {
 public:
  SnapshotUser(StringView address, bool mailAccepted, std::int32_t key)
      : address_(address), mailAccepted_(mailAccepted), key_(key) {}
  StringView GetEMailAddress() override { return address_; }
  Boolean IsMailAccepted() override { return mailAccepted_; }
  std::int32_t GetUserKey() override { return key_; }

 private:
  StringView address_;  // in the snapshot
  bool mailAccepted_;
  std::int32_t key_;
};

class Snapshot : public ProjectUsers {
 public:
  explicit Snapshot(std::vector<DescribedUser> users) {
    std::size_t length = 0;
    for (DescribedUser& user : users) {
      user.Address = Runtime::CanonicalAddress(user.Address);
      length += user.Address.size();
    }
    addresses_.reserve(length);  // they stay where they are
    users_.reserve(users.size());
    for (const DescribedUser& user : users) {
      const std::size_t begin = addresses_.size();
      addresses_ += user.Address;
      users_.emplace_back(StringView(addresses_).substr(begin), user.MailAccepted, user.Key);
    }
  }

  std::int32_t Count() override { return static_cast<std::int32_t>(users_.size()); }

  std::shared_ptr<ProjectUser> Item(std::int32_t position) override {
    if (position < 1 || position > Count()) Raise(FailureNumber::Subscript);
    return {std::shared_ptr<void>(), &users_[static_cast<std::size_t>(position) - 1]};  // not counted
  }

 private:
  String addresses_;
  std::vector<SnapshotUser> users_;
  LiveObject live_{liveObjects};
};

class OpenedDiscussion : public ObjectWithMembers<OpenedDiscussion> {
 public:
  OpenedDiscussion(std::shared_ptr<OpenState> state, std::int32_t number)
      : state_(std::move(state)), number_(number) {}

  static const Table& Members() {
    static const Table table = {Method(u"Reply", 2, &OpenedDiscussion::Reply)};
    return table;
  }

 private:
  Value Reply(std::span<Value> arguments) {
    std::optional<MailUnderWay>& mail = MailOfThisThread();
    if (mail && mail->Author != 0 && mail->Author != state_->Author)
      throw Failure(
          FailureNumber::DeviceFailed, u"Talvane40.Discussion",
          u"The user with the sender's address was changed at the same time. Deliver the mail again.");
    const bool stored =
        state_->Database.AddReply(number_, arguments[0].ToString(), arguments[1].ToString(), state_->Author,
                                  mail ? std::optional<std::string_view>(mail->Key) : std::nullopt,
                                  mail ? mail->Durability : Runtime::Durability::AtCommit);
    // A second reply of the mail finds the key that the first one has stored.
    if (mail && mail->Result == IntakeResult::Nothing) {
      mail->Result = stored ? IntakeResult::Stored : IntakeResult::AlreadyStored;
      mail->StoredIn = state_->Database.File();
    }
    return {};
  }

  std::shared_ptr<OpenState> state_;
  std::int32_t number_;
  LiveObject live_{liveObjects};
};

}  // namespace

OpenedProject::OpenedProject(std::shared_ptr<OpenState> state, String name, String logonText)
    : state_(std::move(state)),
      name_(std::move(name)),
      logonText_(std::move(logonText)),
      openedBy_(state_->Author) {}

std::shared_ptr<ProjectUsers> OpenedProject::GetUsers() {
  if (!users_ || state_->Database.UsersVersion() != usersVersion_) {
    users_ = std::make_shared<Snapshot>(state_->Database.Users(usersVersion_));
  }
  return users_;
}

Boolean OpenedProject::IsMailBoxAllowed() {
  return state_->Database.IsOwner(openedBy_);
}

ObjectRef OpenedProject::GetDiscussion(std::int32_t number) {
  if (!state_->Database.HasDiscussion(number)) return nullptr;
  return std::make_shared<OpenedDiscussion>(state_, number);
}

Boolean OpenedProject::SetActingUser(const Value& userKey, std::int32_t kind, const Value& logonText) {
  const std::int32_t key = userKey.ToInt32();
  if (kind != 1 || !EqualSecrets(logonText.ToString(), logonText_)) return false;
  if (!state_->Database.IsMailAccepted(key).value_or(false)) return false;
  state_->Author = key;
  return true;
}

}  // namespace Talvane40
