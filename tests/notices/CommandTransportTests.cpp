// Mails that a command takes, and how its end is understood.
#include <gtest/gtest.h>
#include <signal.h>

#include <thread>

#include "gateway/notices/CommandTransport.h"
#include "tests/support/Interrupting.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace Gateway;
using namespace std::chrono_literals;
using Kind = SendResult::Kind;

struct CommandTransportTest : testing::Test {
  SendResult Send(const std::string& command, const std::string& bytes = kBytes,
                  std::chrono::milliseconds longest = 10s) const {
    return CommandTransport(Platform::FromUtf8(command), longest)
        .Send({"box@example.org", "ann@example.net", bytes});
  }
  std::string File(const char* name) const { return (world_.Home.Path() / name).string(); }

  static constexpr const char* kBytes = "From: b@example.org\nTo: Ann <ann@example.net>\n\n.\nx";
  World world_;
};

TEST_F(CommandTransportTest, TellsWhatTheEndOfACommandMeans) {
  const struct {
    std::string Command;
    Kind Result;
    const char* Reason;
  } rows[] = {
      {"exit 0", Kind::Sent, ""},
      {"echo sent; cat >/dev/null", Kind::Sent, ""},
      {"exit 64", Kind::Unreachable, "The command exit 64 failed: exit code 64"},
      {"exit 65", Kind::Refused, "refused the mail: exit code 65"},
      {"exit 67", Kind::Refused, "refused the mail: exit code 67"},
      {"echo no\x1B such; echo host >&2; exit 68", Kind::Refused, "exit code 68: no such host"},
      {"exit 69", Kind::Deferred, "exit code 69"},
      {"exit 75", Kind::Deferred, "exit code 75"},
      {"exit 1", Kind::Deferred, "exit code 1"},
      {"exit 77", Kind::Unreachable, "exit code 77"},
      {"exit 78", Kind::Unreachable, "exit code 78"},
      {"/", Kind::Unreachable, "exit code 126"},
      {"tvmail-no-program", Kind::Unreachable, "exit code 127"},
      {"a 'b", Kind::Deferred, "exit code 2"},
      {"kill -11 $$", Kind::Deferred, "ended by signal 11"},
      {"yes | head -c 3000000; echo the end; exit 75", Kind::Deferred, "the end"},
      {"sleep 1 & exit 0", Kind::Sent, ""},
      {"trap '' TERM; sleep 60", Kind::Unreachable, " was ended after 0 s."},
  };
  for (const auto& row : rows) {
    const bool slow = row.Command.starts_with("trap");
    const SendResult result = Send(row.Command, kBytes, slow ? 100ms : 10s);
    EXPECT_EQ(result.Result, row.Result) << row.Command;
    EXPECT_PRED2(Holds, Utf8(result.Reason), row.Reason);
    EXPECT_EQ(result.Reason.empty(), row.Result == Kind::Sent);
    EXPECT_LT(result.Reason.size(), 1200u);
  }
}

TEST_F(CommandTransportTest, GivesTheCommandTheMailAndNothingElse) {
  setenv("NOTIFY_SOCKET", "/x", 1);
  const std::string out = File("out");
  const std::string large = std::string(kBytes) + std::string(std::size_t{4} << 20, 'y');
  EXPECT_EQ(Send("exit 0", large).Result, Kind::Sent);
  EXPECT_EQ(Send("cat >" + out, large).Result, Kind::Sent);
  EXPECT_TRUE(ReadFile(out) == large);
  EXPECT_EQ(
      Send("(echo $NOTIFY_SOCKET $PATH; ls /proc/self/fd; tty </dev/tty; true) >" + out + " 2>/dev/null")
          .Result,
      Kind::Sent);
  EXPECT_PRED2(Holds, ReadFile(out), ":/usr/local/sbin:/usr/sbin:/sbin:/usr/lib\n0\n1\n2\n3\n");
  EXPECT_EQ(ReadFile(out).front(), '/');  // of PATH
  unsetenv("NOTIFY_SOCKET");
}

TEST_F(CommandTransportTest, PassesOnlyAMailThatNamesItsRecipientAlone) {
  const std::pair<const char*, bool> rows[] = {
      {"To: ann@example.net\n\nCc: b@c\n", true},
      {"to : =?utf-8?q?=C3=84nn?=\n <ANN@EXAMPLE.NET>\nSubject: To: b@c\n\n", true},
      {"To: <ann@example.net>", true},
      {"", false},
      {"Subject: x\n\nTo: ann@example.net\n", false},
      {"To: bob@example.net\n\n", false},
      {"To: ann@example.net, bob@example.net\n\n", false},
      {"To: ann@example.net,\n bob@example.net\n\n", false},
      {"To: ann@example.net\nTo: ann@example.net\n\n", false},
      {"To: ann@example.net\nCC: bob@example.net\n\n", false},
      {"Bcc: bob@example.net\nTo: ann@example.net\n\n", false},
      {"To: ann@example.net\r\nResent-To: bob@example.net\r\n\r\n", false}};
  for (const auto& [bytes, sent] : rows)
    EXPECT_EQ(Send("exit 0", bytes).Result, sent ? Kind::Sent : Kind::Refused) << bytes;
}

TEST_F(CommandTransportTest, ChecksACommandWithoutAMail) {
  const std::pair<const char*, const char*> rows[] = {
      {"cat -n", ""},
      {"A=1 \"cat\"", ""},
      {"touch sent", ""},
      {"tvmail-no-program -t", "The program tvmail-no-program of the command for sending wasn't found."},
      {"cat 'x", "The command cat 'x failed: "}};
  for (const auto& [command, reason] : rows) {
    CommandTransport transport(Platform::FromUtf8(command));
    const std::string failure = FailureText([&] { transport.Check(); });
    EXPECT_PRED2(Holds, failure, reason);
    EXPECT_EQ(failure.empty(), *reason == '\0') << failure;
  }
  EXPECT_FALSE(std::filesystem::exists("sent"));
}

TEST_F(CommandTransportTest, EndsTheCommandWithAllItStartedWhenItIsInterrupted) {
  const std::string out = File("out");
  CommandTransport transport(Platform::FromUtf8("trap '' TERM; mkfifo " + out + "; (cat " + out +
                                                ") & echo $! >" + out + "2; mv " + out + "2 " + out +
                                                "3; sleep 60"));
  const auto interrupt = [&] {
    while (!std::filesystem::exists(out + "3")) std::this_thread::sleep_for(1ms);
    transport.Interrupt();
  };
  const auto send = [&] {
    EXPECT_EQ(transport.Send({"", "ann@example.net", kBytes}).Result, Kind::Unreachable);
  };
  EXPECT_LT(SleepsAfter(interrupt, send), kSoon);
  send();
  const int child = std::stoi(ReadFile(out + "3"));
  for (int i = 0; i < 500 && kill(child, 0) == 0; ++i) std::this_thread::sleep_for(1ms);
  const std::string state =
      kill(child, 0) == 0 ? ReadFile("/proc/" + std::to_string(child) + "/stat") : ") Z";
  EXPECT_PRED2(Holds, state, ") Z");  // nobody may be there to reap it
}

}  // namespace
}  // namespace Tests
