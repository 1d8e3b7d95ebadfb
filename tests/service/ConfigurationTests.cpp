// The file tvmail.toml: what its settings mean, and every error with its place.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "gateway/service/Configuration.h"
#include "platform/Failure.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace Gateway;

class ConfigurationFile : public testing::Test {
 protected:
  Configuration Read(const std::string& content, mode_t mode = 0600) const {
    WriteFile(folder_.Path() / "t.toml", content);
    chmod(Path().c_str(), mode);
    return ReadConfiguration(Path());
  }

  // The lines of the failure, without the path in front of each.
  std::string ErrorsOf(const std::string& content, mode_t mode = 0600) const {
    try {
      Read(content, mode);
    } catch (const Platform::Failure& failure) {
      std::string text = failure.what();
      for (std::size_t at; (at = text.find(Path() + ":")) != std::string::npos;)
        text.erase(at, Path().size() + 1);
      return text;
    }
    return {};
  }

  std::string Path() const { return (folder_.Path() / "t.toml").string(); }

 private:
  TemporaryFolder folder_;
};

constexpr const char* kMaildir = "[[mailbox]]\nname = 'A'\nsource = 'maildir'\nfolder = '/a'\n";

TEST_F(ConfigurationFile, ReadsTheSampleWithEverySetting) {
  const Configuration read = ReadConfiguration(SAMPLE_CONFIGURATION);
  ASSERT_EQ(read.Mailboxes.size(), 4u);
  EXPECT_EQ(read.Defaults, DeliverySettings());
  const MailboxSettings *apollo = read.Find(u"APOLLO"), *gemini = read.Find(u"Gemini"),
                        *mercury = read.Find(u"Mercury"), *voyager = read.Find(u"Voyager");
  ASSERT_TRUE(apollo && gemini && mercury && voyager);
  QueueSettings expected;
  expected.Folder = "/var/mail/apollo";
  EXPECT_EQ(apollo->Source, expected);
  DeliverySettings delivery;
  delivery.Address = u"apollo@example.org";
  EXPECT_EQ(apollo->Delivery, delivery);
  NoticeSettings notices;
  notices.Servers = {{"smtp.example.org", 587, SmtpSecurity::Auto, "talvane", "/etc/talvane/smtp.password",
                      "/etc/talvane/ca.pem"}};
  EXPECT_EQ(read.DefaultNotices, notices);
  EXPECT_EQ(gemini->Notices, notices);
  notices.Address = u"apollo@example.org";
  EXPECT_EQ(apollo->Notices, notices);
  expected = {};
  expected.Kind = QueueKind::Imap;
  expected.Host = "mail.example.org";
  expected.User = "gemini";
  expected.PasswordFile = "/etc/talvane/gemini.password";
  expected.After = AfterSuccess::Move;
  expected.MoveTo = "Done";
  EXPECT_EQ(gemini->Source, expected);
  EXPECT_TRUE(gemini->Delivery.Policy.PostStrangers);
  expected = {};
  expected.Kind = QueueKind::Pop3;
  expected.Host = "pop.example.org";
  expected.Port = 1995;
  expected.User = "mercury";
  expected.PasswordFile = "/etc/talvane/mercury.password";
  expected.After = AfterSuccess::Delete;
  expected.CaFile = "/etc/talvane/ca.pem";
  EXPECT_EQ(mercury->Source, expected);
  EXPECT_FALSE(voyager->Source);
  EXPECT_EQ(voyager->Delivery.HeldDays, 30);
  EXPECT_EQ(voyager->Notices.PerMinute, 1000);
  EXPECT_EQ(read.Find(u"Luna"), nullptr);
}

TEST_F(ConfigurationFile, LetsAMailboxOverrideTheDefaults) {
  const Configuration read = Read(
      "[defaults]\nsource = 'imap'\nhost = 'h'\nuser = 'u'\npassword-file = '/missing'\nsecurity = 'none'\n"
      "size-limit = 1\nautomatic = 'post'\nempty = 'post'\nrequire-authenticated = 'mx'\npoll-seconds = 5\n"
      "after-success = 'delete'\nanswer-senders = false\n[[mailbox]]\nname = ' A '\nnotices = false\n"
      "[[mailbox]]\nname = 'b'\nhost = 'k'\nsecurity = 'starttls'\nautomatic = 'refuse'\n"
      "require-authenticated = ''\nsize-limit = 128\nafter-success = 'mark'\nanswer-senders = true\n");
  const MailboxSettings *a = read.Find(u"A"), *b = read.Find(u"B");
  ASSERT_TRUE(a && b);
  EXPECT_EQ(a->Source->Host + b->Source->Host, "hk");
  EXPECT_EQ(a->Source->Security, QueueSecurity::None);
  EXPECT_EQ(b->Source->Security, QueueSecurity::StartTls);
  EXPECT_EQ(b->Source->PollInterval, std::chrono::seconds(5));
  EXPECT_EQ(a->Source->After, AfterSuccess::Delete);
  EXPECT_EQ(b->Source->After, AfterSuccess::Mark);
  EXPECT_TRUE(!a->Delivery.AnswerSenders && b->Delivery.AnswerSenders && !a->Notices.Send && b->Notices.Send);
  const auto policy = [](bool automatic, const char16_t* server, std::size_t megabytes) {
    PolicySettings settings;
    settings.PostAutomatic = automatic;
    settings.PostEmpty = true;
    settings.RequireAuthenticated = server;
    settings.SizeLimit = megabytes << 20;
    return settings;
  };
  EXPECT_EQ(a->Delivery.Policy, policy(true, u"mx", 1));
  EXPECT_EQ(b->Delivery.Policy, policy(false, u"", 128));
  // A file of a password may come with a disk that is mounted later.
  ASSERT_EQ(read.Warnings.size(), 2u);
  EXPECT_PRED2(Holds, read.Warnings[0],
               "t.toml:14:1: The password file /missing can't be read: No such file");
}

TEST_F(ConfigurationFile, NamesThePlaceOfEachError) {
  const std::string mailbox = kMaildir, imap = "[[mailbox]]\nname = 'A'\nsource = 'imap'\n";
  const std::string server = imap + "host = 'h'\nuser = 'u'\npassword-file = '/p'\n";
  const struct {
    std::string Content;
    std::vector<std::string> Lines;  // the beginning of each
  } rows[] = {
      {"", {}},
      {"[defaults\n", {"1:10: The file can't be read further, since this isn't TOML: "}},
      {"a = 1\n" + std::string(9000, 'a') + " = 1", {"2:1: The file can't be read further"}},
      {"mailbox = 'x'\n[default]\n[mailboxes.A]\n",
       {"1:1: There is no section or setting mailbox.", "2:1: There is no section or setting default.",
        "3:1: There is no section or setting mailboxes."}},
      {mailbox + "held_days = 3\nstrangers = true\nautomatic = 'Post'\nempty = 1\nheld-days = 0\n",
       {"5:1: There is no setting held_days here. The settings are: address, after-success, ",
        "6:1: strangers has to be one of these words, in quotation marks: refuse, post.",
        "7:1: automatic has to", "8:1: empty has to",
        "9:1: held-days has to be a whole number of the range 1-3650."}},
      {mailbox + "notices = 'yes'\naddress = 'a@b@c'\nnotices-per-minute = 0\n",
       {"5:1: notices has to be true or false", "6:1: ", "7:1: notices-per-minute has to be a whole number"}},
      {"[defaults]\nname = 'x'\nfolder = '/x'\nsize-limit = '25'\nsize-limits = 129\nrequire-authenticated = "
       "'a b'\n",
       {"2:1: There is no setting name", "3:1: There is no setting folder",
        "4:1: size-limit has to be a whole", "5:1: There is no setting size-limits",
        "6:1: require-authenticated is empty"}},
      {"[[mailbox]]\n[[mailbox]]\nname = ''\n[[mailbox]]\nname = \"a\\nb\"\n[[mailbox]]\nname = 'a\\b'\n"
       "[[mailbox]]\nname = 5\n",
       {"1:1: The setting name is missing.", "3:1: name is empty, ", "5:1: name is empty, ",
        "7:1: name is empty", "9:1: name has to be a text in quotation marks."}},
      {mailbox + "[[mailbox]]\nname = 'a'\n", {"5:1: The mailbox a has a section in line 1 already."}},
      {"[[mailbox]]\nname = 'A'\nsource = 'maildir'\n", {"1:1: The setting folder is missing."}},
      {"[[mailbox]]\nname = 'A'\nsource = 'maildir'\nfolder = 'a'\nhost = 'h'\n",
       {"4:1: folder has to be a whole path", "5:1: host is no setting of the source maildir."}},
      {"[[mailbox]]\nname = 'A'\nhost = 'h'\n", {"3:1: host needs the setting source"}},
      {imap, {"1:1: The setting host", "1:1: The setting user", "1:1: The setting password-file"}},
      {server + "port = 65536\nsecurity = 'ssl'\nfolder = '/a'\nafter-success = 'move'\n",
       {"7:1: port has to be",
        "8:1: security has to be one of these words, in quotation marks: tls, starttls, none.",
        "9:1: folder is no setting of the source imap.", "10:1: The setting move-to is missing."}},
      {server + "move-to = 'x'\n", {"7:1: move-to has no effect"}},
      {"[[smtp]]\nport = 0\nfolder = '/a'\nsecurity = 'ssl'\n[[smtp]]\nhost = 'h:25'\nuser = 'u'\n",
       {"1:1: The setting host is missing. Add it to this section.", "2:1: port has to be",
        "3:1: There is no setting folder here. The settings are: ca-file, host, ",
        "4:1: security has to be one of these words, in quotation marks: auto, tls, starttls, none.",
        "5:1: The setting password-file is missing.", "6:1: host is empty, too long, or holds"}},
      {"[[smtp]]\nhost = 'h.example'\nsecurity = 'none'\nuser = 'u'\npassword-file = '/p'\nca-file = "
       "'/c'\n[[smtp]]\nhost = 'H.example.'\nport = 25\n[[smtp]]\nhost = 'H.example.'\n[[smtp]]\n"
       "host = '[::1]'\nsecurity = 'none'\nuser = 'u'\npassword-file = '/p'\n",
       {"3:1: The password for h.example would be sent", "6:1: ca-file has no effect",
        "10:1: The server H.example. has a section in line 1 already."}},
      {"[[mailbox]]\nname = 'A'\nsource = 'pop3'\nhost = 'h'\nuser = 'u'\npassword-file = '/p'\n"
       "after-success = 'move'\n",
       {"7:1: after-success has to be one of these words, in quotation marks: keep, delete."}},
  };
  for (const auto& [content, lines] : rows) {
    SCOPED_TRACE(content.substr(0, 400));
    std::string errors = ErrorsOf(content);
    for (const std::string& line : lines) {
      EXPECT_EQ(errors.substr(0, line.size()), line);
      const std::size_t end = errors.find('\n');
      errors.erase(0, end == std::string::npos ? end : end + 1);
    }
    EXPECT_EQ(errors, "");
  }
}

TEST_F(ConfigurationFile, RefusesAFileThatIsMissingTooLargeOrOpenToOthers) {
  EXPECT_EQ(ErrorsOf(kMaildir, 0644), "");
  for (const mode_t mode : {0620u, 0602u})
    EXPECT_PRED2(Holds, ErrorsOf(kMaildir, mode), "t.toml may be written by other users");
  EXPECT_PRED2(Holds, ErrorsOf(std::string((1 << 20) + 1, '#')), "t.toml");
  EXPECT_PRED2(Holds, ErrorsOf("a = \"\xff\"\n"), "1:");
  EXPECT_THROW(ReadConfiguration(Path() + "x"), Platform::Failure);
}

}  // namespace
}  // namespace Tests
