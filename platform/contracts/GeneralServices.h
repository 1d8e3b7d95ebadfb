// GeneralServices: typed windows on the objects of the sibling TvGeneralServices.
//
// Each passes its call on by the member's name, on the caller's thread. A refusal for which no result is
// named is a raised failure.
#pragma once

#include <cstdint>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

enum class Hive : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

// The holder of one registry value.
class RegValue : public ObjectProxy {
 public:
  static constexpr std::int32_t StringType = 1;
  using ObjectProxy::ObjectProxy;
  void SetDataType(std::int32_t type) const { Set(u"DataType", type); }
  void SetValueName(StringView name) const { Set(u"ValueName", name); }
  void SetValue(Platform::Value value) const { Set(u"Value", std::move(value)); }
  Platform::Value Value() const { return Get(u"Value"); }
};

// The registry cursor: it stands at one key of one hive.
class RegUtil : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  bool SetCurrHive(Hive hive) const { return Call(u"SetCurrHive", static_cast<std::int32_t>(hive)).ToBool(); }
  bool SetCurrPath(StringView path) const { return Call(u"SetCurrPath", path).ToBool(); }
  bool AddKey(StringView name) const { return Call(u"AddKey", name).ToBool(); }
  bool DropToSubKey(StringView name) const { return Call(u"DropToSubKey", name).ToBool(); }
  // The collection is an array in; what comes back holds the names of the sub keys, or is no value.
  bool EnumKeys(Platform::Value& collection) const {
    return CallByReference(u"EnumKeys", {&collection, 1}).ToBool();
  }
  bool DeleteKey(StringView name) const { return Call(u"DeleteKey", name).ToBool(); }
  bool GetValue(const RegValue& value) const { return Call(u"GetValue", value.Reference()).ToBool(); }
  bool AddOrUpdateValue(const RegValue& value) const {
    return Call(u"AddOrUpdateValue", value.Reference()).ToBool();
  }
};

// The section-and-key view of a project file. Section names match without regard to case.
class ProjectFile : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  Platform::Value KeyValue(StringView section, StringView key) const {
    return Call(u"KeyValue", section, key);
  }
  void CreateKey(StringView section, StringView key, StringView value) const {
    Call(u"CreateKey", section, key, value);
  }
  bool HasSection(StringView section) const { return Call(u"Section", section).ToObject() != nullptr; }
  bool DeleteSection(StringView section) const { return Call(u"DeleteSection", section).ToBool(); }
  void Save() const { Call(u"Save"); }
};

class Files : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  void CheckTVSFilePath(StringView path) const { Call(u"CheckTVSFilePath", path); }
  ProjectFile RetrieveTVSFile(StringView path) const {
    return ProjectFile(Call(u"RetrieveTVSFile", path).ToObject());
  }
};

// What SystemInfo tells: the third of its six strings is the version, the sixth the platform.
class General : public ObjectProxy {
 public:
  static constexpr std::size_t VersionString = 2;
  static constexpr std::size_t PlatformString = 5;
  using ObjectProxy::ObjectProxy;
  // Takes six strings, empty on entry, all of them out.
  bool SystemInfo(std::span<Platform::Value, 6> strings) const {
    return CallByReference(u"SystemInfo", strings).ToBool();
  }
};

}  // namespace Platform
