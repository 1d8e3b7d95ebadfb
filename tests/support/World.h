// World: the real run time, stores and siblings in a temporary home, with a user and faults that a test
// controls.
//
// Only one world exists at a time. It sets TALVANE_HOME to a new temporary folder, creates the stores and the
// parent keys, registers the siblings that are built, and installs TestServices with a ScriptToolkit. Its
// destructor removes the folder and the services.
#pragma once

#include <filesystem>

#include "platform/contracts/GeneralServices.h"
#include "tests/support/ScriptToolkit.h"
#include "tests/support/TestServices.h"
#include "tests/support/Texts.h"

namespace Tests {

// A folder that is removed with its contents.
class TemporaryFolder {
 public:
  TemporaryFolder();
  ~TemporaryFolder();
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// The languages of the catalogues in the source tree's folder resources.
std::vector<std::string> CatalogueLanguages();

void WriteFile(const std::filesystem::path& path, std::string_view bytes);
std::string ReadFile(const std::filesystem::path& path);

class World {
 public:
  World();
  ~World();
  World(const World&) = delete;
  World& operator=(const World&) = delete;

  TemporaryFolder Home;
  TestServices Services;
  ScriptToolkit Toolkit;

  // The path of a file in the world's folder.
  String PathOf(std::string_view name) const { return FromUtf8((Home.Path() / name).string()); }

  // A registry value as text; "(none)" if there is none.
  std::string Registry(Hive hive, StringView path, StringView name) const;
};

}  // namespace Tests
