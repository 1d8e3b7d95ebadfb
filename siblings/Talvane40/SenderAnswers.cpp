#include "siblings/Talvane40/SenderAnswers.h"

#include "siblings/Talvane40/NoticeTime.h"

namespace Talvane40 {
namespace {

using namespace Platform;

constexpr std::int64_t kPause = kHour;  // between the answers to one user
constexpr std::int64_t kRemembered = 30 * kDay;
constexpr std::size_t kLongestLine = 1000;  // characters of what a mail has in one line
constexpr std::size_t kLongestReason = 4000;

// True if the user takes mail, and has got no answer to this mail, and none to another one within the hour.
// An answer from the future, by a clock that was wrong, counts as given now.
bool IsAllowed(Runtime::Database& database, const RefusedMail& mail, std::int64_t now) {
  Runtime::Statement(database, "UPDATE answers SET at = ?1 WHERE at > ?1").Run({now});
  Runtime::Statement(database, "DELETE FROM answers WHERE at < ? AND waits = 0").Run({now - kRemembered});
  Runtime::Statement select(database,
                            "SELECT EXISTS (SELECT 1 FROM recipients WHERE key = ?1)"
                            " AND NOT EXISTS (SELECT 1 FROM answers WHERE mail = ?2)"
                            " AND NOT EXISTS (SELECT 1 FROM answers WHERE user = ?1 AND at > ?3)");
  auto row = select({mail.UserKey, ToUtf8(mail.Key), now - kPause});
  return row.Next() && row.Integer(0) != 0;
}

}  // namespace

String Shortened(String text, std::size_t longest) {
  if (text.size() <= longest) return text;
  text.resize(IsSurrogatePair(text, longest - 1) ? longest - 1 : longest);
  return text;
}

bool AddAnswer(Runtime::Database& database, const RefusedMail& mail) {
  Runtime::Transaction transaction(database);
  const std::int64_t now = Now();
  const bool allowed = IsAllowed(database, mail, now);
  if (allowed) {
    Runtime::Statement(database,
                       "INSERT INTO answers (user, mail, message_id, subject, text, reason, at) "
                       "VALUES (?, ?, ?, ?, ?, ?, ?)")
        .Run({mail.UserKey, ToUtf8(mail.Key), ToUtf8(Shortened(mail.MessageId, kLongestLine)),
              ToUtf8(Shortened(mail.Subject, kLongestLine)), ToUtf8(Shortened(mail.Text, kLongestReply)),
              ToUtf8(Shortened(mail.Reason, kLongestReason)), now});
    Runtime::Statement(database,
                       "INSERT INTO notices (answer, user, waiting_since) VALUES (last_insert_rowid(), ?, ?)")
        .Run({mail.UserKey, now});
  }
  transaction.Commit();
  return allowed;
}

}  // namespace Talvane40
