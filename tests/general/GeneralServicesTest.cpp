// RegUtil, RegValue and General of the real library.
#include "platform/contracts/GeneralServices.h"

#include <sys/utsname.h>

#include "runtime/RegistryStore.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

constexpr StringView kParent = u"Software\\Ostrand Software\\Email\\MailBoxes";

class GeneralServices : public testing::Test {
 protected:
  static RegUtil NewCursor() { return RegUtil(Services().CreateByName(u"TvGeneralServices.RegUtil")); }
  static RegValue NewValue(StringView name = {}, Value content = {}) {
    RegValue value(Services().CreateByName(u"TvGeneralServices.RegValue"));
    value.SetValueName(name);
    value.SetValue(std::move(content));
    return value;
  }
  static RegUtil AtParent() {
    RegUtil cursor = NewCursor();
    EXPECT_TRUE(cursor.SetCurrHive(Hive::LocalMachine));
    EXPECT_TRUE(cursor.SetCurrPath(kParent));
    return cursor;
  }
  static std::vector<std::string> KeysOf(const RegUtil& cursor) {
    Value names = Array{Value(u"old")};
    EXPECT_TRUE(cursor.EnumKeys(names));
    std::vector<std::string> texts;
    for (const Value& name : names.ToArray()) texts.push_back(Utf8(name.ToString()));
    return texts;
  }

  World world_;
};

TEST_F(GeneralServices, TheCursorMovesOnlyToKeysThatExist) {
  const RegUtil cursor = AtParent();
  EXPECT_TRUE(cursor.AddKey(u"Apollo"));
  EXPECT_TRUE(cursor.AddKey(u"APOLLO"));
  EXPECT_EQ(KeysOf(cursor), std::vector<std::string>{"Apollo"});
  EXPECT_FALSE(cursor.DropToSubKey(u"Gemini"));
  EXPECT_FALSE(cursor.SetCurrPath(u"Software\\Nothing"));
  EXPECT_FALSE(cursor.SetCurrPath(String(kParent) + u"\\"));
  EXPECT_EQ(KeysOf(cursor), std::vector<std::string>{"Apollo"});
  EXPECT_TRUE(cursor.DropToSubKey(u"apollo"));
  EXPECT_EQ(KeysOf(cursor), std::vector<std::string>{});
  EXPECT_TRUE(cursor.SetCurrPath(u"software\\OSTRAND software"));
  EXPECT_EQ(KeysOf(cursor), std::vector<std::string>{"Email"});
}

TEST_F(GeneralServices, WithoutAHiveNothingIsReached) {
  const RegUtil cursor = NewCursor();
  const RegValue value = NewValue();
  Value names = Array();
  EXPECT_FALSE(cursor.SetCurrPath(u"Software") || cursor.AddKey(u"K") || cursor.DropToSubKey(u"Software") ||
               cursor.EnumKeys(names) || cursor.DeleteKey(u"K") || cursor.GetValue(value) ||
               cursor.AddOrUpdateValue(value));
  EXPECT_FALSE(cursor.SetCurrHive(static_cast<Hive>(0x80000000)));
  EXPECT_TRUE(CallWith(*cursor.Reference(), u"SetCurrHive", {Value(2147483650.0)}).ToBool());
  EXPECT_TRUE(cursor.SetCurrPath(kParent));
}

TEST_F(GeneralServices, ANameThatNoKeyCanHaveIsRefusedByFalse) {
  const RegUtil cursor = AtParent();
  EXPECT_TRUE(cursor.AddKey(u"A"));
  for (const String& name :
       {String(), String(u"A\\B"), String(u"A\\"), String(u"A\0", 2), String(256, u'n')}) {
    EXPECT_FALSE(cursor.AddKey(name)) << Utf8(name);
    EXPECT_FALSE(cursor.DropToSubKey(name)) << Utf8(name);
    EXPECT_FALSE(cursor.DeleteKey(name)) << Utf8(name);
  }
  EXPECT_EQ(KeysOf(cursor), std::vector<std::string>{"A"});
}

TEST_F(GeneralServices, ADeletedKeyIsGoneWithItsValuesAndKeysAlsoTwice) {
  const RegUtil cursor = AtParent();
  const RegUtil inside = AtParent();
  cursor.AddKey(u"Apollo");
  inside.DropToSubKey(u"Apollo");
  EXPECT_TRUE(inside.AddKey(u"Sub"));
  EXPECT_TRUE(inside.AddOrUpdateValue(NewValue(u"v", u"text")));
  EXPECT_TRUE(cursor.DeleteKey(u"apollo"));
  EXPECT_TRUE(cursor.DeleteKey(u"apollo"));
  EXPECT_FALSE(inside.AddOrUpdateValue(NewValue(u"v", u"text")));
  EXPECT_FALSE(inside.AddKey(u"Sub"));
  Value names = Array{Value(u"old")};
  EXPECT_FALSE(inside.EnumKeys(names));
  EXPECT_TRUE(names.ToArray().empty());
  EXPECT_EQ(KeysOf(cursor), std::vector<std::string>{});
}

TEST_F(GeneralServices, AValueComesBackWithItsTypeAndAnAbsentOneChangesNothing) {
  const RegUtil cursor = AtParent();
  EXPECT_TRUE(cursor.AddOrUpdateValue(NewValue(u"Text", 12)));
  const RegValue number = NewValue(u"Number", u"12");
  number.SetDataType(4);
  EXPECT_TRUE(cursor.AddOrUpdateValue(number));
  const RegValue read = NewValue(u"number");
  EXPECT_TRUE(cursor.GetValue(read));
  EXPECT_FALSE(read.Value().IsString());
  EXPECT_EQ(read.DataType(), 4);
  read.SetValueName(u"TEXT");
  EXPECT_TRUE(cursor.GetValue(read));
  EXPECT_TRUE(read.Value().IsString());
  EXPECT_EQ(read.DataType(), RegValue::StringType);
  read.SetValueName(u"Absent");
  EXPECT_FALSE(cursor.GetValue(read));
  EXPECT_TEXT(u"12", read.Value().ToString());
  number.SetDataType(9);
  EXPECT_THROW(cursor.AddOrUpdateValue(number), Failure);
  EXPECT_THROW(cursor.GetValue(RegValue()), Failure);
}

TEST_F(GeneralServices, ARegistryThatIsGoneIsAFailureThatNamesItsFile) {
  const RegUtil cursor = AtParent();
  std::filesystem::remove(ToUtf8(Runtime::RegistryStore::FileOf(Hive::LocalMachine)));
  EXPECT_PRED2(Holds, FailureText([&] { cursor.AddKey(u"Apollo"); }), "machine.registry");
}

TEST_F(GeneralServices, SystemInfoTellsOfThisSystem) {
  const General general(Services().CreateByName(u"TvGeneralServices.General"));
  Value strings[6];
  EXPECT_TRUE(general.SystemInfo(strings));
  utsname system{};
  uname(&system);
  EXPECT_TEXT(u"Linux", strings[General::PlatformString].ToString());
  EXPECT_EQ(Utf8(strings[3].ToString()), system.release);
  EXPECT_TRUE(strings[General::VersionString].IsString());
}

}  // namespace
}  // namespace Tests
