#include "tests/support/Program.h"

#include <poll.h>
#include <pty.h>
#include <sys/stat.h>
#include <termios.h>

#include <csignal>
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

Program::Program() : program_(TVMAIL_PROGRAM) {
  umask(077);  // of the files of passwords
  // A shell that starts the tests in the background lets them ignore these signals, and the program would
  // inherit it.
  for (const int number : {SIGINT, SIGQUIT}) signal(number, SIG_DFL);
  WriteFile(File("password"), "secret\n");
  WriteFile(File("wrong"), "guess\n");
}

std::string Program::WriteScript(const std::string& line) const {
  const std::string folder = folder_.Path().string();
  WriteFile(File(".line"),
            "umask 022\nset -o pipefail\ncd '" + folder +
                "'\nunset DISPLAY WAYLAND_DISPLAY LANGUAGE\n"
                "export LC_ALL=C.UTF-8 TALVANE_HOME=\"$PWD/home\" PATH=\"" +
                fs::path(program_).parent_path().string() +
                ":$PATH\"\n"
                "wait_for_deliveries() {\n"
                "  while kill -0 $! && [ $(grep -c delivered lines) -lt $1 ]; do sleep 0.01; done\n"
                "}\n" +
                line + "\n");
  return "exec bash '" + folder + "/.line'";
}

Outcome Program::Shell(const std::string& line, const std::string& input) const {
  WriteFile(File(".in"), input);
  const std::string at = " '" + folder_.Path().string() + "/";
  const int status =
      std::system((WriteScript(line) + " <" + at + ".in' >" + at + ".out' 2>" + at + ".err'").c_str());
  return {CodeOf(status), ReadFile(File(".out")), ReadFile(File(".err"))};
}

std::string Program::OnTerminal(const std::string& arguments,
                                const std::vector<std::pair<std::string, std::string>>& answers,
                                int exit) const {
  const std::string command = WriteScript("exec tvmail " + arguments);
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
  for (;;) {
    // A program that waits for an answer that is not in the list would wait forever.
    constexpr int kLongestSilence = 20'000;  // in milliseconds
    pollfd output{terminal, POLLIN, 0};
    if (poll(&output, 1, kLongestSilence) == 0) kill(child, SIGKILL);
    const ssize_t count = read(terminal, bytes, sizeof bytes);
    if (count <= 0) break;
    shown.append(bytes, static_cast<std::size_t>(count));
    while (answer != answers.end() && shown.find(answer->first, seen) != std::string::npos) {
      seen = shown.find(answer->first, seen) + answer->first.size();
      // These keys act by themselves; a line end after them would answer the next prompt.
      const bool control =
          !answer->second.empty() &&
          (kControlC + kControlF + kControlZ).find(answer->second.back()) != std::string::npos;
      const std::string typed = answer->second + (control ? "" : "\n");
      if (write(terminal, typed.data(), typed.size()) < 0) break;
      ++answer;
    }
  }
  EXPECT_EQ(exit, EndOf(child)) << shown;
  termios left{};
  EXPECT_EQ(0, tcgetattr(terminal, &left));
  EXPECT_EQ(tcflag_t{ECHO | ICANON}, left.c_lflag & (ECHO | ICANON));
  close(terminal);
  return shown;
}

void Program::Expect(const std::vector<Step>& steps) const {
  for (const Step& step : steps) {
    SCOPED_TRACE("tvmail " + step.Arguments);
    const Outcome outcome = Run(step.Arguments, step.Input);
    EXPECT_EQ(step.Exit, outcome.Exit);
    ExpectPiece(step.Output, outcome.Output);
    ExpectPiece(step.Errors, outcome.Errors);
  }
}

void Program::SetUp() const {
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
  fs::create_directory(File("bin"));
  fs::copy(program_, File("bin"));
  fs::copy(build / "lib", File("lib"), fs::copy_options::recursive);
  program_ = File("bin/tvmail").string();
  return File("lib");
}

}  // namespace Tests
