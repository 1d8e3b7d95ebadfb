#include "gateway/sources/MailSource.h"

#include <algorithm>
#include <filesystem>
#include <system_error>
#include <vector>

#include "gateway/sources/StopSignal.h"
#include "mime/InputFile.h"
#include "mime/Limits.h"
#include "mime/Mbox.h"

namespace Gateway {
namespace {

namespace fs = std::filesystem;

using Mime::InputFile;
using Mime::kLargestMail;
using Mime::kMboxStart;
using Mime::MboxReader;

RawMail Fault(const std::string& source, const std::string& reason) {
  return {source, {}, "can't be read: " + reason, Outcome::Retry};
}

RawMail Checked(RawMail mail, std::size_t size) {
  if (size <= kLargestMail) return mail;
  return {mail.Source,
          {},
          "is larger than " + std::to_string(kLargestMail >> 20) + " MB: send it without attachments",
          Outcome::Refused};
}

bool ReadMbox(InputFile& file, const std::string& path, const MailSink& sink) {
  MboxReader reader(file);
  std::string bytes;
  for (std::size_t index = 1;; ++index) {
    const std::string source = path + ":" + std::to_string(index);
    std::size_t size = 0;
    try {
      if (!reader.Next(bytes, size)) return true;
    } catch (const std::system_error& error) {
      // What stood before the error was not the whole message.
      return !StopWanted() && sink(Fault(source, error.code().message()));
    }
    if (!sink(Checked({source, std::move(bytes), {}, Outcome::Retry}, size))) return false;
  }
}

bool ReadFile(const std::string& path, const MailSink& sink, bool mayBeMbox) {
  RawMail mail{path, {}, {}, Outcome::Retry};
  try {
    InputFile file(path, StopWanted);
    if (mayBeMbox && file.Peek(kMboxStart.size()) == kMboxStart) return ReadMbox(file, path, sink);
    const std::size_t size = file.TakeAll(mail.Bytes, kLargestMail);
    mail = Checked(std::move(mail), size);
  } catch (const std::system_error& error) {
    if (StopWanted()) return false;
    mail = Fault(path, error.code().message());
  }
  return sink(std::move(mail));
}

// Names in a Maildir begin with the time of delivery, so that their order is that of arrival.
bool ReadMaildir(const fs::path& folder, const MailSink& sink) {
  std::vector<fs::path> files;
  for (const char* name : {"new", "cur"}) {
    std::error_code error;
    const fs::path part = folder / name;
    fs::directory_iterator entry(part, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      if (!entry->path().filename().string().starts_with('.')) files.push_back(entry->path());
    }
    if (error && !sink(Fault(part.string(), error.message()))) return false;
  }
  std::sort(files.begin(), files.end(),
            [](const fs::path& left, const fs::path& right) { return left.filename() < right.filename(); });
  return std::all_of(files.begin(), files.end(),
                     [&](const fs::path& file) { return ReadFile(file.string(), sink, false); });
}

}  // namespace

bool ReadMailSource(const std::string& path, const MailSink& sink) {
  std::error_code error;
  if (path == "-" || !fs::is_directory(path, error)) return ReadFile(path, sink, true);
  if (fs::is_directory(fs::path(path) / "new", error) && fs::is_directory(fs::path(path) / "cur", error))
    return ReadMaildir(path, sink);
  return sink(Fault(path, "it is a folder, but no Maildir, which has the folders new and cur"));
}

}  // namespace Gateway
