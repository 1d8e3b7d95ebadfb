#include "runtime/Catalogue.h"

#include <cerrno>
#include <charconv>
#include <exception>
#include <fstream>
#include <iterator>
#include <mutex>

#include "platform/Failure.h"
#include "runtime/Folders.h"
#include "runtime/Language.h"
#include "runtime/TextTemplate.h"

namespace Runtime {
namespace {

namespace fs = std::filesystem;

using Platform::Failure;
using Platform::FromUtf8;
using Platform::ToUtf8;

constexpr StringView kBlanks = u" \t";

[[noreturn]] void Damaged(const String& what) {
  throw Failure(Platform::FailureNumber::DeviceFailed, u"Runtime.Catalogue", what);
}

StringView Trimmed(StringView text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == StringView::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

String Unescaped(StringView text) {
  String result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != u'\\') {
      result += text[i];
      continue;
    }
    const char16_t mark = ++i < text.size() ? text[i] : u'\0';
    const auto kind = StringView(u"nrts\\").find(mark);
    if (kind == StringView::npos) Damaged(u"a backslash must be followed by n, r, t, s or a backslash");
    result += u"\n\r\t \\"[kind];
  }
  return result;
}

std::string ReadBytes(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  if (!stream.is_open() || stream.bad() || fs::is_directory(file)) {
    Damaged(FromUtf8(file.string() + " can't be read; install it again"));
  }
  return bytes;
}

// The common part of the paths of a resource file's catalogues: in the data folder if they are installed
// there, otherwise beside the resource file.
std::string StemOf(StringView resourceFile) {
  const auto separator = resourceFile.find_last_of(u"\\/");
  fs::path file(ToUtf8(resourceFile.substr(separator == StringView::npos ? 0 : separator + 1)));
  file.replace_extension();
  if (separator == StringView::npos) return file.string();
  const fs::path folder(ToUtf8(resourceFile.substr(0, separator)));
  const fs::path installed = fs::path(DataPath()) / "resources" / file;
  if (folder == LibraryPath() && !fs::exists((folder / file).string() + ".en.txt") &&
      fs::exists(installed.string() + ".en.txt"))
    return installed.string();
  return (folder / file).string();
}

// The catalogue of a file, which is read once in the process. After a failure the next call tries again.
std::shared_ptr<const Catalogue> Shared(const std::string& file) {
  static std::mutex mutex;
  static std::map<std::string, std::shared_ptr<const Catalogue>> loaded;
  const std::lock_guard lock(mutex);
  auto& catalogue = loaded[file];
  if (!catalogue) catalogue = std::make_shared<const Catalogue>(file);
  return catalogue;
}

}  // namespace

Catalogue::Catalogue(const fs::path& file) : Catalogue(ReadBytes(file), file.string()) {}

Catalogue::Catalogue(std::string_view bytes, const std::string& name) {
  std::size_t lineNumber = 0;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = std::min(bytes.find('\n', start), bytes.size());
    std::string_view line = bytes.substr(start, end - start);
    if (start == 0 && line.starts_with("\xEF\xBB\xBF")) line.remove_prefix(3);
    if (line.ends_with('\r')) line.remove_suffix(1);
    ++lineNumber;
    try {
      if (!Platform::IsUtf8(line)) Damaged(u"the line is not UTF-8");
      ReadLine(FromUtf8(line));
    } catch (const Failure& failure) {
      Damaged(FromUtf8(name + ", line " + std::to_string(lineNumber) + ": ") + failure.Description());
    }
    start = end + 1;
  }
}

void Catalogue::ReadLine(StringView line) {
  line = Trimmed(line);
  if (line.empty() || line.front() == u'#') return;
  const auto equals = line.find(u'=');
  if (equals == StringView::npos) Damaged(u"the line has no \"=\"; write \"NUMBER = text\"");
  const std::string name = ToUtf8(Trimmed(line.substr(0, equals)));
  const String text = Unescaped(Trimmed(line.substr(equals + 1)));
  if (name == "font") {
    fontName_ = text;
    return;
  }
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc{} || end != name.data() + name.size()) {
    Damaged(u"\"" + FromUtf8(name) + u"\" is no number");
  }
  if (!IsTemplate(text)) Damaged(u"a percent sign must be followed by a digit from 1 to 9 or a percent sign");
  if (!texts_.emplace(number, text).second) Damaged(u"the number " + FromUtf8(name) + u" is used twice");
}

const String* Catalogue::Find(std::int32_t number) const {
  const auto found = texts_.find(number);
  return found == texts_.end() ? nullptr : &found->second;
}

void LoadLanguages(StringView resourceFile, Languages& languages) {
  LoadLanguages(resourceFile, languages, UserLanguage());
}

void LoadLanguages(StringView resourceFile, Languages& languages, const std::string& language) {
  static auto& mutex = *new std::mutex;
  static auto& loaded = *new std::map<std::string, std::map<String, Languages, std::less<>>, std::less<>>;
  const std::string own = IsLanguage(language) ? language : "en";
  const std::lock_guard lock(mutex);
  auto& files = loaded[own];
  if (const auto known = files.find(resourceFile); known != files.end()) {
    languages = known->second;
    return;
  }
  const std::string beginning = StemOf(resourceFile) + ".";
  std::exception_ptr failure;
  try {
    languages.English = Shared(beginning + "en.txt");
  } catch (...) {
    failure = std::current_exception();
  }
  if (own == "en") {
    languages.Own = languages.English;
  } else if (const std::string file = beginning + own + ".txt"; fs::exists(file)) {
    languages.Own = Shared(file);
  }
  if (failure) std::rethrow_exception(failure);
  files.emplace(resourceFile, languages);
}

}  // namespace Runtime
