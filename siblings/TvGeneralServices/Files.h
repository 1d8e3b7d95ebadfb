// Files: gives access to project files. platform/contracts/GeneralServices.h is the contract.
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
  // The path must be absolute, since a mailbox record is read with any working folder.
  Value CheckTVSFilePath(std::span<Value> arguments);

  // A ProjectFileObject. A relative path is accepted, so that the file that an old record names can be
  // cleaned up.
  Value RetrieveTVSFile(std::span<Value> arguments);
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
