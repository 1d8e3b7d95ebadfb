// tvmail keystore: creates key store files for the AES-128 encoder.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/AbsolutePath.h"
#include "host/CommandError.h"
#include "host/Stores.h"
#include "host/commands/Command.h"
#include "host/terminal/Secret.h"
#include "platform/Object.h"
#include "platform/Services.h"
#include "platform/TerminalText.h"
#include "platform/contracts/Cipher.h"

namespace Host {

namespace {

struct KeystoreOptions {
  std::string File;
  std::string Label;
  std::optional<std::string> PasswordFile;
};

int Create(const KeystoreOptions& options) {
  const String file = AbsolutePath(options.File);
  const String label = ArgumentText(options.Label);
  RequireStores();
  const String password = ReadNewSecret(
      options.PasswordFile, ToUtf8(Runtime::TextOf(TextNumber::kPasswordForPrompt, FromUtf8(options.File))));
  KeyStore(Services().CreateByName(KeyStore::kName)).CreateKey(file, password, label);
  std::cout << "A new key " << TerminalLine(label) << " is stored in " << TerminalLine(file)
            << ", encrypted with the password.\n";
  return Done;
}

}  // namespace

void AddKeystoreCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* keystore = program.add_subcommand("keystore", "Key stores of the AES-128 encoder");
  keystore->require_subcommand(1);
  auto options = std::make_shared<KeystoreOptions>();
  CLI::App* create = keystore->add_subcommand("create", "Create a random key in a key store file");
  create->add_option("FILE", options->File, "The key store file")->required();
  create->add_option("--label", options->Label, "The key's name in the store")->required();
  create->add_option("--password-file", options->PasswordFile,
                     "File with the store's password, - for standard input; without it the terminal asks");
  create->callback([&invocation, options] { invocation.Run = [options] { return Create(*options); }; });
}

}  // namespace Host
