// What delivery reports of all kinds of mail servers say, hostile ones too.
#include "mime/DeliveryStatus.h"
#include "mime/LimitCheck.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

constexpr const char* kId = "<talvane.notice.1a2b3c4d.7.2.0123456789abcdef@desk.example>";

// "Message-ID: recipient status diagnostic|...", or "Message-ID: to address recipient original|..."
std::string Read(const std::string& bytes, bool addresses = false) {
  const auto status = Mime::ReadDeliveryStatus(bytes);
  if (!status) return "no report";
  std::string text = Utf8(status->MessageId) + ":";
  if (addresses) text += " to " + Utf8(status->ReturnedTo);
  for (const auto& f : status->Failures)
    text += addresses ? " " + Utf8(f.Recipient + u" " + f.Original) + "|"
                      : " " + Utf8(f.Recipient) + " " + Utf8(f.Status) + " " + Utf8(f.Diagnostic) + "|";
  return text;
}

TEST(DeliveryStatus, IsReadFromTheReportsOfEveryMailServer) {
  const struct {
    const char *File, *Failures;
  } rows[] = {
      {"postfix",
       " bob@gone.example 5.1.1 550 5.1.1 <bob@gone.example>: Recipient address    rejected: User unknown|"},
      {"postfix-delayed", ""},
      {"exim",
       " bob@gone.example 5.0.0 550 No such user here| carol@gone.example 5.0.0 550 No such user here|"},
      {"exchange",
       " bob@gone.example 5.1.10 550 5.1.10 RESOLVER.ADR.RecipientNotFound; Recipient bob@gone.example not "
       "found by SMTP address lookup|"},
      {"gmail",
       " bob@gone.example 5.1.1 550-5.1.1 The email account that you tried to reach does not exist. Please "
       "try 550-5.1.1 double-checking the recipient's email address for typos or 550 5.1.1 unnecessary "
       "spaces.|"},
      {"sendmail", " bob@gone.example 5.1.1 550 5.1.1 <bob@gone.example>... User unknown|"},
      {"qmail", " bob@gone.example 5.1.1 Sorry, no mailbox here by that name.|"},
  };
  for (const auto& row : rows) {
    std::string bytes = ReadFile(std::string(SAMPLES) + "/" + row.File + ".eml");
    EXPECT_EQ(std::string(kId) + ":" + row.Failures, Read(bytes)) << row.File;
    for (std::size_t at = bytes.find('\n'); at != std::string::npos; at = bytes.find('\n', at + 2))
      bytes.insert(at, "\r");
    EXPECT_EQ(std::string(kId) + ":" + row.Failures, Read(bytes)) << row.File << " with CR LF";
  }
}

std::string Report(const std::string& status, const std::string& returned = "Message-ID: <a@b>\n",
                   const char* type = "text/rfc822-headers") {
  return "Content-Type: multipart/report; boundary=b\n\n--b\nContent-Type: "
         "message/delivery-status\n\nReporting-MTA: dns; x\n\n" +
         status + "\n--b\nContent-Type: " + type + "\n\n" + returned + "\n--b--\n";
}

TEST(DeliveryStatus, IsBoundedAndToleratesWhatProgramsWrite) {
  const std::string failed = "Final-Recipient: rfc822; a@b\nAction: failed\n";
  const struct {
    std::string Bytes, Expected;
  } rows[] = {
      {"Subject: x\n\nFinal-Recipient: a@b\nAction: failed\n", "no report"},
      {"", "no report"},
      {"Content-Type: message/rfc822\n\n" + Report(failed), "no report"},
      {"Content-Type: multipart/mixed; boundary=c\n\n--c\nContent-Type: message/rfc822\n\n" + Report(failed) +
           "\n--c--\n",
       "no report"},
      {"Content-Type: multipart/mixed; boundary=c\n\n--c\n" + Report(failed) + "\n--c--\n", "<a@b>: a@b  |"},
      {Report(failed, "Message-ID: <a@b>\n", "message/rfc822"), "<a@b>: a@b  |"},
      {Report(failed, "MESSAGE-ID : x <c@d> y\nMessage-ID: <a@b>\n"), "<c@d>: a@b  |"},
      {Report(failed, "Subject: x\n\nMessage-ID: <a@b>\n"), ": a@b  |"},
      {Report(failed, "Message-ID: <a\n"), ": a@b  |"},
      {Report("Original-Recipient: rfc822;o@b\n" + failed + "Status: 5.1.1 x\n"), "<a@b>: a@b 5.1.1 |"},
      {Report("Original-Recipient: rfc822;o@b\nAction: failed\n"), "<a@b>: o@b  |"},
      {Report("Final-Recipient: (c) RFC822 ; Bob <o@b>\nAction: failed\n"), "<a@b>: o@b  |"},
      {Report("Final-Recipient: a@b (c)\nAction: failed\nStatus: none\nDiagnostic-Code: x\x1B[1m\xE4\n"),
       "<a@b>: a@b  x [1m\u00E4|"},
      {Report("Action: failed\nStatus: 5.0.0\n"), "<a@b>:"},
      {Report("Final-Recipient: a@b\nAction: delivered\nStatus: 5.0.0\n"), "<a@b>:"},
      {Report("Final-Recipient: a@b\nAction: expanded\n\nFinal-Recipient: c@d\nStatus: 2.0.0\n"), "<a@b>:"},
      {Report(":\n : \n\nx\n" + failed), "<a@b>: a@b  |"},
  };
  for (const auto& row : rows) EXPECT_EQ(row.Expected, Read(row.Bytes)) << row.Bytes;

  const std::string forwarded = "Original-Recipient: rfc822; <o@b>\n" + failed, two = "To: x@y, z@y\n";
  const std::string mail = "Message-ID: <a@b>\nTo: =?utf-8?q?B=2C?=\n <to@b>\n";
  EXPECT_EQ("<a@b>: to to@b a@b o@b|", Read(Report(forwarded, mail), true));
  EXPECT_EQ("<a@b>: to to@b a@b o@b|", Read(Report(forwarded, mail, "message/rfc822"), true));
  EXPECT_EQ(": to  a@b o@b| a@b | a@b |", Read(Report(failed + forwarded + failed, two), true));

  std::string many;
  for (int i = 0; i < 100'000; ++i) many += failed + "\n";
  const auto status = Mime::ReadDeliveryStatus(Report(many));
  EXPECT_EQ(Mime::DeliveryStatus::kMostFailures, status->Failures.size());
  EXPECT_TEXT(u"<a@b>", status->MessageId);
  const std::string huge(1 << 20, 'x');
  EXPECT_LT(
      Read(Report("Final-Recipient: " + huge + "\nAction: failed\nDiagnostic-Code: smtp; " + huge + "\n",
                  huge))
          .size(),
      1100U);
  EXPECT_LT(Read(Report("Final-Recipient: x;" + std::string(1 << 20, '(') + "\nAction: failed\n")).size(),
            600U);
  EXPECT_THROW(Read(Report(failed) + "--b\n" + Report("x: y\n", huge, "message/rfc822")),
               Mime::LimitExceeded);
}

}  // namespace
}  // namespace Tests
