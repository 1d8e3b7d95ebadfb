#include "host/export/MboxExport.h"

#include <ctime>

#include "gateway/delivery/Digest.h"
#include "mime/MailWriter.h"
#include "mime/Mbox.h"

namespace Host {
namespace {

constexpr std::size_t kIdDigits = 16;  // of the digest of the project's name

// The time that a reply was stored; 0 for a text of another form.
std::time_t TimeOf(const String& at) {
  std::tm time{};
  return strptime(ToUtf8(at).c_str(), "%Y-%m-%dT%H:%M:%S", &time) ? timegm(&time) : 0;
}

// "From sender time", with the time as asctime writes it in any locale.
std::string SeparatorLine(std::time_t at) {
  std::tm time{};
  constexpr std::size_t kAsctimeSize = 26;
  char text[kAsctimeSize] = "Thu Jan  1 00:00:00 1970\n";
  if (gmtime_r(&at, &time)) asctime_r(&time, text);
  return std::string(Mime::kMboxStart) + "MAILER-DAEMON " + text;
}

std::string Masked(std::string_view mail) {
  std::string masked;
  masked.reserve(mail.size());
  while (!mail.empty()) {
    const std::string_view line = mail.substr(0, mail.find('\n'));
    const std::size_t begin = line.find_first_not_of('>');
    if (begin != std::string_view::npos && line.substr(begin).starts_with(Mime::kMboxStart)) masked += '>';
    masked.append(line) += '\n';
    mail.remove_prefix(std::min(line.size() + 1, mail.size()));
  }
  return masked;
}

}  // namespace

std::size_t WriteMbox(Runtime::StagedFile& file, const ProjectAdministration& projects, const String& path,
                      const ProjectDescription& project) {
  const std::string projectId = Gateway::Sha256({ToUtf8(project.Name)}).substr(0, kIdDigits);
  std::size_t count = 0;
  for (const DescribedDiscussion& discussion : project.Discussions) {
    std::string first;
    projects.EachReply(path, discussion.Number, [&](const DescribedReply& reply) {
      const std::time_t at = TimeOf(reply.At);
      const std::string id = projectId + "." + std::to_string(discussion.Number) + "." +
                             std::to_string(reply.Number) + "@talvane.invalid";
      const String address = reply.UserAddress.empty()
                                 ? FromUtf8("user-" + std::to_string(reply.UserKey) + "@talvane.invalid")
                                 : reply.UserAddress;
      file.Write(SeparatorLine(at) +
                 Masked(Mime::WriteMail({.From = {reply.UserName, address},
                                         .Subject = {reply.Subject},
                                         .Date = at,
                                         .MessageId = id,
                                         .InReplyTo = first,
                                         .References = {first},
                                         .Text = reply.Body})) +
                 "\n");
      if (first.empty()) first = id;
      ++count;
    });
  }
  return count;
}

}  // namespace Host
