// The queues with servers that are slow, silent, broken or hostile; folder names and passwords on the way to
// them.
#include <dlfcn.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <optional>

#include "gateway/sources/ImapFolderName.h"
#include "gateway/sources/PasswordFile.h"
#include "gateway/sources/SettledMails.h"
#include "runtime/Folders.h"
#include "tests/sources/LoopbackServer.h"
#include "tests/sources/QueueRecorder.h"
#include "tests/support/Interrupting.h"
#include "tests/support/World.h"

namespace {

using namespace std::chrono_literals;
using Gateway::QueueKind;
using Gateway::QueueSecurity;
using Tests::FailureOf;
using Tests::LoopbackServer;

struct NetworkTest : testing::Test {
  NetworkTest() {
    Tests::WriteFile(settings_.PasswordFile = (world_.Home.Path() / "password").string(), "secret\n");
    chmod(settings_.PasswordFile.c_str(), 0600);
    settings_.Host = "127.0.0.1";
    settings_.User = "user";
    settings_.Security = QueueSecurity::None;
  }

  std::string FailureWith(QueueKind kind, const LoopbackServer& server) {
    settings_.Kind = kind;
    settings_.Port = server.Port;
    const auto queue = Gateway::MakeQueue(settings_);
    return FailureOf([&] { queue->Pass(recorder_.Sink()); });
  }

  Tests::World world_;
  Gateway::QueueSettings settings_;
  Tests::QueueRecorder recorder_;
};

// Answers the commands of a logon, and a question about mails with one of 10 bytes; then sends what the test
// says in place of the mail, for which it gets the command's tag.
void ServeOneMail(LoopbackServer& server, int client, bool imap,
                  const std::function<void(const std::string&)>& sendMail) {
  LoopbackServer::Send(client, imap ? "* OK hello\r\n" : "+OK hello\r\n");
  for (std::string line; !(line = server.Line(client)).empty();) {
    const std::string tag = line.substr(0, line.find(' ') + 1);
    const auto has = [&](const char* text) { return line.find(text) != std::string::npos; };
    std::string answer;
    if (has("CAPABILITY")) answer = "* CAPABILITY IMAP4rev1\r\n";
    if (has("SELECT")) answer = "* 1 EXISTS\r\n* FLAGS (\\Seen)\r\n* OK [UIDVALIDITY 1] x\r\n";
    if (has("SEARCH")) answer = "* SEARCH 7\r\n";
    if (has("RFC822.SIZE")) answer = "* 1 FETCH (UID 7 RFC822.SIZE 10)\r\n";
    if (has("UIDL") || has("LIST")) answer = has("UIDL") ? "1 id\r\n.\r\n" : "1 10\r\n.\r\n";
    if (has("BODY.PEEK") || has("RETR")) return sendMail(tag);
    LoopbackServer::Send(client, imap ? answer + tag + "OK done\r\n" : "+OK\r\n" + answer);
  }
}

TEST_F(NetworkTest, EndsWithAnErrorWhateverTheServerDoes) {
  const auto silent = [](LoopbackServer& server, int client) { server.Line(client); };
  const auto hello = [](LoopbackServer&, int client) {
    LoopbackServer::Send(client, "* OK hello\r\n+OK hello\r\n");
  };
  const auto noise = [](LoopbackServer&, int client) { LoopbackServer::Send(client, "220 smtp\r\n220\r\n"); };
  const auto endless = [](LoopbackServer&, int client) {
    const std::string line(1 << 16, 'x');
    for (std::size_t sent = 0; sent < (std::size_t{1} << 30) && LoopbackServer::Send(client, line);)
      sent += line.size();
  };
  const auto refuses = [](LoopbackServer& server, int client) {
    LoopbackServer::Send(client, "* OK hello\r\n");
    server.Line(client);
    LoopbackServer::Send(client, "* CAPABILITY IMAP4rev1\r\n1 OK x\r\n");
    server.Line(client);
    LoopbackServer::Send(client, "2 NO try \x1B[1m later\r\n");
  };
  const auto refusesPop = [](LoopbackServer& server, int client) {
    LoopbackServer::Send(client, "+OK\r\n");
    server.Line(client);
    LoopbackServer::Send(client, "-ERR [IN-USE] busy\r\n");
  };
  const struct {
    const char* What;
    QueueKind Kind;
    std::function<void(LoopbackServer&, int)> Serve;
    const char* Text;
  } cases[] = {{"silent", QueueKind::Imap, silent, " didn't answer in time."},
               {"silent", QueueKind::Pop3, silent, " didn't answer in time."},
               {"closes", QueueKind::Imap, hello, " closed the connection."},
               {"closes", QueueKind::Pop3, hello, "can't be understood: * OK hello"},
               {"other protocol", QueueKind::Imap, noise, " can't be understood: IMAP"},
               {"other protocol", QueueKind::Pop3, noise, " can't be understood: 220 smtp"},
               {"endless line", QueueKind::Imap, endless, " sends more than it was asked for"},
               {"endless line", QueueKind::Pop3, endless, " sends more than it was asked for"},
               {"refuses", QueueKind::Imap, refuses, " refused the logon: try"},
               {"refuses", QueueKind::Pop3, refusesPop, " refused the logon: -ERR [IN-USE] busy"}};
  settings_.ReadTimeout = 200ms;
  for (const auto& one : cases) {
    LoopbackServer server(one.Serve);
    const std::string failure = FailureWith(one.Kind, server);
    EXPECT_NE(failure.find(one.Text), std::string::npos) << one.What << ": " << failure;
  }
}

TEST_F(NetworkTest, TakesNoMoreMemoryThanALargeMailNeedsIfTheServerLiesAboutItsSize) {
  for (const QueueKind kind : {QueueKind::Imap, QueueKind::Pop3}) {
    const bool imap = kind == QueueKind::Imap;
    LoopbackServer server([&](LoopbackServer& self, int client) {
      ServeOneMail(self, client, imap, [&](const std::string&) {
        LoopbackServer::Send(client, imap ? "* 1 FETCH (UID 7 BODY[] {4000000000}\r\n" : "+OK\r\n");
        const std::string lines(1 << 16, 'x');
        for (std::size_t sent = 0; sent < (std::size_t{1} << 30) && LoopbackServer::Send(client, lines);)
          sent += lines.size();
      });
    });
    const std::string failure = FailureWith(kind, server);
    EXPECT_NE(failure.find(" sends more than it was asked for"), std::string::npos) << failure;
    EXPECT_EQ(recorder_.Take(), "");
  }
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  // AddressSanitizer keeps memory that was freed.
  if (dlsym(RTLD_DEFAULT, "__asan_init") == nullptr) {
    EXPECT_LT(usage.ru_maxrss, 700 << 10) << "kB";
  }
}

TEST_F(NetworkTest, RefusesAnswersThatNestTooDeep) {
  for (const char* form :
       {"* 1 FETCH (UID 7 BODYSTRUCTURE ", "* THREAD ", "* 1 FETCH (BODY[] {1}\r\nx BODY "}) {
    LoopbackServer server([&](LoopbackServer& self, int client) {
      ServeOneMail(self, client, true, [&](const std::string&) {
        LoopbackServer::Send(client, form + std::string(std::size_t{900} << 10, '(') + "\r\n");
        self.Line(client);
      });
    });
    const std::string failure = FailureWith(QueueKind::Imap, server);
    EXPECT_NE(failure.find(" can't be understood: (((("), std::string::npos) << failure;
  }
}

TEST_F(NetworkTest, IsInterruptedAtOnceWhileTheServerIsSilent) {
  for (const QueueSecurity security : {QueueSecurity::None, QueueSecurity::Tls}) {
    for (const QueueKind kind : {QueueKind::Imap, QueueKind::Pop3}) {
      LoopbackServer server([](LoopbackServer& self, int client) {
        while (self.Line(client) != "") continue;
      });
      settings_.Kind = kind;
      settings_.Port = server.Port;
      settings_.Security = security;
      const auto queue = Gateway::MakeQueue(settings_);
      const auto interrupt = [&] {
        std::this_thread::sleep_for(50ms);
        queue->Interrupt();
      };
      const auto pass = [&] { EXPECT_FALSE(queue->Pass(recorder_.Sink())); };
      EXPECT_LT(Tests::SleepsAfter(interrupt, pass), Tests::kSoon);
    }
  }
}

TEST_F(NetworkTest, HasALittleTimeToSettleTheMailThatIsHandledWhenItIsInterrupted) {
  const struct {
    QueueKind Kind;
    Gateway::AfterSuccess After;
    bool Answers;
    const char* Last;  // command
  } cases[] = {{QueueKind::Imap, Gateway::AfterSuccess::Move, true, "UID STORE 7 "},
               {QueueKind::Pop3, Gateway::AfterSuccess::Delete, true, "QUIT"},
               {QueueKind::Imap, Gateway::AfterSuccess::Move, false, "UID COPY 7 "},
               {QueueKind::Pop3, Gateway::AfterSuccess::Delete, false, "DELE 1"}};
  settings_.MoveTo = "Done";
  for (const auto& one : cases) {
    std::string received;
    std::optional<LoopbackServer> server([&](LoopbackServer& self, int client) {
      const bool imap = one.Kind == QueueKind::Imap;
      ServeOneMail(self, client, imap, [&](const std::string& tag) {
        LoopbackServer::Send(client, imap ? "* 1 FETCH (UID 7 BODY[] {6}\r\nA: b\r\n)\r\n" + tag + "OK x\r\n"
                                          : "+OK\r\nA: b\r\n.\r\n");
      });
      for (std::string line; !(line = self.Line(client)).empty();) {
        if (!line.ends_with("LOGOUT\r\n")) received = line;
        std::this_thread::sleep_for(20ms);
        const std::string tag = imap ? line.substr(0, line.find(' ')) + " " : "+";
        if (one.Answers) LoopbackServer::Send(client, tag + "OK x\r\n");
      }
    });
    settings_.Kind = one.Kind;
    settings_.Port = server->Port;
    settings_.After = one.After;
    const auto queue = Gateway::MakeQueue(settings_);
    recorder_.Answer = [&](const Gateway::RawMail&) {
      queue->Interrupt();
      return Gateway::Outcome::Delivered;
    };
    const auto pass = [&] { EXPECT_FALSE(queue->Pass(recorder_.Sink())); };
    EXPECT_LT(Tests::SleepsAfter([] {}, pass), 2 * Tests::kSoon);
    EXPECT_EQ(recorder_.Take(), "A: b\r\n");
    server.reset();
    EXPECT_NE(received.find(one.Last), std::string::npos) << received;
  }
}

// Without QUIT the server would keep all mails that were deleted before.
TEST_F(NetworkTest, EndsAPop3SessionInOrderWhenItIsInterruptedWhileItReadsAMail) {
  std::string received;
  Gateway::MailQueue* queue = nullptr;
  std::optional<LoopbackServer> server([&](LoopbackServer& self, int client) {
    LoopbackServer::Send(client, "+OK\r\n");
    for (std::string line; !(line = self.Line(client)).empty();) {
      received += line.substr(0, 6);
      if (line.starts_with("RETR 2")) {
        queue->Interrupt();
        std::this_thread::sleep_for(50ms);
      }
      const bool listed = line.starts_with("UIDL") || line.starts_with("LIST");
      const std::string answer = listed                     ? "1 5\r\n2 6\r\n.\r\n"
                                 : line.starts_with("RETR") ? "A: b\r\n.\r\n"
                                                            : "";
      LoopbackServer::Send(client, "+OK\r\n" + answer);
    }
  });
  settings_.Kind = QueueKind::Pop3;
  settings_.Port = server->Port;
  settings_.After = Gateway::AfterSuccess::Delete;
  const auto made = Gateway::MakeQueue(settings_);
  queue = made.get();
  recorder_.Answer = [](const Gateway::RawMail&) { return Gateway::Outcome::Delivered; };
  EXPECT_FALSE(queue->Pass(recorder_.Sink()));
  server.reset();
  EXPECT_TRUE(received.ends_with("QUIT\r\n")) << received;
}

TEST_F(NetworkTest, SendsNoPasswordWithoutTheEncryptionThatIsSet) {
  const struct {
    QueueKind Kind;
    const char* Greeting;
    const char* Answer;  // to the command that asks for encryption
    const char* Text;
  } cases[] = {
      {QueueKind::Imap, "* OK x\r\n", "* CAPABILITY IMAP4rev1\r\n1 OK x\r\n",
       " offers no encryption (STARTTLS)"},
      {QueueKind::Imap, "* PREAUTH x\r\n", "* CAPABILITY STARTTLS\r\n1 OK x\r\n",
       " offers no encryption (STARTTLS)"},
      {QueueKind::Pop3, "+OK\r\n", "-ERR no\r\n", " offers no encryption (STARTTLS)"},
      {QueueKind::Pop3, "+OK\r\n", "+OK\r\n+OK injected\r\n", "can't be understood: STLS"},
      {QueueKind::Imap, "* OK x\r\n", "* CAPABILITY STARTTLS\r\n1 OK x\r\n2 OK x\r\n3 OK injected\r\n",
       "No encrypted connection to 127.0.0.1:"}};
  settings_.Security = QueueSecurity::StartTls;
  for (const auto& one : cases) {
    std::string received;
    LoopbackServer server([&](LoopbackServer& self, int client) {
      LoopbackServer::Send(client, one.Greeting);
      received += self.Line(client);
      LoopbackServer::Send(client, one.Answer);
      for (std::string line; !(line = self.Line(client)).empty();) received += line;
    });
    const std::string failure = FailureWith(one.Kind, server);
    EXPECT_NE(failure.find(one.Text), std::string::npos) << failure;
    EXPECT_EQ(received.find("secret"), std::string::npos) << received;
  }
}

TEST_F(NetworkTest, RefusesSettingsThatCantWork) {
  const std::pair<std::function<void(Gateway::QueueSettings&)>, const char*> cases[] = {
      {[](auto& s) { s.Host.clear(); }, "setting host is missing"},
      {[](auto& s) { s.Host = "a\r\nQUIT"; }, "setting host is a"},
      {[](auto& s) { s.User = "a\nb"; }, "setting user is a"},
      {[](auto& s) { s.PasswordFile = "secret"; }, "setting password-file is secret"},
      {[](auto& s) { s.Port = 70000; }, "setting port is 70000"},
      {[](auto& s) { s.Mailbox.clear(); }, "setting folder is missing"},
      {[](auto& s) { s.After = Gateway::AfterSuccess::Move; }, "setting move-to is missing"},
      {[](auto& s) {
         s.Kind = QueueKind::Pop3;
         s.After = Gateway::AfterSuccess::Move;
       },
       "setting after is move"}};
  for (const auto& [change, text] : cases) {
    Gateway::QueueSettings settings = settings_;
    settings.Kind = QueueKind::Imap;
    change(settings);
    const std::string failure = FailureOf([&] { Gateway::MakeQueue(settings); });
    EXPECT_NE(failure.find(text), std::string::npos) << failure;
  }
}

TEST_F(NetworkTest, KeepsTheIdsOfSettledMailsAfterACutLine) {
  Gateway::SettledMails("a@b/c").Add("one");
  const auto path = Runtime::HomePath() + "/state/pop3-a@b%2Fc";
  Tests::WriteFile(path, "one\ntwo\nthr");
  {
    Gateway::SettledMails mails("a@b/c");
    mails.Add("four");
    mails.KeepOnly({"two", "four", "five"});
  }
  const Gateway::SettledMails mails("a@b/c");
  std::string found;
  for (const char* id : {"one", "two", "thr", "thrfour", "four", "five"})
    found += mails.Contains(id) ? id : "-";
  EXPECT_EQ(found, "-two--four-");
}

TEST_F(NetworkTest, ReadsPasswordsAndFolderNames) {
  const std::pair<const char*, const char*> passwords[] = {
      {"\xEF\xBB\xBFgehe\xC3\xADm x \r\nmore\n", "gehe\xC3\xADm x "},
      {"", ""},
      {"\nx", ""},
      {"a\tb", ""},
      {"\xFF", ""}};
  for (const auto& [content, password] : passwords) {
    Tests::WriteFile(settings_.PasswordFile, content);
    std::string read;
    const std::string failure = FailureOf([&] { read = Gateway::ReadPasswordFile(settings_.PasswordFile); });
    EXPECT_EQ(read, password);
    EXPECT_EQ(failure.find("holds no password") == std::string::npos, *password != '\0') << failure;
  }
  const std::pair<const char*, const char*> names[] = {{"INBOX", "INBOX"},
                                                       {"a&b/c", "a&-b/c"},
                                                       {"Entwürfe", "Entw&APw-rfe"},
                                                       {"台北", "&U,BTFw-"},
                                                       {"😀x", "&2D3eAA-x"}};
  for (const auto& [name, sent] : names) EXPECT_EQ(Gateway::ImapFolderName(name), sent);
}

}  // namespace
