#include "siblings/TvGeneralServices/RegValue.h"

namespace TvGeneralServices {

const RegValue::Table& RegValue::Members() {
  static const Table table = {
      Property(u"DataType", &RegValue::GetDataType, &RegValue::SetDataType),
      Property(u"ValueName", &RegValue::GetValueName, &RegValue::SetValueName),
      Property(u"Value", &RegValue::GetValue, &RegValue::SetValue),
  };
  return table;
}

}  // namespace TvGeneralServices
