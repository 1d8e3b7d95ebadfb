// NoticeQueue: typed proxy for the object of Talvane40 that keeps what a project has to send by mail: the
// notices of new replies, and answers to senders whose mail was refused.
//
// A reply is stored together with the mark that its notices are due, in one transaction. The notice of a
// reply to a user is created when its turn comes: for each user who takes mail, but the author. A host sends
// them:
//
//   if (!queue.Lock()) another program sends;
//   while (const auto notice = queue.Next(...).Notice) send it, then Sent, Defer, Postpone or GiveUp;
//
// A host that ends between sending and Sent sends that one again, with the same Message-ID.
//
// Open raises as MailIntake::Open does. All others raise 91 if no project is open, and 57 if the database
// can't be read or written. A change is on disk when its operation returns. Times are UTC. See ObjectProxy
// for what else may be raised, and for threads and ownership. To create the object raises 429 if the
// registration is older than this class; the description then says to run `tvmail init` again.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <vector>

#include "platform/contracts/ObjectProxy.h"
#include "platform/contracts/ProjectAdministration.h"

namespace Platform {

// How long a mail is tried to be sent.
inline constexpr std::chrono::hours kLongestTry{24 * 5};

enum class NoticeKind : std::int32_t {
  Reply = 0,   // tells a user of a reply
  Answer = 1,  // tells a sender why a mail was refused
};

struct DueNotice {
  std::int32_t Id = 0;
  NoticeKind Kind = NoticeKind::Reply;
  DescribedUser Recipient;
  std::int32_t Attempts = 0;  // that failed
  // As "2024-05-01T09:30:00.000Z", also of an attempt for which its route was left alone; empty before it.
  String FirstAttempt;

  // The left parts of Message-IDs, without domain: equal at each attempt, and not to be guessed without the
  // project's database. They begin with Notice::kMessageIdStart.
  String MessageId;
  String ThreadId;  // of the whole discussion; no mail has it
  std::vector<String>
      EarlierIds;  // what the recipient was told before in the discussion, up to 10, the last one last

  // For Kind Reply.
  std::int32_t Discussion = 0;
  String Title;
  DescribedReply Reply;
  NoticeRoute Route;  // Transport 0 for the project's own settings

  // For Kind Answer.
  String RefusedId;  // the Message-ID of the refused mail with its angle brackets; may be empty
  String RefusedSubject;
  String RefusedText;
  String Reason;  // in the recipient's language

  Value ToValue() const;
  static DueNotice FromValue(const Value& value);
};

struct NextNotice {
  std::optional<DueNotice> Notice;
  // If there is none: the time until one is due, or may be sent again; nothing if none waits.
  std::optional<std::chrono::milliseconds> Wait;
  bool Limited = false;  // there is none because of the limit a minute

  Value ToValue() const;
  static NextNotice FromValue(const Value& value);
};

// The notices that only one system user may send, since a profile (TransportId::kMapi) of that user sends
// them.
struct NoticesOfUser {
  std::int32_t Uid = 0;
  std::int32_t Unsent = 0;

  Value ToValue() const;
  static NoticesOfUser FromValue(const Value& value);
};

struct NoticeState {
  std::int32_t Unsent = 0;    // notices that wait, also those whose replies have not had their turn
  std::int32_t Deferred = 0;  // of these: tried at least once
  String OldestAttempt;       // the first attempt of the one that is tried longest; empty if Deferred is 0
  String DeferredReason;      // of the last attempt
  std::int32_t GivenUp = 0;   // in the last seven days
  String GivenUpAt;           // the last one; empty if none
  String GivenUpAddress;      // empty for all recipients of a reply
  String GivenUpReason;
  std::vector<String> StoppedAddresses;  // which get no mail after three delivery reports
  std::vector<NoticesOfUser> OfUsers;    // of Unsent, by Uid

  Value ToValue() const;
  static NoticeState FromValue(const Value& value);
};

// What is known of a mail that was refused.
struct RefusedMail {
  std::int32_t UserKey = 0;  // of the sender
  String Key;                // the idempotency key
  String MessageId;
  String Subject;
  String Text;
  String Reason;  // in the user's language
};

enum class BounceResult : std::int32_t {
  Unknown = 0,  // no notice of this project
  Counted = 1,  // counted now, or before; or the address or the wish for mail was set after the reply
  Stopped =
      2,  // the third one: the user gets no more mail until the address or the wish for mail is set again
  OtherAddress = 3,  // not counted: the report is about another address
};

class NoticeQueue : public ObjectProxy {
 public:
  static constexpr StringView kName = u"Talvane40.NoticeQueue";  // the programmatic name
  using ObjectProxy::ObjectProxy;

  // As MailIntake::Open, but true only if the project has another database than before. Another project's
  // lock is released.
  bool Open(StringView projectPath) const { return Call(u"Open", projectPath).ToBool(); }

  // False if another program, or another object, sends for the project. The lock lasts until Unlock, the
  // release of the object, or the end of the process, however it ends.
  bool Lock() const { return Call(u"Lock").ToBool(); }
  void Unlock() const { Call(u"Unlock"); }

  // The next notice that is due. Not more than perMinute notices are given in a minute, in all processes.
  // Notices by a profile (TransportId::kMapi) of another system user than uid are left for that user; without
  // byProject, those that the project's own settings send are left, too. A notice that waited for 30 days
  // without an attempt is given up. Raises 70 without the lock, and 380 if perMinute is below 1.
  NextNotice Next(std::int32_t perMinute, std::int32_t uid, bool byProject = true) const {
    return NextNotice::FromValue(Call(u"Next", perMinute, uid, byProject));
  }
  // How many notices the system user could send now if there were no limit a minute.
  std::int32_t Ready(std::int32_t uid) const { return Call(u"Ready", uid).ToInt32(); }
  // The notice that Next gave last isn't tried: it doesn't count for the limit a minute.
  void Untried() const { Call(u"Untried"); }
  // Every deferred notice is due now. Needs the lock, as Next.
  void EndPauses() const { Call(u"EndPauses"); }

  // The notice was sent; ids of notices that are gone are ignored by these four.
  void Sent(std::int32_t id) const { Call(u"Sent", id); }
  // It failed, and is due again after the pause, which is an hour at most.
  void Defer(std::int32_t id, StringView reason, std::chrono::seconds pause) const {
    Call(u"Defer", id, reason, static_cast<std::int32_t>(pause.count()));
  }
  // Its route is left alone for the pause, which is an hour at most: it and all that could be sent now by the
  // same route are due again after it. That is no attempt of theirs, but begins the time for which they are
  // tried; those for which it is over (kLongestTry) stay due, to be given up. Returns how many were
  // postponed.
  std::int32_t Postpone(std::int32_t id, std::chrono::seconds pause) const {
    return Call(u"Postpone", id, static_cast<std::int32_t>(pause.count())).ToInt32();
  }
  // It failed for good.
  void GiveUp(std::int32_t id, StringView reason) const { Call(u"GiveUp", id, reason); }

  NoticeState State() const { return NoticeState::FromValue(Call(u"State")); }

  // Stores an answer to the sender of a refused mail. False if one was stored for the same mail, or for the
  // same user within the last hour, and for a user who takes no mail. A mail's answer is remembered for 30
  // days. The text is cut at kLongestReply characters.
  bool AddAnswer(const RefusedMail& mail) const {
    return Call(u"AddAnswer", mail.UserKey, mail.Key, mail.MessageId, mail.Subject, mail.Text, mail.Reason)
        .ToBool();
  }

  // A delivery report says that the notice of this Message-ID (with or without brackets and domain) didn't
  // arrive. The reports of one notice count once. addresses are those that the report names: where there are
  // any, one has to be the recipient's, since others than the recipient may know a Message-ID, too. Texts
  // without "@" aren't addresses, and ignored.
  BounceResult AddBounce(StringView messageId, const std::vector<String>& addresses, StringView reason) const;

  // Removes everything that waits, without sending it. Returns how many notices that were. Needs the lock, as
  // Next.
  std::int32_t Drop() const { return Call(u"Drop").ToInt32(); }
};

}  // namespace Platform
