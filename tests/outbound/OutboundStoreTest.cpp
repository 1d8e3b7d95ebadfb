// The user's outbound settings in the real registry, and the profiles that the machine has.
#include "platform/StoredNames.h"
#include "src/outbound/MapiProfiles.h"
#include "tests/dialogs/ScriptedGeneral.h"
#include "tests/outbound/OutboundTest.h"

namespace TvEmailServices {
namespace {

const std::string kVersionText = ToUtf8(RegistryPath::kTalvane);
const std::string kOutboundText = ToUtf8(RegistryPath::kOutbound);

TEST_F(OutboundTest, ASaveRefusesWhatIsMissingAndStoresTheRestAsGiven) {
  const String longest(256, u'x');
  const struct {
    String Host, Address, RealName;
    Texts Boxes;  // empty: it is saved
  } rows[] = {{u"", u"", u"n", {"T10042 "}},
              {u"", u"a", u"", {"T10042 "}},
              {u"h", u"", u"n", {"T10041 "}},
              {u" ", u" a ", u"", {}},
              {longest, longest.substr(1), longest, {}}};
  for (const auto& row : rows) {
    const std::string before = Stored();
    const String after = u"-|2|-|" + row.Host + u"|" + row.Address + u"|" + row.RealName;
    EXPECT_EQ(SaveSmtpOutbound(row.Host, row.Address, row.RealName), row.Boxes.empty());
    EXPECT_EQ(world.Toolkit.TakeBoxes(), row.Boxes);
    EXPECT_EQ(Stored(), row.Boxes.empty() ? ToUtf8(after) : before);
  }
  EXPECT_FALSE(SaveMapiOutbound({}));
  EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{"T10040 "});
}

TEST_F(OutboundTest, ASaveThatStopsHalfWayLeavesTheFormerTransportInForce) {
  ASSERT_TRUE(SaveMapiOutbound(u"p"));
  const char* const afterSmtp[] = {"-|1|p|-|-|-", "-|1|p|h|-|-", "-|1|p|h|a|-", "-|1|p|h|a|n"};
  for (int write = 1; write <= 4; ++write) {
    Plan({{"RegUtil.AddOrUpdateValue", write, false}});
    EXPECT_FALSE(SaveSmtpOutbound(u"h", u"a", u"n"));
    EXPECT_EQ(Stored(), afterSmtp[write - 1]);
  }
  Plan({});
  ASSERT_TRUE(SaveSmtpOutbound(u"h", u"a", u"n"));
  Plan({{"RegUtil.AddOrUpdateValue", 1, false}});
  EXPECT_FALSE(SaveMapiOutbound(u"q"));
  EXPECT_EQ(Stored(), "-|2|p|h|a|n");
  EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{});
  Plan({{"RegUtil.AddOrUpdateValue", 2, boom}});
  EXPECT_FALSE(SaveMapiOutbound(u"q"));
  EXPECT_EQ(Stored(), "-|2|q|h|a|n");
  EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{"boom T10034"});
}

TEST_F(OutboundTest, ASaveShowsWhyTheKeyCantBeOpenedAndWritesNothing) {
  const std::pair<Tests::Fault, Texts> rows[] = {
      {{"RegUtil.SetCurrHive", 0}, {"T10014[]", "T10015 "}},
      {{"RegUtil.SetCurrPath", 0}, {"T10016[" + kVersionText + "]", "T10015 "}},
      {{"RegUtil.AddKey", 0}, {"T10013[Email]"}},
      {{"RegUtil.AddKey", 0, boom}, {"boom"}},
      {{"RegUtil.DropToSubKey", 0}, {"T10016[" + kOutboundText + "]"}}};
  for (const auto& [fault, boxes] : rows) {
    Plan({fault});
    EXPECT_FALSE(SaveMapiOutbound(u"p"));
    EXPECT_EQ(world.Toolkit.TakeBoxes(), boxes);
    EXPECT_FALSE(SaveSmtpOutbound(u"h", u"a", u"n"));
    EXPECT_EQ(world.Toolkit.TakeBoxes(), boxes);
    EXPECT_EQ(Stored(), "-|-|-|-|-|-");
  }
}

TEST_F(OutboundTest, TheEnablingValueGoesToTheKeyOfTheCursor) {
  const struct {
    std::vector<Tests::Fault> Faults;
    bool Result;
    Texts Boxes;
    const char *AtVersionKey, *AtOutboundKey;
  } rows[] = {{{}, true, {}, "(none)", "True"},
              {{{"RegUtil.SetCurrPath", 1}}, false, {"T10016[" + kVersionText + "]"}, "(none)", "(none)"},
              {{{"RegUtil.AddKey"}}, true, {"T10013 "}, "True", "(none)"},
              {{{"RegUtil.DropToSubKey"}}, true, {"T10016[" + kOutboundText + "]"}, "True", "(none)"},
              {{{"RegUtil.SetCurrPath", 2, boom}}, false, {}, "(none)", "(none)"},
              {{{"RegUtil.AddKey", 1, boom}}, false, {}, "(none)", "(none)"},
              {{{"RegUtil.AddOrUpdateValue"}}, true, {}, "(none)", "(none)"},
              {{{"RegUtil.AddOrUpdateValue", 1, boom}}, true, {"boom T10034"}, "(none)", "(none)"}};
  const auto at = [&](StringView key) {
    return world.Registry(Hive::CurrentUser, key, SendingValue::kEnabled);
  };
  for (const auto& row : rows) {
    RegistryStore::DeleteKey(Hive::CurrentUser, RegistryPath::kTalvane);
    RegistryStore::CreateKey(Hive::CurrentUser, RegistryPath::kTalvane);
    Plan(row.Faults);
    EXPECT_EQ(SetDiscussionEmailEnabled(true), row.Result);
    EXPECT_EQ(world.Toolkit.TakeBoxes(), row.Boxes);
    EXPECT_EQ(at(RegistryPath::kTalvane), row.AtVersionKey);
    EXPECT_EQ(at(RegistryPath::kOutbound), row.AtOutboundKey);
  }
}

TEST_F(OutboundTest, ProfilesLieOnThePathOfThePlatform) {
  AddProfile(u"short");
  AddProfile(u"long", u"Windows NT\\CurrentVersion\\");
  for (const auto& [platform, profile] : {std::pair(u"NT", u"long"), {u"nt", u"short"}, {u"", u"short"}}) {
    world.Services.Instead["TvGeneralServices.General"] = [name = platform] {
      return std::make_shared<Tests::ScriptedGeneral>(name);
    };
    Value profiles{Array()};
    ASSERT_TRUE(GetMAPIProfiles(profiles));
    ASSERT_EQ(profiles.ToArray().size(), 1U);
    EXPECT_TEXT(profile, profiles.ToArray()[0].ToString());
  }
}

TEST_F(OutboundTest, MissingProfilesAreReportedOnlyAfterARaisedFailure) {
  Value profiles{Array()}, none;
  EXPECT_FALSE(GetMAPIProfiles(profiles)) << "a machine without the key";
  AddProfile(u"p");
  EXPECT_FALSE(GetMAPIProfiles(none)) << "no collection";
  for (const char* member : {"General.SystemInfo", "RegUtil.EnumKeys"}) {
    Plan({{member, 1, false}, {member, 2, boom}});
    EXPECT_FALSE(GetMAPIProfiles(profiles));
    EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{});
    EXPECT_FALSE(GetMAPIProfiles(profiles));
    EXPECT_EQ(world.Toolkit.TakeBoxes(), Texts{"boom"});
  }
}

}  // namespace
}  // namespace TvEmailServices
