#include "tests/support/World.h"

#include <stdlib.h>

#include <fstream>
#include <sstream>

#include "platform/StoredNames.h"
#include "runtime/Folders.h"
#include "runtime/Libraries.h"
#include "runtime/RegistryStore.h"

namespace Tests {
namespace {

namespace fs = std::filesystem;

PlatformServices& RealServices() {
  InstallServices(nullptr);
  return Platform::Services();
}

}  // namespace

TemporaryFolder::TemporaryFolder() {
  std::string pattern = (fs::temp_directory_path() / "talvane-test-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder: " + pattern);
  path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::vector<std::string> CatalogueLanguages() {
  std::vector<std::string> languages;
  for (const auto& file : fs::directory_iterator(SOURCE_FOLDER "/resources")) {
    const std::string name = file.path().stem().string();
    if (name.starts_with("TvEmailServicesRes.")) languages.push_back(name.substr(name.find('.') + 1));
  }
  return languages;
}

void WriteFile(const fs::path& path, std::string_view bytes) {
  std::ofstream(path, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadFile(const fs::path& path) {
  std::ostringstream bytes;
  bytes << std::ifstream(path, std::ios::binary).rdbuf();
  return bytes.str();
}

World::World() : Services(RealServices()) {
  setenv("TALVANE_HOME", (Home.Path() / "home").c_str(), 1);
  Services.ToolkitInUse = &Toolkit;
  Services.ComponentFolder = Runtime::LibraryFolder();
  Runtime::RegistryStore::Create(Hive::LocalMachine);
  Runtime::RegistryStore::Create(Hive::CurrentUser);
  Runtime::RegistryStore::CreateKey(Hive::LocalMachine, RegistryPath::kMailBoxes);
  Runtime::RegistryStore::CreateKey(Hive::CurrentUser, RegistryPath::kTalvane);
  const fs::path libraries = ToUtf8(Runtime::LibraryFolder());
  for (const StringView name : {u"TvGeneralServices.so", u"TvResourceServices.so", u"TvGeneralGuiServices.so",
                                u"Talvane40.so", u"OstrCipherCOM.so"}) {
    if (fs::exists(libraries / ToUtf8(name))) Runtime::RegisterComponent(String(name));
  }
  InstallServices(&Services);
}

World::~World() {
  InstallServices(nullptr);
}

std::string World::Registry(Hive hive, StringView path, StringView name) const {
  const auto value = Runtime::RegistryStore::Read(hive, path, name);
  return value ? ToUtf8(value->Content.ToString()) : "(none)";
}

}  // namespace Tests
