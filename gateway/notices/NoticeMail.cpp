#include "gateway/notices/NoticeMail.h"

#include <algorithm>
#include <ctime>

#include "gateway/notices/NoticeSubject.h"
#include "gateway/notices/NoticeText.h"
#include "mime/MailWriter.h"
#include "platform/Failure.h"
#include "platform/NoticeTexts.h"
#include "platform/ReasonTexts.h"
#include "platform/StoredNames.h"
#include "runtime/MailAddress.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

using Platform::DueNotice;
using Platform::NoticeKind;
using Platform::ToUtf8;

namespace TextNumber = Platform::TextNumber;

// As it is written into a mail and told to a mail server: with the domain in ASCII, so that no more than a
// local part beyond ASCII needs SMTPUTF8 (RFC 6531).
String RequireAddress(StringView address) {
  const String trimmed = Platform::Trim(address);
  if (const String fault = Runtime::AddressFault(trimmed); !fault.empty())
    throw Platform::Failure(Platform::FailureNumber::RefusedInput, u"Gateway.NoticeMail",
                            Runtime::TextOf(TextNumber::kAddressRefused, address, fault));
  const std::size_t at = trimmed.rfind(u'@') + 1;
  const String domain = Runtime::AsciiDomain(StringView(trimmed).substr(at));
  return domain.empty() ? trimmed : trimmed.substr(0, at) + domain;
}

// The sign of the project in the left parts of its Message-IDs.
std::string ProjectSign(StringView messageId) {
  messageId.remove_prefix(std::min(messageId.size(), Platform::Notice::kMessageIdStart.size()));
  const std::string sign = ToUtf8(messageId.substr(0, messageId.find(u'.')));
  const bool letters = std::ranges::all_of(sign, [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  });
  return letters && !sign.empty() ? sign : "project";
}

bool HasReplyPrefix(StringView subject) {
  constexpr StringView kPrefix = u"Re:";
  return Platform::EqualsIgnoreCase(Platform::Trim(subject).substr(0, kPrefix.size()), kPrefix);
}

// Composes the mail of one notice.
class Composer {
 public:
  Composer(const DueNotice& notice, const NoticeSource& source)
      : notice_(notice),
        source_(source),
        mailbox_(RequireAddress(source.MailboxAddress)),
        from_(source.FromAddress.empty() ? mailbox_ : RequireAddress(source.FromAddress)),
        to_(RequireAddress(notice.Recipient.Address)),
        domain_(ToUtf8(mailbox_.substr(mailbox_.rfind(u'@') + 1))) {}

  OutgoingMail Compose() {
    mail_.ReplyTo = {OneLine(source_.ProjectName), mailbox_};
    mail_.To = {OneLine(notice_.Recipient.Name), to_};
    mail_.Date = std::time(nullptr);
    mail_.MessageId = Id(notice_.MessageId);
    text_.CutMarker = source_.CutMarker;
    if (notice_.Kind == NoticeKind::Reply) {
      AddReply();
    } else {
      AddAnswer();
    }
    // Programs of Microsoft's mail servers don't answer a mail with this field.
    mail_.Fields.emplace_back("X-Auto-Response-Suppress", "All");
    mail_.Text = text_.Plain();
    mail_.Html = text_.Html();
    return {ToUtf8(from_), ToUtf8(to_), Mime::WriteMail(mail_)};
  }

 private:
  String Text(std::int32_t number, StringView first = {}, StringView second = {}) const {
    return Runtime::TextIn(notice_.Recipient.Language, number, first, second);
  }
  String OneLine(StringView text) const { return WithoutMarkers(text, source_.CutMarker); }
  std::string Id(StringView leftPart) const { return ToUtf8(leftPart) + '@' + domain_; }
  void SetFrom(StringView name) {
    mail_.From = {OneLine(source_.FromName.empty() ? name : StringView(source_.FromName)), from_};
  }

  void AddReply() {
    const Platform::DescribedReply& reply = notice_.Reply;
    SetFrom(reply.UserName);
    mail_.Subject = NoticeSubject(notice_.Title, source_.ProjectName, notice_.Discussion, source_.CutMarker);
    mail_.References.push_back(Id(notice_.ThreadId));
    for (const String& earlier : notice_.EarlierIds) mail_.References.push_back(Id(earlier));
    mail_.InReplyTo = mail_.References.back();
    mail_.ListName = OneLine(source_.ProjectName);
    mail_.ListId = ListId();
    mail_.Fields.emplace_back("Auto-Submitted", "auto-generated");
    text_.Introduction = {Text(TextNumber::kWhoWrote, OneLine(reply.UserName), OneLine(notice_.Title))};
    text_.Text = reply.Body;
    text_.Footer = Text(TextNumber::kHowToAnswer);
  }

  // The subject is that of the refused mail: an answer to this one is another try, where that subject is
  // good. The reason says what to do instead of the footer.
  void AddAnswer() {
    SetFrom(source_.ProjectName);
    constexpr std::size_t kLongestSubject = 1000;
    const String subject = Platform::Trim(notice_.RefusedSubject).substr(0, kLongestSubject);
    if (subject.empty()) {
      mail_.Subject = {Text(TextNumber::kSubjectOfAnswer, OneLine(source_.ProjectName))};
    } else {
      mail_.Subject = {HasReplyPrefix(subject) ? subject : u"Re: " + subject};
    }
    StringView refused = notice_.RefusedId;
    if (refused.starts_with(u'<') && refused.ends_with(u'>')) refused = refused.substr(1, refused.size() - 2);
    mail_.InReplyTo = ToUtf8(refused);
    mail_.References = {mail_.InReplyTo};
    mail_.Fields.emplace_back("Auto-Submitted", "auto-replied");
    text_.Introduction = {Text(TextNumber::kMailNotStored, OneLine(source_.ProjectName)), notice_.Reason};
    if (notice_.RefusedText.empty()) return;
    text_.Introduction.push_back(Text(TextNumber::kWhatYouWrote));
    text_.Text = notice_.RefusedText;
  }

  // The project's sign below the mailbox's domain; a domain in brackets can't be part of a name.
  std::string ListId() const {
    return ProjectSign(notice_.MessageId) + ".talvane." + (domain_.starts_with('[') ? "localhost" : domain_);
  }

  const DueNotice& notice_;
  const NoticeSource& source_;
  const String mailbox_, from_, to_;
  const std::string domain_;
  Mime::TextMail mail_;
  NoticeText text_;
};

}  // namespace

OutgoingMail ComposeNotice(const DueNotice& notice, const NoticeSource& source) {
  return Composer(notice, source).Compose();
}

}  // namespace Gateway
