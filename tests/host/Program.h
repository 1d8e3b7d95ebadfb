// Program: tvmail as a user runs it, in a folder and a home of its own.
#pragma once

#include <gtest/gtest.h>

#include "runtime/RegistryStore.h"
#include "tests/support/World.h"

namespace Tests {

struct Outcome {
  int Code = -1;
  std::string Output, Error;
};

// What is typed behind "tvmail" and then answered, and what has to come of it: the exit code, and a piece of
// the output and of the errors (empty: nothing may be there).
struct Step {
  std::string Arguments;
  int Code;
  std::string Output, Error, Input = {};
};

class Program {
 public:
  // The folder holds the files "password" (secret) and "wrong"; the home is its folder "home".
  Program();

  // Runs the program through the shell, the input on its standard input and without a display.
  Outcome Run(const std::string& arguments, const std::string& input = {});

  // Runs the program on a terminal, where each answer is typed as soon as its prompt stands there, with Enter
  // unless it is kControlZ, and expects success. Gives all that the terminal showed.
  std::string OnTerminal(const std::string& arguments,
                         const std::vector<std::pair<std::string, std::string>>& answers);

  // Runs each and compares.
  void Expect(const std::vector<Step>& steps);

  // Runs init, makes the project apollo.TVS of ann and binds its mailbox.
  void SetUp();

  // Writes a value into the registry, and makes its key.
  void Store(Hive hive, StringView path, StringView name, const Runtime::RegistryValue& value) const;

  // From now on a copy of the programs and libraries runs. Gives the folder of its libraries.
  std::filesystem::path UseCopy();

  std::filesystem::path File(const std::string& name) const { return folder_.Path() / name; }

 private:
  std::string Environment(const std::string& redirection) const;

  TemporaryFolder folder_;
  std::string program_ = TVMAIL_PROGRAM;
};

inline const std::string kControlZ = "\x1A";
inline const std::string kLogon = " --project apollo.TVS --user ann --password-file password";
inline const std::string kSmtp = " --transport smtp --host mx.example.org --address talvane@example.org";

}  // namespace Tests
