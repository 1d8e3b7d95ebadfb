// The road of a message: what the project is asked, and what the host is told.
#include <thread>

#include "src/mail/EMailManager.h"
#include "src/services/modResource.h"
#include "tests/mail/MemorySiblings.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using namespace TvEmailServices;
using Log = std::vector<std::string>;

const String kSubject = u"Re: Plan (Ostrand Talvane Project Apollo), Ostrand Talvane Discussion 17)";
const String kBadSubject = u"Re: Plan (Ostrand Talvane Project Apollo), Ostrand Talvane Discussion x)";

class HandleMessageTest : public testing::Test {
 protected:
  HandleMessageTest() {
    siblings.Users = {{u"ann@example.org", true, 3},
                      {u"bob@example.org", false, 4},
                      {u"bob@example.org", true, 5},
                      {u"Zoë@example.org", true, 6}};
    siblings.Install(world.Services);
    manager->MailHandler_Initialize(u"  Apollo ", nullptr);
  }

  std::string Handle(StringView sender = u"ann@example.org", const Value& subject = kSubject,
                     const Value& body = u" Yes.\n-- cut -- Old") {
    return Utf8(manager->MailHandler_HandleMessage(MessageOf(SenderOf(sender), subject, body)));
  }

  bool Replied() const { return !siblings.Log.empty() && siblings.Log.back().starts_with("Reply("); }

  World world;
  MemorySiblings siblings;
  std::shared_ptr<EMailManager> manager = std::make_shared<EMailManager>();
};

TEST_F(HandleMessageTest, AGoodMessageBecomesTheReplyOfItsSender) {
  EXPECT_EQ(Handle(), "");
  const Log eachMessage = {"GetUsers",          "GetUsers",
                           "GetLogon",          "SetActingUser(3|1|logon)",
                           "GetDiscussion(17)", "Reply(Re: Plan |Yes.)"};
  Log first = {"CreateApplication", "OpenProject(P.tvs|1|pump|secret|0|3)"};
  first.insert(first.end(), eachMessage.begin(), eachMessage.end());
  EXPECT_EQ(siblings.Log, first);

  siblings.Log.clear();
  EXPECT_EQ(Handle(), "");
  EXPECT_EQ(siblings.Log, eachMessage);
}

TEST_F(HandleMessageTest, EveryWayThatAMessageCanTakeHasItsOwnResult) {
  const struct {
    const char* What;
    std::function<void(MemorySiblings&, TestServices&)> Arrange;
    const char16_t* Sender;
    String Subject;
    std::string Result;
    bool Replies;
  } rows[] = {
      {"an address in another case", {}, u"ANN@Example.ORG", kSubject, "", true},
      {"letters beyond ASCII in another case", {}, u"ZOË@example.org", kSubject, "", true},
      {"no application",
       [](MemorySiblings&, TestServices& p) {
         p.MissingClasses = {TalvaneApplicationClass, TalvaneApplicationFactoryClass};
       },
       u"ann@example.org", kSubject, "T10006 T10044(Talvane40.Dll|)", false},
      {"no record", [](MemorySiblings& s, TestServices&) { s.Record.clear(); }, u"ann@example.org", kSubject,
       "T10006 T10015", false},
      {"no registry value object",
       [](MemorySiblings&, TestServices& p) { p.Missing = {"TvGeneralServices.RegValue"}; },
       u"ann@example.org", kSubject, "T10006 T10024", false},
      {"a value is missing", [](MemorySiblings& s, TestServices&) { s.Record.erase(u"DBUID"); },
       u"ann@example.org", kSubject, "T10006 T10029", false},
      {"the project doesn't open", [](MemorySiblings& s, TestServices&) { s.Nothing = {"OpenProject"}; },
       u"ann@example.org", kSubject, "T10006 T10030(P.tvs|)wrong password", false},
      {"opening fails",
       [](MemorySiblings& s, TestServices&) {
         s.Failures = {{"OpenProject", "disk gone"}};
       },
       u"ann@example.org", kSubject, "disk gone T10006", false},
      {"no users", [](MemorySiblings& s, TestServices&) { s.Nothing = {"GetUsers"}; }, u"ann@example.org",
       kSubject, "T10006 T10061", false},
      {"an unknown sender", {}, u"eve@example.org", kSubject, "T10006 T10032", true},
      {"a sender whose mail isn't accepted", {}, u"bob@example.org", kSubject, "T10006 T10062", true},
      {"a walk that fails",
       [](MemorySiblings& s, TestServices&) {
         s.Failures = {{"Count", "users gone"}};
       },
       u"ann@example.org", kSubject, "T10006 users gone", true},
      {"an unknown sender and a bad subject", {}, u"eve@example.org", kBadSubject, "T10006 T10005", false},
      {"a sender who can't act", [](MemorySiblings& s, TestServices&) { s.Nothing = {"SetActingUser"}; },
       u"ann@example.org", kSubject, "T10006 T10033", false},
      {"no logon", [](MemorySiblings& s, TestServices&) { s.Nothing = {"GetLogon"}; }, u"ann@example.org",
       kSubject, "Object not set T10006", false},
      {"an unreadable subject", {}, u"ann@example.org", u"Hello", "T10006 Invalid argument", false},
      {"no such discussion", [](MemorySiblings& s, TestServices&) { s.Nothing = {"GetDiscussion"}; },
       u"ann@example.org", kSubject, "T10006 T10007", false},
      {"a failing discussion of an unknown sender",
       [](MemorySiblings& s, TestServices&) {
         s.Failures = {{"GetDiscussion", "locked"}};
       },
       u"eve@example.org", kSubject, "locked T10006", false},
      {"a failing reply",
       [](MemorySiblings& s, TestServices&) {
         s.Failures = {{"Reply", "disk full"}};
       },
       u"ann@example.org", kSubject, "disk full T10006", true}};
  const MemorySiblings usual = siblings;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    siblings = usual;
    world.Services.Missing.clear();
    world.Services.MissingClasses.clear();
    manager->MailHandler_Finalize();
    if (row.Arrange) row.Arrange(siblings, world.Services);
    EXPECT_EQ(Handle(row.Sender, row.Subject), row.Result);
    EXPECT_EQ(Replied(), row.Replies);
  }
}

TEST_F(HandleMessageTest, NothingIsReadOfAMessageThatIsRefusedBefore) {
  const auto handle = [&](const ObjectRef& message) {
    return Utf8(manager->MailHandler_HandleMessage(message));
  };
  const auto part = [](Properties::Map values) { return ObjectRef(std::make_shared<Properties>(values)); };
  const auto mail = [&](Properties::Map values) { return part({{u"Message", part(std::move(values))}}); };
  const Value ann = SenderOf(u"ann@example.org");

  EXPECT_EQ(handle(mail({{u"From", ObjectRef()}})), "T10006 T10060");
  EXPECT_EQ(handle(mail({{u"From", ann}})), "The object has no such member: subject T10006");
  EXPECT_EQ(handle(mail({{u"From", ann}, {u"subject", kSubject}})),
            "The object has no such member: body T10006");
  siblings.Nothing = {"GetDiscussion"};
  EXPECT_EQ(handle(mail({{u"From", ann}, {u"subject", kSubject}})), "T10006 T10007");
  EXPECT_EQ(handle(part({})), "The object has no such member: Message T10006");
  EXPECT_EQ(handle(part({{u"Message", ObjectRef()}})), "Object not set T10006");
  EXPECT_EQ(handle(nullptr), "Object not set T10006");
}

TEST_F(HandleMessageTest, BodiesThatAreEmptyReplyAndBodiesThatAreTooLongDont) {
  EXPECT_EQ(Handle(u"ann@example.org", kSubject, u"-- cut -- quoted"), "");
  EXPECT_EQ(siblings.Log.back(), "Reply(Re: Plan |)");
  siblings.Log.clear();
  EXPECT_TRUE(Handle(u"ann@example.org", kSubject, String(32767, u'a')).starts_with("T10006 Overflow"));
  EXPECT_FALSE(Replied());
}

TEST_F(HandleMessageTest, WhatIsOpenStaysOpenUntilItIsFinalized) {
  siblings.Nothing = {"OpenProject"};
  Handle();
  siblings.Nothing.clear();
  siblings.Record[u"TVSFilePath"] = u"Q.tvs";
  siblings.Log.clear();
  EXPECT_EQ(Handle(), "");  // tried again, with the record as it is now
  EXPECT_EQ(siblings.Log.front(), "OpenProject(Q.tvs|1|pump|secret|0|3)");

  siblings.Log.clear();
  const auto record = std::exchange(siblings.Record, {});
  EXPECT_EQ(Handle(), "T10006 T10015");  // the record counts for every message
  siblings.Record = record;
  siblings.Record[u"DBPWD"] = u"\x7F";
  EXPECT_TRUE(Handle().ends_with(" T10006"));  // and so does its password
  siblings.Record = record;
  EXPECT_EQ(Handle(), "");
  EXPECT_EQ(siblings.Log.front(), "GetUsers");

  siblings.Log.clear();
  manager->MailHandler_Finalize();
  manager->MailHandler_Finalize();
  EXPECT_EQ(Handle(), "");  // the same mailbox, with everything opened anew
  EXPECT_EQ(siblings.Log[0], "CreateApplication");
  EXPECT_TRUE(siblings.Log[1].starts_with("OpenProject("));
}

TEST_F(HandleMessageTest, WithoutTextsAFailureStillSaysSomethingTwice) {
  world.Services.Missing = {"TvResourceServices.Resource"};
  std::string result;
  std::thread([&] { result = Handle(u"eve@example.org"); }).join();
  const std::string text = Utf8(ResourceServiceMissing);
  EXPECT_EQ(result, text + " " + text);
  EXPECT_TRUE(world.Toolkit.Boxes.empty());
}

}  // namespace
}  // namespace Tests
