// Deliver: the program with a project, two discussions, three users and a bound mailbox, and mails to
// deliver.
#pragma once

#include "tests/support/Program.h"

namespace Tests {

inline std::size_t CountOf(const std::string& text, const std::string& piece) {
  std::size_t count = 0;
  for (std::size_t at = text.find(piece); at != std::string::npos; at = text.find(piece, at + piece.size()))
    ++count;
  return count;
}

inline std::string Mail(const std::string& body, const std::string& from = "alice@apollo.example",
                        const std::string& discussion = "1", const std::string& id = "m") {
  return "From: " + from + "\nMessage-ID: <" + id +
         "@x>\nSubject: Re: Plan (Ostrand Talvane Project Apollo, Ostrand " + "Talvane Discussion " +
         discussion + ")\n\n" + body + "\n";
}

inline std::string Mbox(int count, const std::string& name) {
  std::string mbox;
  for (int i = 0; i < count; ++i)
    mbox +=
        "From a@b Mon Jan 31 12:00:00 2022\n" +
        Mail(name + "-" + std::to_string(i) + "-end", "alice@apollo.example", "1", name + std::to_string(i)) +
        "\n";
  return mbox;
}

inline std::string Repeated(const std::string& piece, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += piece;
  return text;
}

class Deliver : public testing::Test {
 protected:
  Deliver() {
    const std::string project = "'" + Path("Apollo.TVS").string() + "'";
    const Outcome outcome =
        Run("set -e\ntvmail init\n"
            "p() { tvmail project $1 " +
            project +
            " \"${@:2}\"; }\n"
            "p create --name Apollo --user admin --password-file password\n"
            "p add-user --name alice --email alice@apollo.example\n"
            "p add-user --name bob --email bob@apollo.example\n"
            "p add-user --name carol --email carol@apollo.example --refuse-mail\n"
            "p add-discussion --title 'Release plan'\n"
            "p add-discussion --title 'Launch site'\n"
            "tvmail mailbox add Apollo --project " +
            project +
            " --user admin --password-file password --transport smtp --host h --address a@b\n"
            "mkdir without-mail && cp Apollo.* without-mail");
    EXPECT_EQ(outcome.Exit, 0) << outcome.Output << outcome.Errors;
  }

  std::filesystem::path Path(const std::string& name) const { return program_.File(name); }

  // Runs a line of bash, where tvmail is the program under test.
  Outcome Run(const std::string& line) const { return program_.Shell(line); }

  // The same with a project that knows no mail yet.
  Outcome RunAnew(const std::string& line) const { return Run("cp without-mail/* .; " + line); }

  // The project as JSON.
  std::string Project() const {
    const Outcome outcome = Run("tvmail project show Apollo.TVS --json");
    EXPECT_EQ(outcome.Exit, 0) << outcome.Errors;
    return outcome.Output;
  }

 private:
  Program program_;
};

}  // namespace Tests
