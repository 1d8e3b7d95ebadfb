// The built library: loaded, described, created, registered and called.
#include <dlfcn.h>

#include <thread>

#include "platform/StoredNames.h"
#include "platform/contracts/ProjectAdministration.h"
#include "runtime/Folders.h"
#include "runtime/Libraries.h"
#include "runtime/RegistryStore.h"
#include "src/dialogs/modCfgIn.h"
#include "src/mail/EMailManager.h"
#include "src/services/modResource.h"
#include "tests/mail/MemorySiblings.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace TvEmailServices;

const String kLibrary = u"TvEmailServices.so";

const ClassFactory& Factory() {
  return Runtime::LoadClassFactory(kLibrary, EMailManagerClass);
}

template <class Function>
Function* Export(const char* name) {
  const std::string path = Utf8(Runtime::LibraryFolder()) + "/" + Utf8(kLibrary);
  return reinterpret_cast<Function*>(dlsym(dlopen(path.c_str(), RTLD_NOW), name));
}

// The members in their slots: "Name(arguments):result", "&" for an argument by reference.
std::string Described(const InterfaceDescription& offered) {
  static const char* const types[] = {"", "boolean", "integer", "string", "object"};
  std::string text;
  for (const MemberDescription& member : offered.Members) {
    text.append(Utf8(member.Name)).append("(");
    for (const ArgumentDescription& argument : member.Arguments) {
      text.append(argument.ByReference ? " &" : " ").append(Utf8(argument.Name)).append(":");
      text.append(types[static_cast<int>(argument.Type)]);
    }
    text.append("):").append(types[static_cast<int>(member.Result)]).append("\n");
  }
  return text;
}

TEST(LibraryTest, ItsClassHasTwoInterfacesWithTheirMembersInSlotOrder) {
  const ClassDescription& offered = Factory().Class();
  EXPECT_TEXT(u"EMailManager", offered.Name);
  ASSERT_EQ(offered.MoreInterfaces.size(), 1u);
  EXPECT_TEXT(u"_EMailManager", offered.DefaultInterface->Name);
  EXPECT_EQ(Described(*offered.DefaultInterface), "ConfigureOutBoundEmail():boolean\n");
  EXPECT_EQ(Described(*offered.MoreInterfaces[0]),
            "Initialize( arg:string &MBUser:object):\n"
            "HandleMessage( &mess:object):string\n"
            "Finalize():\n"
            "Configure( &AddMode:integer &MailBoxName:string &ProductName:string &Sess:object):boolean\n"
            "MboxUpdate( &MailBoxName:string &Sess:object):boolean\n"
            "MboxDelete( &MailBoxName:string):\n");
}

TEST(LibraryTest, ItCarriesItsIdentityAndItsVersionAsData) {
  const ComponentDescription& library = Factory().Library();
  EXPECT_EQ(library.Classes.size(), 1u);
  EXPECT_TEXT(u"TvEMailServices", library.ProjectName);
  EXPECT_TEXT(u"TVEmailServices (v9.1002.1.010 r1)", library.ProjectDescription);
  EXPECT_TEXT(u"", library.HelpDirectory);
  EXPECT_TEXT(u"Apartment", library.ThreadingModel);

  const TypeLibraryDescription& types = *library.TypeLibrary;
  EXPECT_TEXT(u"TvEMailServices 1.0", String(types.Name).append(u" ").append(types.Version));
  EXPECT_EQ(types.Locale, 1033u);
  ASSERT_EQ(types.Imports.size(), 2u);
  EXPECT_TEXT(u"stdole2.tlb 2.0",
              String(types.Imports[0].File).append(u" ").append(types.Imports[0].Version));
  EXPECT_TEXT(u"pvmailinter.dll 9.0",
              String(types.Imports[1].File).append(u" ").append(types.Imports[1].Version));
  const auto resource = types.Resources[1];
  EXPECT_TEXT(u"_IID_EMAILMANAGER", resource.Type);
  EXPECT_EQ(Bytes(resource.Content.begin(), resource.Content.begin() + 4), (Bytes{16, 0, 0, 0}));
  EXPECT_TRUE(std::equal(resource.Content.begin() + 4, resource.Content.end(),
                         EMailManagerInterfaceId.Bytes.begin(), EMailManagerInterfaceId.Bytes.end()));

  const VersionRecord& version = *library.Version;
  EXPECT_EQ(version.FileVersion, (std::array<std::uint16_t, 4>{9, 1002, 1, 10}));
  EXPECT_EQ(version.ProductVersion, version.FileVersion);
  EXPECT_EQ((std::vector<std::uint32_t>{version.FileFlags, version.FileSystem, version.FileType,
                                        version.Language, version.CodePage}),
            (std::vector<std::uint32_t>{0, 4, 2, 1033, 1200}));
  std::map<std::string, std::string> texts;
  for (const VersionField& field : version.Texts) texts[Utf8(field.Name)] = Utf8(field.Text);
  EXPECT_EQ(texts["FileDescription"], "TvEmailServices dll");
  EXPECT_EQ(texts["InternalName"], "TvEmailServices");
  EXPECT_EQ(texts["OriginalFilename"], "TvEmailServices.dll");
  EXPECT_NE(texts["Comments"].find("Apartment Model, Fast Optimzation, Attended"), std::string::npos);
}

TEST(LibraryTest, ItMayBeUnloadedWhenNoHandlerIsAlive) {
  World world;
  auto* const canUnload = Export<CanUnloadNowFunction>("DllCanUnloadNow");
  ObjectRef first = Factory().CreateInstance(), second = Factory().CreateInstance();
  EXPECT_NE(first, second);
  EXPECT_TRUE(std::dynamic_pointer_cast<Platform::MailHandler>(first));
  EXPECT_TRUE(std::dynamic_pointer_cast<EMailManagerInterface>(first));
  EXPECT_EQ(canUnload(), Status::No);
  first.reset();
  EXPECT_EQ(canUnload(), Status::No);
  second.reset();
  EXPECT_EQ(canUnload(), Status::Ok);

  const void* factory = &world;
  EXPECT_EQ(Export<GetClassObjectFunction>("DllGetClassObject")(MailHandlerInterfaceId, ClassFactoryInterface,
                                                                &factory),
            Status::NoClass);
  EXPECT_EQ(factory, nullptr);
}

TEST(LibraryTest, ItIsCreatedByItsNameAsLongAsItIsRegistered) {
  World world;
  const String name = u"TvEMailServices.EMailManager";
  EXPECT_THROW(world.Services.CreateByName(name), Failure);
  Runtime::RegisterComponent(kLibrary);
  EXPECT_TRUE(std::dynamic_pointer_cast<Platform::MailHandler>(world.Services.CreateByName(name)));
  const String server = u"Software\\Classes\\CLSID\\" + ToText(EMailManagerClass) + u"\\InprocServer32";
  EXPECT_EQ(world.Registry(Hive::LocalMachine, server, u"ThreadingModel"), "Apartment");
  Runtime::UnregisterComponent(kLibrary);
  EXPECT_THROW(world.Services.CreateByName(name), Failure);
  EXPECT_THROW(world.Services.CreateByClass(EMailManagerClass), Failure);
}

TEST(LibraryTest, AMailGoesThroughAllSiblingsIntoItsProjectAndStaysThere) {
  World world;
  const String path = world.PathOf("Apollo.tvs");
  const ProjectAdministration projects(world.Services.CreateByName(ProjectAdministration::kName));
  projects.CreateProject(path, u"Apollo", u"pump", u"", u"secret");
  projects.AddUser(path, u"Ann", u"ann@example.org", true);
  const String number = Value(projects.AddDiscussion(path, u"Plan")).ToString();

  const String key = String(RegistryPath::kMailBoxes) + u"\\Apollo";
  Runtime::RegistryStore::CreateKey(Hive::LocalMachine, key);
  const auto write = [&](StringView name, const String& value) {
    Runtime::RegistryStore::Write(Hive::LocalMachine, key, name, {1, value});
  };
  write(MailBoxValue::kProjectPath, path);
  write(MailBoxValue::kUserId, u"pump");
  write(MailBoxValue::kPassword, ComponentSecurity().Encrypt(u"secret"));

  const String subject =
      u"Re: Plan (Ostrand Talvane Project Apollo), Ostrand Talvane Discussion " + number + u")";
  std::vector<std::string> results;
  std::thread([&] {
    const ObjectRef object = Factory().CreateInstance();
    auto& handler = dynamic_cast<Platform::MailHandler&>(*object);
    handler.MailHandler_Initialize(u"Apollo", nullptr);
    const auto handle = [&](StringView sender) {
      results.push_back(
          Utf8(handler.MailHandler_HandleMessage(MessageOf(sender, subject, u"Yes \U0001F44D\nreally\n"))));
    };
    handle(u"Ann@Example.org");
    handle(u"eve@example.org");
    write(MailBoxValue::kPassword, ComponentSecurity().Encrypt(u"wrong"));
    handler.MailHandler_Finalize();
    handle(u"ann@example.org");
  }).join();

  EXPECT_EQ(results[0], "");
  EXPECT_NE(results[1], "");
  EXPECT_NE(results[2], "");
  EXPECT_EQ(results[1].find(Utf8(ResourceServiceMissing)), std::string::npos) << "the texts are there";
  const std::vector<DescribedReply> replies = projects.Describe(path).Discussions.at(0).Replies;
  ASSERT_EQ(replies.size(), 2u);
  EXPECT_TEXT(u"Re: Plan ", replies[0].Subject);
  EXPECT_TEXT(u"Yes \U0001F44D\r\nreally", replies[0].Body);
  EXPECT_TEXT(u"Ann", replies[0].UserName);
  EXPECT_TEXT(u"Ann", replies[1].UserName) << "who acted last stays the author";
}

class HandlerTest : public testing::Test {
 protected:
  HandlerTest() { siblings.Install(world.Services); }

  World world;
  MemorySiblings siblings;
};

TEST_F(HandlerTest, ANewHandlerResetsTheDialogsOutcomeForItsThreadAlone) {
  SetConfigureState(ConfigureStateKept);
  std::thread([] {
    EXPECT_EQ(GetConfigureState(), ConfigureStateNone);
    EMailManager other;
    SetConfigureState(ConfigureStateCancelled);
  }).join();
  EXPECT_EQ(GetConfigureState(), ConfigureStateKept);
  EMailManager handler;
  EXPECT_EQ(GetConfigureState(), ConfigureStateNone);
}

TEST_F(HandlerTest, TheOutboundDialogIsShownAndUnloadedAndReturnsWhetherItWasSaved) {
  EMailManager handler;
  EXPECT_FALSE(handler.ConfigureOutBoundEmail());  // the user closes it
  EXPECT_TRUE(world.Toolkit.TakeBoxes().empty());
  const auto& log = world.Toolkit.Log;
  EXPECT_EQ(std::count(log.begin(), log.end(), "load frmCfgOut"), 1);
  EXPECT_EQ(std::count(log.begin(), log.end(), "show frmCfgOut"), 1);
  EXPECT_EQ(std::count(log.begin(), log.end(), "unload frmCfgOut"), 1);

  world.Toolkit.Scripts = {[](Form& form, UserInput& input) {
    input.Type(form[u"txtHost"], u"mail.example.org");
    input.Type(form[u"txtEMailAddress"], u"apollo@example.org");
    input.Press(form[u"cmdOK"]);
  }};
  EXPECT_TRUE(handler.Call(u"ConfigureOutBoundEmail", {}).ToBool());
}

TEST_F(HandlerTest, AnOutboundDialogThatCantBeShownGivesFalseAndOneBox) {
  EMailManager handler;
  world.Toolkit.Scripts = {[](Form&, UserInput&) { throw Failure(57, {}, u"no screen"); }};
  EXPECT_FALSE(handler.ConfigureOutBoundEmail());
  EXPECT_EQ(world.Toolkit.TakeBoxes(), std::vector<std::string>{"no screen"});

  world.Services.Missing = {"TvResourceServices.Resource"};
  world.Toolkit.Log.clear();
  std::thread([] { EXPECT_FALSE(EMailManager().ConfigureOutBoundEmail()); }).join();
  EXPECT_EQ(world.Toolkit.TakeBoxes(), std::vector<std::string>{Utf8(ResourceServiceMissing)});
  EXPECT_TRUE(world.Toolkit.Log.empty());
}

TEST_F(HandlerTest, AnUpdateWithoutAnAcceptedDialogWritesNoRecordAndNeedsItsSession) {
  EMailManager handler;
  EXPECT_FALSE(handler.MailHandler_MboxUpdate(u"Apollo", nullptr));
  EXPECT_EQ(world.Toolkit.TakeBoxes(), std::vector<std::string>{"T10054 "});
  class Broken : public Object {
    Value Get(StringView) override { throw Failure(57, {}, u"host gone"); }
  };
  EXPECT_FALSE(handler.MailHandler_MboxUpdate(u"Apollo", std::make_shared<Broken>()));
  EXPECT_EQ(world.Toolkit.TakeBoxes().size(), 1u);
}

}  // namespace
}  // namespace Tests
