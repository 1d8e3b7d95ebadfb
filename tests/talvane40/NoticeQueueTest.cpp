// What a project has to send, through the loaded library. Clocks that are set are imitated by moving the
// times in the database.
#include "platform/contracts/NoticeQueue.h"

#include <filesystem>
#include <set>

#include "platform/StoredNames.h"
#include "tests/support/Processes.h"
#include "tests/talvane40/Projects.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

NoticeQueue NewQueue(StringView path) {
  NoticeQueue queue(Platform::Services().CreateByName(NoticeQueue::kName));
  queue.Open(path);
  return queue;
}

// "ann" replies by mail in the tests; "ben" and "cleo" are told.
class Notices : public testing::Test {
 protected:
  Notices() { world.Administer.AddUser(world.Path, u"cleo", u"cleo@example.org", true); }

  NextNotice Next(int perMinute = 1000, int uid = 1) const { return queue.Next(perMinute, uid); }

  // What is sent now: "2>ben" for the reply 2 to ben, "a>ben" for an answer.
  std::string SendAll(int uid = 1) const {
    std::string sent;
    while (const auto notice = Next(1000, uid).Notice) {
      sent += (notice->Kind == NoticeKind::Answer ? "a" : std::to_string(notice->Reply.Number)) + ">" +
              Utf8(notice->Recipient.Name) + " ";
      queue.Sent(notice->Id);
    }
    return sent;
  }

  ProjectWorld world;
  const NoticeQueue queue = NewQueue(world.Path);
  const std::shared_ptr<Project> project = world.Open();
  const bool locked = queue.Lock();
};

TEST_F(Notices, GoToEachUserWhoTakesMailButTheAuthorByReplyThenUser) {
  Reply(*project, u"s", u"first");
  Reply(*project, u"s", u"second");
  EXPECT_EQ(queue.State().Unsent, 4);
  const auto notice = Next().Notice;
  ASSERT_TRUE(notice);
  EXPECT_EQ(Utf8(notice->Title + u"|" + notice->Reply.Body + u"|" + notice->Reply.UserName + u"|" +
                 notice->Recipient.Address),
            "Release plan|first|Ann|ben@example.org");
  EXPECT_EQ(Next().Notice->MessageId, notice->MessageId);
  EXPECT_EQ(queue.State().Unsent, 4);
  EXPECT_EQ(SendAll(), "1>ben 1>cleo 2>ben 2>cleo ");
  EXPECT_EQ(queue.State().Unsent, 0);
  EXPECT_FALSE(Next().Wait);
}

TEST_F(Notices, OfPostedRepliesAreDueOnlyWithARouteAndByAProfileForItsUserAlone) {
  const NoticeRoute server{TransportId::kSmtp, u"mail.example.org:25", u"ann@home.example", u"Ann A.", 7};
  const NoticeRoute profile{TransportId::kMapi, u"Office", {}, {}, 7};
  int posted = 0;
  for (const auto& route : {std::optional<NoticeRoute>(), std::optional(profile), std::optional(server)})
    EXPECT_EQ(world.Administer.AddReply(world.Path, 1, u"ann", u"text", route), ++posted);
  EXPECT_EQ(queue.State().Unsent, 4);
  const NoticeRoute stored = Next().Notice->Route;
  EXPECT_EQ(Utf8(stored.Server + stored.Address + stored.RealName),
            "mail.example.org:25ann@home.exampleAnn A.");
  EXPECT_EQ(SendAll(), "3>ben 3>cleo ");
  EXPECT_FALSE(Next().Wait);
  EXPECT_EQ(queue.State().Unsent, 2);
  EXPECT_EQ(Next(1000, 7).Notice->Route.Server, u"Office");
  EXPECT_EQ(SendAll(7), "2>ben 2>cleo ");
}

TEST_F(Notices, NameTheLastTenEarlierOnesOfTheDiscussionToTheSameUser) {
  world.Administer.AddDiscussion(world.Path, u"Other");
  world.Administer.AddReply(world.Path, 1, u"ann", u"no user is notified", {});
  std::vector<String> told;
  for (int i = 0; i < 12; ++i) {
    Reply(*project, u"s", u"b");
    Reply(*project, u"s", u"b", 2);
    world.Administer.AddReply(world.Path, 1, u"ben", u"told by ben", NoticeRoute());
    while (const auto notice = Next().Notice) {
      if (notice->Recipient.Key == world.Ben && notice->Discussion == 1) {
        EXPECT_EQ(notice->EarlierIds, std::vector(told.end() - std::min(i, 10), told.end()));
        told.push_back(notice->MessageId);
      }
      queue.Sent(notice->Id);
    }
  }
  EXPECT_EQ(std::set(told.begin(), told.end()).size(), 12U);
  EXPECT_PRED2(Holds, Utf8(told[0]), "talvane.notice.");
}

TEST_F(Notices, AreNotSentToUsersWhoTakeNoMailAnyMore) {
  Reply(*project, u"s", u"b");
  Reply(*project, u"s", u"b");
  for (const char* change :
       {"UPDATE users SET removed = 1 WHERE name = 'ben'",
        "UPDATE users SET mail_accepted = 0 WHERE name = 'ben'",
        "UPDATE users SET email = '' WHERE name = 'ben'",
        "INSERT INTO bounces VALUES (2, '1', 0, ''), (2, '2', 0, ''), (2, '3', 0, '')"}) {
    EXPECT_EQ(Next().Notice->Recipient.Key, world.Ben);
    world.Sql(change);
    EXPECT_EQ(Utf8(Next().Notice->Recipient.Name), "cleo") << change;
    world.Sql(
        "UPDATE users SET removed = 0, mail_accepted = 1, email = 'ben@example.org' WHERE name = 'ben';"
        "INSERT INTO notices (reply, user, waiting_since) SELECT 1, 2, waiting_since FROM notices LIMIT 1");
  }
  world.Administer.RemoveUser(world.Path, u"ben");
  EXPECT_EQ(SendAll(), "1>cleo 2>cleo ");
}

TEST_F(Notices, NoMoreThanSoManyAMinuteAreGivenAlsoAfterTheClockWasSet) {
  using std::chrono::milliseconds;
  for (int i = 0; i < 4; ++i) Reply(*project, u"s", u"b");
  const auto given = [&] {
    int count = 0;
    for (; const auto notice = Next(3).Notice; ++count) queue.Sent(notice->Id);
    const auto wait = Next(3).Wait;
    EXPECT_TRUE(wait && *wait > milliseconds(0) && *wait <= milliseconds(60'000)) << count;
    return count;
  };
  EXPECT_EQ(given(), 3);
  world.Sql("UPDATE notices_given SET at = at + 86400000");
  EXPECT_EQ(given(), 0);
  world.Sql("UPDATE notices_given SET at = at - 60000");
  EXPECT_EQ(given(), 3);
  world.Sql("UPDATE notices_given SET at = at - 60000 WHERE rowid = (SELECT min(rowid) FROM notices_given)");
  EXPECT_EQ(given(), 1);
  EXPECT_THROW(Next(0), Failure);
}

TEST_F(Notices, AreDueAgainAfterThePauseWithTheFirstAttemptAndTheReason) {
  Reply(*project, u"s", u"b");
  const DueNotice fresh = *Next().Notice;
  EXPECT_EQ(fresh.Attempts, 0);
  EXPECT_EQ(fresh.FirstAttempt, u"");
  queue.Defer(fresh.Id, u"busy", std::chrono::seconds(5));
  EXPECT_EQ(SendAll(), "1>cleo ");
  EXPECT_LE(Next().Wait->count(), 5000);
  EXPECT_GT(Next().Wait->count(), 3000);
  NoticeState state = queue.State();
  EXPECT_EQ(Utf8(state.DeferredReason), "busy");
  EXPECT_EQ(state.Unsent, 1);
  EXPECT_EQ(state.Deferred, 1);

  world.Sql("UPDATE notices SET next_attempt = 1, first_attempt = 1714555800000");
  const DueNotice again = *Next().Notice;
  EXPECT_EQ(again.MessageId, fresh.MessageId);
  EXPECT_EQ(again.Attempts, 1);
  EXPECT_EQ(Utf8(again.FirstAttempt), "2024-05-01T09:30:00.000Z");
  EXPECT_EQ(queue.State().OldestAttempt, again.FirstAttempt);

  // The clock was ahead at both attempts.
  world.Sql("UPDATE notices SET first_attempt = 4102444800000");
  queue.Defer(again.Id, u"busy", std::chrono::seconds(1));
  EXPECT_LT(Utf8(queue.State().OldestAttempt), "2099");
  world.Sql("UPDATE notices SET next_attempt = 4102444800000");
  EXPECT_EQ(Next().Wait, std::chrono::hours(1));
  queue.GiveUp(again.Id, u"no such user");
  for (const std::int32_t gone : {again.Id, 999}) {
    queue.Sent(gone);
    queue.Defer(gone, u"", std::chrono::seconds(1));
    queue.GiveUp(gone, u"");
  }
  state = queue.State();
  EXPECT_EQ(state.Unsent, 0);
  EXPECT_EQ(state.GivenUp, 1);
  EXPECT_EQ(Utf8(state.GivenUpAddress + u" " + state.GivenUpReason), "ben@example.org no such user");
  world.Sql("UPDATE ended_notices SET at = at - 7 * 86400000");
  EXPECT_EQ(queue.State().GivenUp, 0);
}

// The replies 2, 4 and 5 have a route of their own.
TEST_F(Notices, OfOneRouteArePostponedTogetherWithoutAnAttempt) {
  const NoticeRoute server{TransportId::kSmtp, u"mail.example.org", {}, {}, 7};
  for (int i = 1; i <= 5; ++i) {
    if (i % 2 == 0 || i == 5)
      world.Administer.AddReply(world.Path, 1, u"Ann", u"posted", server);
    else
      Reply(*project, u"s", u"b");
  }
  queue.Untried();
  EXPECT_EQ(Next(1, 1).Notice->Reply.Number, 1);
  EXPECT_TRUE(Next(1, 1).Limited);
  EXPECT_EQ(queue.Ready(1), 10);
  queue.Untried();
  const DueNotice first = *Next(1, 1).Notice;
  queue.Untried();
  EXPECT_EQ(queue.Postpone(first.Id, std::chrono::seconds(60)), 2) << "rows that exist";
  EXPECT_EQ(queue.Next(1, 1, false).Notice->Reply.Number, 2);
  queue.Untried();
  EXPECT_EQ(queue.Ready(1), 8);
  world.Sql("UPDATE notices SET first_attempt = 1 WHERE reply = 2 AND user = 2");
  const DueNotice old = *Next().Notice;
  EXPECT_EQ(queue.Postpone(old.Id, std::chrono::hours(2)), 1) << "cleo's; ben's is to be given up";
  EXPECT_EQ(Next().Notice->Id, old.Id);
  queue.GiveUp(old.Id, u"in vain");
  EXPECT_EQ(SendAll(), "3>ben 3>cleo 4>ben 4>cleo 5>ben 5>cleo ");
  EXPECT_EQ(queue.State().Deferred, 0);
  EXPECT_FALSE(Next().Limited);
  queue.EndPauses();
  EXPECT_EQ(Next().Notice->Attempts, 0);
  EXPECT_EQ(SendAll(), "1>ben 1>cleo 2>cleo ");
}

TEST_F(Notices, ThatNobodyTriesToSendFor30DaysAreGivenUp) {
  Reply(*project, u"s", u"of which the rows exist");
  queue.Sent(Next().Notice->Id);
  world.Administer.AddReply(world.Path, 1, u"Ann", u"of an absent user",
                            NoticeRoute{1, u"Office", {}, {}, 7});
  EXPECT_EQ(queue.State().Unsent, 3);
  world.Sql(
      "UPDATE notices SET waiting_since = waiting_since - 30 * 86400000;"
      "UPDATE replies SET at = strftime('%Y-%m-%dT%H:%M:%fZ', 'now', '-31 days')");
  EXPECT_FALSE(Next().Notice);
  const NoticeState state = queue.State();
  EXPECT_EQ(state.Unsent, 0);
  EXPECT_EQ(state.GivenUp, 3);
  EXPECT_PRED2(Holds, Utf8(state.GivenUpReason), "for 30 days");
}

TEST_F(Notices, AreDroppedWithTheAnswers) {
  Reply(*project, u"s", u"b");
  Reply(*project, u"s", u"b");
  queue.Sent(Next().Notice->Id);
  queue.AddAnswer({world.Ben, u"1", {}, {}, u"text", {}});
  EXPECT_EQ(queue.Drop(), 4);
  EXPECT_EQ(queue.Drop(), 0);
  EXPECT_EQ(SendAll(), "");
}

TEST_F(Notices, AreStoppedByTheThirdReportUntilAddressOrWishIsSet) {
  std::vector<String> ids;
  const auto send = [&](int count) {
    for (int i = 0; i < count; ++i) Reply(*project, u"s", u"b");
    while (const auto notice = Next().Notice) {
      if (notice->Recipient.Key == world.Ben) ids.push_back(notice->MessageId);
      queue.Sent(notice->Id);
    }
  };
  send(4);
  String forged = ids[0], ofCleo = ids[0];
  forged.back() = forged.back() == u'0' ? u'1' : u'0';
  ofCleo.replace(ofCleo.find(u".1.2."), 5, u".1.3.");
  for (const String& id : {forged, ofCleo, String(), String(u"<x@y>"), ids[0].substr(0, ids[0].size() - 1),
                           ids[0] + u"0", String(u"talvane.notice."), String(100000, u'1')})
    EXPECT_EQ(queue.AddBounce(id, {}, u"no such user"), BounceResult::Unknown) << Utf8(id);
  EXPECT_EQ(queue.AddBounce(ids[0], {u"cleo@example.org", u"ben"}, u""), BounceResult::OtherAddress);
  const auto changed = [](std::optional<String> address, std::optional<bool> accepted) {
    return UserChange{.Name = {}, .Address = address, .MailAccepted = accepted, .Language = {}};
  };
  String address = u"BEN@example.org";
  for (const UserChange& change : {changed(u"new@example.org", {}), changed({}, true)}) {
    const std::pair<String, BounceResult> rows[] = {
        {ids[0], BounceResult::Counted}, {u" <" + ids[0] + u"@a.example> ", BounceResult::Counted},
        {ids[1], BounceResult::Counted}, {ids[2] + u"@a.example", BounceResult::Stopped},
        {ids[0], BounceResult::Stopped}, {ids[3], BounceResult::Stopped}};
    for (const auto& [id, result] : rows) EXPECT_EQ(queue.AddBounce(id, {address}, u""), result) << Utf8(id);
    EXPECT_EQ(queue.State().StoppedAddresses.size(), 1U);
    Reply(*project, u"s", u"b");
    EXPECT_EQ(queue.State().Unsent, 1) << "to cleo";
    EXPECT_EQ(SendAll().find("ben"), std::string::npos);
    world.Administer.ChangeUser(world.Path, u"ben", change);
    address = change.Address.value_or(address);
    EXPECT_TRUE(queue.State().StoppedAddresses.empty());
    for (const String& id : ids)
      EXPECT_EQ(queue.AddBounce(id, {u"ben@example.org"}, u"late"), BounceResult::Counted);
    ids.clear();
    send(4);
    EXPECT_EQ(ids.size(), 4U);
  }
}

TEST_F(Notices, AnswersAreGivenOncePerMailAndOncePerHourToAUser) {
  Reply(*project, u"s", u"b");
  const auto add = [&](std::int32_t user, StringView key) {
    return queue.AddAnswer({user, String(key), u"<1@a>", u"Re: plan", String(1'000'001, u'x'), u"too large"});
  };
  EXPECT_TRUE(add(world.Ben, u"A1"));
  const DueNotice answer = *Next().Notice;
  EXPECT_EQ(answer.Kind, NoticeKind::Answer);
  EXPECT_EQ(Utf8(answer.Recipient.Address + answer.RefusedId + answer.RefusedSubject + answer.Reason),
            "ben@example.org<1@a>Re: plantoo large");
  EXPECT_EQ(answer.RefusedText.size(), kLongestReply);
  EXPECT_FALSE(add(world.Ben, u"a2")) << "within the hour";
  EXPECT_EQ(SendAll(), "a>ben 1>ben 1>cleo ");
  EXPECT_EQ(queue.AddBounce(answer.MessageId, {}, u""), BounceResult::Counted);
  EXPECT_FALSE(add(world.Ben, u"a2")) << "within the hour after it was sent";
  EXPECT_FALSE(add(3, u"a1")) << "the same mail";
  EXPECT_TRUE(add(3, u"a3"));
  world.Sql("UPDATE answers SET at = at - 3600000");
  EXPECT_FALSE(add(world.Ben, u"a1")) << "the same mail";
  EXPECT_TRUE(add(world.Ben, u"a2"));
  EXPECT_FALSE(add(99, u"a4")) << "no such user";
  world.Sql("UPDATE answers SET at = at + 86400000");
  EXPECT_FALSE(add(3, u"a5")) << "the clock was ahead";
  world.Sql("UPDATE answers SET at = at - 3600000");
  EXPECT_TRUE(add(3, u"a5"));
  EXPECT_EQ(SendAll(), "a>ben a>cleo a>cleo ");
  world.Sql("UPDATE answers SET at = at - 31 * 86400000");
  EXPECT_TRUE(add(world.Ben, u"a1")) << "forgotten after a month";
  EXPECT_THROW(add(world.Ben, u"no key"), Failure);
}

TEST_F(Notices, OfManyUsersAreCreatedForOneReplyInPartsAndCountedAtOnce) {
  world.Sql(
      "WITH RECURSIVE number (n) AS (SELECT 1 UNION ALL SELECT n + 1 FROM number WHERE n < 100000) "
      "INSERT INTO users (name, folded_name, email, mail_accepted, role) "
      "SELECT 'u' || n, 'u' || n, 'u' || n || '@example.org', 1, 'member' FROM number");
  constexpr int kReplies = 5, kNoticesEach = 100'002;
  for (int i = 0; i < kReplies; ++i) Reply(*project, u"s", u"b");
  const auto rows = [&] {
    return Runtime::Database(world.Database().string()).Number("SELECT count(*) FROM notices");
  };
  EXPECT_EQ(rows(), 0);
  EXPECT_EQ(queue.State().Unsent, kReplies * kNoticesEach);
  std::int32_t last = 0;
  for (int i = 1; i <= 1'010; ++i) {
    const DueNotice notice = *Next(1'000'000).Notice;
    EXPECT_EQ(notice.Reply.Number, 1);
    EXPECT_GT(notice.Recipient.Key, last);
    last = notice.Recipient.Key;
    queue.Sent(notice.Id);
  }
  EXPECT_EQ(rows(), 990);
  EXPECT_EQ(queue.State().Unsent, kReplies * kNoticesEach - 1'010);
  world.Sql("UPDATE users SET mail_accepted = 0 WHERE key > 3");
  EXPECT_EQ(Utf8(Next(1'000'000).Notice->Recipient.Name), "ben");
  EXPECT_EQ(Next(1'000'000).Notice->Reply.Number, 2);
  EXPECT_EQ(queue.State().Unsent, 2 * (kReplies - 1));
}

TEST(NoticeLock, IsHeldByOneObjectUntilItIsReleasedOrItsProcessEnds) {
  ProjectWorld world;
  const fs::path file = world.Database().string() + "-notices";
  int ready[2];
  ASSERT_EQ(pipe(ready), 0);
  const pid_t other = StartProcess([&] {
    const NoticeQueue queue = NewQueue(world.Path);
    EXPECT_TRUE(queue.Lock() && queue.Lock());
    if (write(ready[1], "!", 1) == 1) pause();
  });
  char byte = 0;
  EXPECT_EQ(read(ready[0], &byte, 1), 1);
  const NoticeQueue queue = NewQueue(world.Path);
  EXPECT_FALSE(queue.Lock());
  EXPECT_THROW(queue.Next(100, 1), Failure);
  EXPECT_THROW(queue.Drop(), Failure);
  KillProcess(other);
  EXPECT_TRUE(queue.Lock());
  WriteFile(ToUtf8(world.Path), ReadFile(ToUtf8(world.Path)) + "; x\n");
  EXPECT_FALSE(queue.Open(world.Path)) << "the same project stays locked";
  {
    const NoticeQueue second = NewQueue(world.Path);
    EXPECT_FALSE(second.Lock());
    queue.Unlock();
    EXPECT_TRUE(second.Lock());
    EXPECT_FALSE(queue.Lock());
  }
  EXPECT_TRUE(queue.Lock());
  EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
  queue.Unlock();
  fs::remove(file);
  fs::create_symlink("elsewhere", file);
  EXPECT_PRED2(Holds, FailureText([&] { queue.Lock(); }), "can't be opened");
  EXPECT_THROW(queue.Open(world.PathOf("lost.TVS")), Failure);
  EXPECT_THROW(queue.State(), Failure);
}

}  // namespace
}  // namespace Tests
