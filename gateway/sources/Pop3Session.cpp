#include "gateway/sources/Pop3Session.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <unordered_map>

#include "gateway/sources/PasswordFile.h"
#include "gateway/sources/SourceFailure.h"
#include "mime/Limits.h"
#include "platform/ProgramTexts.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

// Bytes of answers.
constexpr std::size_t kShortAnswer = std::size_t{16} << 10;
constexpr std::size_t kListAnswer = std::size_t{64} << 20;

// "number rest" of a list. Returns false for another line.
bool TakeNumber(std::string_view& line, std::size_t& number) {
  const auto end = std::from_chars(line.data(), line.data() + line.size(), number);
  if (end.ec != std::errc()) return false;
  line.remove_prefix(static_cast<std::size_t>(end.ptr - line.data()));
  line.remove_prefix(std::min(line.size(), line.find_first_not_of(' ')));
  return true;
}

std::string_view WithoutLineEnd(std::string_view line) {
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

// RFC 1939 allows 70 characters; some servers send more.
bool IsUniqueId(std::string_view id) {
  return !id.empty() && id.size() <= 255 &&
         std::all_of(id.begin(), id.end(), [](char c) { return c > 0x20 && c < 0x7F; });
}

}  // namespace

Pop3Session::Pop3Session(const QueueSettings& settings, const Interruption& interruption)
    : line_(settings, settings.Security == QueueSecurity::Tls ? 995 : 110, interruption) {
  LogOn(settings);
}

void Pop3Session::LogOn(const QueueSettings& settings) {
  std::string greeting;
  line_.Expect(kShortAnswer);
  ReadLine(greeting);
  if (!greeting.starts_with("+OK"))
    RaiseSource(TextNumber::kAnswerNotUnderstood, line_.Name(), std::string(WithoutLineEnd(greeting)));
  if (settings.Security == QueueSecurity::StartTls) {
    if (!Ask("STLS")) RaiseSource(TextNumber::kNoStartTls, line_.Name());
    // Data received before the encryption may come from an attacker.
    if (begin_ < buffer_.size()) RaiseSource(TextNumber::kAnswerNotUnderstood, line_.Name(), "STLS");
    line_.StartTls();
  }
  const std::string password = ReadPasswordFile(settings.PasswordFile);
  Require("USER " + settings.User, TextNumber::kSourceLogonRefused);
  Require("PASS " + password, TextNumber::kSourceLogonRefused);
}

std::vector<Pop3Session::Mail> Pop3Session::List() {
  if (!Ask("UIDL")) RaiseSource(TextNumber::kNoUniqueIds, line_.Name());
  line_.Expect(kListAnswer);
  std::unordered_map<std::size_t, std::string> ids;
  std::string bytes;
  std::size_t number = 0;
  for (; ReadLineOfMany(bytes); bytes.clear()) {
    std::string_view line = WithoutLineEnd(bytes);
    if (!TakeNumber(line, number) || !IsUniqueId(line))
      RaiseSource(TextNumber::kAnswerNotUnderstood, line_.Name(), bytes.substr(0, 100));
    ids.emplace(number, line);
  }
  Require("LIST", TextNumber::kRequestRefused);
  line_.Expect(kListAnswer);
  std::vector<Mail> mails;
  for (bytes.clear(); ReadLineOfMany(bytes); bytes.clear()) {
    std::string_view line = WithoutLineEnd(bytes);
    Mail mail;
    if (!TakeNumber(line, mail.Number) || !TakeNumber(line, mail.Size))
      RaiseSource(TextNumber::kAnswerNotUnderstood, line_.Name(), bytes.substr(0, 100));
    const auto id = ids.find(mail.Number);
    if (id == ids.end()) continue;  // it arrived between the two commands
    mail.Id = id->second;
    mails.push_back(std::move(mail));
  }
  return mails;
}

bool Pop3Session::Fetch(const Mail& mail, bool headerOnly, std::string& bytes) {
  const std::string number = std::to_string(mail.Number);
  // Deletions take effect only with Quit, for which this answer has to be read to its end.
  std::optional<Connection::Settling> settling;
  if (deleted_) settling.emplace(line_);
  if (!Ask(headerOnly ? "TOP " + number + " 0" : "RETR " + number)) return false;
  const std::size_t largest = headerOnly ? Mime::MailLimits{}.HeaderSize : Mime::kLargestMail;
  // Doubled dots at the start of lines (RFC 1939, section 3) may add a third.
  line_.Expect(kShortAnswer + largest + largest / 3, std::min(mail.Size, largest));
  bytes.clear();
  bytes.reserve(std::min(mail.Size, largest));
  while (ReadLineOfMany(bytes)) continue;
  return true;
}

void Pop3Session::Delete(const Mail& mail) {
  const Connection::Settling settling(line_);
  Require("DELE " + std::to_string(mail.Number), TextNumber::kRequestRefused);
  deleted_ = true;
}

void Pop3Session::Quit() {
  const Connection::Settling settling(line_);
  Require("QUIT", TextNumber::kRequestRefused);
}

bool Pop3Session::Ask(const std::string& command) {
  line_.Expect(kShortAnswer);
  line_.Write(command + "\r\n");
  std::string answer;
  ReadLine(answer);
  const std::string_view text = WithoutLineEnd(answer);
  if (text.starts_with("+OK")) return true;
  reason_ = text.substr(0, 300);
  if (!text.starts_with("-ERR")) RaiseSource(TextNumber::kAnswerNotUnderstood, line_.Name(), reason_);
  return false;
}

void Pop3Session::Require(const std::string& command, std::int32_t text) {
  if (!Ask(command)) RaiseSource(text, line_.Name(), reason_);
}

void Pop3Session::ReadLine(std::string& bytes) {
  for (;;) {
    const std::size_t end = buffer_.find('\n', begin_);
    const std::size_t next = end == std::string::npos ? buffer_.size() : end + 1;
    bytes.append(buffer_, begin_, next - begin_);
    begin_ = next;
    if (end != std::string::npos) return;
    buffer_.resize(16384);
    buffer_.resize(line_.Read(buffer_.data(), buffer_.size()));
    begin_ = 0;
  }
}

bool Pop3Session::ReadLineOfMany(std::string& bytes) {
  const std::size_t begin = bytes.size();
  ReadLine(bytes);
  if (bytes[begin] != '.') return true;
  if (WithoutLineEnd(std::string_view(bytes).substr(begin)).size() == 1) {
    bytes.resize(begin);
    return false;
  }
  bytes.erase(begin, 1);
  return true;
}

}  // namespace Gateway
