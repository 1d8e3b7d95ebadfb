// Mails on their way to SMTP servers that take them, refuse them, break off, or are hostile.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <thread>

#include "gateway/notices/NoticeSettings.h"
#include "gateway/notices/SmtpTransport.h"
#include "platform/Failure.h"
#include "tests/notices/ScriptedSmtpServer.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace Gateway;
using namespace std::chrono_literals;
using Answers = ScriptedSmtpServer::Answers;
using Kind = SendResult::Kind;

const OutgoingMail kMail{"box@example.org", "ann@example.net", "Subject: x\n\nHello\n"};

std::string Text(const SendResult& result) {
  return std::to_string(static_cast<int>(result.Result)) + " " + Utf8(result.Reason);
}

struct SmtpTransportTest : testing::Test {
  SmtpTransportTest() {
    server_.PasswordFile = (world_.Home.Path() / "password").string();
    WriteFile(server_.PasswordFile, "secret\n");
    chmod(server_.PasswordFile.c_str(), 0600);
  }

  SmtpTransport To(const ScriptedSmtpServer& server) const {
    return {Platform::FromUtf8(server.Host()), server_, times_};
  }

  World world_;
  SmtpServer server_;
  SmtpTimes times_;
};

TEST_F(SmtpTransportTest, SendsTheExactBytesOverOneConnection) {
  const std::pair<std::string, std::string> rows[] = {
      {"A: b\n\nx\n", "A: b\r\n\r\nx\r\n"},
      {"A: b\n\n.\n..\n.x\n\n", "A: b\r\n\r\n..\r\n...\r\n..x\r\n\r\n"},
      {"A: b\n\nno end", "A: b\r\n\r\nno end\r\n"},
      {"A: b\n\n.", "A: b\r\n\r\n..\r\n"},
      {"A: b\n\nx\r.\r\ny", "A: b\r\n\r\nx\r\n..\r\ny\r\n"},
      {".\n", "..\r\n"},
      {"", ""}};
  ScriptedSmtpServer server({});
  SmtpTransport transport = To(server);
  std::string expected;
  for (const auto& [bytes, sent] : rows) {
    EXPECT_EQ(Text(transport.Send({bytes.empty() ? "" : "box@example.org", "ann@example.net", bytes})), "0 ");
    expected += bytes.empty() ? "MAIL FROM:<>\r\n" : "MAIL FROM:<box@example.org>\r\n";
    expected += "RCPT TO:<ann@example.net>\r\nDATA\r\n" + sent + ".\r\n";
  }
  const std::string received = server.Received(), begin = received.substr(0, received.find('\n') + 1);
  EXPECT_TRUE(begin.starts_with("+EHLO ")) << begin;
  EXPECT_EQ(received, begin + expected);
}

TEST_F(SmtpTransportTest, TellsWhatAnAnswerMeans) {
  const std::string lines = "250-h\r\n250-AUTH PLAIN\r\n250 STARTTLS";
  const struct {
    Answers Server;
    Kind Result;
    const char* Reason;
  } rows[] = {
      {{{"", "554 no \x1B[31mservice"}},
       Kind::Unreachable,
       " takes no mail from this machine: 554 no [31mservice."},
      {{{"", "450 later"}}, Kind::Unreachable, " can't take the mail now: 450 later"},
      {{{"", "* OK IMAP4rev1"}}, Kind::Unreachable, "can't be understood: * OK IMAP4rev1"},
      {{{"", "close"}}, Kind::Unreachable, " closed the connection."},
      {{{"", "silent"}}, Kind::Unreachable, " didn't answer in time."},
      {{{"", "endless"}}, Kind::Unreachable, " sends more than it was asked for"},
      {{{"", "flood"}}, Kind::Unreachable, " sends more than it was asked for"},
      {{{"EHLO", "502 no"}, {"HELO", "550 no"}},
       Kind::Unreachable,
       " takes no mail from this machine: 550 no."},
      {{{"EHLO", "502 no"}}, Kind::Sent, ""},
      {{{"EHLO", lines}, {"STARTTLS", "454 no"}}, Kind::Unreachable, "No encrypted connection to 127.0.0.1:"},
      {{{"EHLO", "endless"}}, Kind::Unreachable, " sends more than it was asked for"},
      {{{"MAIL", "550 5.7.1\r\n"}}, Kind::Unreachable, " takes no mail from this sender: 550 5.7.1."},
      {{{"MAIL", "552 too large"}}, Kind::Refused, " refused the mail: 552 too large"},
      {{{"MAIL", "452 full"}}, Kind::Deferred, " can't take the mail now: 452 full"},
      {{{"MAIL", "close"}}, Kind::Unreachable, " closed the connection."},
      {{{"RCPT", "550-5.1.1 no\r\n550 5.1.1 such user"}}, Kind::Refused, ": 550-5.1.1 no 5.1.1 such user"},
      {{{"RCPT", "450 grey"}}, Kind::Deferred, " can't take the mail now: 450 grey"},
      {{{"RCPT", "421 stop"}}, Kind::Unreachable, " can't take the mail now: 421 stop"},
      {{{"RCPT", "530 log on"}}, Kind::Unreachable, " takes no mail from this sender: 530 log on."},
      {{{"RCPT", "554 5.7.1 Relay access denied"}}, Kind::Deferred, "or user and password-file"},
      {{{"RCPT", "251 moved"}}, Kind::Sent, ""},
      {{{"RCPT", "450 x"}, {"QUIT", "silent"}}, Kind::Deferred, " now: 450 x"},
      {{{"DATA", "554 no"}}, Kind::Refused, " refused the mail: 554 no"},
      {{{"DATA", "451 no"}}, Kind::Deferred, " can't take the mail now: 451 no"},
      {{{".", "550 spam"}}, Kind::Refused, " refused the mail: 550 spam"},
      {{{".", "451 later"}}, Kind::Deferred, " can't take the mail now: 451 later"},
      {{{".", "251 odd"}}, Kind::Sent, ""},
      {{{".", "close"}}, Kind::Deferred, " didn't confirm the mail"},
      {{{".", "silent"}}, Kind::Deferred, " didn't confirm the mail"},
      {{{".", "endless"}}, Kind::Unreachable, " sends more than it was asked for"},
      {{{".", "550 " + std::string(3000, 'y')}}, Kind::Refused, " refused the mail: 550 yyy"},
  };
  server_.CaFile = "/missing";  // not used without encryption
  times_ = {200ms, 1s, 300ms};
  for (const auto& row : rows) {
    ScriptedSmtpServer server(row.Server);
    const SendResult result = To(server).Send(kMail);
    const std::string text = Text(result);
    EXPECT_EQ(result.Result, row.Result) << text << server.Received();
    EXPECT_PRED2(Holds, text, row.Reason) << row.Server.begin()->first << ' ' << row.Server.begin()->second;
    EXPECT_LT(result.Reason.size(), 700u);
  }
}

}  // namespace
}  // namespace Tests
