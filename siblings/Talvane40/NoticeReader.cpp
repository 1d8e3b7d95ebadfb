#include "siblings/Talvane40/NoticeReader.h"

#include <algorithm>

#include "platform/CheckedArithmetic.h"

namespace Talvane40 {
namespace {

std::int32_t NumberAt(const Runtime::Rows& row, int column) {
  return Narrow<std::int32_t>(row.Integer(column));
}

String TextAt(const Runtime::Rows& row, int column) {
  return FromUtf8(row.Text(column));
}

}  // namespace

// Of the earlier replies only the last 100 are looked at, so that a long discussion costs no more.
NoticeReader::NoticeReader(Runtime::Database& database, const NoticeIds& ids)
    : ids_(ids),
      notice_(
          database,
          "SELECT notices.id, attempts, strftime('%Y-%m-%dT%H:%M:%fZ', first_attempt / 1000.0, 'unixepoch'), "
          "reply, answer, mail_since, key, name, email, mail_accepted, role = 'owner', language "
          "FROM notices JOIN users ON key = user WHERE notices.id = ?"),
      reply_(database,
             "SELECT discussion, title, subject, body, name, at, replies.id, user, email, "
             "transport, server, address, real_name, uid FROM replies "
             "JOIN users ON key = user JOIN discussions ON number = discussion "
             "LEFT JOIN routes ON reply = replies.id WHERE replies.id = ?"),
      earlier_(database,
               "SELECT id FROM (SELECT id, user FROM replies WHERE discussion = ? AND id < ? AND id > ? "
               "ORDER BY id DESC LIMIT 100) WHERE user <> ? "
               "AND NOT EXISTS (SELECT 1 FROM quiet_replies WHERE reply = id) ORDER BY id DESC LIMIT 10"),
      answer_(database, "SELECT id, message_id, subject, text, reason FROM answers WHERE id = ?") {}

std::optional<DueNotice> NoticeReader::Read(std::int64_t id) {
  auto row = notice_({id});
  if (!row.Next()) return std::nullopt;
  DueNotice notice;
  notice.Id = NumberAt(row, 0);
  notice.Attempts = NumberAt(row, 1);
  notice.FirstAttempt = TextAt(row, 2);
  notice.Recipient = {NumberAt(row, 6),    TextAt(row, 7),       TextAt(row, 8),
                      row.Integer(9) != 0, row.Integer(10) != 0, TextAt(row, 11)};
  if (row.Type(3) != Runtime::ColumnType::Null)
    AddReply(notice, row.Integer(3), row.Integer(5));
  else
    AddAnswer(notice, row.Integer(4));
  return notice;
}

void NoticeReader::AddReply(DueNotice& notice, std::int64_t reply, std::int64_t earliest) {
  auto row = reply_({reply});
  if (!row.Next()) return;
  notice.Kind = NoticeKind::Reply;
  notice.Discussion = NumberAt(row, 0);
  notice.Title = TextAt(row, 1);
  notice.Reply = {TextAt(row, 2),   TextAt(row, 3),   TextAt(row, 4), TextAt(row, 5),
                  NumberAt(row, 6), NumberAt(row, 7), TextAt(row, 8)};
  notice.Route = {NumberAt(row, 9), TextAt(row, 10), TextAt(row, 11), TextAt(row, 12), NumberAt(row, 13)};
  notice.MessageId = ids_.OfReply(notice.Reply.Number, notice.Recipient.Key);
  notice.ThreadId = ids_.OfDiscussion(notice.Discussion);
  AddEarlierIds(notice, earliest);
}

void NoticeReader::AddEarlierIds(DueNotice& notice, std::int64_t earliest) {
  for (auto row = earlier_({notice.Discussion, notice.Reply.Number, earliest, notice.Recipient.Key});
       row.Next();)
    notice.EarlierIds.push_back(ids_.OfReply(NumberAt(row, 0), notice.Recipient.Key));
  std::ranges::reverse(notice.EarlierIds);
}

void NoticeReader::AddAnswer(DueNotice& notice, std::int64_t answer) {
  auto row = answer_({answer});
  if (!row.Next()) return;
  notice.Kind = NoticeKind::Answer;
  notice.MessageId = ids_.OfAnswer(NumberAt(row, 0));
  notice.RefusedId = TextAt(row, 1);
  notice.RefusedSubject = TextAt(row, 2);
  notice.RefusedText = TextAt(row, 3);
  notice.Reason = TextAt(row, 4);
}

}  // namespace Talvane40
