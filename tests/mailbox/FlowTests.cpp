#include "src/mailbox/MailboxFlows.h"
#include "tests/dialogs/DialogWorld.h"
#include "tests/mailbox/MailboxWorld.h"

namespace Tests {
namespace {

const std::string kSmtpText =
    "[EMail]\nTransportID=2\nSMTPHostName=old.example.org\nRealName=\nEMailAddress=old@example.org\n";

// The section of a project file that a table's word means.
std::string SectionText(const std::string& word) {
  static const std::map<std::string, std::string> texts = {
      {"", ""},
      {"x", kSmtpText},
      {"mapi", "[EMail]\nTransportID=1\nMAPIProfile=p\n"},
      {"half", "[EMail]\nTransportID=2\nSMTPHostName=h\n"},
      {"number", "[EMail]\nTransportID=two\n"}};
  return texts.at(word);
}

// The content of a record or section that a table's word means.
std::string ContentOf(const std::string& word) {
  static const std::map<std::string, std::string> words = {
      {"old section", "2||old.example.org||old@example.org"},
      {"new section", "2||mail.example.org|Apollo Mail|apollo@example.org"},
      {"old record", "Old.TVS|old|oldword"},
      {"new record", "Apollo.TVS|ann|word"},
      {"new path, old rest", "Apollo.TVS|old|oldword"},
      {"path alone", "Apollo.TVS|(none)|(none)"}};
  const auto found = words.find(word);
  return found == words.end() ? word : found->second;
}

TEST(ProjectEmailSettings, AreRefusedBeforeAnythingIsWritten) {
  // transport; profile; host; address; faults; boxes
  for (const Strings& row : Table(R"(
    MAPI   ;   ; h ; a ;                         ; [10019] [10018]
    SMTP   ; p ;   ;   ;                         ; [10019] [10021]
    SMTP   ; p ; h ;   ;                         ; [10019] [10020]
    Pigeon ; p ; h ; a ;                         ; [10019] [10022]
    SMTP   ; p ; h ; a ; Files.RetrieveTVSFile?  ; [10019] [10048]
    SMTP   ; p ; h ; a ; Files.RetrieveTVSFile!  ; Disk full / [10019] [10048]
    SMTP   ; p ; h ; a ; -Files                  ; [10044|TvGeneralServices.Dll] / [10019] [10048]
    SMTP   ; p ; h ; a ; ProjectFile.CreateKey!  ; Disk full
)")) {
    SCOPED_TRACE(row[5]);
    MailboxWorld world;
    const String path = world.MakeProjectFile("Apollo.TVS", kSmtpText);
    world.Watch(row[4]);
    EXPECT_FALSE(WriteProjectEmailSettings(path, FromUtf8(row[0]), FromUtf8(row[1]), FromUtf8(row[2]),
                                           FromUtf8(row[3]), u"r"));
    EXPECT_EQ(BoxTexts(row[5]), world.Boxes());
    EXPECT_EQ(row[4].starts_with("ProjectFile") ? 1u : 0u, world.Services.CallsOf("ProjectFile.").size());
  }
}

TEST(ProjectEmailSettings, AreWrittenKeyByKeyAndKeepThoseOfTheOtherTransport) {
  MailboxWorld world;
  const String path = world.MakeProjectFile("Apollo.TVS");
  world.Watch();
  ASSERT_TRUE(WriteProjectEmailSettings(path, u"sMtP", u"p", u"h", u"a", u""));
  ASSERT_TRUE(WriteProjectEmailSettings(path, u"mapi", u"p", u"x", u"x", u"x"));
  const Strings calls = {"ProjectFile.CreateKey(EMail, TransportID, 2)",
                         "ProjectFile.CreateKey(EMail, SMTPHostName, h)",
                         "ProjectFile.CreateKey(EMail, RealName, )",
                         "ProjectFile.CreateKey(EMail, EMailAddress, a)",
                         "ProjectFile.Save()",
                         "ProjectFile.CreateKey(EMail, TransportID, 1)",
                         "ProjectFile.CreateKey(EMail, MAPIProfile, p)",
                         "ProjectFile.Save()"};
  EXPECT_EQ(calls, world.Services.CallsOf("ProjectFile."));
  EXPECT_EQ("1|p|h||a", world.Section("Apollo.TVS"));
}

TEST(ProjectEmailSettings, AreValidByTheKeysOfTheirTransport) {
  // keys; validity, then number, name, profile, real name, address and host as the out values hold them
  for (const Strings& row : Table(R"(
    TransportID=1 MAPIProfile=p               ; true 1|MAPI|p|-|-|-
    TransportID=1 SMTPHostName=h              ; false 1|MAPI||-|-|-
    TransportID=2 SMTPHostName=h EMailAddress=a ; true 2|SMTP|-||a|h
    TransportID=2 RealName=r EMailAddress=a   ; false 2|SMTP|-|r|a|
    TransportID=2 RealName=r SMTPHostName=h   ; false 2|SMTP|-|r||h
    TransportID=3 MAPIProfile=p               ; false 3|-|-|-|-|-
    TransportID=two                           ; false 9|-|-|-|-|-
)")) {
    MailboxWorld world;
    std::string keys = row[0];
    std::replace(keys.begin(), keys.end(), ' ', '\n');
    const String path = world.MakeProjectFile("Apollo.TVS", "[email]\n" + keys + "\n");
    for (const bool report : {false, true}) {
      ProjectEmailSettings read{9, u"-", u"-", u"-", u"-", u"-"};
      world.Watch();
      const std::string valid = ReadProjectEmailSettings(path, read, report) ? "true " : "false ";
      EXPECT_EQ(row[1], valid + std::to_string(read.TransportNumber) + "|" + Utf8(read.TransportName) + "|" +
                            Utf8(read.MAPIProfile) + "|" + Utf8(read.RealName) + "|" +
                            Utf8(read.EMailAddress) + "|" + Utf8(read.HostName.ToString()));
      const Strings calls = world.Services.CallsOf("ProjectFile.");
      EXPECT_FALSE(calls.empty());
      EXPECT_EQ(calls, world.Services.CallsOf("ProjectFile.KeyValue(Email, "));
      const Strings boxes = world.Boxes();
      ASSERT_EQ(report && read.TransportNumber == 9 ? 1u : 0u, boxes.size());
      if (!boxes.empty()) {
        EXPECT_TRUE(boxes[0].ends_with("  " + BoxTexts("[10051|Apollo.TVS]")[0])) << boxes[0];
      }
    }
  }
}

TEST(ProjectEmailSettings, NameTheirTransportsByTextsOfTheirOwn) {
  InDialogWorld([](World& world) {
    const String path = world.PathOf("Apollo.TVS");
    WriteFile(Utf8(path), "[Project]\nFormat=1\nName=Apollo\n" + kSmtpText);
    ProjectEmailSettings read;
    EXPECT_TRUE(ReadProjectEmailSettings(path, read, false));
    EXPECT_TEXT(u"T9101", read.TransportName);
    EXPECT_FALSE(WriteProjectEmailSettings(path, u"T9102", u"p", u"h", u"a", u"r"));
    EXPECT_TRUE(WriteProjectEmailSettings(path, u"t9101", u"", u"h", u"a", u"r"));
    EXPECT_TRUE(WriteProjectEmailSettings(path, u"t9100", u"p", u"", u"", u""));
    EXPECT_TRUE(ReadProjectEmailSettings(path, read, false));
    EXPECT_TEXT(u"T9100", read.TransportName);
    EXPECT_EQ(Strings{"T10019 T10022"}, world.Toolkit.TakeBoxes());
  });
}

TEST(ProjectEmailSettings, AreDeletedAsAWholeSection) {
  const std::string noRecord =
      "[10016|Software\\Ostrand Software\\Email\\MailBoxes\\Other] / [2057]  TVSFilePath";
  // mailbox; section before; faults; result; boxes with reporting; calls; section after
  for (const Strings& row : Table(R"(
    Apollo ; old ;                          ; done    ;                   ; Section(EMail) DeleteSection(EMail) Save() ; none
    Apollo ;     ;                          ; done    ;                   ; Section(EMail) ; none
    Apollo ; old ; ProjectFile.DeleteSection; refused ;                   ; Section(EMail) DeleteSection(EMail) ; old section
    Apollo ; old ; ProjectFile.Save!        ; refused ; Disk full [10058] ; Section(EMail) DeleteSection(EMail) Save() ; old section
    Other  ; old ;                          ; refused ; )" +
                                  noRecord + R"( ;                          ; old section
)")) {
    for (const bool report : {false, true}) {
      SCOPED_TRACE(row[5]);
      MailboxWorld world;
      world.Store(u"Apollo", u"TVSFilePath",
                  world.MakeProjectFile("Apollo.TVS", row[1].empty() ? "" : kSmtpText));
      world.Watch(row[2]);
      EXPECT_EQ(row[3] == "done", DeleteProjectEmailSettings(FromUtf8(row[0]), report));
      EXPECT_EQ(report ? BoxTexts(row[4]) : Strings(), world.Boxes());
      std::string calls;
      for (const std::string& call : world.Services.CallsOf("ProjectFile."))
        calls += (calls.empty() ? "" : " ") + call.substr(12);
      EXPECT_EQ(row[5], calls);
      EXPECT_EQ(row[0] == "Apollo" ? 1u : 0u, world.Services.CallsOf("Files.RetrieveTVSFile").size());
      EXPECT_EQ(ContentOf(row[6]), world.Section("Apollo.TVS"));
    }
  }
}

// A save is given a path, which plays no part without a user id, and a pathless one the user id alone.
bool Update(const std::string& flow, MailboxWorld& world, const ObjectRef& session) {
  return UpdateMailBox(u"Apollo", session, flow == "pathless" ? String() : world.PathOf("Apollo.TVS"),
                       flow == "save" ? u"" : u"ann", u"word", flow == "add");
}

TEST(MailBoxFlow, ShowsWhatItCannotUndo) {
  const std::string noRecord =
      "[10016|Software\\Ostrand Software\\Email\\MailBoxes\\Apollo] / [2057]  TVSFilePath / [10048]_";
  // flow; record before; section before; the session's transport; faults; boxes; record; section
  for (const Strings& row : Table(R"(
    add ;   ;   ; SMTP ;                                  ;                   ; new record ; new section
    add ;   ;   ; -    ;                                  ; [10019] [10022]   ; none ; none
    add ;   ; x ; -    ;                                  ; [10019] [10022]   ; none ; old section
    add ;   ; x ; -    ; ProjectFile.Section?             ; [10019] [10022]   ; none ; none
    add ;   ;   ; -    ; RegUtil.DeleteKey                ; [10019] [10022] / [10047]___[10059] ; new record ; none
    add ;   ;   ; SMTP ; RegUtil.AddKey                   ; [10013|Apollo] / [10047]_[10058]__ ; none ; none
    add ;   ; x ; SMTP ; RegUtil.AddOrUpdateValue         ; [10011]_ / [10047]_[10058]__ ; none ; old section
    add ;   ;   ; SMTP ; RegUtil.AddOrUpdateValue#3       ; [10011]_          ; none ; none
    add ; x ;   ; SMTP ; RegUtil.AddOrUpdateValue         ; [10011]_          ; none ; none
    add ;   ;   ; SMTP ; ProjectFile.Save!                ; Disk full         ; none ; none
    add ;   ;   ; SMTP ; Files.RetrieveTVSFile?#0         ; [10019] [10048] / [10047]_[10058]__ ; none ; none
    add ;   ;   ; SMTP ; Files.RetrieveTVSFile?#0 RegUtil.DeleteKey ; [10019] [10048] / [10047]_[10058]__[10059] ; new record ; none
    change ; x ;   ; SMTP ;                               ;                   ; new record ; new section
    change ; x ; x ; SMTP ; RegUtil.AddKey                ; [10013|Apollo]    ; old record ; old section
    change ; x ; x ; SMTP ; RegUtil.AddOrUpdateValue!#3   ; Disk full [10034] / [10011]_ ; old record ; old section
    change ; x ;   ; SMTP ; RegUtil.AddOrUpdateValue#2 RegUtil.AddOrUpdateValue#3 ; [10011]_ / [10011]_ / [10055]_ ; new path, old rest ; none
    change ;   ;   ; SMTP ; RegUtil.AddOrUpdateValue#2    ; [10011]_ / [10055]_ ; path alone ; none
    change ; x ; x ; -    ;                               ; [10019] [10022]   ; old record ; old section
    change ; x ;   ; -    ;                               ; [10019] [10022] / [10056]_ ; old record ; none
    change ;   ;   ; -    ;                               ; [10019] [10022] / [10055]_ / [10056]_ ; new record ; none
    change ; x ; mapi   ; SMTP ; ProjectFile.Save!        ; Disk full         ; old record ; 1|p|||
    change ; x ; half   ; SMTP ; ProjectFile.Save!        ; Disk full / [10056]_ ; old record ; 2||h||
    change ; x ; number ; SMTP ; ProjectFile.Save!        ; Disk full / [10056]_ ; old record ; two||||
    change ; x ; x ; SMTP ; ProjectFile.Save!             ; Disk full         ; old record ; old section
    change ; x ; x ; SMTP ; ProjectFile.Save!#0           ; Disk full / Disk full / [10056]_ ; old record ; old section
    save ; x ;   ; SMTP ;                                 ;                   ; new path, old rest ; new section
    pathless ; x ; ; SMTP ;                               ;                   ; new path, old rest ; new section
    save ; x ; mapi   ; SMTP ; ProjectFile.Save!          ; Disk full         ; new path, old rest ; 1|p|||
    save ; x ; half   ; SMTP ; ProjectFile.Save!          ; Disk full / [10056]_ ; new path, old rest ; 2||h||
    save ;   ;   ; SMTP ;                                 ; )" +
                                  noRecord + R"( ; none ; none
    save ; x ; x ; -    ;                                 ; [10019] [10022]   ; new path, old rest ; old section
    save ; x ;   ; -    ;                                 ; [10019] [10022] / [10056]_ ; new path, old rest ; none
    save ; x ; x ; SMTP ; ProjectFile.Save!#0             ; Disk full / Disk full / [10056]_ ; new path, old rest ; old section
)")) {
    SCOPED_TRACE(row[0] + " with " + row[4] + " telling " + row[5]);
    MailboxWorld world;
    const String path = world.MakeProjectFile("Apollo.TVS", SectionText(row[2]));
    const String oldPath = world.MakeProjectFile("Old.TVS", kSmtpText);
    if (!row[1].empty())
      WriteMailBoxRecord(row[0] == "change" ? oldPath : path, u"old", u"oldword", u"Apollo");
    world.Watch(row[4]);
    EXPECT_EQ(row[5].empty(), Update(row[0], world, world.SessionWith({.Transport = FromUtf8(row[3])})));
    EXPECT_EQ(BoxTexts(row[5]), world.Boxes());
    EXPECT_EQ(ContentOf(row[6]), world.Record(u"Apollo"));
    EXPECT_EQ(ContentOf(row[7]), world.Section("Apollo.TVS"));
    EXPECT_EQ(ContentOf("old section"), world.Section("Old.TVS")) << "of a project that isn't meant any more";
  }
}

TEST(MailBoxFlow, RefusesASessionThatIsNotComplete) {
  for (const std::string flow : {"add", "change", "save"}) {
    MailboxWorld world;
    world.MakeProjectFile("Apollo.TVS");
    world.Watch();
    const Value nothing{ObjectRef()};
    EXPECT_FALSE(Update(flow, world, nullptr));
    EXPECT_FALSE(Update(flow, world, world.Make("Sess", {{"SendLogon", nothing}, {"User", nothing}})));
    EXPECT_FALSE(
        Update(flow, world, world.Make("Sess", {{"SendLogon", world.Make("", {})}, {"User", nothing}})));
    EXPECT_EQ(BoxTexts("[10054]_ / [10053]_ / [10052]_"), world.Boxes());
    EXPECT_EQ(Strings(), world.Services.CallsOf("RegUtil."));
  }
}

TEST(MailBoxFlow, EndsWithARaisedFailureAndUndoesNothing) {
  for (const std::string flow : {"add", "change"}) {
    MailboxWorld world;
    WriteMailBoxRecord(world.MakeProjectFile("Apollo.TVS"), u"old", u"oldword", u"Apollo");
    const ObjectRef part = world.Make("Part", {{"Transport", u"SMTP"}});
    EXPECT_FALSE(Update(flow, world, world.Make("Sess", {{"SendLogon", part}, {"User", part}})));
    EXPECT_EQ(1u, world.Boxes().size());
    EXPECT_EQ(ContentOf("new record"), world.Record(u"Apollo"));
  }
}

TEST(MailBoxFlow, ReadsAllFiveStringsOfTheSessionOnceTheRecordIsWritten) {
  MailboxWorld world;
  world.MakeProjectFile("Apollo.TVS", "[EMail]\nTransportID=1\n");
  world.Watch();
  ASSERT_TRUE(Update("change", world, world.SessionWith({.Transport = u"MAPI"})));
  std::string order;
  for (const std::string& call : world.Services.Calls) {
    const std::string member = call.substr(0, call.find('('));
    if (std::set<std::string>{"RegUtil.AddOrUpdateValue", "ProjectFile.KeyValue", "ProjectFile.CreateKey",
                              "SendLogon.Transport", "Sess.MAPIProfile", "SendLogon.HostName", "User.Address",
                              "User.RealName"}
            .contains(member))
      order += member.substr(member.find('.') + 1) + " ";
  }
  EXPECT_EQ(
      "AddOrUpdateValue AddOrUpdateValue AddOrUpdateValue KeyValue KeyValue "
      "Transport MAPIProfile HostName Address RealName CreateKey CreateKey ",
      order);
}

TEST(MailBoxFlow, PutsThePasswordBackToTheLetterWhereTheNewOneCannotBeEncoded) {
  MailboxWorld world;
  const String path = world.MakeProjectFile("Apollo.TVS", kSmtpText);
  WriteMailBoxRecord(world.PathOf("Old.TVS"), u"old", u"oldword", u"Apollo");
  const std::string before = world.EncodedPassword(u"Apollo");
  EXPECT_FALSE(UpdateMailBox(u"Apollo", world.SessionWith({}), path, u"ann", u"new~word", false));
  const Strings boxes = world.Boxes();
  ASSERT_EQ(1u, boxes.size());
  EXPECT_TRUE(boxes[0].starts_with("Illegal character found.")) << boxes[0];
  EXPECT_EQ(ContentOf("old record"), world.Record(u"Apollo"));
  EXPECT_EQ(before, world.EncodedPassword(u"Apollo"));
  EXPECT_EQ(ContentOf("old section"), world.Section("Apollo.TVS"));
}

}  // namespace
}  // namespace Tests
