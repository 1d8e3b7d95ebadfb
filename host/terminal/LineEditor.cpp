#include "host/terminal/LineEditor.h"

#include <locale.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>
#include <string_view>

#include "host/terminal/EditLibrary.h"
#include "host/terminal/HeldSignals.h"
#include "host/terminal/PathCompletion.h"
#include "platform/Failure.h"
#include "platform/TerminalText.h"

namespace Host {

namespace {

const EditLibrary& Edit() {
  return EditLibrary::Get();
}

// Control characters for keys: those of the editor, and one that no key sends.
constexpr wchar_t kToBegin = 1, kBack = 2, kToEnd = 5, kForward = 6, kEscape = 27, kDeleteForward = 30;

// Reads the typed characters and translates the escape sequences of keys.
class Keys {
 public:
  Keys(EditLine* editor, HeldSignals& signals) : editor_(editor), signals_(signals) {}

  // Returns nothing at the end of the input.
  std::optional<wchar_t> Next() {
    for (;;) {
      if (!waiting_.empty()) {
        const wchar_t next = waiting_.front();
        waiting_.pop_front();
        return next;
      }
      const auto byte = ReadByte(-1);
      if (!byte) return std::nullopt;
      if (*byte == kEscape) {
        ReadSequence();
      } else {
        waiting_.push_back(Character(*byte));
      }
    }
  }

 private:
  static constexpr int kPause = 50;  // in milliseconds; the bytes of one key arrive faster

  // Waits without limit if the timeout is negative.
  std::optional<unsigned char> ReadByte(int timeout) {
    const timespec limit{0, timeout * 1'000'000L};
    for (;;) {
      pollfd input{STDIN_FILENO, POLLIN, 0};
      const int ready = ppoll(&input, 1, timeout < 0 ? nullptr : &limit, &signals_.MaskOfWaiting());
      unsigned char byte = 0;
      if (ready > 0 && read(STDIN_FILENO, &byte, 1) == 1) return byte;
      if (ready >= 0 || errno != EINTR) return std::nullopt;
      if (signals_.Arrived() != 0) TakeSignal();
    }
  }

  // The editor would do this in its own function that reads a character, which is replaced here. A signal
  // takes effect with the terminal as it was before; if the program continues, the line is shown again.
  void TakeSignal() {
    if (signals_.Arrived() == SIGWINCH) {
      signals_.Deliver();
      Edit().el_resize(editor_);
      return;
    }
    Edit().el_set(editor_, EL_PREP_TERM, 0);
    signals_.Deliver();
    Edit().el_set(editor_, EL_PREP_TERM, 1);
    Edit().el_resize(editor_);
    std::fputs("\r", stdout);
    Edit().el_set(editor_, EL_REFRESH);
  }

  wchar_t Character(unsigned char first) {
    std::string bytes(1, static_cast<char>(first));
    const std::size_t length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    while (bytes.size() < length) {
      const auto byte = ReadByte(kPause);
      if (!byte) break;
      bytes += static_cast<char>(*byte);
    }
    if (!Platform::IsUtf8(bytes)) return L'\uFFFD';
    const Platform::String units = Platform::FromUtf8(bytes);
    if (units.size() == 1) return units[0];
    return static_cast<wchar_t>(Platform::JoinSurrogates(units[0], units[1]));
  }

  // After an escape: the sequence of a key, or a key pressed with Alt.
  void ReadSequence() {
    const auto kind = ReadByte(kPause);
    if (!kind) return;
    if (*kind != '[' && *kind != 'O') {
      if (*kind >= 0x20 && *kind < 0x7F) waiting_ = {kEscape, static_cast<wchar_t>(*kind)};
      return;
    }
    std::string parameters;
    for (auto byte = ReadByte(kPause); byte; byte = ReadByte(kPause)) {
      if (*byte >= 0x40 || *kind == 'O') return Translate(parameters, static_cast<char>(*byte));
      if (parameters.size() < 16) parameters += static_cast<char>(*byte);
    }
  }

  void Translate(const std::string& parameters, char key) {
    const bool withControl = parameters == "1;5";
    if (key == '~') {
      if (parameters == "1" || parameters == "7") waiting_ = {kToBegin};
      if (parameters == "4" || parameters == "8") waiting_ = {kToEnd};
      if (parameters == "3") waiting_ = {kDeleteForward};
    } else if (key == 'C') {
      waiting_ = withControl ? std::deque<wchar_t>{kEscape, L'f'} : std::deque<wchar_t>{kForward};
    } else if (key == 'D') {
      waiting_ = withControl ? std::deque<wchar_t>{kEscape, L'b'} : std::deque<wchar_t>{kBack};
    } else if (key == 'H') {
      waiting_ = {kToBegin};
    } else if (key == 'F') {
      waiting_ = {kToEnd};
    }
  }

  EditLine* editor_;
  HeldSignals& signals_;
  std::deque<wchar_t> waiting_;
};

struct Session {
  Keys Input;
  std::string Prompt;
};

Session& SessionOf(EditLine* editor) {
  void* session = nullptr;
  Edit().el_wget(editor, EL_CLIENTDATA, &session);
  return *static_cast<Session*>(session);
}

char* PromptOf(EditLine* editor) {
  return SessionOf(editor).Prompt.data();
}

int ReadKey(EditLine* editor, wchar_t* key) {
  const auto next = SessionOf(editor).Input.Next();
  if (next) *key = *next;
  return next ? 1 : 0;
}

std::string Utf8(const wchar_t* begin, const wchar_t* end) {
  Platform::String text;
  for (const wchar_t* c = begin; c != end; ++c) Platform::AppendCodePoint(text, static_cast<char32_t>(*c));
  return Platform::ToUtf8(text);
}

void ShowChoices(const std::vector<std::string>& choices) {
  constexpr std::size_t kMost = 100;
  std::string list = "\n";
  for (std::size_t i = 0; i < choices.size() && i < kMost; ++i)
    list += Platform::TerminalLine(Platform::FromUtf8(choices[i])) + "  ";
  list += choices.size() > kMost ? "...\n" : "\n";
  std::fputs(list.c_str(), stdout);
}

// The function of the tab key: inserts the rest of the path, or lists the choices.
unsigned char CompleteHere(EditLine* editor, int) {
  const LineInfoW* line = Edit().el_wline(editor);
  const std::string typed = Utf8(line->buffer, line->cursor);
  if (!LooksLikePath(typed)) return CC_NORM;
  const Completion completion = CompletePath(typed);
  if (completion.Choices.empty()) return CC_REFRESH_BEEP;
  if (completion.Path == typed && completion.Choices.size() > 1) {
    ShowChoices(completion.Choices);
    return CC_REDISPLAY;
  }
  Edit().el_deletestr(editor, static_cast<int>(line->cursor - line->buffer));
  return Edit().el_insertstr(editor, completion.Path.c_str()) == 0 ? CC_REFRESH : CC_REFRESH_BEEP;
}

// The editor uses the encoding of the thread's locale; all texts here are UTF-8.
class Utf8Locale {
 public:
  Utf8Locale() : utf8_(newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr)) {
    if (utf8_) before_ = uselocale(utf8_);
  }
  Utf8Locale(const Utf8Locale&) = delete;
  Utf8Locale& operator=(const Utf8Locale&) = delete;
  ~Utf8Locale() {
    if (!utf8_) return;
    uselocale(before_);
    freelocale(utf8_);
  }

 private:
  locale_t utf8_;
  locale_t before_ = nullptr;
};

struct EndEditor {
  void operator()(EditLine* editor) const { Edit().el_end(editor); }
};

}  // namespace

bool CanEditLine() {
  const char* kind = std::getenv("TERM");
  if (isatty(STDIN_FILENO) != 1 || isatty(STDOUT_FILENO) != 1 || !kind || !*kind ||
      std::strcmp(kind, "dumb") == 0)
    return false;
  try {
    return Edit().el_init != nullptr;
  } catch (const Platform::Failure&) {
    return false;
  }
}

std::optional<std::string> ReadEditedLine(const std::string& prompt) {
  const Utf8Locale locale;
  HeldSignals signals({SIGCONT, SIGWINCH});
  const std::unique_ptr<EditLine, EndEditor> editor(Edit().el_init("tvmail", stdin, stdout, stderr));
  if (!editor) throw std::bad_alloc();
  Session session{{editor.get(), signals}, prompt};
  Edit().el_wset(editor.get(), EL_CLIENTDATA, &session);
  Edit().el_wset(editor.get(), EL_EDITOR, L"emacs");
  Edit().el_wset(editor.get(), EL_GETCFN, ReadKey);
  Edit().el_set(editor.get(), EL_PROMPT, PromptOf);
  Edit().el_wset(editor.get(), EL_ADDFN, L"complete-path", L"Complete a path", CompleteHere);
  Edit().el_wset(editor.get(), EL_BIND, L"^I", L"complete-path", nullptr);
  Edit().el_wset(editor.get(), EL_BIND, L"^^", L"ed-delete-next-char", nullptr);
  // Ctrl-C and Ctrl-Z keep what was typed before: a character that is gone between poll and read would let
  // read wait with all signals held.
  Edit().el_wset(editor.get(), EL_SETTY, L"-d", L"+noflsh", nullptr);
  // Set before the prompt is shown, so that the terminal doesn't also edit what is typed at once.
  Edit().el_set(editor.get(), EL_PREP_TERM, 1);
  int length = 0;
  const wchar_t* line = Edit().el_wgets(editor.get(), &length);
  if (!line || length <= 0) {
    std::fputs("\n", stdout);
    return std::nullopt;
  }
  if (line[length - 1] == L'\n') --length;
  return Utf8(line, line + length);
}

}  // namespace Host
