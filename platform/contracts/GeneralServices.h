// GeneralServices: typed proxies for the objects of the sibling TvGeneralServices: registry, project files
// and system information.
//
// See ObjectProxy for what every operation may raise, and for threads and ownership.
#pragma once

#include <cstdint>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

enum class Hive : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

// A registry value: its name, type and content. A new one is of StringType and has neither name nor content.
class RegValue : public ObjectProxy {
 public:
  static constexpr std::int32_t StringType = 1;  // other types: 3 bytes, 4 number
  using ObjectProxy::ObjectProxy;
  std::int32_t DataType() const { return Get(u"DataType").ToInt32(); }
  void SetDataType(std::int32_t type) const { Set(u"DataType", type); }
  // The empty name is the key's default value. At most 255 characters.
  void SetValueName(StringView name) const { Set(u"ValueName", name); }
  String ValueName() const { return Get(u"ValueName").ToString(); }
  void SetValue(Platform::Value value) const { Set(u"Value", std::move(value)); }
  // The content set or read last; no value before that.
  Platform::Value Value() const { return Get(u"Value"); }
};

// A cursor in the registry: a key of a hive, on which the operations work.
//
// Before a hive is set, all operations but SetCurrHive give false. So do operations with a key's name that is
// empty, has more than 255 characters or holds a backslash or NUL. Names match in any case and keep their
// spelling. All raise 57, with the reason, if the registry can't be read or written. After true a change is
// on disk.
class RegUtil : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Moves to the root of a hive. False, and no move, for a number that is no hive.
  bool SetCurrHive(Hive hive) const { return Call(u"SetCurrHive", static_cast<std::int32_t>(hive)).ToBool(); }
  // Moves to a path from the hive's root; the empty path is the root. False, and no move, if it doesn't
  // exist.
  bool SetCurrPath(StringView path) const { return Call(u"SetCurrPath", path).ToBool(); }
  // Creates a sub key if there is none. The cursor doesn't move. False if the cursor's key was deleted.
  bool AddKey(StringView name) const { return Call(u"AddKey", name).ToBool(); }
  // Moves to a sub key. False, and no move, if there is none.
  bool DropToSubKey(StringView name) const { return Call(u"DropToSubKey", name).ToBool(); }
  // Replaces the elements of the array by the names of the sub keys, ordered by name. False, with an empty
  // array, if the cursor's key was deleted. Raises 13 if the collection is no array.
  bool EnumKeys(Platform::Value& collection) const {
    return CallByReference(u"EnumKeys", {&collection, 1}).ToBool();
  }
  // Deletes a sub key with its values and all keys below it. True also if there was none.
  bool DeleteKey(StringView name) const { return Call(u"DeleteKey", name).ToBool(); }
  // Reads the value named ValueName into Value and DataType. False, and no change, if there is none. Raises
  // 91 for an empty proxy.
  bool GetValue(const RegValue& value) const { return Call(u"GetValue", value.Reference()).ToBool(); }
  // Stores Value under ValueName, as DataType. False if the cursor's key was deleted. Raises 91 for an empty
  // proxy, 5 for an unknown DataType, 13 for a Value that can't be converted to it.
  bool AddOrUpdateValue(const RegValue& value) const {
    return Call(u"AddOrUpdateValue", value.Reference()).ToBool();
  }
};

// The sections and keys of one project file.
//
// Names of sections and keys match in any case, and may hold any characters, as values may. Changes are in
// the object until Save; unsaved ones are lost with the object.
class ProjectFile : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // The value, a string; no value if there is no such section or key.
  Platform::Value KeyValue(StringView section, StringView key) const {
    return Call(u"KeyValue", section, key);
  }
  // Sets a key, and adds the key and the section if there are none.
  void CreateKey(StringView section, StringView key, StringView value) const {
    Call(u"CreateKey", section, key, value);
  }
  bool HasSection(StringView section) const { return Call(u"Section", section).ToObject() != nullptr; }
  // Removes a section with its keys. True also if there was none. False for [Project], which every project
  // file must have.
  bool DeleteSection(StringView section) const { return Call(u"DeleteSection", section).ToBool(); }
  // Applies the changes to the file as it is now, which keeps what others have saved, and returns when they
  // are on disk. Raises as Files::RetrieveTVSFile does, and 57 if the file can't be written; then the file is
  // as before, and the object keeps its changes.
  void Save() const { Call(u"Save"); }
};

// Opens project files.
class Files : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Reads the project file. Raises, with the reason: 380 for a path that is empty, relative, or names a
  // folder or a file that is no project file; 76 for a missing file; 70 for one without permission; 57 for
  // one that can't be read. Blanks around the path are ignored.
  void CheckTVSFilePath(StringView path) const { Call(u"CheckTVSFilePath", path); }
  // The project file, read once. Raises as CheckTVSFilePath does, but a relative path is allowed.
  ProjectFile RetrieveTVSFile(StringView path) const {
    return ProjectFile(Call(u"RetrieveTVSFile", path).ToObject());
  }
};

// Information on the operating system.
class General : public ObjectProxy {
 public:
  static constexpr std::size_t VersionString = 2;
  static constexpr std::size_t PlatformString = 5;  // "NT" for that family, here "Linux"
  using ObjectProxy::ObjectProxy;
  // Fills the strings: system name with version, system name, version, kernel release, architecture,
  // platform. Unknown ones become empty. False if nothing is known.
  bool SystemInfo(std::span<Platform::Value, 6> strings) const {
    return CallByReference(u"SystemInfo", strings).ToBool();
  }
};

}  // namespace Platform
