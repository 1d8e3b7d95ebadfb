// What a project has to send, through the loaded library. Clocks that are set are imitated by moving the
// times in the database.
#include "platform/contracts/NoticeQueue.h"

#include <filesystem>

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

}  // namespace
}  // namespace Tests
