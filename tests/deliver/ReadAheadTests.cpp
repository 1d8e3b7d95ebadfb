// Reading the next mails on a thread of its own.
#include "gateway/delivery/ReadAhead.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <fstream>

#include "platform/Failure.h"
#include "tests/support/Processes.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;
using Gateway::PreparedMail;
using Gateway::StandardInput;

class ReadAhead : public testing::Test {
 protected:
  ReadAhead() {
    std::ofstream mbox(Path("mbox"));
    for (int mail = 1; mail <= 100; ++mail) {
      const int size = mail % 30 == 0 ? 1'500'000 : mail % 7 * 20'000;
      mbox << "From a@x.org Mon Nov  2 09:14:07 2026\nMessage-ID: <" << mail << "@x>\n\n"
           << std::string(static_cast<std::size_t>(size), 'x') << "\n\n";
    }
    fs::create_directories(Path("maildir") + "/new");
    fs::create_directories(Path("maildir") + "/cur");
    WriteFile(Path("maildir") + "/new/1", "Message-ID: <m@x>\n\nYes.\n");
    WriteFile(Path("wrong"), "Message-ID: <" + std::string(2'000'000, 'y') + "\n\nYes.\n");
    mkfifo(Path("fifo").c_str(), 0600);
  }

  std::string Path(const std::string& name) const { return (folder.Path() / name).string(); }

  // The Message-IDs of all mails in the order in which they come, or what is wrong with one.
  std::string Read() const {
    std::string order;
    EXPECT_TRUE(Gateway::ReadAhead({Path("mbox"), Path("missing"), Path("wrong"), Path("maildir")},
                                   StandardInput::OneMail, {}, [&](const PreparedMail& mail, bool) {
                                     order += mail.Read      ? Utf8(mail.Read->MessageId)
                                              : mail.Refused ? "refused"
                                                             : "fault";
                                     order += ' ';
                                     return true;
                                   }));
    return order;
  }

  std::string Expected() const {
    std::string order;
    for (int mail = 1; mail <= 100; ++mail) order += "<" + std::to_string(mail) + "@x> ";
    return order + "fault refused <m@x> ";
  }

  TemporaryFolder folder;
};

TEST_F(ReadAhead, PassesMailsOfAnySizeAndFaultsInTheirOrder) {
  for (int round = 0; round < 5; ++round) EXPECT_EQ(Read(), Expected());
}

TEST_F(ReadAhead, DoesWithoutAThreadIfThereCanBeNone) {
  fs::permissions(folder.Path(), fs::perms(0755));
  EXPECT_EQ(InAnotherProcess([&] {
              const rlimit none{0, 0};
              setrlimit(RLIMIT_NPROC, &none);
              if (geteuid() == 0 && setuid(65534) != 0) return;
              EXPECT_EQ(Read(), Expected());
            }),
            0);
}

// The source has no end: the fifo is open for writing.
TEST_F(ReadAhead, EndsAtOnceWhenNoMailIsWantedAnyMore) {
  const int writing = open(Path("fifo").c_str(), O_RDWR);
  const std::string mails =
      "From a@x.org Mon Nov  2 09:14:07 2026\n\nYes.\n\nFrom a@x.org Mon Nov  2 09:14:07 2026\n\n";
  for (const bool raises : {false, true}) {
    ASSERT_EQ(write(writing, mails.data(), mails.size()), static_cast<ssize_t>(mails.size()));
    const auto handle = [&](const PreparedMail&, bool moreReady) -> bool {
      EXPECT_FALSE(moreReady);
      if (raises) Raise(FailureNumber::DeviceFailed);
      return false;
    };
    const auto read = [&] { return Gateway::ReadAhead({Path("fifo")}, StandardInput::OneMail, {}, handle); };
    if (raises)
      EXPECT_THROW(read(), Failure);
    else
      EXPECT_FALSE(read());
  }
  close(writing);
}

}  // namespace
}  // namespace Tests
