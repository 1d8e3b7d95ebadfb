// World: a home of its own with the real run time, stores and siblings, whose user and whose faults a test
// decides.
//
// One world lives at a time. It points TALVANE_HOME at a new folder under the system's temporary folder,
// makes the stores and the parent keys, registers the siblings that are built, and installs TestServices with
// a ScriptToolkit. All of it is gone with the world.
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

  // A file of the world's folder by its name, as the texts of the component want it.
  String PathOf(std::string_view name) const { return FromUtf8((Home.Path() / name).string()); }

  // A registry value as text; "(none)" where there is none.
  std::string Registry(Hive hive, StringView path, StringView name) const;
};

}  // namespace Tests
