// Creation by name: registration, loading of libraries, and their failures.
#include <sys/stat.h>

#include <set>
#include <thread>

#include "platform/Component.h"
#include "platform/contracts/GeneralServices.h"
#include "runtime/ClassLookup.h"
#include "runtime/Database.h"
#include "runtime/Folders.h"
#include "runtime/Libraries.h"
#include "runtime/RegistryStore.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using Runtime::RegistryStore;
namespace fs = std::filesystem;

constexpr Hive kMachine = Hive::LocalMachine;
constexpr const char16_t* kName = u"TvGeneralServices.RegUtil";
constexpr const char16_t* kLibrary = u"TvGeneralServices.so";

// A new home folder in which no library is registered.
class Creation : public testing::Test {
 protected:
  Creation() {
    setenv("TALVANE_HOME", (folder_.Path() / "home").c_str(), 1);
    RegistryStore::Create(kMachine);
  }

  // The text of the failure 429 to create an object of the name; empty if it is created.
  static std::string CreationFailure(StringView name = kName) {
    try {
      EXPECT_NE(Services().CreateByName(name), nullptr);
      return "";
    } catch (const Failure& failure) {
      return failure.Number() == FailureNumber::CannotCreate ? failure.what() : "another failure";
    }
  }

  static void ExpectFailure(std::initializer_list<std::string> parts, StringView name = kName) {
    const std::string failure = CreationFailure(name);
    for (const std::string& part : parts) EXPECT_PRED2(Holds, failure, part);
  }

  static const ClassFactory& Factory() { return Runtime::LoadClassFactory(kLibrary, ClassId()); }

  static Guid ClassId() {
    return ParseGuid(RegistryStore::Read(kMachine, u"Software\\Classes\\TvGeneralServices.RegUtil\\CLSID", {})
                         ->Content.ToString());
  }

  static std::string RegisteredFile() {
    return Utf8(RegistryStore::Read(
                    kMachine, u"Software\\Classes\\CLSID\\" + ToText(ClassId()) + u"\\InprocServer32", {})
                    ->Content.ToString());
  }

  TemporaryFolder folder_;
};

TEST_F(Creation, ARegisteredNameGivesANewObjectInAnyCaseAndByItsClass) {
  ExpectFailure({"TvGeneralServices.RegUtil", "tvmail init"});
  Runtime::RegisterComponent(kLibrary);
  EXPECT_EQ(CreationFailure(), "");
  EXPECT_EQ(CreationFailure(u"tvgeneralservices.REGUTIL"), "");
  EXPECT_NE(Services().CreateByName(kName), Services().CreateByClass(ClassId()));
  EXPECT_EQ(RegisteredFile(), "TvGeneralServices.so");
  for (const StringView wrong :
       {u"", u"RegUtil", u"TvGeneralServices.RegUtil\\CLSID", u"TvGeneralServices.Nothing"})
    ExpectFailure({"isn't registered"}, wrong);
}

TEST_F(Creation, ARemovedLibraryIsMissingAtOnceAndARestoredOneIsFound) {
  const fs::path copy = folder_.Path() / "copy.so";
  const fs::path link = folder_.Path() / "link.so";
  const fs::path built = fs::path(ToUtf8(Runtime::LibraryFolder())) / Utf8(kLibrary);
  fs::copy_file(built, copy);
  fs::create_symlink(built, link);
  for (const fs::path& library : {copy, link}) {
    Runtime::RegisterComponent(FromUtf8(library.string()));
    EXPECT_EQ(RegisteredFile(), library.string());
    EXPECT_EQ(CreationFailure(), "");
    {
      const Runtime::ClassLookupScope scope;
      {
        const Runtime::ClassLookupScope inner;
        EXPECT_EQ(CreationFailure(), "");
      }
      fs::rename(library, folder_.Path() / "away");
      EXPECT_EQ(CreationFailure(), "");
    }
    ExpectFailure({"TvGeneralServices.RegUtil", library.string(), "is missing", "tvmail init"});
    fs::rename(folder_.Path() / "away", library);
    EXPECT_EQ(CreationFailure(), "");
  }
}

TEST_F(Creation, AFileThatIsNoComponentIsRefusedWithItsName) {
  Runtime::RegisterComponent(kLibrary);
  WriteFile(folder_.Path() / "text.so", "no library");
  const String key = u"Software\\Classes\\CLSID\\" + ToText(ClassId()) + u"\\InprocServer32";
  const fs::path runtime = fs::path(ToUtf8(Runtime::LibraryFolder())) / "libTalvaneRuntime.so";
  for (const fs::path& file : {folder_.Path() / "text.so", runtime}) {
    RegistryStore::Write(kMachine, key, {}, {1, FromUtf8(file.string())});
    ExpectFailure({file.string()});
    EXPECT_THROW(Runtime::RegisterComponent(FromUtf8(file.string())), Failure);
    String reason;
    EXPECT_EQ(Runtime::LoadToolkit(FromUtf8(file.string()), reason), nullptr);
    EXPECT_PRED2(Holds, Utf8(reason), file.string());
  }
}

TEST_F(Creation, ALibraryIsLoadedOnlyFromTheLibraryFolderOrByItsAbsolutePath) {
  Runtime::RegisterComponent(kLibrary);
  const String key = u"Software\\Classes\\CLSID\\" + ToText(ClassId()) + u"\\InprocServer32";
  const fs::path before = fs::current_path();
  fs::copy_file(fs::path(ToUtf8(Runtime::LibraryFolder())) / Utf8(kLibrary), folder_.Path() / "planted.so");
  fs::current_path(folder_.Path());
  const std::pair<const char16_t*, const char*> files[] = {
      {u"planted.so", "planted.so is missing"}, {u"./planted.so", "absolute path"}, {u"", "can't be loaded"}};
  for (const auto& [file, why] : files) {
    RegistryStore::Write(kMachine, key, {}, {1, file});
    ExpectFailure({why});
  }
  String reason;
  EXPECT_EQ(Runtime::LoadToolkit(u"./planted.so", reason), nullptr);
  EXPECT_PRED2(Holds, Utf8(reason), "absolute path");
  fs::current_path(before);
}

TEST_F(Creation, ARegistrationContainsTheDescriptionOfTheLibrary) {
  Runtime::RegisterComponent(u"TvEmailServices.so");
  const std::string library = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1000}";
  const std::string own = "{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1001}";
  const std::string text = "TVEmailServices (v9.1002.1.010 r1)";
  const std::string interface = "Interface\\{3C5B41E6-0C1B-4B57-8D6A-7E2F0E9A1002}";
  const struct {
    std::string Key;
    const char16_t* Name;
    std::string Text;
  } rows[] = {{"TvEMailServices.EMailManager", u"", text},
              {"TvEMailServices.EMailManager\\CLSID", u"", own},
              {"CLSID\\" + own, u"", "TvEMailServices.EMailManager"},
              {"CLSID\\" + own + "\\InprocServer32", u"", "TvEmailServices.so"},
              {"CLSID\\" + own + "\\InprocServer32", u"ThreadingModel", "Apartment"},
              {"CLSID\\" + own + "\\ProgID", u"", "TvEMailServices.EMailManager"},
              {"CLSID\\" + own + "\\VERSION", u"", "1.0"},
              {"CLSID\\" + own + "\\TypeLib", u"", library},
              {interface, u"", "_EMailManager"},
              {interface + "\\TypeLib", u"", library},
              {"TypeLib\\" + library + "\\1.0", u"", text},
              {"TypeLib\\" + library + "\\1.0", u"File", "TvEmailServices.so"},
              {"TypeLib\\" + library + "\\1.0\\HELPDIR", u"", ""}};
  for (const auto& [key, name, expected] : rows) {
    const auto value = RegistryStore::Read(kMachine, u"Software\\Classes\\" + FromUtf8(key), name);
    EXPECT_EQ(value ? Utf8(value->Content.ToString()) : "(none)", expected) << key;
  }
  EXPECT_EQ(RegistryStore::SubKeys(kMachine, u"Software\\Classes\\Interface").size(), 1U);
}

TEST_F(Creation, AChangedOrLostRegistrationTakesEffectAtTheNextCreation) {
  Runtime::RegisterComponent(kLibrary);
  EXPECT_EQ(CreationFailure(), "");
  Runtime::UnregisterComponent(kLibrary);
  ExpectFailure({"isn't registered"});
  Runtime::RegisterComponent(kLibrary);
  EXPECT_EQ(CreationFailure(), "");
  Runtime::Database(ToUtf8(RegistryStore::FileOf(kMachine)))
      .Run(
          "DELETE FROM value WHERE key=(SELECT id FROM key WHERE path LIKE "
          "'%tvgeneralservices.regutil\\clsid')");
  ExpectFailure({"isn't registered"});
  fs::remove(folder_.Path() / "home/machine.registry");
  ExpectFailure({"machine.registry", "restore both"});
  EXPECT_PRED2(Holds, FailureText([] { Runtime::RegisterComponent(kLibrary); }), "machine.registry");
}

TEST_F(Creation, UnregisteringRemovesOnlyWhatRegisteringAdded) {
  const auto all = [] {
    std::set<std::string> paths;
    const std::function<void(const String&)> visit = [&](const String& path) {
      paths.insert(Utf8(path));
      for (const String& name : RegistryStore::SubKeys(kMachine, path)) visit(path + u"\\" + name);
    };
    visit(u"Software");
    return paths;
  };
  for (const StringView key :
       {u"Software\\Classes\\CLSID\\{1}", u"Software\\Classes\\Interface", u"Software\\Classes\\TypeLib",
        u"Software\\Classes\\TvGeneralServices.RegUtil2"})
    RegistryStore::CreateKey(kMachine, key);
  const auto before = all();
  for (const char16_t* library : {kLibrary, u"TvEmailServices.so"}) {
    if (!fs::exists(fs::path(ToUtf8(Runtime::LibraryFolder())) / Utf8(library))) continue;
    Runtime::RegisterComponent(library);
    EXPECT_GT(all().size(), before.size());
    Runtime::UnregisterComponent(library);
    EXPECT_EQ(all(), before);
  }
}

TEST_F(Creation, ALibraryCountsItsObjects) {
  Runtime::RegisterComponent(kLibrary);
  const ComponentDescription& library = Factory().Library();
  EXPECT_EQ(ComponentRuntime::CanUnloadNow(library), Status::Ok);
  {
    const ObjectRef first = Services().CreateByName(kName);
    ObjectRef second = Services().CreateByName(kName);
    const ObjectRef third = second;
    second = nullptr;
    EXPECT_EQ(*library.LiveObjects, 2);
    EXPECT_EQ(ComponentRuntime::CanUnloadNow(library), Status::No);
  }
  EXPECT_EQ(ComponentRuntime::CanUnloadNow(library), Status::Ok);
}

TEST_F(Creation, AFactoryIsReturnedOnlyForItsClassAndInterface) {
  Runtime::RegisterComponent(kLibrary);
  const ComponentDescription& library = Factory().Library();
  const void* object = &library;
  EXPECT_EQ(ComponentRuntime::GetClassObject(library, Guid(), ClassFactoryInterface, &object),
            Status::NoClass);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(ComponentRuntime::GetClassObject(library, ClassId(), Guid(), &object), Status::NoInterface);
  EXPECT_EQ(ComponentRuntime::GetClassObject(library, ClassId(), ClassFactoryInterface, &object), Status::Ok);
  EXPECT_EQ(object, &Factory());
}

TEST_F(Creation, TheSameSeedNeverGivesTheSameValues) {
  std::set<double> values;
  for (int i = 0; i < 200; ++i) {
    Services().Random().Seed(429);
    const double value = Services().Random().Next();
    EXPECT_TRUE(value >= 0 && value < 1) << value;
    values.insert(value);
  }
  EXPECT_EQ(values.size(), 200U);
  RandomSource* other = nullptr;
  std::thread([&] { other = &Services().Random(); }).join();
  EXPECT_NE(other, &Services().Random());
}

TEST_F(Creation, OnlyTheOwnerMayUseAHomeFolderAndWriteItsParents) {
  setenv("TALVANE_HOME", (folder_.Path() / "a/b/home").c_str(), 1);
  const mode_t before = umask(0);
  RegistryStore::Create(kMachine);
  umask(before);
  for (const auto& [path, mode] : {std::pair("a", 0755), {"a/b", 0755}, {"a/b/home", 0700}})
    EXPECT_EQ(fs::status(folder_.Path() / path).permissions(), fs::perms(mode)) << path;
  WriteFile(folder_.Path() / "file", "");
  for (const char* wrong : {"file", "file/home"}) {
    setenv("TALVANE_HOME", (folder_.Path() / wrong).c_str(), 1);
    EXPECT_PRED2(Holds, FailureText([] { RegistryStore::Create(kMachine); }),
                 (folder_.Path() / "file").string());
  }
}

TEST_F(Creation, TheHomeFolderIsWhereTheEnvironmentSays) {
  setenv("TALVANE_HOME", "/somewhere//", 1);
  EXPECT_TEXT(u"/somewhere", Runtime::HomeFolder());
  for (const char* relative : {"home", "./home", "~/home"}) {
    setenv("TALVANE_HOME", relative, 1);
    EXPECT_PRED2(Holds, FailureText([] { Runtime::HomeFolder(); }), "absolute path");
  }
  setenv("TALVANE_HOME", "", 1);
  if (geteuid() == 0) {
    EXPECT_TEXT(u"/var/lib/talvane", Runtime::HomeFolder());
  } else {
    setenv("XDG_DATA_HOME", "/data/", 1);
    EXPECT_TEXT(u"/data/talvane", Runtime::HomeFolder());
    setenv("XDG_DATA_HOME", "data", 1);
    setenv("HOME", "/home/ann/", 1);
    EXPECT_TEXT(u"/home/ann/.local/share/talvane", Runtime::HomeFolder());
    setenv("HOME", "ann", 1);
    EXPECT_TRUE(Runtime::HomeFolder().starts_with(u'/'));
  }
  EXPECT_TEXT(Runtime::LibraryFolder(),
              Services().FolderOf(reinterpret_cast<const void*>(&Runtime::HomeFolder)));
  int local = 0;
  EXPECT_THROW(Services().FolderOf(&local), Failure);
}

}  // namespace
}  // namespace Tests
