// OpenedDatabase: the database of the project that an object has opened, kept open from one mail or notice to
// the next.
#pragma once

#include <memory>
#include <string>

#include "platform/Failure.h"
#include "runtime/FileStamp.h"
#include "siblings/Talvane40/FileIdentity.h"
#include "siblings/Talvane40/ProjectLocation.h"

namespace Talvane40 {

// Contents is created from the database's file name and raises if that can't be opened. One thread.
template <class Contents>
class OpenedDatabase {
 public:
  enum class Change { None, ProjectFile, Database };

  // The name of the class that uses it, for failures.
  explicit OpenedDatabase(StringView user) : user_(user) {}

  // Opens the database of a project file; does nothing if it is open, the project file is as it was read, and
  // the database is still the file at its path. Returns what has changed. Raises as ReadProjectLocation does;
  // then none is open.
  Change Open(StringView project) {
    std::unique_ptr<Files> former = std::move(files_);
    const std::string path = PathOf(project).string();
    const Runtime::FileStamp stamp(path);
    const bool sameProject = former && former->ProjectFile == path && former->ProjectStamp.IsSettled() &&
                             former->ProjectStamp == stamp;
    const std::string file = sameProject ? former->File : ReadProjectLocation(project).Database.string();
    const bool sameDatabase = former && former->File == file && former->Identity == IdentityOf(file);
    files_ = sameDatabase ? std::move(former) : std::make_unique<Files>(file);
    files_->ProjectFile = path;
    files_->ProjectStamp = stamp;
    return !sameDatabase ? Change::Database : sameProject ? Change::None : Change::ProjectFile;
  }

  // Raises 91 if none is open.
  Contents& Get() {
    if (!files_) throw Failure(FailureNumber::ObjectNotSet, user_, u"No project is open. Open one first.");
    return files_->Opened;
  }

  bool IsOpen() const { return files_ != nullptr; }

  // Of the open database.
  const std::string& File() const { return files_->File; }

 private:
  struct Files {
    // The identity is taken before the database is opened: if another file takes its place in between, the
    // next look notices it.
    explicit Files(const std::string& file) : File(file), Identity(IdentityOf(file)), Opened(file) {}

    std::string ProjectFile;
    Runtime::FileStamp ProjectStamp;  // from before it was read
    std::string File;
    FileIdentity Identity;
    Contents Opened;
  };

  String user_;
  std::unique_ptr<Files> files_;
};

}  // namespace Talvane40
