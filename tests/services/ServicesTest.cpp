// The siblings by their names, the numbered texts and the boxes: what a user and a caller get from them when
// they are there, and when they aren't.
#include <thread>

#include "src/services/modComponents.h"
#include "src/services/modMain.h"
#include "src/services/modResource.h"
#include "tests/services/NumberedTexts.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace TvEmailServices;

const char* const kResource = "TvResourceServices.Resource";
const std::string kMissingText = ToUtf8(ResourceServiceMissing);

std::string ClassText(const Identity& classId) {
  return ToUtf8(ToText(classId));
}

// An object that takes every call and says yes.
class Willing : public Object {
 public:
  Value Call(StringView, std::span<Value>) override { return true; }
};

class Application : public Object, public TalvaneApplication {
 public:
  std::shared_ptr<Project> OpenProject(const Value&, std::int32_t, const String&, const String&, std::int32_t,
                                       std::int32_t) override {
    return nullptr;
  }
  std::shared_ptr<ApplicationStatus> GetStatus() override { return nullptr; }
  std::shared_ptr<ApplicationLogon> GetLogon() override { return nullptr; }
};

class ApplicationFactory : public Object, public TalvaneApplicationFactory {
 public:
  std::shared_ptr<TalvaneApplication> CreateApplication(Boolean& shared) override {
    return shared == True ? std::make_shared<Application>() : nullptr;
  }
};

class ServicesTest : public testing::Test {
 protected:
  ServicesTest() {
    world.Services.Watching = true;
    world.Services.ComponentFolder = u"C:\\Talvane";
    world.Services.Instead[kResource] = [] { return std::make_shared<NumberedTexts>(); };
    for (const char* name : {"RegUtil", "RegValue", "Files", "General"}) {
      world.Services.Instead[std::string("TvGeneralServices.") + name] = [] {
        return std::make_shared<Willing>();
      };
    }
  }

  void TakeAway(std::initializer_list<const char*> names) {
    for (const char* name : names) world.Services.Missing.insert(name);
  }

  void TakeAwayAll() {
    TakeAway({kResource, "TvGeneralServices.RegUtil", "TvGeneralServices.RegValue", "TvGeneralServices.Files",
              "TvGeneralServices.General"});
    world.Services.MissingClasses = {TalvaneApplicationClass, TalvaneApplicationFactoryClass};
  }

  // Runs on a thread that has kept nothing yet.
  static void OnNewThread(const std::function<void()>& run) { std::thread(run).join(); }

  // The boxes as "title: text"; a box without a title of its own has "(default)".
  std::vector<std::string> BoxesOf(const std::function<void()>& run) {
    world.Toolkit.Boxes.clear();
    OnNewThread(run);
    std::vector<std::string> boxes;
    for (const auto& box : world.Toolkit.Boxes) {
      boxes.push_back((box.Title ? Utf8(*box.Title) : "(default)") + ": " + Utf8(box.Text));
    }
    return boxes;
  }

  World world;
};

struct Getter {
  const char* Name;
  std::function<bool(bool report)> Get;
  std::string Report;  // the box of a missing component
};

const std::vector<Getter>& Getters() {
  static const std::string general = "T9000: T10044[TvGeneralServices.Dll]";
  static const std::vector<Getter> getters = {
      {"GetRegValue", [](bool report) { return bool(GetRegValue(report)); }, general},
      {"GetFiles", [](bool report) { return bool(GetFiles(report)); }, general},
      {"GetGeneral", [](bool report) { return bool(GetGeneral(report)); }, general},
      {"GetRegUtil", [](bool report) { return bool(GetRegUtil(Hive::CurrentUser, u"A", report)); }, general},
      {"GetResourceObject", [](bool report) { return bool(GetResourceObject(report)); },
       kMissingText + ": " + kMissingText},
      {"GetComResourceObject", [](bool report) { return bool(GetComResourceObject(report)); },
       kMissingText + ": " + kMissingText},
      {"GetTalvaneApplication", [](bool report) { return bool(GetTalvaneApplication(report)); },
       "T9000: T10044[Talvane40.Dll]"},
      {"GetComponent", [](bool report) { return GetComponent(u"No.Such", report, u"") != nullptr; },
       "T9000: T10044[No.Such]"}};
  return getters;
}

TEST_F(ServicesTest, AMissingSiblingGivesNothingAndIsReportedByItsFileOnlyWhenAsked) {
  TakeAwayAll();
  for (const Getter& getter : Getters()) {
    SCOPED_TRACE(getter.Name);
    if (getter.Report.starts_with("T9000")) world.Services.Missing.erase(kResource);
    bool given = true;
    EXPECT_EQ(BoxesOf([&] { given = getter.Get(false); }), std::vector<std::string>());
    EXPECT_FALSE(given);
    EXPECT_EQ(BoxesOf([&] { given = getter.Get(true); }), std::vector<std::string>{getter.Report});
    EXPECT_FALSE(given);
    world.Services.Missing.insert(kResource);
  }
}

TEST_F(ServicesTest, ARegistryCursorThatCantStandWhereItShouldIsNotGiven) {
  const Failure failure(57, {}, u"store damaged");
  const struct {
    const char* Member;
    std::variant<Value, Failure> Outcome;
    const char* Box;
  } rows[] = {{"RegUtil.SetCurrHive", Value(false), "T9000: T10014[]"},
              {"RegUtil.SetCurrPath", Value(false), "T9000: T10016[Key\\Sub]"},
              {"RegUtil.SetCurrHive", failure, "T9000: store damaged"},
              {"RegUtil.SetCurrPath", failure, "T9000: store damaged"}};
  for (const auto& row : rows) {
    world.Services.Faults = {{row.Member, 0, row.Outcome}};
    bool given = true;
    const auto get = [&](bool report) {
      return [&given, report] { given = bool(GetRegUtil(Hive::LocalMachine, u"Key\\Sub", report)); };
    };
    EXPECT_EQ(BoxesOf(get(true)), std::vector<std::string>{row.Box});
    EXPECT_FALSE(given);
    EXPECT_EQ(BoxesOf(get(false)), std::vector<std::string>());
    EXPECT_FALSE(given);
  }
  world.Services.Faults.clear();
  world.Services.Calls.clear();
  EXPECT_TRUE(GetRegUtil(Hive::LocalMachine, u"Key\\Sub", true));
  EXPECT_EQ(world.Services.Calls,
            (std::vector<std::string>{"RegUtil.SetCurrHive(-2147483646)", "RegUtil.SetCurrPath(Key\\Sub)"}));
}

TEST_F(ServicesTest, AResourceObjectLoadsItsFileFromTheComponentsFolderAndIsGivenEvenIfItCant) {
  EXPECT_TRUE(GetResourceObject(false));
  EXPECT_TRUE(GetComResourceObject(false));
  world.Services.Faults = {{"Resource.LoadResources", 0, Failure(57, {}, u"no file")}};
  EXPECT_TRUE(GetResourceObject(false));
  EXPECT_EQ(world.Services.Calls,
            (std::vector<std::string>{
                "Resource.LoadResources(C:\\Talvane\\TvEmailServicesRes.dll, TvEmailServices)",
                "Resource.LoadResources(C:\\Talvane\\TvComRes.dll, Talvane40)",
                "Resource.LoadResources(C:\\Talvane\\TvEmailServicesRes.dll, TvEmailServices)"}));
}

TEST_F(ServicesTest, TheApplicationsFactoryIsTriedOnlyWhenTheApplicationCantBeCreated) {
  world.Services.InsteadOfClass[TalvaneApplicationClass] = [] { return std::make_shared<Application>(); };
  world.Services.InsteadOfClass[TalvaneApplicationFactoryClass] = [] {
    return std::make_shared<ApplicationFactory>();
  };
  const std::string direct = ClassText(TalvaneApplicationClass);
  const std::string factory = ClassText(TalvaneApplicationFactoryClass);

  EXPECT_TRUE(GetTalvaneApplication(false));
  EXPECT_EQ(world.Services.Created, (std::vector<std::string>{direct}));

  world.Services.Created.clear();
  world.Services.MissingClasses = {TalvaneApplicationClass};
  EXPECT_TRUE(GetTalvaneApplication(false));
  EXPECT_EQ(world.Services.Created, (std::vector<std::string>{direct, factory}));
}

TEST_F(ServicesTest, BoxesAreComposedToTheBlank) {
  const Failure failure(5, {}, u"It broke");
  const struct {
    std::function<void()> Show;
    std::string Text, WithoutService;
  } rows[] = {
      {[] { ShowResourceMessage(10019, u"10020"); }, "T10019 T10020", kMissingText + " " + kMissingText},
      {[] { ShowResourceMessage(10019, u" 2e1 "); }, "T10019 T20", kMissingText + " " + kMissingText},
      {[] { ShowResourceMessage(2057, u" DBUID"); }, "T2057  DBUID", kMissingText + "  DBUID"},
      {[] { ShowResourceMessage(10011, u""); }, "T10011 ", kMissingText + " "},
      {[] { ShowResourceMessage(10011, u"9999999999"); }, "", ""},
      {[] { ShowResourceMessageV(10012, {Value(u"Apollo")}); }, "T10012[Apollo]", kMissingText},
      {[] { ShowResourceMessageV(10013, {}); }, "T10013[]", kMissingText},
      {[&] { ShowErrorMessage(failure, 10045, u""); }, "It broke T10045", "It broke " + kMissingText},
      {[&] { ShowErrorMessage(failure, 0, u""); }, "It broke", "It broke"},
      {[&] { ShowErrorMessage(failure, -1, u"!"); }, "It broke!", "It broke!"},
      {[&] { ShowErrorMessageV(failure, 10050, {Value(u"Key")}); }, "It broke  T10050[Key]",
       "It broke  " + kMissingText}};
  for (const auto& row : rows) {
    world.Services.Missing.clear();
    EXPECT_EQ(BoxesOf(row.Show), std::vector<std::string>{"T9000: " + row.Text});
    TakeAway({kResource});
    EXPECT_EQ(BoxesOf(row.Show), std::vector<std::string>{kMissingText + ": " + row.WithoutService});
  }
}

TEST_F(ServicesTest, ABoxThatCantBeShownIsPassedOver) {
  class Broken : public ScriptToolkit {
    void MessageBox(StringView, const std::optional<String>&) override { Raise(57); }
  } broken;
  world.Services.ToolkitInUse = &broken;
  TakeAway({kResource});
  OnNewThread([] {
    EXPECT_NO_THROW(ShowResourceMessage(10011, u""));
    EXPECT_NO_THROW(EXPECT_FALSE(IsResourceLoaded(true)));
  });
}

TEST_F(ServicesTest, TheAbsenceOfTheServiceIsShownOnceWithoutATitleOfItsOwn) {
  TakeAway({kResource});
  EXPECT_EQ(BoxesOf([] { EXPECT_FALSE(IsResourceLoaded(false)); }), std::vector<std::string>());
  EXPECT_EQ(BoxesOf([] { EXPECT_FALSE(IsResourceLoaded(true)); }),
            std::vector<std::string>{"(default): " + kMissingText});
  world.Services.Missing.clear();
  EXPECT_EQ(BoxesOf([] { EXPECT_TRUE(IsResourceLoaded(true)); }), std::vector<std::string>());
}

TEST_F(ServicesTest, TheComponentsTextsAreLoadedOnceInEachThreadAndTheSharedOnesForEachText) {
  const auto loadTwice = [] {
    EXPECT_TEXT(u"T1", LoadTvResourceString(1));
    EXPECT_TEXT(u"T2(a|b)", LoadTVResourceStringS(2, u"a", u"b"));
  };
  OnNewThread(loadTwice);
  EXPECT_EQ(world.Services.CallsOf("Resource.LoadResources").size(), 1u);
  OnNewThread(loadTwice);
  EXPECT_EQ(world.Services.CallsOf("Resource.LoadResources").size(), 2u);

  world.Services.Calls.clear();
  EXPECT_TEXT(u"T2166", LoadTVCOMResourceString(2166));
  EXPECT_TEXT(u"T2166", LoadTVCOMResourceString(2166));
  EXPECT_EQ(world.Services.CallsOf("Resource.LoadResources(C:\\Talvane\\TvComRes.dll").size(), 2u);
}

TEST_F(ServicesTest, AServiceThatTurnsUpLaterIsFoundByTheNextTextAndThenKept) {
  TakeAway({kResource});
  OnNewThread([&] {
    EXPECT_TEXT(ResourceServiceMissing, LoadTvResourceString(1));
    EXPECT_TEXT(ResourceServiceMissing, LoadTVCOMResourceString(2166));
    world.Services.Missing.clear();
    EXPECT_TEXT(u"T1", LoadTvResourceString(1));
    TakeAway({kResource});
    EXPECT_TEXT(u"T1", LoadTvResourceString(1));
    world.Services.Faults = {{"Resource.ResourceString", 0, Failure(57, {}, u"no text")}};
    EXPECT_TEXT(u"", LoadTvResourceString(1));
    EXPECT_TEXT(u"T2[a]", LoadTVResourceStringV(2, {Value(u"a")}));
  });
}

}  // namespace
}  // namespace Tests
