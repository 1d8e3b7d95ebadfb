// HomeFolder: a home folder in which the resource service is registered. It is removed with the object.
#pragma once

#include <stdlib.h>

#include <filesystem>

#include "runtime/Libraries.h"
#include "runtime/RegistryStore.h"

namespace Bench {

class HomeFolder {
 public:
  HomeFolder() {
    std::string folder = (std::filesystem::temp_directory_path() / "bench-XXXXXX").string();
    folder_ = mkdtemp(folder.data());
    setenv("TALVANE_HOME", folder.c_str(), 1);
    Runtime::RegistryStore::Create(Platform::Hive::LocalMachine);
    Runtime::RegisterComponent(u"TvResourceServices.so");
  }
  HomeFolder(const HomeFolder&) = delete;
  HomeFolder& operator=(const HomeFolder&) = delete;
  ~HomeFolder() { std::filesystem::remove_all(folder_); }

 private:
  std::filesystem::path folder_;
};

}  // namespace Bench
