// ImapNesting: limits the nesting of an IMAP server's answers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Gateway {

// libetpan parses nested parentheses by recursion: 900 kB of them overflow its stack. The answers that are
// asked for here nest 3 deep. Mails are not looked into: they are literals behind "BODY[] " or "BODY[HEADER]
// " in a FETCH answer. Parentheses in quoted texts are counted, too, since no long ones are asked for.
class ImapNesting {
 public:
  // Takes the next bytes of the server. Returns false if they nest deeper than 100.
  bool Allows(std::string_view bytes);

 private:
  // The size of the mail that follows the line that has just ended; 0 if none does.
  std::size_t LiteralBehindLine() const;

  std::size_t skipped_ = 0;  // bytes of a mail still to come
  std::size_t depth_ = 0;
  std::string line_;  // its first and last bytes, as far as they decide about a mail
};

}  // namespace Gateway
