// RegValue: holds one registry value. platform/contracts/GeneralServices.h is the contract.
#pragma once

#include "platform/Component.h"
#include "platform/Object.h"
#include "siblings/TvGeneralServices/LiveObjects.h"

namespace TvGeneralServices {

using namespace Platform;

class RegValue : public ObjectWithMembers<RegValue> {
 public:
  static const Table& Members();

 private:
  Value GetDataType() { return dataType_; }
  // The member table passes setters a value to keep.  NOLINTBEGIN(performance-unnecessary-value-param)
  void SetDataType(Value type) { dataType_ = type.ToInt32(); }
  Value GetValueName() { return valueName_; }
  void SetValueName(Value name) { valueName_ = name.ToString(); }
  // NOLINTEND(performance-unnecessary-value-param)
  Value GetValue() { return value_; }
  void SetValue(Value value) { value_ = std::move(value); }

  std::int32_t dataType_ = 1;  // 1 string, 3 bytes, 4 number
  String valueName_;           // empty: the key's default value
  Value value_;
  LiveObject live_{liveObjects};
};

}  // namespace TvGeneralServices
