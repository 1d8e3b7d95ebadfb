#include "host/PostfixMap.h"

#include <algorithm>
#include <string_view>

#include "host/CommandError.h"

namespace Host {

namespace {

constexpr std::string_view kLettersAndDigits =
    "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";

// True for one or more parts separated by single dots, of letters, digits and the characters in more.
bool IsDotted(std::string_view text, std::string_view more) {
  const auto allowed = [&](char c) {
    return c == '.' || kLettersAndDigits.find(c) != std::string_view::npos ||
           more.find(c) != std::string_view::npos;
  };
  return !text.empty() && text.front() != '.' && text.back() != '.' &&
         text.find("..") == std::string_view::npos && std::all_of(text.begin(), text.end(), allowed);
}

}  // namespace

PostfixMap MakePostfixMap(const std::vector<MailboxRecord>& mailboxes, const std::string& domain) {
  if (domain.size() > 253 || !IsDotted(domain, "-"))
    throw CommandError(
        WrongUse,
        "--postfix-map needs the domain whose mail goes to the mailboxes, such as talvane.example.org");
  PostfixMap map;
  for (const MailboxRecord& mailbox : mailboxes) {
    // postmap(1) takes a line that begins with "#" for a comment.
    const std::string name = ToUtf8(mailbox.Name);
    if (mailbox.Complete() && name.size() <= 64 && name.front() != '#' &&
        IsDotted(name, "!#$%&'*+-/=?^_`{|}~"))
      map.Text.append(name).append("@").append(domain).append(" OK\n");
    else
      map.LeftOut.push_back(mailbox.Name);
  }
  return map;
}

}  // namespace Host
