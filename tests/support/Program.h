// Program: tvmail as a user or a mail server runs it, in a folder and a home of its own, without a display.
#pragma once

#include <gtest/gtest.h>

#include "runtime/RegistryStore.h"
#include "tests/support/World.h"

namespace Tests {

struct Outcome {
  int Exit = -1;
  std::string Output, Errors;
};

// A run of tvmail: arguments and input, and the expected exit code and parts of the output and of the errors
// (empty: no output).
struct Step {
  std::string Arguments;
  int Exit;
  std::string Output, Errors, Input = {};
};

class Program {
 public:
  // The folder holds the files "password" (secret) and "wrong"; the home is its folder "home".
  Program();

  // Runs a line of bash in the folder, where tvmail is the program under test. The function
  // "wait_for_deliveries COUNT" waits until the background process has written that number of deliveries to
  // the file "lines", which must be empty when the process is started.
  Outcome Shell(const std::string& line, const std::string& input = {}) const;

  // Runs the program.
  Outcome Run(const std::string& arguments, const std::string& input = {}) const {
    return Shell("exec tvmail " + arguments, input);
  }

  // Runs the program on a terminal and types each answer after its prompt, with Enter unless it ends in
  // Ctrl-C, Ctrl-F (no effect at the end of a line) or Ctrl-Z. Expects the exit code, and a terminal that
  // echoes lines afterwards. Gives the terminal's output.
  std::string OnTerminal(const std::string& arguments,
                         const std::vector<std::pair<std::string, std::string>>& answers, int exit = 0) const;

  // Runs each and compares.
  void Expect(const std::vector<Step>& steps) const;

  // Runs init, creates the project apollo.TVS of ann and binds its mailbox.
  void SetUp() const;

  // Writes a value into the registry, and creates its key.
  void Store(Hive hive, StringView path, StringView name, const Runtime::RegistryValue& value) const;

  // From now on a copy of the program and the libraries runs. Gives the folder of its libraries.
  std::filesystem::path UseCopy();

  std::filesystem::path File(const std::string& name) const { return folder_.Path() / name; }

 private:
  std::string WriteScript(const std::string& line) const;

  TemporaryFolder folder_;
  std::string program_;
};

inline const std::string kControlC = "\x03", kControlF = "\x06", kControlZ = "\x1A";
inline const std::string kLogon = " --project apollo.TVS --user ann --password-file password";
inline const std::string kSmtp = " --transport smtp --host mx.example.org --address talvane@example.org";

}  // namespace Tests
