// MailIntake: typed proxy for the object of Talvane40 by which a host stores each mail once.
//
// Each mail has an idempotency key, a digest that is equal for copies of one mail. The project's database
// stores the key in the transaction that stores the reply. The host does this for each mail:
//
//   if (intake.IsStored(key)) the mail is a duplicate;
//   intake.Begin(key);
//   the component handles the mail, on this thread, and may call Discussion::Reply;
//   intake.End() says whether the reply was stored.
//
// A host that ends between the operations does the same again: nothing is lost and nothing is stored twice.
// Several processes and threads may do so for one project at the same time.
//
// It needs no logon, only write access to the project's files. Open raises 380, 76, 70 and 57 as
// ProjectAdministration does. IsStored, FindSender and Begin raise 91 if no project is open, and the first
// two 57 if the database can't be read. The description says what to do. See ObjectProxy for what else may be
// raised, and for threads and ownership. To create the object raises 429 if the registration is older than
// this class; the description then says to run `tvmail init` again.
#pragma once

#include <cstdint>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

// The result for the mail between Begin and End.
enum class IntakeResult : std::int32_t {
  Nothing = 0,        // no reply was stored
  Stored = 1,         // its reply was stored, and is on disk (but see SyncLater)
  AlreadyStored = 2,  // its reply had been stored before, and is on disk too; nothing was changed
};

// The user whose address a sender has.
struct MailSender {
  bool Found = false;
  bool MailAccepted = false;  // false also if there is no such user
  std::int32_t UserKey = 0;   // 0 if there is no such user
  String Language;            // as DescribedUser::Language
};

class MailIntake : public ObjectProxy {
 public:
  static constexpr StringView kName = u"Talvane40.MailIntake";  // the programmatic name
  static constexpr std::size_t kLongestKey = 64;                // hexadecimal digits
  using ObjectProxy::ObjectProxy;

  // Opens the project of a project file (.TVS); blanks around the path are ignored. The files stay open until
  // the object is released or another project is opened. If this project is open already, its file
  // has not changed, and its database is where it was, nothing is done: a host may call it for each mail, and
  // so notices a project that was changed, moved or restored. True if files were opened or read: other
  // objects may then have the files of before open, or what they read from them. After a failure no project
  // is open.
  bool Open(StringView projectPath) const { return Call(u"Open", projectPath).ToBool(); }

  // True if a reply with this key was stored in the project, by any process, and is on disk (but see
  // SyncLater); raises 57 if it can't be written there. Keys are 1 to kLongestKey hexadecimal digits, whose
  // case doesn't matter; raises 380 for others.
  bool IsStored(StringView key) const { return Call(u"IsStored", key).ToBool(); }

  // The user that the component will take for the sender: of all users with the address the one with the
  // lowest key. Addresses are compared by their canonical form (Runtime::CanonicalAddress) without regard to
  // case. The users are read again only after one of them was changed; otherwise the time doesn't depend on
  // their number.
  MailSender FindSender(StringView address) const {
    const Value sender = Call(u"FindSender", address);
    if (sender.IsEmpty()) return {};
    const Array& members = sender.ToArray();
    return {true, members.at(0).ToBool(), members.at(1).ToInt32(), members.at(2).ToString()};
  }

  // From now on the first Discussion::Reply on this thread stores the key together with the reply, whichever
  // application opened the discussion. If the project has the key already, Reply changes nothing and returns
  // normally. So do further replies before End. A thread has one mail at a time: if End wasn't called for the
  // one before, that one is forgotten, also if another object began it. Raises 380 for a key as IsStored
  // does; then no mail is begun, and the one before is forgotten too.
  //
  // author is the key of the user who must be the author of its replies; 0 for any. Reply raises 57 for
  // another author and stores nothing: a user was changed since FindSender, so deliver the mail again.
  void Begin(StringView key, std::int32_t author = 0) const { Call(u"Begin", key, author); }

  // Ends the mail that Begin began on this thread; replies after it have no key. Nothing if no mail was
  // begun. It is also ended, without a result, when the object that began it is released. Nothing includes a
  // reply that couldn't be written: deliver such a mail again, with the same key.
  IntakeResult End() const { return static_cast<IntakeResult>(Call(u"End").ToInt32()); }

  // Replies to mails that this object begins or finds stored from now on may be on disk only when Sync
  // returns, so that one wait for the disk serves several mails. Others see them at once, and they survive
  // the end of the process.
  void SyncLater() const { Call(u"SyncLater"); }

  // Waits until all these replies are on disk. Raises 57 if the disk reports an error, at each further call
  // too: deliver all mails since the last success again, with another object.
  void Sync() const { Call(u"Sync"); }
};

}  // namespace Platform
