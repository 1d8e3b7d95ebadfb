#include "tests/host/Program.h"

#include <pty.h>

#include <cstdlib>

#include "tests/support/Processes.h"

namespace Tests {

namespace {

namespace fs = std::filesystem;

void ExpectPiece(const std::string& piece, const std::string& text) {
  if (piece.empty()) {
    EXPECT_EQ("", text);
  } else {
    EXPECT_PRED2(Holds, text, piece);
  }
}

}  // namespace

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

std::string Program::OnTerminal(const std::string& arguments,
                                const std::vector<std::pair<std::string, std::string>>& answers) {
  const std::string command = Environment({}) + arguments;
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child == 0) {
    execl("/bin/sh", "sh", "-c", command.c_str(), nullptr);
    _exit(127);
  }
  std::string shown;
  std::size_t seen = 0;
  auto answer = answers.begin();
  char bytes[512];
  for (ssize_t count; (count = read(terminal, bytes, sizeof bytes)) > 0;) {
    shown.append(bytes, static_cast<std::size_t>(count));
    while (answer != answers.end() && shown.find(answer->first, seen) != std::string::npos) {
      seen = shown.find(answer->first, seen) + answer->first.size();
      // Ctrl-Z acts by itself; a line end behind it would be the answer to what is asked next.
      const std::string typed = answer->second == kControlZ ? kControlZ : answer->second + "\n";
      if (write(terminal, typed.data(), typed.size()) < 0) break;
      ++answer;
    }
  }
  close(terminal);
  EXPECT_EQ(0, EndOf(child)) << shown;
  return shown;
}

void Program::Expect(const std::vector<Step>& steps) {
  for (const Step& step : steps) {
    SCOPED_TRACE("tvmail " + step.Arguments);
    const Outcome outcome = Run(step.Arguments, step.Input);
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
