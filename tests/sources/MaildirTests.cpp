// The Maildir as a queue, and the pauses after failures.
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <fstream>
#include <thread>

#include "gateway/sources/BackOff.h"
#include "tests/sources/QueueRecorder.h"
#include "tests/support/World.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Gateway::Outcome;
using Tests::FailureOf;
using Tests::WriteFile;

class MaildirQueueTest : public testing::Test {
 protected:
  MaildirQueueTest() {
    for (const char* name : {"new", "cur", "tmp"}) fs::create_directories(folder_ / name);
    queue_ = Make(folder_);
  }

  static std::unique_ptr<Gateway::MailQueue> Make(const fs::path& folder) {
    Gateway::QueueSettings settings;
    settings.Folder = folder;
    return Gateway::MakeQueue(settings);
  }

  void Put(const std::string& name, const std::string& text) { WriteFile(folder_ / "new" / name, text); }

  std::string Pass() {
    EXPECT_TRUE(queue_->Pass(recorder_.Sink()));
    return recorder_.Take();
  }

  // The names in a folder, sorted.
  std::string Names(const char* part) const {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder_ / part)) names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
    return text;
  }

  Tests::World world_;
  const fs::path folder_ = world_.Home.Path() / "Maildir";
  Tests::QueueRecorder recorder_;
  std::unique_ptr<Gateway::MailQueue> queue_;
};

TEST_F(MaildirQueueTest, PassesMailInOrderOfArrivalAndMovesWhatIsSettled) {
  Put("1000000000.M20P1.h", "third");
  Put("1000000000.V8I2M3.h:2,", "From a@b Mon Jan 31 12:00:00 2022\nsecond");
  Put("999999999.9_1.h", "first");
  Put("unusual", "last");
  Put(".hidden", "none");
  recorder_.Answer = [](const Gateway::RawMail& mail) {
    EXPECT_EQ(mail.EnvelopeSender.value_or("none"), mail.Bytes == "second" ? "a@b" : "none");
    return mail.Bytes == "third"   ? Outcome::Retry
           : mail.Bytes == "first" ? Outcome::Held
                                   : Outcome::Duplicate;
  };
  EXPECT_EQ(Pass(), "first|second|third|last");
  EXPECT_EQ(Names("cur"), "1000000000.V8I2M3.h:2,S 999999999.9_1.h:2,S unusual:2,S");
  EXPECT_EQ(Pass(), "third");
}

TEST_F(MaildirQueueTest, NeverReplacesAMailInCur) {
  Put("1.a", "new");
  WriteFile(folder_ / "cur" / "1.a:2,S", "old");
  EXPECT_EQ(Pass(), "new");
  EXPECT_EQ(Names("cur"), "1.a:2,S 1.a_1:2,S");
  EXPECT_EQ(Tests::ReadFile(folder_ / "cur" / "1.a:2,S"), "old");
}

TEST_F(MaildirQueueTest, OpensNoLinksPipesAndFolders) {
  WriteFile(world_.Home.Path() / "secret", "secret");
  fs::create_symlink(world_.Home.Path() / "secret", folder_ / "new" / "1.link");
  ASSERT_EQ(mkfifo((folder_ / "new" / "2.pipe").c_str(), 0600), 0);
  fs::create_directory(folder_ / "new" / "3.folder");
  Put("4.mail", "mail");
  recorder_.Answer = [](const Gateway::RawMail& mail) {
    return mail.Fault.empty() ? Outcome::Delivered : mail.FaultOutcome;
  };
  const std::string fault = "(This is a symbolic link, a folder or a device, and no mail. Remove it.)";
  EXPECT_EQ(Pass(), fault + "|" + fault + "|" + fault + "|mail");
  EXPECT_EQ(Pass(), "") << "each is reported once";
  fs::remove(folder_ / "new" / "3.folder");
  EXPECT_EQ(Pass(), "");
  fs::create_directory(folder_ / "new" / "3.folder");
  EXPECT_EQ(Pass(), fault);
  EXPECT_EQ(Names("new"), "1.link 2.pipe 3.folder");
}

TEST_F(MaildirQueueTest, PassesTheHeaderOfAMailThatIsTooLarge) {
  Put("1.large", "Subject: x\n\nbody\n");
  fs::resize_file(folder_ / "new" / "1.large", std::uintmax_t{5} << 30);
  recorder_.Answer = [](const Gateway::RawMail& mail) {
    EXPECT_EQ(mail.Bytes, "Subject: x\n\n");
    return mail.FaultOutcome == Outcome::Refused ? Outcome::Held : Outcome::Retry;
  };
  EXPECT_EQ(
      Pass(),
      "(The mail is larger than 128 MB, so only its header was read. Send it again without attachments.)");
  EXPECT_EQ(Names("cur"), "1.large:2,S");
}

TEST_F(MaildirQueueTest, TakesFilesThatAppearAndVanishDuringAPass) {
  Put("1.a", "a");
  Put("2.b", "b");
  recorder_.Answer = [&](const Gateway::RawMail&) {
    fs::remove(folder_ / "new" / "2.b");
    Put("3.c", "c");
    return Outcome::Delivered;
  };
  EXPECT_EQ(Pass(), "a");
  queue_->Wait(1h);  // what appeared since the pass began ends it at once
  EXPECT_EQ(Pass(), "c");
}

TEST_F(MaildirQueueTest, SaysWhatIsWrongWithItsFolder) {
  const fs::path home = world_.Home.Path();
  WriteFile(home / "file", "");
  fs::create_directories(home / "half" / "new");
  const std::pair<fs::path, std::string> cases[] = {
      {home / "file", "file is no Maildir: new: Not a directory. Name the folder that holds new, cur"},
      {home / "none", "none is no Maildir: new: No such file or directory"},
      {home / "half", "half is no Maildir: cur: No such file or directory"}};
  for (const auto& [path, text] : cases) {
    const auto queue = Make(path);
    EXPECT_NE(FailureOf([&] { queue->Check(); }).find(text), std::string::npos) << path;
    EXPECT_NE(FailureOf([&] { queue->Pass(recorder_.Sink()); }).find(text), std::string::npos) << path;
  }
  EXPECT_NE(FailureOf([] { Make(""); }).find("setting folder is missing"), std::string::npos);
  EXPECT_NE(FailureOf([] { Make("mail"); }).find("setting folder is mail, which"), std::string::npos);
}

TEST_F(MaildirQueueTest, IsInterruptedByAnotherThread) {
  Put("1.a", "a");
  Put("2.b", "b");
  EXPECT_EQ(Pass(), "a|b");
  std::jthread other([&] {
    std::this_thread::sleep_for(50ms);
    queue_->Interrupt();
  });
  queue_->Wait(1h);
  Put("3.c", "c");
  EXPECT_FALSE(queue_->Pass(recorder_.Sink()));
  EXPECT_EQ(recorder_.Take(), "");
}

TEST_F(MaildirQueueTest, Passes20000MailsWithAFewDescriptors) {
  for (int i = 0; i < 20000; ++i) std::ofstream(folder_ / "new" / (std::to_string(1000000 + i) + ".x")) << i;
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  const rlimit few{64, before.rlim_max};
  setrlimit(RLIMIT_NOFILE, &few);
  int next = 0;
  EXPECT_TRUE(queue_->Pass([&](const Gateway::RawMail& mail) -> std::optional<Outcome> {
    EXPECT_EQ(mail.Bytes, std::to_string(next++));
    return Outcome::Delivered;
  }));
  setrlimit(RLIMIT_NOFILE, &before);
  EXPECT_EQ(next, 20000);
  EXPECT_EQ(Pass(), "");
}

TEST(BackOffTest, DoublesUpTo15MinutesAndIsShortenedByUpToHalf) {
  const std::pair<std::size_t, std::chrono::milliseconds> cases[] = {
      {0, 0s}, {1, 5s}, {2, 10s}, {8, 640s}, {9, 900s}, {10, 900s}, {1000000, 900s}};
  for (const auto& [failures, longest] : cases) {
    EXPECT_EQ(Gateway::BackOffTime(failures, 0), longest) << failures;
    EXPECT_EQ(Gateway::BackOffTime(failures, 1), longest / 2) << failures;
  }
}

}  // namespace
