// GeneralServices: typed proxies for the objects of the sibling TvGeneralServices: the registry, project
// files, and what the system says of itself.
//
// See ObjectProxy for what every operation may raise. Any thread may have its own objects; one object is used
// on the thread that created it.
#pragma once

#include <cstdint>

#include "platform/contracts/ObjectProxy.h"

namespace Platform {

enum class Hive : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

// The holder of one registry value. A new one is a string value without a name or content.
class RegValue : public ObjectProxy {
 public:
  static constexpr std::int32_t StringType = 1;  // the others: 3 bytes, 4 a 32-bit number
  using ObjectProxy::ObjectProxy;
  std::int32_t DataType() const { return Get(u"DataType").ToInt32(); }
  void SetDataType(std::int32_t type) const { Set(u"DataType", type); }
  // The empty name is the key's default value. At most 255 characters.
  String ValueName() const { return Get(u"ValueName").ToString(); }
  void SetValueName(StringView name) const { Set(u"ValueName", name); }
  void SetValue(Platform::Value value) const { Set(u"Value", std::move(value)); }
  // What was set or read last; no value before that.
  Platform::Value Value() const { return Get(u"Value"); }
};

// A cursor in the registry. It is at one key of one hive, and every operation works from there.
//
// Before a hive is taken, all operations but SetCurrHive give false. A name that is empty, holds a backslash
// or has more than 255 characters names no key, and operations on it give false. Names match in any case and
// keep their spelling. 57: the registry can't be read or written; the description says why. A change that was
// told by true is on disk.
class RegUtil : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Takes a hive and moves to its root. False, and no move, for a number that is no hive.
  bool SetCurrHive(Hive hive) const { return Call(u"SetCurrHive", static_cast<std::int32_t>(hive)).ToBool(); }
  // Moves to a path from the hive's root; the empty path is the root. False, and no move, if it doesn't
  // exist.
  bool SetCurrPath(StringView path) const { return Call(u"SetCurrPath", path).ToBool(); }
  // Makes sure that the sub key exists. The cursor doesn't move. False for a name that names no key, and if
  // the key of the cursor is gone.
  bool AddKey(StringView name) const { return Call(u"AddKey", name).ToBool(); }
  // Moves to a sub key. False, and no move, if there is none.
  bool DropToSubKey(StringView name) const { return Call(u"DropToSubKey", name).ToBool(); }
  // The collection is an array on entry; afterwards it holds the names of the sub keys, or is no value. False
  // if the key of the cursor is gone; the array is empty then.
  bool EnumKeys(Platform::Value& collection) const {
    return CallByReference(u"EnumKeys", {&collection, 1}).ToBool();
  }
  // Removes a sub key with its values and all keys below it. True also where there was none.
  bool DeleteKey(StringView name) const { return Call(u"DeleteKey", name).ToBool(); }
  // Fills Value and DataType of the holder with the value of its name. False, and nothing changed, if there
  // is no such value.
  bool GetValue(const RegValue& value) const { return Call(u"GetValue", value.Reference()).ToBool(); }
  // Stores the holder's Value under its name as its DataType says. False if the key of the cursor is gone; 13
  // for a Value that is not of the DataType.
  bool AddOrUpdateValue(const RegValue& value) const {
    return Call(u"AddOrUpdateValue", value.Reference()).ToBool();
  }
};

// The sections and keys of one project file.
//
// Names of sections and keys match in any case. Changes are in the object until Save; one that isn't saved
// is lost with the object.
class ProjectFile : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // The value as a string; no value where the section or the key is absent.
  Platform::Value KeyValue(StringView section, StringView key) const {
    return Call(u"KeyValue", section, key);
  }
  // Sets a key, and adds its section if need be. 5 for a name that the file's format can't hold.
  void CreateKey(StringView section, StringView key, StringView value) const {
    Call(u"CreateKey", section, key, value);
  }
  bool HasSection(StringView section) const { return Call(u"Section", section).ToObject() != nullptr; }
  // Removes a section with its keys. True also where there was none; false for the section [Project], without
  // which the file would be no project file.
  bool DeleteSection(StringView section) const { return Call(u"DeleteSection", section).ToBool(); }
  // Makes the changes in the file as it is now, so that what others saved meanwhile stays, and waits until
  // they are on disk. 57 where the file can't be saved: the file and the object's changes stay as they were.
  void Save() const { Call(u"Save"); }
};

// The way to project files.
class Files : public ObjectProxy {
 public:
  using ObjectProxy::ObjectProxy;
  // Raises a failure, with the reason, unless the path is absolute and names a readable project file: 76 if
  // the file doesn't exist, 70 without permission to read it, 380 for other content, 57 otherwise.
  void CheckTVSFilePath(StringView path) const { Call(u"CheckTVSFilePath", path); }
  // The project file, read once. Raises as above, but takes a relative path too. Callers allow for an empty
  // proxy.
  ProjectFile RetrieveTVSFile(StringView path) const {
    return ProjectFile(Call(u"RetrieveTVSFile", path).ToObject());
  }
};

// What the system says of itself.
class General : public ObjectProxy {
 public:
  static constexpr std::size_t VersionString = 2;
  static constexpr std::size_t PlatformString = 5;  // "NT" for that family, here "Linux"
  using ObjectProxy::ObjectProxy;
  // Takes six strings, empty on entry, and fills them: system name with version, series, version, kernel
  // release, architecture, platform. What isn't known stays empty. False: nothing is known.
  bool SystemInfo(std::span<Platform::Value, 6> strings) const {
    return CallByReference(u"SystemInfo", strings).ToBool();
  }
};

}  // namespace Platform
