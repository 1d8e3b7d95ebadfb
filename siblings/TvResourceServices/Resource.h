// Resource: the numbered texts of one resource file. platform/contracts/ResourceServices.h is the contract.
//
// All objects of the process share the catalogues, so loading a resource file again takes microseconds.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"
#include "runtime/Catalogue.h"

namespace TvResourceServices {

using namespace Platform;

extern std::atomic<long> liveObjects;

class Resource : public ObjectWithMembers<Resource> {
 public:
  static const Table& Members();

 private:
  Value LoadResources(std::span<Value> arguments);
  Value ResourceString(std::span<Value> arguments);
  Value ResourceStringV(std::span<Value> arguments);
  Value ResourceStrings(std::span<Value> arguments);
  Value GetFontName(std::span<Value> arguments);

  String Text(std::int32_t number, std::span<const String> arguments) const;

  Runtime::Languages languages_;
  LiveObject live_{liveObjects};
};

}  // namespace TvResourceServices
