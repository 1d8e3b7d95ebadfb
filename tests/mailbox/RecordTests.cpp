#include "src/mailbox/RegistryValues.h"
#include "tests/mailbox/MailboxWorld.h"

namespace Tests {
namespace {

const std::string kParent = "Software\\Ostrand Software\\Email\\MailBoxes";

TEST(MailBoxRecord, IsWrittenOverTheOldOneAsFarAsNothingFails) {
  // faults; boxes; record
  const auto rows = Table(R"(
                                  ;                                                   ; new.TVS|new|newword
    -RegUtil                      ; [10044|TvGeneralServices.Dll]                     ; old.TVS|old|oldword
    RegUtil.SetCurrHive           ; [10014|]                                          ; old.TVS|old|oldword
    RegUtil.SetCurrPath           ; [10016|Software\Ostrand Software\Email\MailBoxes] ; old.TVS|old|oldword
    RegUtil.AddKey                ; [10013|Apollo]                                    ; old.TVS|old|oldword
    RegUtil.DropToSubKey          ; [10012|Apollo]                                    ; old.TVS|old|oldword
    RegUtil.DropToSubKey!         ; Disk full                                         ; old.TVS|old|oldword
    RegUtil.AddOrUpdateValue      ; [10011]_                                          ; old.TVS|old|oldword
    RegUtil.AddOrUpdateValue#2    ; [10011]_                                          ; new.TVS|old|oldword
    RegUtil.AddOrUpdateValue!#3   ; Disk full [10034] / [10011]_                      ; new.TVS|new|oldword
    -RegValue                     ; [10044|TvGeneralServices.Dll] / [10011]_          ; old.TVS|old|oldword
)");
  const String encoded = ComponentSecurity().Encrypt(u"newword");
  for (const bool restore : {false, true}) {
    for (const Strings& row : rows) {
      SCOPED_TRACE(row[0]);
      MailboxWorld world;
      ASSERT_TRUE(WriteMailBoxRecord(u"old.TVS", u"old", u"oldword", u"Apollo"));
      world.Watch(row[0]);
      EXPECT_EQ(row[1].empty(), restore ? RestoreMailBoxRecord(u"new.TVS", u"new", encoded, u"Apollo")
                                        : WriteMailBoxRecord(u"new.TVS", u"new", u"newword", u"Apollo"));
      EXPECT_EQ(BoxTexts(row[1]), world.Boxes());
      EXPECT_EQ(row[2], world.Record(u"Apollo"));
    }
  }
}

TEST(MailBoxRecord, KeepsThePasswordThatStoodWhenTheNewOneCannotBeEncoded) {
  MailboxWorld world;
  ASSERT_TRUE(WriteMailBoxRecord(u"old.TVS", u"old", u"", u"Apollo"));
  EXPECT_FALSE(WriteMailBoxRecord(u"new.TVS", u"new", u"new~word", u"Apollo"));
  ASSERT_EQ(1u, world.Toolkit.Boxes.size());
  EXPECT_TRUE(world.Toolkit.Boxes[0].Text.starts_with(u"Illegal character found."));
  EXPECT_EQ("new.TVS|new|", world.Record(u"Apollo"));
  String path, userId, encoded;
  EXPECT_TRUE(ReadMailBoxRecord(path, userId, encoded, u"Apollo")) << "an empty password is stored encoded";
}

TEST(RegistryValue, IsFoundOnlyAsANonEmptyStringAndIsGivenInAnyCase) {
  struct Row {
    Value Stored;
    bool Found;
    String Given;
  };
  for (const Row& row : {Row{u"x", true, u"x"}, Row{u"", false, u""}, Row{std::int32_t{12}, false, u"12"},
                         Row{Value(), false, u"before"}}) {
    MailboxWorld world;
    world.Store(u"Apollo", u"Name", row.Stored);
    for (const bool report : {false, true}) {
      Value value(u"before");
      EXPECT_EQ(row.Found, GetRegStringValue(OpenMailBoxKey(u"Apollo", false), u"Name", value, report));
      EXPECT_TEXT(row.Given, value.ToString());
      EXPECT_EQ(report && !row.Found ? BoxTexts("[2057]  Name") : Strings(), world.Boxes());
    }
    world.Watch("RegUtil.GetValue!");
    Value value;
    EXPECT_FALSE(GetRegStringValue(OpenMailBoxKey(u"Apollo", false), u"Name", value, false));
    EXPECT_EQ(Strings{"Disk full"}, world.Boxes());
    EXPECT_FALSE(SetRegStringValue(RegUtil(), u"Name", u"x"));
  }
}

TEST(MailBoxReaders, DifferInWhatTheyTrimAndAccept) {
  struct Row {
    Value Path, UserId, Password;
    std::string ForDialog, ForMessages, ProjectPath;
  };
  const Row rows[] = {
      {u" a.TVS ", u" u ", u" p ", "true a.TVS|u|p", "true  a.TVS | u | p |", "a.TVS"},
      {u" a.TVS", u"", u"p", "false a.TVS|-|-", "true  a.TVS||p|", "a.TVS"},
      {u"a.TVS", u"u", {}, "false a.TVS|u|-", "false a.TVS|u|-|[10029]", "a.TVS"},
      {std::int32_t{7}, u"u", u"p", "false -|-|-", "true 7|u|p|", ""},
  };
  for (const Row& row : rows) {
    MailboxWorld world;
    world.Store(u"Apollo", u"TVSFilePath", row.Path);
    world.Store(u"Apollo", u"DBUID", row.UserId);
    world.Store(u"Apollo", u"DBPWD", row.Password);
    String path, userId, password, error;
    const auto read = [&](auto reader) {
      path = userId = password = u"-";
      const std::string success = reader() ? "true " : "false ";
      return success + Utf8(path) + "|" + Utf8(userId) + "|" + Utf8(password);
    };
    EXPECT_EQ(row.ForDialog, read([&] { return ReadMailBoxRecord(path, userId, password, u"Apollo"); }));
    const std::string logon =
        read([&] { return ReadMailBoxLogon(u"Apollo", path, userId, password, error); });
    EXPECT_EQ(BoxTexts(row.ForMessages)[0], logon + "|" + Utf8(error));
    EXPECT_EQ(row.ProjectPath, Utf8(GetMailBoxProjectPath(u"Apollo", false)));
    EXPECT_EQ(Strings(), world.Boxes());
  }
}

TEST(MailBoxLogon, GivesItsFailureAsATextOnly) {
  // mailbox; faults; error text; what was read by then; boxes
  for (const Strings& row : Table(R"(
    Other  ;                      ; [10015]           ; ||       ;
    Apollo ; RegUtil.SetCurrPath! ; [10015]           ; ||       ;
    Apollo ; -RegValue            ; [10024]           ; ||       ; [10044|TvGeneralServices.Dll]
    Apollo ; RegUtil.GetValue#2   ; [10029]           ; a.TVS||  ;
    Apollo ; RegUtil.GetValue!#3  ; Disk full [10029] ; a.TVS|u| ;
    Apollo ; RegValue.Value*#2    ; Type mismatch: the value can't be used here [10029] ; a.TVS|| ;
)")) {
    SCOPED_TRACE(row[1]);
    MailboxWorld world;
    ASSERT_TRUE(WriteMailBoxRecord(u"a.TVS", u"u", u"p", u"Apollo"));
    world.Watch(row[1]);
    String path, userId, password, error;
    EXPECT_FALSE(ReadMailBoxLogon(FromUtf8(row[0]), path, userId, password, error));
    EXPECT_EQ(BoxTexts(row[2])[0], Utf8(error));
    EXPECT_EQ(row[3], Utf8(path + u"|" + userId + u"|" + password));
    EXPECT_EQ(BoxTexts(row[4]), world.Boxes());
  }
}

TEST(MailBoxProjectPath, IsReportedAsAMissingValueIfItsKeyExists) {
  MailboxWorld world;
  world.Store(u"Half", u"DBUID", u"ann");
  EXPECT_TEXT(u"", GetMailBoxProjectPath(u"Half", true));
  EXPECT_EQ(BoxTexts("[2057]  TVSFilePath"), world.Boxes());
}

TEST(RegistryKey, IsDeletedOrWasNeverThere) {
  // key; faults; result; boxes with reporting; record
  for (const Strings& row : Table(R"(
    Apollo ;                       ; gone    ;                                                    ; none
    Other  ;                       ; gone    ;                                                    ; a.TVS|u|p
    Apollo ; RegUtil.DeleteKey     ; refused ;                                                    ; a.TVS|u|p
    Apollo ; RegUtil.SetCurrPath#2 ; refused ; [10016|Software\Ostrand Software\Email\MailBoxes]  ; a.TVS|u|p
    Apollo ; RegUtil.DeleteKey!    ; refused ; Disk full  [10050|Apollo]                          ; a.TVS|u|p
)")) {
    for (const bool report : {false, true}) {
      SCOPED_TRACE(row[1]);
      MailboxWorld world;
      ASSERT_TRUE(WriteMailBoxRecord(u"a.TVS", u"u", u"p", u"Apollo"));
      world.Watch(row[1]);
      EXPECT_EQ(row[2] == "gone",
                DeleteRegKey(FromUtf8(kParent), Hive::LocalMachine, FromUtf8(row[0]), report));
      EXPECT_EQ(report ? BoxTexts(row[3]) : Strings(), world.Boxes());
      EXPECT_EQ(row[4], world.Record(u"Apollo"));
    }
  }
}

}  // namespace
}  // namespace Tests
