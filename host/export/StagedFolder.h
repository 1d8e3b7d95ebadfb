// StagedFolder: a new folder that gets its name when it is complete, so that nobody sees half of it.
#pragma once

#include <string>

namespace Host {

class StagedFolder {
 public:
  // An empty folder of mode 0700 with a unique name beside the given one. All operations raise 70 for a
  // missing permission, and 57 with the reason for other failures.
  explicit StagedFolder(std::string name);
  StagedFolder(const StagedFolder&) = delete;
  StagedFolder& operator=(const StagedFolder&) = delete;
  // Removes the folder with its files unless it was published.
  ~StagedFolder();

  const std::string& Path() const { return path_; }

  // Gives the folder its name in one step; it is on disk when this returns. A folder of that name is removed
  // with its files. Anything else of that name is kept, and 57 or 58 is raised.
  void Publish();

 private:
  std::string name_;
  std::string path_;
};

}  // namespace Host
