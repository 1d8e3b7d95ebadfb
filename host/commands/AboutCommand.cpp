// tvmail about: the description of the component's library, and the folders and files in use.
#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>

#include "host/Stores.h"
#include "host/commands/Command.h"
#include "platform/Hex.h"
#include "platform/Json.h"
#include "platform/TerminalText.h"
#include "platform/contracts/GeneralServices.h"
#include "platform/contracts/MailHandler.h"
#include "runtime/Folders.h"
#include "runtime/Libraries.h"
#include "runtime/RegistryStore.h"

namespace Host {

namespace {

using namespace Platform;

StringView NameOf(ArgumentType type) {
  switch (type) {
    case ArgumentType::BooleanWord:
      return u"boolean";
    case ArgumentType::Integer16:
      return u"16-bit integer";
    case ArgumentType::Text:
      return u"string";
    case ArgumentType::ObjectReference:
      return u"object";
    case ArgumentType::None:
      break;
  }
  return u"none";
}

String Numbers(const std::array<std::uint16_t, 4>& version) {
  String text;
  for (const std::uint16_t number : version)
    text += (text.empty() ? u"" : u".") + FromUtf8(std::to_string(number));
  return text;
}

JsonObject Describe(const InterfaceDescription& interface) {
  JsonArray members;
  int slot = 0;
  for (const MemberDescription& member : interface.Members) {
    JsonArray arguments;
    for (const ArgumentDescription& argument : member.Arguments)
      arguments.Add(JsonObject()
                        .Add("name", argument.Name)
                        .Add("type", NameOf(argument.Type))
                        .Add("byReference", argument.ByReference));
    members.Add(JsonObject()
                    .Add("slot", ++slot)
                    .Add("name", member.Name)
                    .Add("implementedBy", member.ImplementedBy)
                    .Add("arguments", arguments)
                    .Add("result", NameOf(member.Result)));
  }
  return JsonObject()
      .Add("name", interface.Name)
      .Add("id", ToText(interface.Id))
      .Add("library", interface.Library)
      .Add("attributes", interface.Attributes)
      .Add("members", members);
}

JsonObject Describe(const ClassDescription& description) {
  JsonArray interfaces;
  if (description.DefaultInterface) interfaces.Add(Describe(*description.DefaultInterface));
  for (const InterfaceDescription* more : description.MoreInterfaces) interfaces.Add(Describe(*more));
  return JsonObject()
      .Add("name", description.Name)
      .Add("id", ToText(description.Id))
      .Add("version", description.Version)
      .Add("attributes", description.Attributes)
      .Add("interfaces", interfaces);
}

JsonObject Describe(const TypeLibraryDescription& types) {
  JsonArray imports;
  for (const ImportedLibrary& import : types.Imports)
    imports.Add(
        JsonObject().Add("file", import.File).Add("name", import.Name).Add("version", import.Version));
  JsonArray resources;
  for (const EmbeddedResource& resource : types.Resources)
    resources.Add(JsonObject()
                      .Add("type", resource.Type)
                      .Add("number", resource.Number)
                      .Add("content", HexText(resource.Content)));
  return JsonObject()
      .Add("name", types.Name)
      .Add("id", ToText(types.Id))
      .Add("helpString", types.HelpString)
      .Add("version", types.Version)
      .Add("locale", types.Locale)
      .Add("platform", types.Target)
      .Add("imports", imports)
      .Add("resources", resources);
}

JsonObject Describe(const VersionRecord& version) {
  JsonObject record;
  record.Add("fileVersion", Numbers(version.FileVersion))
      .Add("productVersion", Numbers(version.ProductVersion))
      .Add("fileFlags", version.FileFlags)
      .Add("fileSystem", version.FileSystem)
      .Add("fileType", version.FileType)
      .Add("language", version.Language)
      .Add("codePage", version.CodePage);
  for (const VersionField& field : version.Texts) record.Add(ToUtf8(field.Name), field.Text);
  return record;
}

JsonObject DescribePlaces() {
  return JsonObject()
      .Add("home", Runtime::HomeFolder())
      .Add("machineStore", Runtime::RegistryStore::FileOf(Hive::LocalMachine))
      .Add("userStore", Runtime::RegistryStore::FileOf(Hive::CurrentUser))
      .Add("libraries", ShownLibraryFolder());
}

void PrintJson(const ComponentDescription& library) {
  JsonObject about;
  about.Add("project", library.ProjectName)
      .Add("description", library.ProjectDescription)
      .Add("helpDirectory", library.HelpDirectory)
      .Add("threadingModel", library.ThreadingModel);
  if (library.TypeLibrary) about.Add("typeLibrary", Describe(*library.TypeLibrary));
  JsonArray classes;
  for (const ClassDescription& description : library.Classes) classes.Add(Describe(description));
  about.Add("classes", classes);
  if (library.Version) about.Add("versionRecord", Describe(*library.Version));
  std::cout << about.Add("places", DescribePlaces()).Text() << '\n';
}

void Line(std::string_view name, StringView text) {
  std::cout << name << std::string(name.size() < 22 ? 22 - name.size() : 1, ' ') << TerminalLine(text)
            << '\n';
}

String Signature(const MemberDescription& member) {
  String text = String(member.Name) + u"(";
  for (std::size_t i = 0; i < member.Arguments.size(); ++i) {
    const ArgumentDescription& argument = member.Arguments[i];
    text += String(i == 0 ? u"" : u", ") + String(argument.Name) + u": " + String(NameOf(argument.Type)) +
            (argument.ByReference ? u" by reference" : u"");
  }
  text += u")";
  return member.Result == ArgumentType::None ? text : text + u" -> " + String(NameOf(member.Result));
}

void Print(const InterfaceDescription& interface) {
  std::cout << "  Interface " << ToUtf8(interface.Name) << " of " << ToUtf8(interface.Library) << ' '
            << ToUtf8(ToText(interface.Id)) << '\n';
  if (!interface.Attributes.empty()) std::cout << "    (" << ToUtf8(interface.Attributes) << ")\n";
  int slot = 0;
  for (const MemberDescription& member : interface.Members)
    std::cout << "    " << ++slot << "  " << ToUtf8(Signature(member)) << "\n       by "
              << ToUtf8(member.ImplementedBy) << '\n';
}

void Print(const TypeLibraryDescription& types) {
  Line("Type library", String(types.Name) + u" " + String(types.Version) + u" " + ToText(types.Id));
  Line("  Help string", types.HelpString);
  Line("  Locale, platform", FromUtf8(std::to_string(types.Locale)) + u", " + String(types.Target));
  for (const ImportedLibrary& import : types.Imports)
    Line("  Imports", String(import.File) + u" " + String(import.Version));
}

void PrintText(const ComponentDescription& library) {
  Line("Library", String(library.ProjectName) + u": " + String(library.ProjectDescription));
  Line("Threading model", library.ThreadingModel);
  if (library.TypeLibrary) Print(*library.TypeLibrary);
  for (const ClassDescription& description : library.Classes) {
    Line("Class",
         String(description.Name) + u" " + String(description.Version) + u" " + ToText(description.Id));
    if (description.DefaultInterface) Print(*description.DefaultInterface);
    for (const InterfaceDescription* more : description.MoreInterfaces) Print(*more);
  }
  if (const VersionRecord* version = library.Version) {
    Line("File version", Numbers(version->FileVersion));
    Line("Product version", Numbers(version->ProductVersion));
    for (const VersionField& field : version->Texts) Line("  " + ToUtf8(field.Name), field.Text);
  }
  Line("Data folder", Runtime::HomeFolder());
  Line("Machine-wide store", Runtime::RegistryStore::FileOf(Hive::LocalMachine));
  Line("User's store", Runtime::RegistryStore::FileOf(Hive::CurrentUser));
  Line("Libraries", ShownLibraryFolder());
}

int About(bool json) {
  const ComponentDescription& library =
      Runtime::LoadClassFactory(u"TvEmailServices.so", EMailManagerClass).Library();
  json ? PrintJson(library) : PrintText(library);
  return Done;
}

}  // namespace

void AddAboutCommand(CLI::App& program, Invocation& invocation) {
  CLI::App* about = program.add_subcommand("about", "Show the component's library, and where data is stored");
  auto json = std::make_shared<bool>(false);
  about->add_flag("--json", *json, "Print one JSON object");
  about->callback([&invocation, json] { invocation.Run = [json] { return About(*json); }; });
}

}  // namespace Host
