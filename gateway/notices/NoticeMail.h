// NoticeMail: composes the mails that tell users of replies, and senders of the reason why a mail was
// refused.
#pragma once

#include "gateway/notices/MailTransport.h"
#include "platform/contracts/NoticeQueue.h"

namespace Gateway {

// From whom and to where.
struct NoticeSource {
  String ProjectName;
  String MailboxAddress;  // where replies go
  String FromName;        // empty: the reply's author; the project for an answer
  String FromAddress;     // also the return path; empty: the mailbox's address
  String CutMarker;       // the line above which a recipient writes
};

// Everything is in the recipient's language. A reply's subject ends with the markers by which the component
// finds the discussion. Raises 380 if an address can't be written into a mail, and std::bad_alloc. Any
// thread.
OutgoingMail ComposeNotice(const Platform::DueNotice& notice, const NoticeSource& source);

}  // namespace Gateway
