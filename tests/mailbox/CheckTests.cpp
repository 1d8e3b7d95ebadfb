#include "src/mailbox/ProjectCheck.h"
#include "tests/mailbox/ScriptedProject.h"

namespace Tests {
namespace {

TEST(ProjectCheck, AcceptsAProvedLogonUnderTheProjectsOwnName) {
  // path; user id; password; mailbox; existing key; faults; boxes; mailbox afterwards; keys listed
  for (const Strings& row : Table(R"(
    Apollo.TVS ; ann ; word ;        ;        ;                        ;           ; Apollo ; yes
    Apollo.TVS ; ANN ; word ; New    ; New    ;                        ;           ; Apollo ; yes
    Apollo.TVS ; ann ; word ; APOLLO ; Apollo ;                        ;           ; Apollo ; no
    Apollo.TVS ; ann ; word ; New    ; aPOLLO ;                        ; [10037]_  ; New    ; yes
    Apollo.TVS ; ann ; word ; New    ;        ; RegUtil.EnumKeys       ; [10036]_  ; New    ; yes
    Apollo.TVS ; ann ; word ; New    ;        ; RegUtil.EnumKeys!      ; Disk full ; New    ; yes
    Apollo.TVS ; ann ; word ; New    ;        ; -RegUtil ; [10044|TvGeneralServices.Dll] / [10036]_ ; New ; no
    Apollo.TVS ; ann ; bad  ; New    ;        ;                        ; [10001]_  ; New    ; no
    Apollo.TVS ;     ; word ; New    ;        ;                        ; [10039]_  ; New    ; no
    Apollo.TVS ;     ; word ; New    ;        ; Files.CheckTVSFilePath!; Disk full ; New    ; no
    Apollo.TVS ;     ; word ; New    ;        ; -Files ; [10044|TvGeneralServices.Dll] ; New ; no
    Apollo.TVS ; ann ; word ; New    ;        ; -Talvane40 ; [10044|Talvane40.Dll] ; New    ; no
)")) {
    SCOPED_TRACE(row[5] + " telling " + row[6]);
    MailboxWorld world;
    world.MakeProject();
    if (!row[4].empty()) world.Store(FromUtf8(row[4]), {}, {});
    if (row[5] == "-Talvane40")
      world.Services.MissingClasses = {TalvaneApplicationClass, TalvaneApplicationFactoryClass};
    world.Watch(row[5]);
    String mailBox = FromUtf8(row[3]);
    EXPECT_EQ(row[6].empty(), CheckProjectCredentials(world.PathOf(row[0]), FromUtf8(row[1]),
                                                      FromUtf8(row[2]), mailBox, nullptr));
    EXPECT_EQ(BoxTexts(row[6]), world.Boxes());
    EXPECT_EQ(row[7], Utf8(mailBox));
    EXPECT_EQ(row[8] == "yes" ? 1u : 0u, world.Services.CallsOf("RegUtil.EnumKeys").size());
  }
}

TEST(ProjectCheck, ShowsWhyAPathIsRefusedAndLeavesTheProjectLibraryAlone) {
  MailboxWorld world;
  String mailBox = u"New";
  EXPECT_FALSE(CheckProjectCredentials(world.PathOf("Missing.TVS"), u"ann", u"word", mailBox, nullptr));
  EXPECT_EQ(1u, world.Boxes().size());
  EXPECT_EQ(Strings{"TvGeneralServices.Files"}, world.Services.Created);
}

TEST(ProjectCheck, NamesTheMailBoxBeforeItAsksWhetherOneIsAllowed) {
  // operation that fails; boxes; mailbox afterwards
  for (const Strings& row : Table(R"(
                     ; [10000]_  ; Apollo
    IsMailBoxAllowed ; Disk full ; Apollo
    GetName          ; Disk full ; New
)")) {
    MailboxWorld world;
    ScriptedProject::In(world)->Raising = row[0];
    world.MakeProject();
    String mailBox = u"New";
    EXPECT_FALSE(CheckProjectCredentials(world.PathOf("Apollo.TVS"), u"ann", u"word", mailBox, nullptr));
    EXPECT_EQ(BoxTexts(row[1]), world.Boxes());
    EXPECT_EQ(row[2], Utf8(mailBox));
  }
}

// A registry with a given list of keys.
class ListedRegistry : public Object {
 public:
  explicit ListedRegistry(Value list) : list_(std::move(list)) {}
  Value Call(StringView member, std::span<Value> arguments) override {
    if (member == u"EnumKeys") arguments[0] = list_;
    return true;
  }

 private:
  Value list_;
};

TEST(MailBoxName, IsFreeAmongAsManyKeysAsA16BitCountHolds) {
  MailboxWorld world;
  Value list;
  world.Services.Instead["TvGeneralServices.RegUtil"] = [&] {
    return std::make_shared<ListedRegistry>(list);
  };
  list = Array(32767, u"Other");
  EXPECT_TRUE(IsMailBoxNameFree(u"Apollo"));
  for (const Value& none : {Value(), Value(ObjectRef())}) {
    list = none;
    EXPECT_FALSE(IsMailBoxNameFree(u"Apollo"));
    EXPECT_EQ(BoxTexts("[10036]_"), world.Boxes());
  }
  list = Array(32768, u"Apollo");
  EXPECT_FALSE(IsMailBoxNameFree(u"Apollo"));
  const Strings boxes = world.Boxes();
  ASSERT_EQ(1u, boxes.size());
  EXPECT_TRUE(boxes[0].starts_with("Overflow")) << boxes[0];
}

}  // namespace
}  // namespace Tests
