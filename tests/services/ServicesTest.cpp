// The creation of siblings, the numbered texts and the message boxes, also with siblings that are missing.
#include <thread>

#include "src/services/modComponents.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"
#include "tests/services/NumberedTexts.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace TvEmailServices;
using Lines = std::vector<std::string>;

const char* const kResource = "TvResourceServices.Resource";
const std::string kMissingText = ToUtf8(ResourceServiceMissing);

struct Application : Object, TalvaneApplication {
  std::shared_ptr<Project> OpenProject(const Value&, std::int32_t, const String&, const String&, std::int32_t,
                                       std::int32_t) override {
    return nullptr;
  }
  std::shared_ptr<ApplicationStatus> GetStatus() override { return nullptr; }
  std::shared_ptr<ApplicationLogon> GetLogon() override { return nullptr; }
};

struct ApplicationFactory : Object, TalvaneApplicationFactory {
  std::shared_ptr<TalvaneApplication> CreateApplication(Boolean& shared) override {
    return shared == True ? std::make_shared<Application>() : nullptr;
  }
};

struct BrokenFactory : Object, TalvaneApplicationFactory {
  explicit BrokenFactory(bool raises) : raises_(raises) {}
  std::shared_ptr<TalvaneApplication> CreateApplication(Boolean&) override {
    if (raises_) Raise(57);
    return nullptr;
  }
  bool raises_;
};

struct Willing : Object {
  Value Call(StringView, std::span<Value>) override { return true; }
};

class ServicesTest : public testing::Test {
 protected:
  ServicesTest() {
    world.Services.Watching = true;
    world.Services.ComponentFolder = u"C:\\Talvane";
    world.Services.Instead[kResource] = [] { return std::make_shared<NumberedTexts>(); };
    world.Services.Instead["TvGeneralServices.RegUtil"] = [] { return std::make_shared<Willing>(); };
  }

  // Runs on a thread that has kept nothing yet, and gives the boxes as "title: text".
  Lines BoxesOf(const std::function<void()>& run) {
    world.Toolkit.Boxes.clear();
    std::thread(run).join();
    Lines boxes;
    for (const auto& box : world.Toolkit.Boxes) {
      boxes.push_back(Utf8(box.Title.value_or(u"(default)")).append(": ").append(Utf8(box.Text)));
    }
    return boxes;
  }

  World world;
};

TEST_F(ServicesTest, AMissingSiblingGivesNothingAndIsReportedByItsFileOnlyWhenAsked) {
  const std::string general = "T9000: T10044[TvGeneralServices.Dll]";
  const std::string resource = kMissingText + ": " + kMissingText;
  const struct {
    std::string Name;
    std::function<bool(bool report)> Get;
    std::string Report;
  } rows[] = {
      {"TvGeneralServices.RegValue", [](bool report) { return bool(GetRegValue(report)); }, general},
      {"TvGeneralServices.Files", [](bool report) { return bool(GetFiles(report)); }, general},
      {"TvGeneralServices.General", [](bool report) { return bool(GetGeneral(report)); }, general},
      {"TvGeneralServices.RegUtil",
       [](bool report) { return bool(GetRegUtil(Hive::CurrentUser, u"A", report)); }, general},
      {kResource, [](bool report) { return bool(GetResourceObject(report)); }, resource},
      {kResource, [](bool report) { return bool(GetComResourceObject(report)); }, resource},
      {"", [](bool report) { return bool(GetTalvaneApplication(report)); }, "T9000: T10044[Talvane40.Dll]"},
      {"", [](bool report) { return bool(GetComponent(u"No.Such", report, u"")); },
       "T9000: T10044[No.Such]"}};
  world.Services.MissingClasses = {TalvaneApplicationClass, TalvaneApplicationFactoryClass};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.Name + row.Report);
    world.Services.Missing = {row.Name};
    bool given = true;
    EXPECT_EQ(BoxesOf([&] { given = row.Get(false); }), Lines());
    EXPECT_FALSE(given);
    EXPECT_EQ(BoxesOf([&] { given = row.Get(true); }), Lines{row.Report});
    EXPECT_FALSE(given);
  }
}

TEST_F(ServicesTest, ARegistryCursorIsMovedToItsHiveAndPathOrNotGiven) {
  EXPECT_TRUE(GetRegUtil(Hive::CurrentUser, u"Key", false));
  EXPECT_TRUE(GetRegUtil(Hive::LocalMachine, u"", false));
  EXPECT_EQ(world.Services.Calls, (Lines{"RegUtil.SetCurrHive(-2147483647)", "RegUtil.SetCurrPath(Key)",
                                         "RegUtil.SetCurrHive(-2147483646)", "RegUtil.SetCurrPath()"}));
  const Failure failure(57, {}, u"store damaged");
  const struct {
    const char* Member;
    std::variant<Value, Failure> Outcome;
    const char* Box;
  } rows[] = {{"RegUtil.SetCurrHive", Value(false), "T9000: T10014[]"},
              {"RegUtil.SetCurrPath", Value(false), "T9000: T10016[Key\\Sub]"},
              {"RegUtil.SetCurrPath", failure, "T9000: store damaged"}};
  for (const auto& row : rows) {
    world.Services.Faults = {{row.Member, 0, row.Outcome}};
    for (const bool report : {true, false}) {
      bool given = true;
      const auto boxes = BoxesOf([&] { given = bool(GetRegUtil(Hive::LocalMachine, u"Key\\Sub", report)); });
      EXPECT_EQ(boxes, report ? Lines{row.Box} : Lines());
      EXPECT_FALSE(given);
    }
  }
}

TEST_F(ServicesTest, AResourceObjectLoadsItsFileFromTheComponentsFolderAndIsGivenEvenIfItCant) {
  EXPECT_TRUE(GetResourceObject(false));
  world.Services.Faults = {{"Resource.LoadResources", 0, Failure(57, {}, u"no file")}};
  EXPECT_TRUE(GetComResourceObject(false));
  EXPECT_EQ(world.Services.Calls,
            (Lines{"Resource.LoadResources(C:\\Talvane\\TvEmailServicesRes.dll, TvEmailServices)",
                   "Resource.LoadResources(C:\\Talvane\\TvComRes.dll, Talvane40)"}));
  world.Services.FolderIsUnknown = true;
  EXPECT_TRUE(GetResourceObject(true));
  EXPECT_TRUE(GetComResourceObject(true));
  EXPECT_EQ(world.Toolkit.TakeBoxes(), Lines());
}

TEST_F(ServicesTest, TheApplicationsFactoryIsTriedOnlyWhenTheApplicationCantBeCreated) {
  using Maker = std::function<ObjectRef()>;
  const Maker application = [] { return std::make_shared<Application>(); };
  const Maker factory = [] { return std::make_shared<ApplicationFactory>(); };
  const Maker raising = [] { return std::make_shared<BrokenFactory>(true); };
  const Maker empty = [] { return std::make_shared<BrokenFactory>(false); };
  const Maker stranger = [] { return std::make_shared<Willing>(); }, nothing = [] { return ObjectRef(); };
  const struct {
    Maker Application, Factory;
    bool Given, FactoryAsked;
  } rows[] = {{application, factory, true, false}, {stranger, factory, true, true},
              {nothing, factory, true, true},      {{}, factory, true, true},
              {{}, raising, false, true},          {{}, empty, false, true},
              {{}, stranger, false, true},         {{}, nothing, false, true},
              {stranger, stranger, false, true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(&row - rows);
    world.Services.Created.clear();
    world.Services.MissingClasses.clear();
    if (!row.Application) world.Services.MissingClasses = {TalvaneApplicationClass};
    world.Services.InsteadOfClass = {{TalvaneApplicationClass, row.Application},
                                     {TalvaneApplicationFactoryClass, row.Factory}};
    EXPECT_EQ(bool(GetTalvaneApplication(false)), row.Given);
    Lines asked{Utf8(ToText(TalvaneApplicationClass))};
    if (row.FactoryAsked) asked.push_back(Utf8(ToText(TalvaneApplicationFactoryClass)));
    EXPECT_EQ(world.Services.Created, asked);
    const auto boxes = BoxesOf([] { GetTalvaneApplication(true); });
    EXPECT_EQ(boxes, row.Given ? Lines() : Lines{"T9000: T10044[Talvane40.Dll]"});
  }
}

TEST_F(ServicesTest, BoxesAreComposedToTheBlank) {
  const Failure failure(5, {}, u"It broke");
  const struct {
    std::function<void()> Show;
    std::string Text, WithoutService;
  } rows[] = {
      {[] { ShowResourceMessage(10019, u"10020"); }, "T10019 T10020", kMissingText + " " + kMissingText},
      {[] { ShowResourceMessage(10019, u" 10020 "); }, "T10019 T10020", kMissingText + " " + kMissingText},
      {[] { ShowResourceMessage(10019, u"10020.4"); }, "T10019 T10020", kMissingText + " " + kMissingText},
      {[] { ShowResourceMessage(2057, u" DBUID"); }, "T2057  DBUID", kMissingText + "  DBUID"},
      {[] { ShowResourceMessage(10011, u""); }, "T10011 ", kMissingText + " "},
      {[] { ShowResourceMessage(10011, u"9999999999"); }, "", ""},
      {[] { ShowResourceMessageV(10012, {Value(u"Apollo")}); }, "T10012[Apollo]", kMissingText},
      {[&] { ShowErrorMessage(failure, 10045, u""); }, "It broke T10045", "It broke " + kMissingText},
      {[&] { ShowErrorMessage(failure, 10045, u"!"); }, "It broke T10045!", "It broke " + kMissingText + "!"},
      {[&] { ShowErrorMessage(failure, -1, u""); }, "It broke", "It broke"},
      {[&] { ShowErrorMessage(failure, 0, u"!"); }, "It broke!", "It broke!"},
      {[&] { ShowErrorMessageV(failure, 10050, {Value(u"Key")}); }, "It broke  T10050[Key]",
       "It broke  " + kMissingText}};
  for (const auto& row : rows) {
    world.Services.Missing.clear();
    EXPECT_EQ(BoxesOf(row.Show), Lines{"T9000: " + row.Text});
    world.Services.Missing = {kResource};
    EXPECT_EQ(BoxesOf(row.Show), Lines{kMissingText + ": " + row.WithoutService});
  }
}

TEST_F(ServicesTest, TheAbsenceOfTheServiceIsShownWithoutATitleOfItsOwn) {
  EXPECT_EQ(BoxesOf([] { EXPECT_TRUE(IsResourceLoaded(true)); }), Lines());
  world.Services.Missing = {kResource};
  EXPECT_EQ(BoxesOf([] { EXPECT_FALSE(IsResourceLoaded(false)); }), Lines());
  EXPECT_EQ(BoxesOf([] { EXPECT_FALSE(IsResourceLoaded(true)); }), Lines{"(default): " + kMissingText});
}

TEST_F(ServicesTest, ABoxThatCantBeShownIsLeftOut) {
  struct Broken : ScriptToolkit {
    void MessageBox(StringView, const std::optional<String>&) override { Raise(57); }
  } broken;
  world.Services.ToolkitInUse = &broken;
  EXPECT_NO_THROW(ShowResourceMessage(10011, u""));
  EXPECT_NO_THROW(ShowErrorMessageV(Failure(5, {}, u"It broke"), 10050, {}));
  world.Services.Missing = {kResource};
  std::thread([] { EXPECT_NO_THROW(EXPECT_FALSE(IsResourceLoaded(true))); }).join();
}

TEST_F(ServicesTest, OneResourceObjectServesAThreadAndASharedTextTakesANewOne) {
  const auto loadTwice = [] {
    EXPECT_TEXT(u"T1", LoadTvResourceString(1));
    EXPECT_TEXT(u"T2(a|b)", LoadTVResourceStringS(2, u"a", u"b"));
  };
  std::thread(loadTwice).join();
  std::thread(loadTwice).join();
  EXPECT_EQ(world.Services.CallsOf("Resource.LoadResources").size(), 2u);
  EXPECT_TEXT(u"T2166", LoadTVCOMResourceString(2166));
  EXPECT_TEXT(u"T2166", LoadTVCOMResourceString(2166));
  EXPECT_EQ(world.Services.CallsOf("Resource.LoadResources").size(), 4u);
}

TEST_F(ServicesTest, AServiceThatIsInstalledLaterIsUsedFromTheNextTextOn) {
  world.Services.Missing = {kResource};
  std::thread([&] {
    EXPECT_TEXT(ResourceServiceMissing, LoadTvResourceString(1));
    world.Services.Missing.clear();
    EXPECT_TEXT(u"T1", LoadTvResourceString(1));
    world.Services.Missing = {kResource};
    EXPECT_TEXT(u"T1", LoadTvResourceString(1));
  }).join();
}

TEST_F(ServicesTest, ATextWhoseCallFailsIsEmpty) {
  for (const char* member :
       {"Resource.ResourceString", "Resource.ResourceStringV", "Resource.ResourceStrings"})
    world.Services.Faults.push_back({member, 0, Failure(57, {}, u"no text")});
  std::thread([] {
    EXPECT_TEXT(u"", LoadTvResourceString(1));
    EXPECT_TEXT(u"", LoadTVResourceStringV(1, {}));
    EXPECT_TEXT(u"", LoadTVResourceStringS(1, u"a", u"b"));
    EXPECT_TEXT(u"", LoadTVCOMResourceString(2166));
  }).join();
}

}  // namespace
}  // namespace Tests
