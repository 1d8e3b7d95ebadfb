// Files: the door to project files.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"
#include "siblings/TvGeneralServices/LiveObjects.h"

namespace TvGeneralServices {

using namespace Platform;

class Files : public ObjectWithMembers<Files> {
 public:
  static const Table& Members();

 private:
  // Returns if the path is whole, which a mailbox's record needs, and names a readable project file;
  // otherwise raises a failure that says what it is.
  Value CheckTVSFilePath(std::span<Value> arguments);

  // The project file object. Raises the same failures, but takes a path from the present folder on, too, so
  // that what an old record names can be read and taken out.
  Value RetrieveTVSFile(std::span<Value> arguments);
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
