// Files: the door to project files.
#pragma once

#include "platform/Object.h"

namespace TvGeneralServices {

using namespace Platform;

class Files : public ObjectWithMembers<Files> {
 public:
  static const Table& Members();

 private:
  // Returns if the path names a readable project file; otherwise raises a failure that says what it is.
  Value CheckTVSFilePath(std::span<Value> arguments);

  // The project file object. Raises the same failures.
  Value RetrieveTVSFile(std::span<Value> arguments);
};

}  // namespace TvGeneralServices
