#include "runtime/Registration.h"

#include "platform/StoredNames.h"
#include "runtime/RegistryFile.h"

namespace Runtime {
namespace {

const String kClasses = String(RegistryPath::kClasses) + u"\\";

String ClassKey(const Guid& id) {
  return kClasses + u"CLSID\\" + ToText(id);
}
String InterfaceKey(const Guid& id) {
  return kClasses + u"Interface\\" + ToText(id);
}
String TypeLibraryKey(const Guid& id) {
  return kClasses + u"TypeLib\\" + ToText(id);
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
  const auto file = registry->Read(ClassKey(classId) + u"\\InprocServer32", {});
  if (!file) return {};
  return RegisteredClass{classId, file->Content.ToString()};
}

std::optional<RegisteredClass> FindClass(StringView programmaticName) {
  if (!RegistryStore::IsKeyName(programmaticName)) return {};
  String id;
  {
    RegistryAccess registry(Hive::LocalMachine);
    id = TextAt(*registry, kClasses + String(programmaticName) + u"\\CLSID");
  }
  if (id.empty()) return {};
  return FindClass(ParseGuid(id));
}

void WriteRegistration(const ComponentDescription& library, const String& file) {
  RegistryAccess access(Hive::LocalMachine);
  RegistryFile& registry = *access;
  Transaction transaction(registry.Store());
  const TypeLibraryDescription* types = library.TypeLibrary;
  for (const ClassDescription& described : library.Classes) {
    const String name = ProgrammaticName(library, described);
    Put(registry, kClasses + name, {}, library.ProjectDescription);
    Put(registry, kClasses + name + u"\\CLSID", {}, ToText(described.Id));
    const String key = ClassKey(described.Id);
    Put(registry, key, {}, name);
    Put(registry, key + u"\\InprocServer32", {}, file);
    Put(registry, key + u"\\InprocServer32", u"ThreadingModel", library.ThreadingModel);
    Put(registry, key + u"\\ProgID", {}, name);
    Put(registry, key + u"\\VERSION", {}, described.Version);
    if (types) Put(registry, key + u"\\TypeLib", {}, ToText(types->Id));
  }
  ForOwnInterfaces(library, [&](const InterfaceDescription& description) {
    Put(registry, InterfaceKey(description.Id), {}, description.Name);
    if (types) Put(registry, InterfaceKey(description.Id) + u"\\TypeLib", {}, ToText(types->Id));
  });
  if (types) {
    const String key = TypeLibraryKey(types->Id) + u"\\" + String(types->Version);
    Put(registry, key, {}, types->HelpString);
    Put(registry, key, u"File", file);
    Put(registry, key + u"\\HELPDIR", {}, library.HelpDirectory);
  }
  transaction.Commit();
}

void RemoveRegistration(const ComponentDescription& library) {
  RegistryAccess access(Hive::LocalMachine);
  RegistryFile& registry = *access;
  Transaction transaction(registry.Store());
  for (const ClassDescription& described : library.Classes) {
    const String name = kClasses + ProgrammaticName(library, described);
    if (EqualsIgnoreCase(TextAt(registry, name + u"\\CLSID"), ToText(described.Id))) registry.DeleteKey(name);
    registry.DeleteKey(ClassKey(described.Id));
  }
  ForOwnInterfaces(library, [&](const InterfaceDescription& description) {
    registry.DeleteKey(InterfaceKey(description.Id));
  });
  if (const TypeLibraryDescription* types = library.TypeLibrary) {
    const String key = TypeLibraryKey(types->Id);
    registry.DeleteKey(key + u"\\" + String(types->Version));
    if (registry.SubKeys(key).empty()) registry.DeleteKey(key);
  }
  transaction.Commit();
}

}  // namespace Runtime
