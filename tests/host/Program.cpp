#include "tests/host/Program.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

namespace Tests {

namespace {

namespace fs = std::filesystem;

int CodeOf(int status) {
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void ExpectPiece(const std::string& piece, const std::string& text) {
  if (piece.empty()) {
    EXPECT_EQ("", text);
  } else {
    EXPECT_NE(std::string::npos, text.find(piece)) << "wanted: " << piece << "\ngot: " << text;
  }
}

// Takes one JSON value off the front of the text.
bool TakeJson(std::string_view& text) {
  const auto take = [&text](std::string_view piece) {
    if (!text.starts_with(piece)) return false;
    text.remove_prefix(piece.size());
    return true;
  };
  const auto takeString = [&] {
    if (!take("\"")) return false;
    while (!text.empty() && !text.starts_with('"')) {
      if (static_cast<unsigned char>(text[0]) < 0x20) return false;
      text.remove_prefix(text[0] == '\\' && text.size() > 1 ? 2 : 1);
    }
    return take("\"");
  };
  const auto takeList = [&](char end, auto&& element) {
    text.remove_prefix(1);
    if (take({&end, 1})) return true;
    do {
      if (!element()) return false;
    } while (take(","));
    return take({&end, 1});
  };
  if (text.starts_with('{'))
    return takeList('}', [&] { return takeString() && take(":") && TakeJson(text); });
  if (text.starts_with('[')) return takeList(']', [&] { return TakeJson(text); });
  if (text.starts_with('"')) return takeString();
  const auto digits = std::min(text.find_first_not_of("-0123456789"), text.size());
  text.remove_prefix(digits);
  return digits > 0 || take("true") || take("false");
}

}  // namespace

bool IsJson(std::string_view text) {
  if (text.ends_with('\n')) text.remove_suffix(1);
  return TakeJson(text) && text.empty();
}

Program::Program() {
  WriteFile(File("password"), "secret\n");
  WriteFile(File("wrong"), "guess\n");
}

std::string Program::Environment(const std::string& redirection) const {
  return "cd '" + folder_.Path().string() + "' && exec " + redirection +
         " env -u DISPLAY -u WAYLAND_DISPLAY -u LANGUAGE LC_ALL=C.UTF-8 TALVANE_HOME='" +
         File("home").string() + "' '" + program_ + "' ";
}

Outcome Program::Run(const std::string& arguments, const std::string& input) {
  WriteFile(File(".in"), input);
  const std::string command = Environment("<.in >.out 2>.err") + arguments;
  const int status = std::system(command.c_str());
  return {CodeOf(status), ReadFile(File(".out")), ReadFile(File(".err"))};
}

Outcome Program::RunOnTerminal(const std::vector<std::string>& arguments,
                               const std::vector<std::pair<std::string, std::string>>& answers) {
  std::string command = Environment({});
  for (const std::string& argument : arguments) command += argument + " ";
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  Outcome outcome;
  std::size_t seen = 0;
  auto answer = answers.begin();
  char bytes[512];
  for (ssize_t count; (count = read(terminal, bytes, sizeof bytes)) > 0;) {
    outcome.Output.append(bytes, static_cast<std::size_t>(count));
    while (answer != answers.end() && outcome.Output.find(answer->first, seen) != std::string::npos) {
      seen = outcome.Output.find(answer->first, seen) + answer->first.size();
      // Ctrl-Z acts by itself; a line end behind it would be the answer to what is asked next.
      const std::string typed = answer->second == kControlZ ? kControlZ : answer->second + "\n";
      if (write(terminal, typed.data(), typed.size()) < 0) break;
      ++answer;
    }
  }
  int status = 0;
  waitpid(child, &status, 0);
  close(terminal);
  outcome.Code = CodeOf(status);
  return outcome;
}

void Program::Expect(const std::vector<Step>& steps) {
  for (const Step& step : steps) {
    SCOPED_TRACE("tvmail " + step.Arguments);
    const Outcome outcome = Run(step.Arguments);
    EXPECT_EQ(step.Code, outcome.Code);
    ExpectPiece(step.Output, outcome.Output);
    ExpectPiece(step.Error, outcome.Error);
  }
}

void Program::SetUp() {
  Expect(
      {{"init", 0, "all registered", ""},
       {"project create apollo.TVS --name Apollo --user ann --email ann@example.org --password-file password",
        0, "Project Apollo", ""},
       {"mailbox add inbox" + kLogon + kSmtp, 0, "Mailbox Apollo is bound to " + File("apollo.TVS").string(),
        ""}});
}

void Program::Store(Hive hive, StringView path, StringView name, const Runtime::RegistryValue& value) const {
  setenv("TALVANE_HOME", File("home").c_str(), 1);
  Runtime::RegistryStore::CreateKey(hive, path);
  Runtime::RegistryStore::Write(hive, path, name, value);
}

fs::path Program::UseCopy() {
  const fs::path build = fs::path(program_).parent_path().parent_path();
  for (const char* folder : {"bin", "lib"})
    fs::copy(build / folder, File(folder), fs::copy_options::recursive);
  program_ = File("bin/tvmail").string();
  return File("lib");
}

}  // namespace Tests
