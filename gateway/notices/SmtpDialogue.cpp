#include "gateway/notices/SmtpDialogue.h"

#include <strings.h>

#include <algorithm>

namespace Gateway {
namespace {

// Far above any real answer: a server lists some dozen extensions.
constexpr std::size_t kLongestAnswer = std::size_t{16} << 10;
constexpr std::size_t kKept = 2000;  // bytes of an answer

bool Begins(std::string_view text, std::string_view word) {
  return text.size() >= word.size() && strncasecmp(text.data(), word.data(), word.size()) == 0;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

SmtpDialogue::SmtpDialogue(SmtpNeeds needs) : needs_(needs) {
  text_.reserve(kKept);
}

void SmtpDialogue::Begin(Stage stage) {
  stage_ = stage;
  code_ = 0;
  bytes_ = 0;
  text_.clear();
}

void SmtpDialogue::Command(std::string_view line) {
  constexpr struct {
    std::string_view Verb;
    Stage At;
  } kVerbs[] = {{"EHLO ", Stage::Hello},        {"HELO ", Stage::Hello}, {"STARTTLS", Stage::StartTls},
                {"AUTH ", Stage::Logon},        {"NOOP", Stage::Sender}, {"MAIL FROM:", Stage::Sender},
                {"RCPT TO:", Stage::Recipient}, {"DATA\r", Stage::Data}};
  if (Begins(line, "QUIT\r")) {
    quits_ = true;
    return;
  }
  const auto* const found =
      std::ranges::find_if(kVerbs, [&](const auto& verb) { return Begins(line, verb.Verb); });
  // Other lines continue a logon.
  Begin(found == std::end(kVerbs) ? stage_ : found->At);
  if (stage_ == Stage::Hello) takesUtf8_ = false;
  loggedOn_ = loggedOn_ || stage_ == Stage::Logon;
}

void SmtpDialogue::Keep(std::string_view text) {
  const std::size_t room = kKept - text_.size();
  if (!text_.empty() && room > 0) text_ += ' ';
  text_.append(text.substr(0, kKept - text_.size()));
}

bool SmtpDialogue::Answer(std::string_view line) {
  if (quits_) return true;  // its answer decides nothing
  bytes_ += line.size();
  while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
  const bool numbered = line.size() >= 3 && IsDigit(line[0]) && IsDigit(line[1]) && IsDigit(line[2]) &&
                        (line.size() == 3 || line[3] == ' ' || line[3] == '-');
  const std::string_view text = line.substr(numbered ? std::min<std::size_t>(4, line.size()) : 0);
  Keep(text_.empty() ? line : text);
  if (!numbered || bytes_ > kLongestAnswer) {
    fault_ = numbered ? Fault::TooLong : Fault::NotSmtp;
    return false;
  }
  greeted_ = greeted_ || stage_ == Stage::Greeting;
  takesUtf8_ = takesUtf8_ || (stage_ == Stage::Hello && text.starts_with("SMTPUTF8"));
  if (line.size() > 3 && line[3] == '-') return true;
  code_ = (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
  return Judge();
}

bool SmtpDialogue::Judge() {
  // On an open connection both were proved by an earlier mail.
  if (stage_ == Stage::Sender && greeted_) {
    if (needs_.Utf8 && !takesUtf8_) fault_ = Fault::NoUtf8;
    if (needs_.Logon && !loggedOn_) fault_ = Fault::NoLogon;
  }
  if (needs_.Encryption && stage_ == Stage::StartTls && code_ != 220) fault_ = Fault::NoEncryption;
  if (stage_ == Stage::Data && code_ == 354) Begin(Stage::Content);
  return fault_ == Fault::None;
}

}  // namespace Gateway
