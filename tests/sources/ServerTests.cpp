// The queues of IMAP and POP3 servers, with a real Dovecot. dovecot.sh prepares its machine.
#include <arpa/inet.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>

#include <algorithm>
#include <fstream>
#include <set>
#include <thread>

#include "tests/sources/Dovecot.h"
#include "tests/sources/LoopbackServer.h"
#include "tests/sources/QueueRecorder.h"
#include "tests/support/Interrupting.h"
#include "tests/support/Processes.h"
#include "tests/support/World.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Gateway::AfterSuccess;
using Gateway::Outcome;
using Gateway::QueueKind;
using Gateway::QueueSecurity;
using Gateway::QueueSettings;
using Tests::Dovecot;
using Tests::FailureOf;
using Tests::WriteFile;

// Passes the bytes of a connection on to the IMAP server, a few at a time, and ends it after so many.
void ForwardSlowly(const Tests::LoopbackServer& self, int client, std::size_t most) {
  const int server = Tests::ConnectTo(993);
  std::size_t passed = 0;
  for (bool open = true; open && passed < most;) {
    pollfd both[] = {{client, POLLIN, 0}, {server, POLLIN, 0}};
    open = poll(both, 2, 200) > 0 || self.Running();
    for (int side = 0; side < 2 && open; ++side) {
      char bytes[600];
      if (both[side].revents == 0) continue;
      const ssize_t count = recv(both[side].fd, bytes, sizeof bytes, 0);
      open = count > 0 &&
             Tests::LoopbackServer::Send(both[1 - side].fd, {bytes, static_cast<std::size_t>(count)});
      passed += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
      std::this_thread::sleep_for(500us);
    }
  }
  close(server);
}

struct Way {
  QueueKind Kind;
  QueueSecurity Security;
  AfterSuccess After;
  // Files of a mailbox afterwards in which three mails were put, of which one is to be tried again.
  std::size_t Inbox;
  std::size_t Archive;
};

class ServerQueue : public testing::TestWithParam<Way> {
 protected:
  static void SetUpTestSuite() { server_ = new Dovecot; }
  static void TearDownTestSuite() { delete server_; }

  ServerQueue() : mailbox_(Dovecot::Folder() / "mail" / user_) {
    for (const char* name : {"", "new", "cur", "tmp"}) {
      fs::create_directories(mailbox_ / name);
      const passwd* reader = getpwnam("mail-reader");
      EXPECT_EQ(chown((mailbox_ / name).c_str(), reader->pw_uid, reader->pw_gid), 0);
    }
    WriteFile(passwordFile_, "\xEF\xBB\xBFsecret\r\nnot this\n");
    chmod(passwordFile_.c_str(), 0600);
  }

  QueueSettings Settings(QueueKind kind, AfterSuccess after = AfterSuccess::Mark) const {
    QueueSettings settings;
    settings.Kind = kind;
    settings.Host = "mail.test";
    settings.User = user_;
    settings.PasswordFile = passwordFile_;
    settings.CaFile = Dovecot::Folder() / "tls" / "ca.pem";
    settings.After = after;
    settings.MoveTo = "Archiv-ä";
    settings.PollInterval = 50ms;
    return settings;
  }
  static QueueSettings Of(QueueSettings settings, QueueSecurity security) {
    settings.Security = security;
    return settings;
  }

  void Put(int number, const std::string& text) {
    WriteFile(mailbox_ / "tmp" / "x", text);
    fs::rename(mailbox_ / "tmp" / "x", mailbox_ / "new" / (std::to_string(1000000000 + number) + ".x.h"));
  }
  void PutMany(int count) {
    for (int i = 0; i < count; ++i) Put(i, "Subject: " + std::to_string(i) + "\r\n\r\ntext\r\n");
  }

  static std::size_t Files(const fs::path& maildir) {
    std::size_t count = 0;
    for (const char* part : {"new", "cur"}) {
      std::error_code error;
      for (const auto& file : fs::directory_iterator(maildir / part, error)) count += file.is_regular_file();
    }
    return count;
  }

  // The subjects of the mails that a pass takes, in order.
  std::string Pass(Gateway::MailQueue& queue) {
    EXPECT_TRUE(queue.Pass(recorder_.Sink()));
    return recorder_.Take();
  }

  inline static Dovecot* server_ = nullptr;
  inline static int users_ = 0;
  Tests::World world_;
  const std::string user_ = "user" + std::to_string(++users_);
  const fs::path mailbox_;
  const fs::path passwordFile_ = world_.Home.Path() / "password";
  Tests::QueueRecorder recorder_;
};

TEST_P(ServerQueue, SettlesWhatIsDoneAndPassesTheRestAgain) {
  const Way& way = GetParam();
  const auto queue = Gateway::MakeQueue(Of(Settings(way.Kind, way.After), way.Security));
  queue->Check();
  for (int i = 1; i <= 3; ++i) Put(i, std::to_string(i) + ": x\r\n\r\n");
  recorder_.Answer = [](const Gateway::RawMail& mail) {
    return mail.Bytes[0] == '1' ? Outcome::Retry : mail.Bytes[0] == '2' ? Outcome::Held : Outcome::Duplicate;
  };
  EXPECT_EQ(Pass(*queue), "1: x\r\n\r\n|2: x\r\n\r\n|3: x\r\n\r\n");
  EXPECT_EQ(Pass(*queue), "1: x\r\n\r\n");
  // Another process knows, too.
  EXPECT_EQ(Pass(*Gateway::MakeQueue(Of(Settings(way.Kind, way.After), way.Security))), "1: x\r\n\r\n");
  EXPECT_EQ(Files(mailbox_), way.Inbox);
  EXPECT_EQ(Files(mailbox_ / ".Archiv-&AOQ-"), way.Archive);
}

INSTANTIATE_TEST_SUITE_P(
    Ways, ServerQueue,
    testing::Values(Way{QueueKind::Imap, QueueSecurity::Tls, AfterSuccess::Mark, 3, 0},
                    Way{QueueKind::Imap, QueueSecurity::StartTls, AfterSuccess::Move, 1, 2},
                    Way{QueueKind::Imap, QueueSecurity::None, AfterSuccess::Delete, 1, 0},
                    Way{QueueKind::Pop3, QueueSecurity::Tls, AfterSuccess::Mark, 3, 0},
                    Way{QueueKind::Pop3, QueueSecurity::StartTls, AfterSuccess::Delete, 1, 0}));

TEST_F(ServerQueue, RefusesWhatItCantTrustAndSaysWhy) {
  struct Case {
    const char* What;
    std::function<void(QueueSettings&)> Change;
    const char* Text;
  };
  const Case cases[] = {
      {"expired", [](auto& s) { s.Host = "expired.test"; }, "isn't accepted: certificate has expired"},
      {"other host", [](auto& s) { s.Host = "other.test"; }, "isn't accepted: hostname mismatch"},
      {"by nobody", [](auto& s) { s.Host = "unknown.test"; }, "isn't accepted: self-signed certificate"},
      {"authority unknown to the system", [](auto& s) { s.CaFile.clear(); }, "isn't accepted: "},
      {"no authority", [&](auto& s) { s.CaFile = passwordFile_; }, "can't be used: "},
      {"address that isn't named", [](auto& s) { s.Host = "127.0.0.2"; }, "isn't accepted: "},
      {"wrong password", [&](auto& s) { WriteFile(s.PasswordFile, "wrong\n"); }, "refused the logon: "},
      {"open file", [](auto& s) { chmod(s.PasswordFile.c_str(), 0640); }, "Type: chmod 600 /"},
      {"no file", [&](auto& s) { fs::remove(s.PasswordFile); }, "password doesn't exist"},
      {"port", [](auto& s) { s.Port = 1; }, "mail.test:1 can't be reached: Connection refused"},
      {"host", [](auto& s) { s.Host = "nowhere.invalid"; }, "The address of nowhere.invalid wasn't found: "}};
  for (const QueueKind kind : {QueueKind::Imap, QueueKind::Pop3}) {
    for (const Case& one : cases) {
      WriteFile(passwordFile_, "secret\n");
      chmod(passwordFile_.c_str(), 0600);
      for (const QueueSecurity security : {QueueSecurity::Tls, QueueSecurity::StartTls}) {
        QueueSettings settings = Of(Settings(kind), security);
        one.Change(settings);
        const std::string failure = FailureOf([&] { Gateway::MakeQueue(settings)->Check(); });
        EXPECT_NE(failure.find(one.Text), std::string::npos) << one.What << ": " << failure;
      }
    }
  }
  WriteFile(passwordFile_, "secret\n");
  QueueSettings settings = Settings(QueueKind::Imap, AfterSuccess::Move);
  settings.Host = "127.0.0.1";  // the certificate names the address, too
  EXPECT_EQ(FailureOf([&] { Gateway::MakeQueue(settings)->Check(); }), "");
  settings.MoveTo = "none";
  EXPECT_NE(FailureOf([&] { Gateway::MakeQueue(settings)->Check(); }).find("The folder none can't be opened"),
            std::string::npos);
}

TEST_F(ServerQueue, LosesNothingWhenTheServerIsKilled) {
  for (const QueueKind kind : {QueueKind::Imap, QueueKind::Pop3}) {
    PutMany(30);
    const auto queue = Gateway::MakeQueue(Settings(kind, AfterSuccess::Delete));
    std::multiset<std::string> seen;
    recorder_.Answer = [&](const Gateway::RawMail& mail) {
      seen.insert(mail.Bytes);
      if (seen.size() == 10) server_->Kill();
      return Outcome::Delivered;
    };
    const std::string failure = FailureOf([&] { queue->Pass(recorder_.Sink()); });
    EXPECT_NE(failure.find("mail.test:99"), std::string::npos) << failure;
    server_->Start();
    EXPECT_TRUE(queue->Pass(recorder_.Sink()));
    EXPECT_EQ(std::set<std::string>(seen.begin(), seen.end()).size(), 30U);
    EXPECT_LE(seen.size(), kind == QueueKind::Imap ? 31U : 40U);
    EXPECT_EQ(Files(mailbox_), 0U);
  }
}

TEST_F(ServerQueue, LosesNothingWhenItIsKilled) {
  for (const auto& [kind, after] :
       {std::pair(QueueKind::Imap, AfterSuccess::Move), std::pair(QueueKind::Pop3, AfterSuccess::Delete)}) {
    const QueueSettings settings = Settings(kind, after);
    PutMany(30);
    const fs::path taken = world_.Home.Path() / "taken";
    fs::create_directories(taken);
    const auto take = [&](const Gateway::RawMail& mail) {
      WriteFile(taken / std::to_string(std::hash<std::string>()(mail.Bytes)), mail.Bytes);
      return Outcome::Delivered;
    };
    const int end = Tests::InAnotherProcess([&] {
      int count = 0;
      Gateway::MakeQueue(settings)->Pass([&](const Gateway::RawMail& mail) {
        if (++count == 10) raise(SIGKILL);
        return std::optional(take(mail));
      });
    });
    EXPECT_EQ(end, 128 + SIGKILL);
    recorder_.Answer = take;
    // A POP3 server frees the mailbox when it notices the end of the other session.
    EXPECT_TRUE(Gateway::MakeQueue(settings)->Pass(recorder_.Sink()));
    EXPECT_EQ(std::distance(fs::directory_iterator(taken), fs::directory_iterator()), 30);
    EXPECT_EQ(Files(mailbox_), 0U);
    fs::remove_all(taken);
  }
}

TEST_F(ServerQueue, ReadsEachByteOfALargeMail) {
  std::string mail = "Subject: large\r\n\r\n.\r\n..\r\n\r\n.hidden\r\n";
  for (int i = 0; mail.size() < (std::size_t{24} << 20); ++i)
    mail += std::to_string(i) + std::string(static_cast<std::size_t>(i % 900), 'x') + "\xE4)\"{5}\r\n";
  Put(1, mail);
  for (const QueueKind kind : {QueueKind::Imap, QueueKind::Pop3}) {
    recorder_.Answer = [&](const Gateway::RawMail& raw) {
      EXPECT_TRUE(raw.Bytes == mail) << raw.Bytes.size() << " of " << mail.size();
      return Outcome::Retry;
    };
    EXPECT_TRUE(Gateway::MakeQueue(Settings(kind))->Pass(recorder_.Sink()));
    EXPECT_EQ(recorder_.Mails.size(), 1U);
    recorder_.Mails.clear();
  }
}

TEST_F(ServerQueue, WorksThroughASlowNetworkThatBreaks) {
  const std::string mail = "Subject: slow\r\n\r\n" + std::string(100000, 'x') + "\r\n";
  Put(1, mail);
  std::size_t most = 50000;
  Tests::LoopbackServer proxy(
      [&](const Tests::LoopbackServer& self, int client) { ForwardSlowly(self, client, most); });
  QueueSettings settings = Settings(QueueKind::Imap);
  settings.Port = proxy.Port;
  const auto queue = Gateway::MakeQueue(settings);
  EXPECT_NE(FailureOf([&] { queue->Pass(recorder_.Sink()); }).find(" closed the connection."),
            std::string::npos);
  EXPECT_EQ(recorder_.Take(), "");
  most = 1000000;
  EXPECT_TRUE(Pass(*queue) == mail);
  EXPECT_EQ(Pass(*queue), "");
}

TEST_F(ServerQueue, DoesWithoutExtensionsOfTheServer) {
  QueueSettings settings = Settings(QueueKind::Imap, AfterSuccess::Move);
  settings.Host = "plain.mail.test";
  const auto queue = Gateway::MakeQueue(settings);
  PutMany(2);
  EXPECT_EQ(Pass(*queue), "Subject: 0\r\n\r\ntext\r\n|Subject: 1\r\n\r\ntext\r\n");
  EXPECT_EQ(Files(mailbox_ / ".Archiv-&AOQ-"), 2U);
  EXPECT_EQ(Files(mailbox_), 2U);  // with \\Deleted, since a plain EXPUNGE could remove the mail of others
  std::jthread other([&] {
    std::this_thread::sleep_for(100ms);
    Put(3, "new: 3\r\n\r\n");
  });
  queue->Wait(1h);
  EXPECT_EQ(Pass(*queue), "new: 3\r\n\r\n");
}

TEST_F(ServerQueue, RemovesWhatASessionHadHandledThatEndedInARemoval) {
  PutMany(2);
  WriteFile(mailbox_ / "dovecot-keywords", "0 TalvaneHandled\n");
  fs::rename(mailbox_ / "new" / "1000000000.x.h", mailbox_ / "cur" / "1000000000.x.h:2,Ta");
  const fs::path ofSomebodyElse = mailbox_ / "cur" / "1000000001.x.h:2,T";
  fs::rename(mailbox_ / "new" / "1000000001.x.h", ofSomebodyElse);
  const auto queue = Gateway::MakeQueue(Settings(QueueKind::Imap, AfterSuccess::Delete));
  queue->Check();
  EXPECT_EQ(Files(mailbox_), 2U);
  EXPECT_EQ(Pass(*queue), "");
  EXPECT_EQ(Files(mailbox_), 1U);
  EXPECT_TRUE(fs::exists(ofSomebodyElse));
}

TEST_F(ServerQueue, PassesTheHeaderOfAMailThatIsTooLargeAndNeverDeletesIt) {
  Put(1, "Subject: large\r\n\r\nbody\r\n");
  fs::resize_file(mailbox_ / "new" / "1000000001.x.h", std::uintmax_t{129} << 20);
  for (const QueueKind kind : {QueueKind::Pop3, QueueKind::Imap}) {
    const auto queue = Gateway::MakeQueue(Settings(kind, AfterSuccess::Delete));
    recorder_.Answer = [](const Gateway::RawMail& mail) {
      EXPECT_EQ(mail.Bytes, "Subject: large\r\n\r\n");
      return mail.FaultOutcome == Outcome::Refused ? Outcome::Held : Outcome::Retry;
    };
    EXPECT_NE(Pass(*queue).find("(The mail is larger than 128 MB"), std::string::npos);
    EXPECT_EQ(Pass(*queue), "");
    EXPECT_EQ(Files(mailbox_), 1U);
  }
}

TEST_F(ServerQueue, NoticesNewMailWhileItWaits) {
  int number = 0;
  for (const std::chrono::milliseconds idle : {std::chrono::milliseconds(1h), 50ms}) {
    QueueSettings settings = Settings(QueueKind::Imap);
    settings.IdleRestart = idle;
    const auto queue = Gateway::MakeQueue(settings);
    EXPECT_EQ(Pass(*queue), "");
    std::jthread other([&] {
      std::this_thread::sleep_for(150ms);
      Put(++number, "new: 1\r\n\r\n");
    });
    queue->Wait(1h);
    EXPECT_EQ(Pass(*queue), "new: 1\r\n\r\n");
    // A server that restarts ends the session, and the next pass opens another one.
    server_->Kill();
    server_->Start();
    EXPECT_EQ(Pass(*queue), "");
  }
}

TEST_F(ServerQueue, IsInterruptedWhileItWaits) {
  for (const QueueKind kind : {QueueKind::Imap, QueueKind::Pop3}) {
    const auto queue = Gateway::MakeQueue(Settings(kind));
    EXPECT_EQ(Pass(*queue), "");
    const auto interrupt = [&] {
      std::this_thread::sleep_for(100ms);
      queue->Interrupt();
    };
    EXPECT_LT(Tests::SleepsAfter(interrupt, [&] { queue->Wait(1h); }), Tests::kSoon);
    EXPECT_FALSE(queue->Pass(recorder_.Sink()));
  }
}

TEST_F(ServerQueue, TakesManyMails) {
  const std::tuple<QueueKind, AfterSuccess, int> cases[] = {{QueueKind::Pop3, AfterSuccess::Delete, 1000},
                                                            {QueueKind::Imap, AfterSuccess::Mark, 10000}};
  for (const auto& [kind, after, mails] : cases) {
    PutMany(mails);
    const auto queue = Gateway::MakeQueue(Settings(kind, after));
    int next = 0;
    EXPECT_TRUE(queue->Pass([&](const Gateway::RawMail& mail) -> std::optional<Outcome> {
      EXPECT_EQ(mail.Bytes.substr(0, mail.Bytes.find('\r')), "Subject: " + std::to_string(next++));
      return Outcome::Delivered;
    }));
    EXPECT_EQ(next, mails);
    EXPECT_EQ(Pass(*queue), "");
  }
}

}  // namespace
