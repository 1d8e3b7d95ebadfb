// Component: the description of a loadable library, and the four functions that it exports.
//
// A component is a shared library that exports only DllCanUnloadNow, DllGetClassObject, DllRegisterServer and
// DllUnregisterServer. Each calls the run time with the library's one ComponentDescription;
// PLATFORM_COMPONENT_EXPORTS defines the four. Descriptions are constants, which any thread may read as long
// as the library is loaded.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <span>

#include "platform/Guid.h"
#include "platform/Value.h"

namespace Platform {

enum class ArgumentType { None, BooleanWord, Integer16, Text, ObjectReference };

struct ArgumentDescription {
  StringView Name;
  ArgumentType Type;
  bool ByReference;
};

struct MemberDescription {
  StringView Name;
  StringView ImplementedBy;
  std::span<const ArgumentDescription> Arguments;
  ArgumentType Result;
};

struct InterfaceDescription {
  StringView Name;
  Guid Id;
  StringView Library;                          // the type library that declares it
  StringView Attributes;                       // in words, separated by ", "
  std::span<const MemberDescription> Members;  // in the order of their slots
};

struct ClassDescription {
  StringView Name;
  Guid Id;
  StringView Version;
  StringView Attributes;
  ObjectRef (*Create)();
  const InterfaceDescription* DefaultInterface;  // null for a class whose members are called by name
  std::span<const InterfaceDescription* const> MoreInterfaces;
};

// The description of a sibling's class, whose members are called by name.
template <class T>
constexpr ClassDescription NamedClass(StringView name, const Guid& id, StringView version) {
  return {name, id, version, {}, []() -> ObjectRef { return std::make_shared<T>(); }, nullptr, {}};
}

struct ImportedLibrary {
  StringView File;
  StringView Name;
  StringView Version;
};

// Data that the library contains under a type and a number.
struct EmbeddedResource {
  StringView Type;
  std::uint16_t Number;
  std::span<const std::uint8_t> Content;  // empty where the description itself is the content
};

struct TypeLibraryDescription {
  StringView Name;
  Guid Id;
  StringView HelpString;
  StringView Version;
  std::uint32_t Locale;
  StringView Target;
  std::span<const ImportedLibrary> Imports;
  std::span<const EmbeddedResource> Resources;
};

struct VersionField {
  StringView Name;
  StringView Text;
};

struct VersionRecord {
  std::array<std::uint16_t, 4> FileVersion;
  std::array<std::uint16_t, 4> ProductVersion;
  std::uint32_t FileFlags;
  std::uint32_t FileSystem;
  std::uint32_t FileType;
  std::uint16_t Language;
  std::uint16_t CodePage;
  std::span<const VersionField> Texts;
};

// What registration, creation and `tvmail about` need to know of a library.
struct ComponentDescription {
  StringView ProjectName;  // programmatic names are "ProjectName.ClassName"
  StringView ProjectDescription;
  StringView HelpDirectory;
  StringView ThreadingModel;
  std::span<const ClassDescription> Classes;
  const TypeLibraryDescription* TypeLibrary;  // null: none
  const VersionRecord* Version;               // null: none
  std::atomic<long>* LiveObjects;             // the number of this library's living objects
};

// The description of a sibling: no type library and no version record.
constexpr ComponentDescription NamedClasses(StringView projectName, StringView projectDescription,
                                            std::span<const ClassDescription> classes,
                                            std::atomic<long>& liveObjects) {
  return {projectName, projectDescription, {}, u"Apartment", classes, nullptr, nullptr, &liveObjects};
}

// A member of every object that a library gives to others: counts the object in LiveObjects.
class LiveObject {
 public:
  explicit LiveObject(std::atomic<long>& count) : count_(count) { ++count_; }
  LiveObject(const LiveObject&) = delete;
  LiveObject& operator=(const LiveObject&) = delete;
  ~LiveObject() { --count_; }

 private:
  std::atomic<long>& count_;
};

// Creates objects of one class. Valid as long as its library is loaded; any thread.
class ClassFactory {
 public:
  virtual ~ClassFactory();

  // A new object, for use on the calling thread. Raises what its constructor raises.
  virtual ObjectRef CreateInstance() const = 0;

  // The library and the class of the objects.
  virtual const ComponentDescription& Library() const = 0;
  virtual const ClassDescription& Class() const = 0;
};

inline constexpr Guid ClassFactoryInterface = "{6D0B2C5E-95F1-4C0B-8E57-1A35B7F0C901}"_guid;

// The results of the exports.
namespace Status {
inline constexpr std::int32_t Ok = 0;
inline constexpr std::int32_t No = 1;
inline constexpr std::int32_t NoInterface = static_cast<std::int32_t>(0x80004002);
inline constexpr std::int32_t NoClass = static_cast<std::int32_t>(0x80040111);
inline constexpr std::int32_t RegistrationFailed = static_cast<std::int32_t>(0x80040200);
}  // namespace Status

// The signatures of the exports. DllGetClassObject sets object to a `const ClassFactory*`, which the library
// owns, or to null.
using CanUnloadNowFunction = std::int32_t();
using GetClassObjectFunction = std::int32_t(const Guid& classId, const Guid& interfaceId,
                                            const void** object);
using RegisterServerFunction = std::int32_t();

// The run time's implementation of the exports. They raise nothing; codeAddress is any address in the
// library.
namespace ComponentRuntime {
std::int32_t CanUnloadNow(const ComponentDescription& library);
std::int32_t GetClassObject(const ComponentDescription& library, const Guid& classId, const Guid& interfaceId,
                            const void** object);
std::int32_t RegisterServer(const ComponentDescription& library, const void* codeAddress);
std::int32_t UnregisterServer(const ComponentDescription& library);
}  // namespace ComponentRuntime

}  // namespace Platform

// The four exports of a library whose description is the given constant.
#define PLATFORM_COMPONENT_EXPORTS(description)                                                           \
  extern "C" [[gnu::visibility("default")]] std::int32_t DllCanUnloadNow() {                              \
    return Platform::ComponentRuntime::CanUnloadNow(description);                                         \
  }                                                                                                       \
  extern "C" [[gnu::visibility("default")]] std::int32_t DllGetClassObject(                               \
      const Platform::Guid& classId, const Platform::Guid& interfaceId, const void** object) {            \
    return Platform::ComponentRuntime::GetClassObject(description, classId, interfaceId, object);         \
  }                                                                                                       \
  extern "C" [[gnu::visibility("default")]] std::int32_t DllRegisterServer() {                            \
    return Platform::ComponentRuntime::RegisterServer(description,                                        \
                                                      reinterpret_cast<const void*>(&DllRegisterServer)); \
  }                                                                                                       \
  extern "C" [[gnu::visibility("default")]] std::int32_t DllUnregisterServer() {                          \
    return Platform::ComponentRuntime::UnregisterServer(description);                                     \
  }
