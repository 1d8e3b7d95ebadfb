// Mails on their way to SMTP servers that take them, refuse them, break off, or are hostile.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <algorithm>
#include <thread>

#include "gateway/notices/NoticeSettings.h"
#include "gateway/notices/SmtpTransport.h"
#include "platform/Failure.h"
#include "tests/notices/ScriptedSmtpServer.h"
#include "tests/support/Interrupting.h"
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
    return {Platform::FromUtf8(host_ + server.Port()), server_, times_};
  }

  std::string host_ = "127.0.0.1";

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
      {{{"EHLO", lines}, {"STARTTLS", "454 no"}}, Kind::Sent, ""},
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
      {{{".", "endless"}}, Kind::Unreachable, " sends more than it was asked for"},
      {{{".", "550 " + std::string(3000, 'y')}}, Kind::Refused, " refused the mail: 550 yyy"},
  };
  server_.CaFile = "/missing";  // not used without encryption
  for (const auto& row : rows) {
    ScriptedSmtpServer server(row.Server);
    const bool silent = row.Server.contains("") && row.Server.at("") == "silent";
    times_.Connect = silent ? 200ms : 30s;
    const SendResult result = To(server).Send(kMail);
    const std::string text = Text(result);
    EXPECT_EQ(result.Result, row.Result) << text << server.Received();
    EXPECT_PRED2(Holds, text, row.Reason);
    EXPECT_LT(result.Reason.size(), 700u);
  }
}

TEST_F(SmtpTransportTest, SendsNoPasswordWithoutTheEncryptionThatIsRequired) {
  const std::string pem = (world_.Home.Path() / "server.pem").string();
  const std::string create =
      "openssl req -x509 -nodes -newkey ec -pkeyopt ec_paramgen_curve:P-256 -subj /CN=x "
      "-addext subjectAltName=IP:0.0.0.0 -keyout - -out - >" +
      pem + " 2>/dev/null";
  ASSERT_EQ(std::system(create.c_str()), 0);
  // A connection to 0.0.0.0 leads to this machine, but isn't known to.
  const std::string plain = "250 AUTH PLAIN", start = "250-STARTTLS\r\n250 AUTH PLAIN LOGIN", far = "0.0.0.0",
                    here = "127.0.0.1", none = "AHVzZXIAc2VjcmV0", secret = "*" + none;
  const struct {
    std::string Host;
    SmtpSecurity Security;
    std::string CaFile, Hello;
    Answers Server;
    const char* Text;  // of the result
    std::string Sent;  // a line; empty if the password isn't sent
  } rows[] = {
      {here, SmtpSecurity::Auto, "", plain, {}, "0 ", none},
      {here, SmtpSecurity::None, "", start, {}, "0 ", none},
      {here, SmtpSecurity::Auto, "", start, {}, "0 ", secret},
      {here, SmtpSecurity::Tls, "", plain, {}, "0 ", secret},
      {here, SmtpSecurity::Auto, "", start, {{"STARTTLS", "220 go\r\n250 injected"}}, "3 ", ""},
      {here, SmtpSecurity::StartTls, "", plain, {}, "3 127.0.0.1:", ""},
      {here, SmtpSecurity::StartTls, pem, start, {}, "3 The certificate of 127.0.0.1:", ""},
      {here, SmtpSecurity::Auto, "", "250 AUTH CRAM-MD5", {}, " offers no logon with a password", ""},
      {here, SmtpSecurity::Auto, "", "250 SIZE", {}, " offers no logon with a password", ""},
      {here, SmtpSecurity::Auto, "", "250 AUTH LOGIN", {{"line", "334 UGFzc3dvcmQ6"}}, "3 ", "c2VjcmV0"},
      {here, SmtpSecurity::Auto, "", "250 AUTH=LOGIN", {}, " offers no logon with a password", ""},
      {here,
       SmtpSecurity::Auto,
       "",
       plain,
       {{"line", "535 no"}},
       " refused the logon: 535 no. Correct",
       none},
      {here, SmtpSecurity::Auto, "", plain, {{"line", "454 no"}}, "3 127.0.0.1:", none},
      {far, SmtpSecurity::Auto, "", plain, {}, " offers no encryption (STARTTLS). Set security", ""},
      {far,
       SmtpSecurity::Auto,
       "",
       start,
       {{"STARTTLS", "454 no"}},
       "3 No encrypted connection to 0.0.0.0:",
       ""},
      {far, SmtpSecurity::None, "", plain, {}, "3 The password for 0.0.0.0:", ""},
      {far, SmtpSecurity::Auto, pem, start, {}, "0 ", secret},
      {far, SmtpSecurity::StartTls, pem, start, {}, "0 ", secret},
      {far, SmtpSecurity::Tls, pem, plain, {}, "0 ", secret},
      {far, SmtpSecurity::Auto, "", start, {}, "3 The certificate of 0.0.0.0:", ""},
      {far, SmtpSecurity::Tls, "/missing", plain, {}, "3 The file of certificate authorities /missing", ""},
  };
  server_.User = "user";
  for (const auto& row : rows) {
    Answers answers = row.Server;
    answers.insert({{"EHLO", row.Hello}, {"AUTH", "334 "}, {"line", "235 yes"}});
    ScriptedSmtpServer server(answers, pem, row.Security == SmtpSecurity::Tls);
    host_ = row.Host;
    server_.Security = row.Security;
    server_.CaFile = row.CaFile;
    const std::string text = Text(To(server).Send(kMail)), received = server.Received();
    EXPECT_PRED2(Holds, text, row.Text);
    EXPECT_EQ(Holds(received, "\n" + row.Sent + "\r\n"), !row.Sent.empty()) << text << received;
    EXPECT_EQ(Holds(received, "secret") || Holds(received, "c2VjcmV0"), Holds(row.Sent, "c2VjcmV0"));
  }
  server_.User.clear();
  for (const SmtpSecurity security : {SmtpSecurity::None, SmtpSecurity::Tls}) {
    ScriptedSmtpServer server({{"DATA", "354 go\r\nclose"}}, pem, security == SmtpSecurity::Tls);
    host_ = here;
    server_.Security = security;
    server_.CaFile.clear();
    const OutgoingMail large{kMail.Sender, kMail.Recipient, std::string(std::size_t{16} << 20, 'x')};
    EXPECT_PRED2(Holds, Text(To(server).Send(large)), "1 127.0.0.1:");  // and no SIGPIPE
  }
  server_.User = "user";
  chmod(server_.PasswordFile.c_str(), 0644);
  EXPECT_PRED2(Holds, Text(To(ScriptedSmtpServer({})).Send(kMail)),
               "3 The password file may be read by other");
}

TEST_F(SmtpTransportTest, SendsToAddressesBeyondAsciiWhereTheServerTakesThem) {
  const struct {
    const char *Recipient, *Hello, *Text, *Sent;
  } rows[] = {
      {"\xC3\xA4nn@b\xC3\xBCro.example", "250 SMTPUTF8", "0 ",
       " SMTPUTF8\r\nRCPT TO:<\xC3\xA4nn@xn--bro-hoa.example>"},
      {"\xC3\xA4nn@b.example", "250 SIZE", "2 127.0.0.1:", "+EHLO "},
      {"\xC3\xA4nn@b.example", "502 no", "2 127.0.0.1:", "HELO "},
      {"ann@b\xC3\xBCro.example", "250 SIZE", "0 ", "\r\nRCPT TO:<ann@xn--bro-hoa.example>\r\n"},
      {"ann@b.example>\r\nRCPT TO:<bob@b.example", "250 SIZE", "2 Mail can't be sent with the address", ""},
      {"\"a b@c\"@b.example", "250 SIZE", "0 ", "\r\nRCPT TO:<\"a b@c\"@b.example>\r\n"}};
  for (const auto& row : rows) {
    ScriptedSmtpServer server(Answers{{"EHLO", row.Hello}});
    EXPECT_PRED2(Holds, Text(To(server).Send({"box@example.org", row.Recipient, "A: b\n"})), row.Text);
    EXPECT_PRED2(Holds, server.Received(), row.Sent);
    EXPECT_EQ(Holds(server.Received(), "RCPT"), *row.Text == '0');
  }
}

TEST_F(SmtpTransportTest, ConnectsAgainWhenTheServerHasEndedTheConnection) {
  for (const char* answer :
       {"250 ok\r\nclose", "250 ok\r\n421 idle too long\r\nclose", "250 ok\r\n421 idle too long"}) {
    ScriptedSmtpServer server(Answers{{".", answer}});
    SmtpTransport transport = To(server);
    for (int i = 0; i < 3; ++i) EXPECT_EQ(Text(transport.Send(kMail)), "0 ") << answer;
    const std::string received = server.Received();
    EXPECT_EQ(std::ranges::count(received, '+'), 3) << received;
  }
}

TEST_F(SmtpTransportTest, ChecksAServerWithoutAMail) {
  const std::pair<Answers, const char*> rows[] = {
      {{}, ""},
      {{{"NOOP", "421 closing"}}, " can't take the mail now: 421 closing"},
      {{{"EHLO", "554 no"}, {"HELO", "554 no"}}, ": 554 no. Ask"}};
  for (const auto& [answers, text] : rows) {
    ScriptedSmtpServer server(answers);
    SmtpTransport transport = To(server);
    const std::string failure = FailureText([&] { transport.Check(); });
    EXPECT_PRED2(Holds, failure, text);
    EXPECT_EQ(failure.empty(), *text == '\0') << failure;
    EXPECT_FALSE(Holds(server.Received(), "MAIL"));
  }
}

TEST_F(SmtpTransportTest, EndsAtOnceWhenItIsInterrupted) {
  for (const char* verb : {"", "EHLO", "DATA", "."}) {
    ScriptedSmtpServer server(Answers{{verb, "silent"}});
    SmtpTransport transport = To(server);
    const auto interrupt = [&] {
      std::this_thread::sleep_for(100ms);
      transport.Interrupt();
    };
    const auto send = [&] { EXPECT_EQ(Text(transport.Send(kMail)), "3 The work was ended."); };
    EXPECT_LT(SleepsAfter(interrupt, send), kSoon) << verb;
    send();
  }
}

TEST_F(SmtpTransportTest, DoesNotWaitForTheAnswerToQuit) {
  for (const char* recipient : {"250 yes", "450 later"}) {
    ScriptedSmtpServer server(Answers{{"QUIT", "silent"}, {"RCPT", recipient}});
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(To(server).Send(kMail).Result, *recipient == '2' ? Kind::Sent : Kind::Deferred);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 10s);
    while (!Holds(server.Received(), "QUIT") && std::chrono::steady_clock::now() - begin < 10s)
      std::this_thread::sleep_for(1ms);
    EXPECT_PRED2(Holds, server.Received(), "QUIT");
  }
}

TEST(SmtpHosts, FindTheirSettings) {
  NoticeSettings settings;
  for (const auto& [host, port] : std::initializer_list<std::pair<const char*, int>>{
           {"Mail.example.org", 0}, {"mail.example.org", 587}, {"b\xC3\xBCro.example", 465}, {"::1", 26}})
    settings.Servers.push_back({host, port, SmtpSecurity::Auto, {}, {}, {}});
  const struct {
    const char* Host;
    std::string Found;
  } rows[] = {{"mail.example.org", "Mail.example.org:0"},
              {"MAIL.example.org.:587", "mail.example.org:587"},
              {" mail.example.org:25 ", "Mail.example.org:0"},
              {"xn--bro-hoa.example", "b\xC3\xBCro.example:465"},
              {"b\xC3\xBCro.example:25", "xn--bro-hoa.example:0"},
              {"[::1]", "::1:26"},
              {"::1", "::1:26"},
              {"[::1]:26", "::1:26"},
              {"a_b:1", "a_b:0"},
              {"[127.0.0.1]:65535", "127.0.0.1:0"}};
  for (const auto& [host, found] : rows) {
    const SmtpServer server = settings.ServerOf(Platform::FromUtf8(host));
    EXPECT_EQ(server.Host + ":" + std::to_string(server.Port), found) << host;
    EXPECT_EQ(FailureText([&, name = host] { MakeSmtpTransport(Platform::FromUtf8(name), server); }), "");
  }
  for (const char* host : {"", ":25", "a:", "a:0", "a:65536", "a:x", "a b", "a/b", "a@b", "[a]:25", "[::1",
                           "a..b", "-a", "a\r\nQUIT", "a:25:26", "a?x", "a#x", "%61"})
    EXPECT_PRED2(Holds, FailureText([&] { MakeSmtpTransport(Platform::FromUtf8(host), {}); }),
                 "is no host for sending mail");
}

}  // namespace
}  // namespace Tests
