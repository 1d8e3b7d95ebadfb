#include "runtime/Registration.h"

#include "platform/StoredNames.h"
#include "runtime/RegistryFile.h"

namespace Runtime {
namespace {

String Below(StringView key, StringView name) {
  return String(key).append(u"\\").append(name);
}

String KeyOfName(StringView programmaticName) {
  return Below(RegistryPath::kClasses, programmaticName);
}
String ClassKey(const Guid& id) {
  return Below(Below(RegistryPath::kClasses, ClassesKey::kClassId), ToText(id));
}
String InterfaceKey(const Guid& id) {
  return Below(Below(RegistryPath::kClasses, ClassesKey::kInterface), ToText(id));
}
String TypeLibraryKey(const Guid& id) {
  return Below(Below(RegistryPath::kClasses, ClassesKey::kTypeLibrary), ToText(id));
}

String ProgrammaticName(const ComponentDescription& library, const ClassDescription& described) {
  return String(library.ProjectName) + u"." + String(described.Name);
}

String TextAt(RegistryFile& registry, StringView key, StringView name = {}) {
  const auto value = registry.Read(key, name);
  return value ? value->Content.ToString() : String();
}

void Put(RegistryFile& registry, const String& key, StringView name, StringView text) {
  registry.CreateKey(key);
  registry.Write(key, name, {RegValue::StringType, text});
}

// Calls visit for each interface that the library declares.
template <class Visit>
void ForOwnInterfaces(const ComponentDescription& library, Visit visit) {
  const auto offer = [&](const InterfaceDescription& description) {
    if (description.Library == library.ProjectName) visit(description);
  };
  for (const ClassDescription& described : library.Classes) {
    if (described.DefaultInterface) offer(*described.DefaultInterface);
    for (const InterfaceDescription* more : described.MoreInterfaces) offer(*more);
  }
}

}  // namespace

std::optional<RegisteredClass> FindClass(const Guid& classId) {
  RegistryAccess registry(Hive::LocalMachine);
  const auto file = registry->Read(Below(ClassKey(classId), ClassesKey::kServer), {});
  if (!file) return {};
  return RegisteredClass{classId, file->Content.ToString()};
}

std::optional<RegisteredClass> FindClass(StringView programmaticName) {
  if (!RegistryStore::IsKeyName(programmaticName)) return {};
  String id;
  {
    RegistryAccess registry(Hive::LocalMachine);
    id = TextAt(*registry, Below(KeyOfName(programmaticName), ClassesKey::kClassId));
  }
  if (id.empty()) return {};
  return FindClass(ParseGuid(id));
}

void WriteRegistration(const ComponentDescription& library, const String& file) {
  RegistryAccess access(Hive::LocalMachine, RegistryUse::Write);
  RegistryFile& registry = *access;
  Transaction transaction(registry.Store());
  const TypeLibraryDescription* types = library.TypeLibrary;
  for (const ClassDescription& described : library.Classes) {
    const String name = ProgrammaticName(library, described);
    Put(registry, KeyOfName(name), {}, library.ProjectDescription);
    Put(registry, Below(KeyOfName(name), ClassesKey::kClassId), {}, ToText(described.Id));
    const String key = ClassKey(described.Id);
    Put(registry, key, {}, name);
    Put(registry, Below(key, ClassesKey::kServer), {}, file);
    Put(registry, Below(key, ClassesKey::kServer), ClassesKey::kThreadingModel, library.ThreadingModel);
    Put(registry, Below(key, ClassesKey::kProgrammaticName), {}, name);
    Put(registry, Below(key, ClassesKey::kVersion), {}, described.Version);
    if (types) Put(registry, Below(key, ClassesKey::kTypeLibrary), {}, ToText(types->Id));
  }
  ForOwnInterfaces(library, [&](const InterfaceDescription& description) {
    Put(registry, InterfaceKey(description.Id), {}, description.Name);
    if (types)
      Put(registry, Below(InterfaceKey(description.Id), ClassesKey::kTypeLibrary), {}, ToText(types->Id));
  });
  if (types) {
    const String key = Below(TypeLibraryKey(types->Id), types->Version);
    Put(registry, key, {}, types->HelpString);
    Put(registry, key, ClassesKey::kFile, file);
    Put(registry, Below(key, ClassesKey::kHelpFolder), {}, library.HelpDirectory);
  }
  transaction.Commit();
}

void RemoveRegistration(const ComponentDescription& library) {
  RegistryAccess access(Hive::LocalMachine, RegistryUse::Write);
  RegistryFile& registry = *access;
  Transaction transaction(registry.Store());
  for (const ClassDescription& described : library.Classes) {
    const String name = KeyOfName(ProgrammaticName(library, described));
    if (EqualsIgnoreCase(TextAt(registry, Below(name, ClassesKey::kClassId)), ToText(described.Id)))
      registry.DeleteKey(name);
    registry.DeleteKey(ClassKey(described.Id));
  }
  ForOwnInterfaces(library, [&](const InterfaceDescription& description) {
    registry.DeleteKey(InterfaceKey(description.Id));
  });
  if (const TypeLibraryDescription* types = library.TypeLibrary) {
    const String key = TypeLibraryKey(types->Id);
    registry.DeleteKey(Below(key, types->Version));
    if (registry.SubKeys(key).empty()) registry.DeleteKey(key);
  }
  transaction.Commit();
}

}  // namespace Runtime
