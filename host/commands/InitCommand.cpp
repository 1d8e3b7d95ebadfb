// tvmail init: creates the stores and the keys that the component expects, and registers every library.
#include <CLI/CLI.hpp>
#include <iostream>

#include "host/CommandError.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
#include "platform/StoredNames.h"
#include "platform/TerminalText.h"
#include "runtime/Folders.h"
#include "runtime/Libraries.h"
#include "runtime/RegistryStore.h"

namespace Host {

namespace {

using Runtime::RegistryStore;

constexpr StringView kComponents[] = {u"TvGeneralServices.so",    u"TvResourceServices.so",
                                      u"TvGeneralGuiServices.so", u"Talvane40.so",
                                      u"OstrCipherCOM.so",        u"TvEmailServices.so"};

void CreateStore(Hive hive, StringView path) {
  try {
    RegistryStore::Create(hive);
    RegistryStore::CreateKey(hive, path);
  } catch (const Failure& failure) {
    throw CommandError(CannotCreate,
                       failure.Description() +
                           u": fix this, or set TALVANE_HOME to another folder, and run tvmail init again");
  }
}

int Init() {
  CreateStore(Hive::LocalMachine, RegistryPath::kMailBoxes);
  CreateStore(Hive::CurrentUser, RegistryPath::kTalvane);
  bool complete = true;
  for (const StringView component : kComponents) {
    try {
      Runtime::RegisterComponent(String(component));
    } catch (const Failure& failure) {
      complete = false;
      std::cerr << "tvmail: " << ToUtf8(component)
                << " isn't registered: " << TerminalText(failure.Description()) << '\n';
    }
  }
  std::cout << "Data folder:        " << TerminalLine(Runtime::HomeFolder()) << '\n'
            << "Machine-wide store: " << TerminalLine(RegistryStore::FileOf(Hive::LocalMachine)) << '\n'
            << "User's store:       " << TerminalLine(RegistryStore::FileOf(Hive::CurrentUser)) << '\n'
            << "Libraries:          " << TerminalLine(ShownLibraryFolder())
            << (complete ? " (all registered)\n" : " (not all registered)\n");
  if (!complete)
    throw CommandError(TryAgain,
                       "not every library is registered: fix the errors above and run tvmail init again");
  return Done;
}

}  // namespace

void AddInitCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* init =
      program.add_subcommand("init", "Create the stores and register the libraries; safe to repeat");
  init->footer(
      "The data is stored in TALVANE_HOME if set; else in /var/lib/talvane for the superuser, and in\n"
      "$XDG_DATA_HOME/talvane or ~/.local/share/talvane for a user.");
  init->callback([&invocation] { invocation.Run = Init; });
}

}  // namespace Host
