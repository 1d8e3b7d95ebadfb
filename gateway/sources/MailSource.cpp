#include "gateway/sources/MailSource.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <new>
#include <system_error>
#include <vector>

#include "mime/InputFile.h"
#include "mime/Limits.h"
#include "mime/Mbox.h"
#include "platform/ProgramTexts.h"
#include "platform/ReasonTexts.h"
#include "platform/Text.h"
#include "runtime/SystemReason.h"
#include "runtime/Texts.h"

namespace Gateway {
namespace {

namespace fs = std::filesystem;

using Mime::InputFile;
using Mime::kLargestMail;
using Mime::MboxReader;

namespace TextNumber = Platform::TextNumber;

std::string Text(std::int32_t number, const std::string& argument = {}) {
  return Platform::ToUtf8(Runtime::TextOf(number, Platform::FromUtf8(argument)));
}

std::string NoMemory() {
  return Text(TextNumber::kNotEnoughMemory);
}

RawMail Fault(const std::string& source, const std::string& reason) {
  return {source, {}, Text(TextNumber::kMailUnreadable, reason), Outcome::Retry};
}

RawMail Checked(RawMail mail, std::size_t size) {
  if (size <= kLargestMail) return mail;
  return {mail.Source,
          {},
          Text(TextNumber::kLargerThanMegabytes, std::to_string(kLargestMail >> 20)),
          Outcome::Refused};
}

using StopTest = std::function<bool()>;

enum class Form { OneMail, Mbox, Recognise };

// The envelope's sender by a line "From sender time". Before a single mail a mail server has written it, with
// MAILER-DAEMON for the null return path. In an mbox that name has no meaning: some mail programs write
// MAILER-DAEMON or "-" before each message that they export.
std::optional<std::string> EnvelopeSender(std::string sender, bool mbox) {
  const bool daemon = Platform::EqualsIgnoreCase(Platform::FromUtf8(sender), u"MAILER-DAEMON");
  if (sender == "-" || (mbox && daemon)) return std::nullopt;
  return daemon || sender == "<>" ? std::string() : std::move(sender);
}

bool ReadMbox(InputFile& file, const std::string& path, const MailSink& sink, const StopTest& stopWanted) {
  MboxReader reader(file);
  std::string bytes;
  for (std::size_t index = 1;; ++index) {
    const std::string source = path + ":" + std::to_string(index);
    std::size_t size = 0;
    try {
      if (!reader.Next(bytes, size)) return true;
    } catch (const std::system_error& error) {
      // The part before the error is not the whole message.
      return !stopWanted() && sink(Fault(source, Runtime::SystemReason(error.code().value()))).has_value();
    } catch (const std::bad_alloc&) {
      if (!sink(Fault(source, NoMemory()))) return false;
      continue;
    }
    if (!sink(Checked({source, std::move(bytes), {}, Outcome::Retry, EnvelopeSender(reader.Sender(), true)},
                      size)))
      return false;
  }
}

// If standardInput is true, path is only the name in the outcomes: opening /dev/stdin can succeed even if
// standard input is closed.
bool ReadFile(const std::string& path, bool standardInput, Form form, const MailSink& sink,
              const StopTest& stopWanted) {
  RawMail mail{path, {}, {}, Outcome::Retry};
  try {
    InputFile file(standardInput ? "-" : path, stopWanted);
    const bool mbox = form != Form::OneMail && Mime::BeginsAnMbox(file);
    if (mbox) return ReadMbox(file, path, sink, stopWanted);
    if (form == Form::Mbox) {
      if (file.PeekLine('\n').empty()) return true;
      return sink({path, {}, Text(TextNumber::kNoMbox), Outcome::Refused}).has_value();
    }
    TakeEnvelopeLine(file, mail);
    const std::size_t size = file.TakeAll(mail.Bytes, kLargestMail);
    mail = Checked(std::move(mail), size);
  } catch (const std::system_error& error) {
    if (stopWanted()) return false;
    const bool closed = standardInput && error.code() == std::errc::bad_file_descriptor;
    mail = Fault(
        path, closed ? Text(TextNumber::kStandardInputClosed) : Runtime::SystemReason(error.code().value()));
  } catch (const std::bad_alloc&) {
    mail = Fault(path, NoMemory());
  }
  return sink(std::move(mail)).has_value();
}

// Names in a Maildir begin with the time of delivery, so they sort in order of arrival.
bool ReadMaildir(const fs::path& folder, const MailSink& sink, const StopTest& stopWanted) {
  std::vector<fs::path> files;
  for (const char* name : {"new", "cur"}) {
    std::error_code error;
    const fs::path part = folder / name;
    fs::directory_iterator entry(part, error);
    for (; !error && entry != fs::directory_iterator(); entry.increment(error)) {
      if (!entry->path().filename().string().starts_with('.')) files.push_back(entry->path());
    }
    if (error && !sink(Fault(part.string(), Runtime::SystemReason(error.value())))) return false;
  }
  std::sort(files.begin(), files.end(),
            [](const fs::path& left, const fs::path& right) { return left.filename() < right.filename(); });
  return std::all_of(files.begin(), files.end(), [&](const fs::path& file) {
    return ReadFile(file.string(), false, Form::OneMail, sink, stopWanted);
  });
}

bool IsMaildir(const fs::path& folder) {
  std::error_code error;
  return fs::is_directory(folder / "new", error) && fs::is_directory(folder / "cur", error);
}

// True for a file in the folder new or cur of a Maildir, and for a link to one.
bool IsInMaildir(const fs::path& file) {
  std::error_code error;
  const fs::path part = fs::canonical(file, error).parent_path();
  const fs::path name = part.filename();
  return (name == "new" || name == "cur" || name == "tmp") && IsMaildir(part.parent_path());
}

}  // namespace

void TakeEnvelopeLine(InputFile& file, RawMail& mail) {
  if (auto sender = Mime::SkipEnvelopeLine(file))
    mail.EnvelopeSender = EnvelopeSender(*std::move(sender), false);
}

bool IsStandardInput(const std::string& path) {
  struct stat named = {}, input = {};
  return path == "-" || path == "/dev/stdin" || path == "/dev/fd/0" || path == "/proc/self/fd/0" ||
         (stat(path.c_str(), &named) == 0 && !S_ISREG(named.st_mode) && fstat(STDIN_FILENO, &input) == 0 &&
          named.st_dev == input.st_dev && named.st_ino == input.st_ino);
}

bool ReadMailSource(const std::string& path, StandardInput input, const MailSink& sink,
                    const StopTest& stopWanted) {
  if (IsStandardInput(path))
    return ReadFile(path, true, input == StandardInput::Mbox ? Form::Mbox : Form::OneMail, sink, stopWanted);
  std::error_code error;
  if (!fs::is_directory(path, error))
    return ReadFile(path, false, IsInMaildir(path) ? Form::OneMail : Form::Recognise, sink, stopWanted);
  if (IsMaildir(path)) return ReadMaildir(path, sink, stopWanted);
  return sink(Fault(path, Text(TextNumber::kFolderNoMaildir))).has_value();
}

}  // namespace Gateway
