// What both dialogs share, on a form of the test's own.
#include "src/dialogs/FormServices.h"

#include "src/dialogs/HelpServices.h"
#include "tests/dialogs/DialogWorld.h"
#include "tests/dialogs/ScriptedGeneral.h"

namespace TvEmailServices {
namespace {

using Tests::InDialogWorld;
using Texts = std::vector<std::string>;

// The second control has no font.
class SampleForm : public Form {
 public:
  explicit SampleForm(const String& tag = u"9000", const String& labelTag = u"1002")
      : Form({u"sample", u"stored", tag, {0, 0, 1000, 500}},
             {{u"label", ControlKind::Label, u"stored", labelTag},
              {u"files", ControlKind::CommonDialog},
              {u"check", ControlKind::CheckBox, u"stored", u"1005"},
              {u"button", ControlKind::CommandButton, u"stored"},
              {u"list", ControlKind::ComboBox, u"stored", u"1003"},
              {u"box", ControlKind::TextBox, u"stored", u"1004"}}) {}

  Texts Captions() {
    Texts captions{ToUtf8(Caption())};
    for (const auto& control : Controls()) captions.push_back(ToUtf8(control->Caption()));
    return captions;
  }
};

TEST(CenteringAForm, HalvesTheRoundedRestTowardZero) {
  const float rows[][2] = {{0, 0}, {-101, -50}, {103, 51}, {5.5F, 3}, {-5.5F, -3}};
  InDialogWorld([&](Tests::World& world) {
    for (const auto& [rest, place] : rows) {
      SampleForm form;
      world.Toolkit.Size = {1000 + rest, 500 - rest};
      CenterForm(&form);
      EXPECT_EQ(form.Place().Left, place) << rest;
      EXPECT_EQ(form.Place().Top, -place) << rest;
    }
    SampleForm form;
    world.Toolkit.Size = {1e10F, 0};
    EXPECT_THROW(CenterForm(&form), Failure);
    CenterForm(nullptr);
  });
}

TEST(LocalizingAForm, GivesTextsToLabelsButtonsAndCheckBoxesAloneUpToAFailure) {
  InDialogWorld([](Tests::World& world) {
    const std::tuple<String, String, Texts> rows[] = {
        {u"9000", u"1002", {"T9000", "T1002", "", "T1005", "", "stored", "stored"}},
        {u"no number", u"1002", {"stored", "T1002", "", "T1005", "", "stored", "stored"}},
        {u"9000", u"99999999999", {"T9000", "", "", "stored", "stored", "stored", "stored"}}};
    for (const auto& [tag, labelTag, captions] : rows) {
      SampleForm form(tag, labelTag);
      LocalizeForm(form);
      EXPECT_EQ(form.Captions(), captions);
    }
    EXPECT_EQ(world.Toolkit.TakeBoxes().size(), 1U);
  });
}

TEST(ApplyingTheFont, TurnsWesternIntoShiftJisOnOnePlatformOnly) {
  const struct {
    const char16_t *Platform, *Version;
    std::int32_t Charset;
    int Raising = -1;  // which call of SystemInfo fails
  } rows[] = {{u"NT", u"5", 128},  {u"nt", u"5", 128},  {u"NT", u"6", 0},   {u"Linux", u"5", 0},
              {u"NT", u"5", 0, 0}, {u"NT", u"5", 0, 1}, {u"NT", u"5", 0, 2}};
  for (const auto& row : rows) {
    InDialogWorld([&](Tests::World& world) {
      world.Services.Instead["TvGeneralServices.General"] = [&] {
        return std::make_shared<Tests::ScriptedGeneral>(row.Platform, row.Version);
      };
      if (row.Raising >= 0)
        world.Services.Faults.push_back({"General.SystemInfo", row.Raising, Failure(57, {}, u"boom")});
      SampleForm form;
      form[u"check"].SetFont({u"Arial", 8, 204});
      ApplyFormFont(form);
      SetFontSizes(form, 9);
      EXPECT_TEXT(u"Courier", form.Font().Name);
      EXPECT_EQ(form[u"label"].Font(), (Font{u"Courier", 9, row.Charset})) << Tests::Utf8(row.Platform);
      EXPECT_EQ(form[u"check"].Font(), (Font{u"Courier", 9, 204}));
      EXPECT_TRUE(world.Toolkit.Boxes.empty());
    });
  }
}

TEST(ApplyingTheFont, AsksForAnEmptyNameOnceAndChangesNothing) {
  const auto twice = [](Tests::World& world) {
    SampleForm form;
    for (int round = 0; round < 2; ++round) ApplyFormFont(form);
    EXPECT_EQ(world.Services.CallsOf("Resource.GetFontName").size(), 1U);
    EXPECT_EQ(form[u"label"].Font(), Font());
  };
  InDialogWorld(twice, u"");
}

TEST(ApplyingTheFont, AsksAgainAfterAFailureAndSkipsWhatIsMissing) {
  InDialogWorld([](Tests::World& world) {
    SampleForm form;
    world.Services.Missing = {"TvResourceServices.Resource", "TvGeneralServices.General"};
    EXPECT_THROW(GetFormFontName(), Failure);
    world.Services.Missing.erase("TvResourceServices.Resource");
    ApplyFormFont(form);
    EXPECT_TEXT(u"Courier", form[u"box"].Font().Name);
    EXPECT_TRUE(world.Toolkit.Boxes.empty());
  });
}

TEST(ATrailingSeparator, IsOfThePathsOwnKind) {
  const std::pair<const char16_t*, const char16_t*> rows[] = {
      {u"", u""},         {u"   ", u""},      {u"C:\\x", u"C:\\x\\"},   {u"C:\\x\\", u"C:\\x\\"},
      {u"a/b", u"a/b/"},  {u"a/b/", u"a/b/"}, {u"a/b\\c", u"a/b\\c\\"}, {u" C:\\x ", u"C:\\x\\"},
      {u"abc", u"abc\\"}, {u"\\/", u"\\/\\"}};
  for (const auto& [given, wanted] : rows) {
    String path = given;
    EXPECT_EQ(&EnsureTrailingSeparator(path), &path);
    EXPECT_TEXT(wanted, path);
  }
}

TEST(TheHelpFolder, IsNextToAFolderWhoseNameEndsInBin) {
  const std::pair<const char16_t*, const char16_t*> rows[] = {{u"C:\\App\\bin", u"C:\\App\\Help\\"},
                                                              {u"C:\\App\\BIN\\", u"C:\\App\\Help\\"},
                                                              {u"C:\\App", u"C:\\App\\"},
                                                              {u"C:\\Cabin", u"C:\\CaHelp\\"},
                                                              {u"a/bin", u"a/Help\\"},
                                                              {u"/usr/lib", u"/usr/lib/"},
                                                              {u"bin", u"Help\\"},
                                                              {u"in", u"in\\"}};
  for (const auto& [folder, wanted] : rows) EXPECT_TEXT(wanted, HelpFolderFor(folder));
}

TEST(AHelpTopic, IsShownByOneHelpObjectForEachThread) {
  InDialogWorld([](Tests::World& world) {
    const std::string name = "TvGeneralGuiServices.Help";
    world.Services.Missing = {name};
    EXPECT_THROW(ShowHelpTopic(u"one", 0), Failure);
    world.Services.Missing.clear();
    ShowHelpTopic(u"two", 0);
    ShowHelpTopic(u"three", 0);
    EXPECT_EQ(world.Services.Created, (Texts{name, name}));
    EXPECT_EQ(world.Toolkit.Log, (Texts{"topic two", "topic three"}));
    EXPECT_TRUE(world.Toolkit.Boxes.empty());
  });
}

}  // namespace
}  // namespace TvEmailServices
