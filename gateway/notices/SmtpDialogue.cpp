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

// The position after the word if the text begins with it as a whole word; otherwise npos.
std::size_t AfterWord(std::string_view text, std::string_view word) {
  const bool whole = Begins(text, word) &&
                     (text.size() == word.size() || text[word.size()] == ' ' || text[word.size()] == '=');
  return whole ? word.size() : std::string_view::npos;
}

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

// True if one of the mechanisms that send a password as it is, is in the list.
bool ListsPassword(std::string_view list) {
  while (!list.empty()) {
    const std::size_t end = std::min(list.find_first_of(" ="), list.size());
    const std::string_view word = list.substr(0, end);
    if (AfterWord(word, "PLAIN") == word.size() || AfterWord(word, "LOGIN") == word.size()) return true;
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return false;
}

}  // namespace

SmtpDialogue::SmtpDialogue(SmtpNeeds needs) : needs_(needs), encrypted_(needs.TlsFromStart) {
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
  if (stage_ == Stage::Hello) offersStartTls_ = offersLogon_ = offersUtf8_ = false;
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
  if (stage_ == Stage::Hello) NoteExtension(text);
  if (line.size() > 3 && line[3] == '-') return true;
  code_ = (line[0] - '0') * 100 + (line[1] - '0') * 10 + (line[2] - '0');
  return Judge();
}

void SmtpDialogue::NoteExtension(std::string_view text) {
  offersStartTls_ = offersStartTls_ || AfterWord(text, "STARTTLS") != std::string_view::npos;
  offersUtf8_ = offersUtf8_ || AfterWord(text, "SMTPUTF8") != std::string_view::npos;
  if (const std::size_t list = AfterWord(text, "AUTH"); list != std::string_view::npos)
    offersLogon_ = offersLogon_ || ListsPassword(text.substr(list));
}

bool SmtpDialogue::Judge() {
  if (stage_ == Stage::Hello && code_ / 100 == 2) fault_ = MissingExtension();
  if (stage_ == Stage::StartTls) {
    encrypted_ = code_ == 220;
    if (!encrypted_) fault_ = Fault::StartTlsRefused;
  }
  if (stage_ == Stage::Data && code_ == 354) Begin(Stage::Content);
  return fault_ == Fault::None;
}

SmtpDialogue::Fault SmtpDialogue::MissingExtension() const {
  if (!encrypted_) {
    if (needs_.StartTls && offersStartTls_) return Fault::None;  // what counts is offered with encryption
    if (needs_.Encrypted) return Fault::NoStartTls;
  }
  if (needs_.Logon && !offersLogon_) return Fault::NoLogon;
  return needs_.Utf8 && !offersUtf8_ ? Fault::NoUtf8 : Fault::None;
}

}  // namespace Gateway
