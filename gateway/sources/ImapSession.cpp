#include "gateway/sources/ImapSession.h"

#include <algorithm>
#include <cstring>
#include <initializer_list>
#include <new>
#include <string_view>

#include "gateway/sources/Connection.h"
#include "gateway/sources/EtpanLibrary.h"
#include "gateway/sources/EtpanStream.h"
#include "gateway/sources/ImapFolderName.h"
#include "gateway/sources/PasswordFile.h"
#include "gateway/sources/SourceFailure.h"
#include "mime/Limits.h"
#include "platform/ProgramTexts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

const EtpanLibrary& Etpan() {
  return EtpanLibrary::Get();
}

// Bytes of answers. A server may add what changed in the mailbox to any of them.
constexpr std::size_t kAnswer = std::size_t{1} << 20;
constexpr std::size_t kSearchAnswer = std::size_t{16} << 20;  // 1.5 million unique ids

// A keyword of mails that were handled and are being removed. If the program ends between the two steps of a
// removal, it tells such a mail from one that somebody else has deleted.
constexpr const char* kHandled = "TalvaneHandled";

template <auto Free>
struct Deleter {
  template <class T>
  void operator()(T* object) const {
    (Etpan().*Free)(object);
  }
};
template <class T, auto Free>
using Owned = std::unique_ptr<T, Deleter<Free>>;

using UidSet = Owned<mailimap_set, &EtpanLibrary::mailimap_set_free>;

template <class T>
T* Made(T* object) {
  if (!object) throw std::bad_alloc();
  return object;
}

UidSet SetOf(const std::vector<std::uint32_t>& uids) {
  UidSet set(Made(Etpan().mailimap_set_new_empty()));
  for (std::size_t at = 0; at < uids.size();) {
    const std::size_t first = at++;
    while (at < uids.size() && uids[at] == uids[at - 1] + 1) ++at;
    if (Etpan().mailimap_set_add_interval(set.get(), uids[first], uids[at - 1]) != MAILIMAP_NO_ERROR)
      throw std::bad_alloc();
  }
  return set;
}

mailimap_search_key* SearchKey(int type) {
  return Made(Etpan().mailimap_search_key_new(type, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                              nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
                                              nullptr, 0, nullptr, nullptr, nullptr, nullptr, nullptr,
                                              nullptr, 0, nullptr, nullptr, nullptr));
}

// The object that takes it frees it, which clang-tidy can't see.
char* KeywordOfHandled() {
  return Made(strdup(kHandled));
}

template <class Act>
void ForEach(clist* list, Act act) {
  for (clistiter* at = list ? clist_begin(list) : nullptr; at; at = clist_next(at)) act(clist_content(at));
}

// Calls the act with each fixed attribute of a mail in a FETCH answer.
template <class Act>
void ForEachAttribute(void* mail, Act act) {
  ForEach(static_cast<mailimap_msg_att*>(mail)->att_list, [&](void* content) {
    const auto* item = static_cast<mailimap_msg_att_item*>(content);
    if (item->att_type == MAILIMAP_MSG_ATT_ITEM_STATIC && item->att_data.att_static)
      act(*item->att_data.att_static);
  });
}

}  // namespace

struct ImapSession::Parts {
  Parts(const QueueSettings& settings, const Interruption& interruption)
      : Settings(settings),
        Line(settings, settings.Security == QueueSecurity::Tls ? 993 : 143, interruption) {}

  ~Parts() {
    ToServer.SendLast("0 LOGOUT\r\n");  // the answer isn't waited for
    if (Mails && (!Session || !Session->imap_stream)) Etpan().mailstream_close(Mails);
    if (Session) Etpan().mailimap_free(Session);
  }

  // Raises what made a command fail: the connection's failure, or the server's reason with the text.
  void Require(int result, std::int32_t text, const std::string& subject) {
    if (result == MAILIMAP_NO_ERROR) return;
    ToServer.RaiseFailure();
    // The server said that it closes the connection.
    if (result == MAILIMAP_ERROR_STREAM) RaiseSource(TextNumber::kSourceClosed, Line.Name());
    std::string reason = Session->imap_response ? Session->imap_response : "";
    if (reason.size() > 300) reason.resize(300);
    if (result == MAILIMAP_ERROR_PARSE || result == MAILIMAP_ERROR_PROTOCOL || result == MAILIMAP_ERROR_FATAL)
      RaiseSource(TextNumber::kAnswerNotUnderstood, Line.Name(), reason.empty() ? "IMAP" : reason);
    RaiseSource(text, subject, reason.empty() ? "NO" : reason);
  }
  void Require(int result) { Require(result, TextNumber::kRequestRefused, Line.Name()); }

  bool Offers(const char* capability) const {
    return Etpan().mailimap_has_extension(Session, capability) != 0;
  }

  void ReadCapabilities() {
    mailimap_capability_data* read = nullptr;
    Line.Expect(kAnswer);
    Require(Etpan().mailimap_capability(Session, &read));
    Etpan().mailimap_capability_data_free(read);
  }

  // True if the opened mailbox takes new keywords (RFC 3501, PERMANENTFLAGS).
  bool TakesKeywords() const {
    bool takes = false;
    ForEach(Session->imap_selection_info->sel_perm_flags, [&](void* flag) {
      takes = takes || static_cast<mailimap_flag_perm*>(flag)->fl_type == MAILIMAP_FLAG_PERM_ALL;
    });
    return takes;
  }

  void AddFlags(std::uint32_t uid, std::initializer_list<mailimap_flag*> added) {
    mailimap_flag_list* flags = Made(Etpan().mailimap_flag_list_new_empty());
    for (mailimap_flag* flag : added) Etpan().mailimap_flag_list_add(flags, Made(flag));
    const Owned<mailimap_store_att_flags, &EtpanLibrary::mailimap_store_att_flags_free> change(
        Made(Etpan().mailimap_store_att_flags_new_add_flags_silent(flags)));
    Line.Expect(kAnswer);
    Require(Etpan().mailimap_uid_store(Session, SetOf({uid}).get(), change.get()));
  }

  void Delete(std::uint32_t uid) {
    if (TakesKeywords())
      // NOLINTNEXTLINE(clang-analyzer-unix.Malloc)
      AddFlags(uid, {Etpan().mailimap_flag_new_deleted(),
                     Etpan().mailimap_flag_new_flag_keyword(KeywordOfHandled())});
    else
      AddFlags(uid, {Etpan().mailimap_flag_new_deleted()});
    if (Offers("UIDPLUS")) Expunge({uid});
  }

  void Expunge(const std::vector<std::uint32_t>& uids) {
    Line.Expect(kAnswer + uids.size() * 64);
    Require(Etpan().mailimap_uid_expunge(Session, SetOf(uids).get()));
  }

  // The unique ids of the mails to which both keys apply, ascending.
  std::vector<std::uint32_t> Search(mailimap_search_key* first, mailimap_search_key* second);

  const QueueSettings& Settings;
  Connection Line;
  EtpanStream ToServer{Line};
  mailimap* Session = nullptr;
  mailstream* Mails = nullptr;  // owned by Session as soon as that is connected
};

ImapSession::ImapSession(const QueueSettings& settings, const Interruption& interruption) {
  Etpan();  // A missing library is reported before the server is asked.
  parts_.reset(new Parts(settings, interruption));
  parts_->Mails = parts_->ToServer.Open();
  parts_->Session = Made(Etpan().mailimap_new(0, nullptr));
  LogOn();
}

ImapSession::~ImapSession() = default;

void ImapSession::LogOn() {
  mailimap* session = parts_->Session;
  Connection& line = parts_->Line;
  line.Expect(kAnswer);
  const int greeting = Etpan().mailimap_connect(session, parts_->Mails);
  const bool known = greeting == MAILIMAP_NO_ERROR_AUTHENTICATED;
  if (!known && greeting != MAILIMAP_NO_ERROR_NON_AUTHENTICATED)
    parts_->Require(greeting == MAILIMAP_NO_ERROR ? MAILIMAP_ERROR_PARSE : greeting);
  parts_->ReadCapabilities();
  if (parts_->Settings.Security == QueueSecurity::StartTls) {
    if (known || !parts_->Offers("STARTTLS")) RaiseSource(TextNumber::kNoStartTls, line.Name());
    line.Expect(kAnswer);
    parts_->Require(Etpan().mailimap_starttls(session), TextNumber::kTlsFailed, line.Name());
    // Data received before the encryption may come from an attacker.
    if (parts_->Mails->read_buffer_len > 0)
      RaiseSource(TextNumber::kAnswerNotUnderstood, line.Name(), "STARTTLS");
    line.StartTls();
    parts_->ReadCapabilities();
  }
  if (known) return;
  const std::string password = ReadPasswordFile(parts_->Settings.PasswordFile);
  line.Expect(kAnswer);
  parts_->Require(Etpan().mailimap_login(session, parts_->Settings.User.c_str(), password.c_str()),
                  TextNumber::kSourceLogonRefused, line.Name());
  parts_->ReadCapabilities();
}

void ImapSession::Open(bool readOnly) {
  const std::string& name = parts_->Settings.Mailbox;
  const std::string sent = ImapFolderName(name);
  parts_->Line.Expect(kAnswer);
  parts_->Require(readOnly ? Etpan().mailimap_examine(parts_->Session, sent.c_str())
                           : Etpan().mailimap_select(parts_->Session, sent.c_str()),
                  TextNumber::kMailboxNotOpened, name);
  if (!readOnly && parts_->Session->imap_selection_info->sel_perm == MAILIMAP_MAILBOX_READONLY)
    RaiseSource(TextNumber::kMailboxReadOnly, name);
  if (!readOnly) RemoveHandled();
}

void ImapSession::RemoveHandled() {
  if (!parts_->Offers("UIDPLUS") || !parts_->TakesKeywords()) return;
  // NOLINTNEXTLINE(clang-analyzer-unix.Malloc)
  mailimap_search_key* handled = Etpan().mailimap_search_key_new_keyword(KeywordOfHandled());
  const std::vector<std::uint32_t> uids = parts_->Search(SearchKey(MAILIMAP_SEARCH_KEY_DELETED), handled);
  if (!uids.empty()) parts_->Expunge(uids);
}

void ImapSession::RequireMailbox(const std::string& name) {
  mailimap_status_att_list* wanted = Made(Etpan().mailimap_status_att_list_new_empty());
  const Owned<mailimap_status_att_list, &EtpanLibrary::mailimap_status_att_list_free> owned(wanted);
  Etpan().mailimap_status_att_list_add(wanted, MAILIMAP_STATUS_ATT_MESSAGES);
  mailimap_mailbox_data_status* status = nullptr;
  parts_->Line.Expect(kAnswer);
  parts_->Require(Etpan().mailimap_status(parts_->Session, ImapFolderName(name).c_str(), wanted, &status),
                  TextNumber::kMailboxNotOpened, name);
  if (status) Etpan().mailimap_mailbox_data_status_free(status);
}

std::vector<std::uint32_t> ImapSession::Parts::Search(mailimap_search_key* first,
                                                      mailimap_search_key* second) {
  const Owned<mailimap_search_key, &EtpanLibrary::mailimap_search_key_free> key(
      Made(Etpan().mailimap_search_key_new_multiple_empty()));
  Etpan().mailimap_search_key_multiple_add(key.get(), Made(first));
  Etpan().mailimap_search_key_multiple_add(key.get(), Made(second));
  const auto* selection = Session->imap_selection_info;
  std::vector<std::uint32_t> uids;
  // The server may report a new mail behind the search's result, and doesn't do it again.
  for (int attempt = 0; attempt < 3; ++attempt) {
    const std::uint32_t before = selection->sel_exists;
    clist* found = nullptr;
    Line.Expect(kSearchAnswer);
    Require(Etpan().mailimap_uid_search(Session, nullptr, key.get(), &found));
    uids.clear();
    ForEach(found, [&](void* uid) { uids.push_back(*static_cast<std::uint32_t*>(uid)); });
    if (found) Etpan().mailimap_search_result_free(found);
    if (selection->sel_exists == before) break;
  }
  std::sort(uids.begin(), uids.end());
  uids.erase(std::unique(uids.begin(), uids.end()), uids.end());
  return uids;
}

std::vector<std::uint32_t> ImapSession::Unread() {
  return parts_->Search(SearchKey(MAILIMAP_SEARCH_KEY_UNSEEN), SearchKey(MAILIMAP_SEARCH_KEY_UNDELETED));
}

std::vector<ImapSession::Mail> ImapSession::Sizes(const std::vector<std::uint32_t>& uids) {
  const Owned<mailimap_fetch_type, &EtpanLibrary::mailimap_fetch_type_free> wanted(
      Made(Etpan().mailimap_fetch_type_new_fetch_att_list_empty()));
  Etpan().mailimap_fetch_type_new_fetch_att_list_add(wanted.get(),
                                                     Made(Etpan().mailimap_fetch_att_new_uid()));
  Etpan().mailimap_fetch_type_new_fetch_att_list_add(wanted.get(),
                                                     Made(Etpan().mailimap_fetch_att_new_rfc822_size()));
  clist* found = nullptr;
  parts_->Line.Expect(kAnswer + uids.size() * 256);
  parts_->Require(Etpan().mailimap_uid_fetch(parts_->Session, SetOf(uids).get(), wanted.get(), &found));
  std::vector<Mail> mails;
  ForEach(found, [&](void* content) {
    Mail mail;
    ForEachAttribute(content, [&](const mailimap_msg_att_static& attribute) {
      if (attribute.att_type == MAILIMAP_MSG_ATT_UID) mail.Uid = attribute.att_data.att_uid;
      if (attribute.att_type == MAILIMAP_MSG_ATT_RFC822_SIZE) mail.Size = attribute.att_data.att_rfc822_size;
    });
    // An answer may also report other mails.
    if (std::binary_search(uids.begin(), uids.end(), mail.Uid) && mail.Size > 0) mails.push_back(mail);
  });
  if (found) Etpan().mailimap_fetch_list_free(found);
  std::sort(mails.begin(), mails.end(), [](const Mail& a, const Mail& b) { return a.Uid < b.Uid; });
  return mails;
}

bool ImapSession::Fetch(const Mail& mail, bool headerOnly, std::string& bytes) {
  mailimap_section* section =
      Made(headerOnly ? Etpan().mailimap_section_new_header() : Etpan().mailimap_section_new(nullptr));
  const Owned<mailimap_fetch_type, &EtpanLibrary::mailimap_fetch_type_free> wanted(
      Made(Etpan().mailimap_fetch_type_new_fetch_att_list_empty()));
  Etpan().mailimap_fetch_type_new_fetch_att_list_add(wanted.get(),
                                                     Made(Etpan().mailimap_fetch_att_new_uid()));
  Etpan().mailimap_fetch_type_new_fetch_att_list_add(
      wanted.get(), Made(Etpan().mailimap_fetch_att_new_body_peek_section(section)));
  clist* found = nullptr;
  const std::size_t largest = headerOnly ? Mime::MailLimits{}.HeaderSize : Mime::kLargestMail;
  parts_->Line.Expect(kAnswer + largest, std::min(mail.Size, largest));
  parts_->Require(Etpan().mailimap_uid_fetch(parts_->Session, SetOf({mail.Uid}).get(), wanted.get(), &found));
  bool read = false;
  ForEach(found, [&](void* content) {
    std::uint32_t uid = 0;
    std::string_view body;
    bool hasBody = false;
    ForEachAttribute(content, [&](const mailimap_msg_att_static& attribute) {
      if (attribute.att_type == MAILIMAP_MSG_ATT_UID) uid = attribute.att_data.att_uid;
      const auto* part =
          attribute.att_type == MAILIMAP_MSG_ATT_BODY_SECTION ? attribute.att_data.att_body_section : nullptr;
      if (!part) return;
      hasBody = true;
      if (part->sec_body_part) body = {part->sec_body_part, part->sec_length};
    });
    if (uid != mail.Uid || !hasBody) return;
    read = true;
    bytes = body;
  });
  if (found) Etpan().mailimap_fetch_list_free(found);
  return read;
}

void ImapSession::Settle(std::uint32_t uid, AfterSuccess after) {
  const Connection::Settling settling(parts_->Line);
  if (after == AfterSuccess::Mark) {
    parts_->AddFlags(uid, {Etpan().mailimap_flag_new_seen()});
  } else if (after == AfterSuccess::Delete) {
    parts_->Delete(uid);
  } else {
    const std::string folder = ImapFolderName(parts_->Settings.MoveTo);
    parts_->Line.Expect(kAnswer);
    if (parts_->Offers("MOVE")) {
      parts_->Require(Etpan().mailimap_uid_move(parts_->Session, SetOf({uid}).get(), folder.c_str()));
    } else {
      parts_->Require(Etpan().mailimap_uid_copy(parts_->Session, SetOf({uid}).get(), folder.c_str()));
      parts_->Delete(uid);
    }
  }
}

bool ImapSession::CanIdle() const {
  return parts_->Offers("IDLE");
}

void ImapSession::Idle(std::chrono::milliseconds longest) {
  parts_->Line.Expect(kAnswer);
  parts_->Require(Etpan().mailimap_idle(parts_->Session));
  if (parts_->Mails->read_buffer_len == 0) parts_->Line.WaitForInput(longest);
  parts_->Line.Expect(kAnswer);
  parts_->Require(Etpan().mailimap_idle_done(parts_->Session));
}

}  // namespace Gateway
