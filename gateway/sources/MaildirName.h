// MaildirName: the names of mails in a Maildir.
#pragma once

#include <string>
#include <vector>

namespace Gateway {

// Sorts names by the time of arrival that they begin with: seconds since 1970, then, after a point, "M" and
// microseconds. Names of another form are last. Equal times are sorted by name.
void SortByArrival(std::vector<std::string>& names);

// The name in cur of a mail that was read. copy counts the attempts to find a free name.
std::string NameOfReadMail(const std::string& name, int copy);

}  // namespace Gateway
