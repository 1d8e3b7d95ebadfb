// What becomes of mails that one processor handles while the mailbox, its project and its users change.
#include <unistd.h>

#include <filesystem>
#include <memory>
#include <utility>
#include <vector>

#include "gateway/delivery/HeldFolder.h"
#include "gateway/delivery/MailKey.h"
#include "gateway/delivery/MailProcessor.h"
#include "gateway/delivery/MailboxRecords.h"
#include "platform/contracts/ProjectAdministration.h"
#include "src/mailbox/MailboxRecords.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Gateway::Outcome;

class Processor : public testing::Test {
 protected:
  Processor() {
    for (const StringView name : {u"Apollo", u"Gemini"}) {
      const String path = PathOf(name);
      projects.CreateProject(path, name, u"owner", u"", u"word");
      projects.AddUser(path, u"ann", u"ann@x.org", true);
      projects.AddDiscussion(path, u"Plan");
    }
    Bind(u"Apollo");
  }

  String PathOf(StringView project) const { return world.PathOf(Utf8(project) + ".TVS"); }
  void Bind(StringView project) const {
    TvEmailServices::WriteMailBoxRecord(PathOf(project), u"owner", u"word", u"Box");
  }

  // The outcome of a new mail, or of the mail of that number.
  Outcome Process(Gateway::MailProcessor& processor, const std::string& from = "ann@x.org", int number = 0) {
    return processor
        .Process(
            {.Source = "-",
             .Bytes = "From: " + from + "\nMessage-ID: <" + std::to_string(number ? number : ++last) +
                      "@x>\nSubject: Re: (Ostrand Talvane Project P, Ostrand Talvane Discussion 1)\n\nYes.\n",
             .Fault = {}})
        .Result;
  }

  // The users of the project's replies.
  std::string Replies(StringView project) const {
    std::string users;
    const ProjectDescription description = projects.Describe(PathOf(project));
    for (const DescribedReply& reply : description.Discussions.at(0).Replies)
      users += Utf8(reply.UserName) + " ";
    return users;
  }

  World world;
  const ProjectAdministration projects{world.Services.CreateByName(ProjectAdministration::kName)};
  int last = 0;
};

TEST_F(Processor, SeesAChangeOfTheRecordAndOfTheProjectsFilesWithTheNextMail) {
  Gateway::MailProcessor processor(u"box", {});
  EXPECT_EQ(Process(processor), Outcome::Delivered);
  Bind(u"Gemini");
  EXPECT_EQ(Process(processor), Outcome::Delivered);
  EXPECT_EQ(Process(processor, "ann@x.org", 2), Outcome::Duplicate);
  EXPECT_EQ(Replies(u"Apollo") + Replies(u"Gemini"), "ann ann ");

  // Another file takes the database's place, as after a restore.
  for (const auto& file : fs::directory_iterator(world.Home.Path())) {
    if (!file.path().filename().string().starts_with("Gemini") || file.path().extension() == ".TVS") continue;
    fs::copy_file(file.path(), world.Home.Path() / "copy");
    fs::rename(world.Home.Path() / "copy", file.path());
  }
  EXPECT_EQ(Process(processor), Outcome::Delivered);
  EXPECT_EQ(Replies(u"Gemini"), "ann ann ");

  Gateway::RemoveMailbox(u"BOX");
  EXPECT_EQ(Process(processor), Outcome::Retry);
  Bind(u"Apollo");
  EXPECT_EQ(Process(processor), Outcome::Delivered);
  EXPECT_EQ(Replies(u"Apollo"), "ann ann ");
}

// While one exists, the open descriptors of a file are those of a pipe, which can't be synced.
class Unsyncable {
 public:
  explicit Unsyncable(const fs::path& file) {
    int ends[2];
    if (pipe(ends) != 0) return;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
      std::error_code error;
      if (fs::read_symlink(entry.path(), error) != file) continue;
      const int descriptor = std::stoi(entry.path().filename().string());
      replaced_.emplace_back(descriptor, dup(descriptor));
      dup2(ends[0], descriptor);
    }
    for (const int end : ends) close(end);
  }
  Unsyncable(const Unsyncable&) = delete;
  Unsyncable& operator=(const Unsyncable&) = delete;
  ~Unsyncable() {
    for (const auto& [descriptor, copy] : replaced_) dup2(copy, descriptor), close(copy);
  }

 private:
  std::vector<std::pair<int, int>> replaced_;
};

TEST_F(Processor, TriesMailsAgainThatDidntReachTheDisk) {
  Gateway::MailProcessor processor(u"box", {});
  processor.SyncLater();
  for (const bool breaks : {false, true, false}) {
    std::vector<Gateway::MailResult> results(2);
    results[0].Result = Process(processor);
    results[1].Result = Process(processor, "ann@x.org", last);
    const auto unsyncable =
        breaks ? std::make_unique<Unsyncable>(world.Home.Path() / "Apollo.db-wal") : nullptr;
    const bool synced = processor.Sync(results);
    EXPECT_EQ(synced, last == 1);
    EXPECT_EQ(results[0].Result, synced ? Outcome::Delivered : Outcome::Retry);
    EXPECT_EQ(results[1].Result, synced ? Outcome::Duplicate : Outcome::Retry);
    EXPECT_EQ(Holds(Utf8(results[0].Reason), "Apollo.db-wal"), !synced);
  }
  Gateway::MailProcessor again(u"box", {});
  EXPECT_EQ(Process(again, "ann@x.org", last), Outcome::Duplicate);
  const Unsyncable unsyncable(world.Home.Path() / "Apollo.db-wal");
  EXPECT_EQ(Process(again, "ann@x.org", last), Outcome::Retry)
      << "another process's reply may not be on disk";
}

TEST_F(Processor, PostsAStrangersReplyInTheNameOfTheMailboxsUser) {
  Gateway::DeliverySettings settings;
  settings.Policy.PostStrangers = true;
  Gateway::MailProcessor processor(u"Box", settings);
  for (const char* from : {"eve@x.org", "ann@x.org", "eve@x.org", "\"Ann\" <ANN@x.org.>"})
    EXPECT_EQ(Process(processor, from), Outcome::Delivered);
  EXPECT_EQ(Replies(u"Apollo"), "owner ann owner ann ");
}

TEST_F(Processor, DeletesHeldMailWhoseDaysAreOver) {
  Gateway::DeliverySettings settings;
  settings.Hold = true;
  Gateway::MailProcessor processor(u"Box", settings);
  EXPECT_EQ(Process(processor, "eve@x.org"), Outcome::Held);
  const fs::path folder = Gateway::HeldFolder(u"Box");
  for (const auto& entry : fs::recursive_directory_iterator(folder))
    fs::last_write_time(entry, fs::file_time_type::clock::now() - std::chrono::hours(24 * 91));
  EXPECT_EQ(Process(processor, "eve@x.org"), Outcome::Held);
  EXPECT_EQ(1, std::distance(fs::directory_iterator(folder / "new"), {}));
}

TEST(MailKey, IsEqualForCopiesOfOneMailAlone) {
  const auto key = [](const char16_t* id, const char16_t* from, std::string_view bytes) {
    return Gateway::MailKey({.FromAddress = from, .MessageId = id, .Subject = {}, .Body = {}}, bytes);
  };
  const std::string first = key(u"<1@x>", u"ann@x.org", "a");
  EXPECT_EQ(first, "fab1e7a773db332f8dc4294b6d43ca05eed9006c2fb15b9daa12ecb8a6b45bd3");
  EXPECT_EQ(first, key(u"<1@x>", u"Ann@X.org.", "other bytes"));
  EXPECT_NE(first, key(u"<2@x>", u"ann@x.org", "a"));
  EXPECT_NE(first, key(u"<1@x>", u"eve@x.org", "a"));
  EXPECT_EQ(key(u"", u"ann@x.org", "x"), "3a238eb1f09ceb1e5f431c9c7bda656fbe9dd1323f8aa1f8a685642919f5259c");
  EXPECT_NE(key(u"", u"ann@x.org", "a"), key(u"", u"ann@x.org", "b"));
}

}  // namespace
}  // namespace Tests
