#include "siblings/Talvane40/Bounces.h"

#include "runtime/MailAddress.h"
#include "siblings/Talvane40/NoticeTime.h"
#include "siblings/Talvane40/SenderAnswers.h"

namespace Talvane40 {
namespace {

using namespace Platform;

constexpr std::int64_t kMostBounces = 3;  // as in the view recipients
constexpr std::size_t kLongestReason = 1000;

// Whose notice an id names, and whether its report counts: not if the address or the wish for mail was set
// after the reply.
struct Addressee {
  std::int64_t User = 0;
  String Address;
  bool Counts = false;
};

std::optional<Addressee> AddresseeOf(Runtime::Database& database, const NamedNotice& notice) {
  Runtime::Statement ofReply(
      database, "SELECT key, email, ?1 > mail_since FROM users JOIN replies ON id = ?1 WHERE key = ?2");
  Runtime::Statement ofAnswer(
      database, "SELECT user, email, 1 FROM answers JOIN users ON key = user WHERE answers.id = ?");
  auto row = notice.Answer != 0 ? ofAnswer({notice.Answer}) : ofReply({notice.Reply, notice.User});
  if (!row.Next()) return std::nullopt;
  return Addressee{row.Integer(0), FromUtf8(row.Text(1)), row.Integer(2) != 0};
}

// True if one of the addresses is the recipient's, or if there is none.
bool IsAbout(const std::vector<String>& addresses, StringView recipient) {
  const String expected = Runtime::CanonicalAddress(recipient);
  bool others = false;
  for (const String& address : addresses) {
    if (EqualsIgnoreCase(Runtime::CanonicalAddress(address), expected)) return true;
    others = others || address.find(u'@') != String::npos;
  }
  return !others;
}

}  // namespace

BounceResult AddBounce(Runtime::Database& database, const NoticeIds& ids, StringView messageId,
                       const std::vector<String>& addresses, StringView reason) {
  const auto notice = ids.Read(messageId);
  if (!notice) return BounceResult::Unknown;
  Runtime::Transaction transaction(database);
  const auto addressee = AddresseeOf(database, *notice);
  if (!addressee) return BounceResult::Unknown;
  if (addressee->Counts && !IsAbout(addresses, addressee->Address)) return BounceResult::OtherAddress;
  Runtime::Statement count(database, "SELECT count(*) FROM bounces WHERE user = ?");
  const auto bounces = [&] {
    auto row = count({addressee->User});
    return row.Next() ? row.Integer(0) : 0;
  };
  if (bounces() < kMostBounces && addressee->Counts) {
    const std::string name =
        notice->Answer != 0 ? "a." + std::to_string(notice->Answer) : std::to_string(notice->Reply);
    Runtime::Statement(database,
                       "INSERT INTO bounces (user, notice, at, reason) VALUES (?, ?, ?, ?) "
                       "ON CONFLICT DO NOTHING")
        .Run({addressee->User, name, Now(), ToUtf8(Shortened(String(reason), kLongestReason))});
    transaction.Commit();
  }
  return bounces() < kMostBounces ? BounceResult::Counted : BounceResult::Stopped;
}

std::vector<String> StoppedAddresses(Runtime::Database& database) {
  std::vector<String> addresses;
  Runtime::Statement select(database,
                            "SELECT email FROM (SELECT user FROM bounces GROUP BY user HAVING count(*) >= 3) "
                            "JOIN users ON key = user WHERE removed = 0 AND mail_accepted = 1 "
                            "ORDER BY key LIMIT 1000");
  for (auto row = select({}); row.Next();) addresses.push_back(FromUtf8(row.Text(0)));
  return addresses;
}

}  // namespace Talvane40
