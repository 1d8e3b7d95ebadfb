// MailHandler_HandleMessage: the calls to the project, and the results.
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
const String kAnn = u"ann@example.org", kBob = u"bob@example.org", kEve = u"eve@example.org";

struct FailingUser : MemorySiblings::User {
  FailingUser() : User(kAnn, true, 1) {}
  Boolean IsMailAccepted() override { throw Failure(57, {}, u"user gone"); }
};

class HandleMessageTest : public testing::Test {
 protected:
  HandleMessageTest() {
    const auto add = [&](const String& address, bool accepted, std::int32_t key) {
      siblings.Users.push_back(std::make_shared<MemorySiblings::User>(address, accepted, key));
    };
    add(kAnn, true, 3);
    add(kBob, false, 4);
    add(kBob, true, 5);
    add(u"Zoë@example.org", true, 6);
    siblings.Install(world.Services);
    manager.MailHandler_Initialize(u"  Apollo ", nullptr);
  }

  std::string Handle(const String& sender = kAnn, const String& subject = kSubject,
                     const String& body = u" Yes.\n-- cut -- Old") {
    return Utf8(manager.MailHandler_HandleMessage(MessageOf(sender, subject, body)));
  }

  bool Replied() const { return !siblings.Log.empty() && siblings.Log.back().starts_with("Reply("); }

  World world;
  MemorySiblings siblings;
  EMailManager manager;
};

TEST_F(HandleMessageTest, AGoodMessageBecomesTheReplyOfItsSender) {
  Log expected = {"CreateApplication()", "OpenProject(P.tvs|1|pump|secret|0|3)"};
  const Log eachMessage = {
      "GetUsers()",        "GetUsers()",           "Count()", "GetLogon()", "SetActingUser(3|1|logon)",
      "GetDiscussion(17)", "Reply(Re: Plan |Yes.)"};
  for (int message = 1; message <= 2; ++message) {
    EXPECT_EQ(Handle(), "");
    expected.insert(expected.end(), eachMessage.begin(), eachMessage.end());
    EXPECT_EQ(siblings.Log, expected);
  }
}

TEST_F(HandleMessageTest, EachFailureHasItsOwnResult) {
  const auto nothing = [&](const char* operation) { return [=, this] { siblings.Nothing = {operation}; }; };
  const auto failing = [&](const char* operation, const char16_t* description) {
    return [=, this] { siblings.Failures = {{operation, description}}; };
  };
  const struct {
    const char* What;
    std::string Result;
    bool Replies;
    std::function<void()> Arrange = [] {};
    String Sender = kAnn;
    String Subject = kSubject;
  } rows[] = {
      {"an address in another case", "", true, [] {}, u"ANN@Example.ORG"},
      {"letters beyond ASCII in another case", "", true, [] {}, u"ZOË@example.org"},
      {"no application", "T10006 T10044(Talvane40.Dll|)", false,
       [&] {
         world.Services.MissingClasses = {TalvaneApplicationClass, TalvaneApplicationFactoryClass};
       }},
      {"no record", "T10006 T10015", false, [&] { siblings.Record.clear(); }},
      {"no registry value object", "T10006 T10024", false,
       [&] { world.Services.Missing = {"TvGeneralServices.RegValue"}; }},
      {"a value is missing", "T10006 T10029", false, [&] { siblings.Record.erase(u"DBUID"); }},
      {"no project", "T10006 T10030(P.tvs|)wrong password", false, nothing("OpenProject")},
      {"a project that fails", "disk gone T10006", false, failing("OpenProject", u"disk gone")},
      {"a project that isn't opened, without a reason", "Object not set T10006", false,
       [&] {
         siblings.Nothing = {"OpenProject", "GetStatus"};
       }},
      {"no users", "T10006 T10061", false, nothing("GetUsers")},
      {"no users at the second call", "T10006 Object not set", true,
       [&] {
         siblings.NothingAt = {"GetUsers", 2};
       }},
      {"an unknown sender", "T10006 T10032", true, [] {}, kEve},
      {"a refused sender, whose second user is good", "T10006 T10062", true, [] {}, kBob},
      {"a list of users that fails", "T10006 users gone", true, failing("Count", u"users gone")},
      {"a null user", "T10006 Object not set", true, [&] { siblings.Users[0] = nullptr; }},
      {"a user who fails", "T10006 user gone", true,
       [&] { siblings.Users[0] = std::make_shared<FailingUser>(); }},
      {"an unknown sender and a bad subject", "T10006 T10005", false, [] {}, kEve, kBadSubject},
      {"an unknown sender and no discussion", "T10006 T10007", false, nothing("GetDiscussion"), kEve},
      {"a sender who can't act", "T10006 T10033", false, nothing("SetActingUser")},
      {"no logon", "Object not set T10006", false, nothing("GetLogon")},
      {"an unreadable subject", "T10006 Invalid argument", false, [] {}, kAnn, u"Hello"},
      {"no such discussion", "T10006 T10007", false, nothing("GetDiscussion")},
      {"a failure after an error text", "locked T10006", false, failing("GetDiscussion", u"locked"), kEve},
      {"a failing reply", "disk full T10006", true, failing("Reply", u"disk full")}};
  const MemorySiblings usual = siblings;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.What);
    siblings = usual;
    world.Services.Missing.clear();
    world.Services.MissingClasses.clear();
    manager.MailHandler_Finalize();
    row.Arrange();
    EXPECT_EQ(Handle(row.Sender, row.Subject), row.Result);
    EXPECT_EQ(Replied(), row.Replies);
    EXPECT_EQ(std::count(siblings.Log.begin(), siblings.Log.end(), "SetActingUser(4|1|logon)"), 0);
  }
}

TEST_F(HandleMessageTest, NoMoreOfARefusedMessageIsReadThanIsNeeded) {
  const auto handle = [&](const Properties::Map& mail) {
    return Utf8(manager.MailHandler_HandleMessage(ObjectOf({{u"Message", ObjectOf(mail)}})));
  };
  const ObjectRef ann = ObjectOf({{u"Address", kAnn}});
  EXPECT_EQ(handle({}), "The object has no such member: From T10006");
  EXPECT_EQ(handle({{u"From", ObjectRef()}}), "T10006 T10060");
  EXPECT_EQ(handle({{u"From", ObjectOf({})}}), "The object has no such member: Address T10006");
  EXPECT_EQ(handle({{u"From", ann}}), "The object has no such member: subject T10006");
  EXPECT_EQ(handle({{u"From", ann}, {u"subject", kSubject}}), "The object has no such member: body T10006");
  siblings.Nothing = {"GetDiscussion"};
  EXPECT_EQ(handle({{u"From", ann}, {u"subject", kSubject}}), "T10006 T10007");
  EXPECT_TEXT(u"Object not set T10006", manager.MailHandler_HandleMessage(nullptr));
}

TEST_F(HandleMessageTest, AnEmptyBodyIsStoredAndOneThatIsTooLongIsRefused) {
  EXPECT_EQ(Handle(kAnn, kSubject, u"-- cut -- quoted"), "");
  EXPECT_EQ(siblings.Log.back(), "Reply(Re: Plan |)");
  siblings.Log.clear();
  EXPECT_TRUE(Handle(kAnn, kSubject, String(32767, u'a')).starts_with("T10006 Overflow"));
  EXPECT_FALSE(Replied());
}

TEST_F(HandleMessageTest, TheProjectStaysOpenUntilFinalizeAndTheRecordIsReadForEachMessage) {
  siblings.Nothing = {"OpenProject"};
  Handle();
  siblings.Nothing.clear();
  siblings.Record[u"TVSFilePath"] = u"Q.tvs";
  siblings.Log.clear();
  EXPECT_EQ(Handle(), "");  // tried again, with the record as it is now
  EXPECT_EQ(siblings.Log.front(), "OpenProject(Q.tvs|1|pump|secret|0|3)");

  siblings.Log.clear();
  const auto record = std::exchange(siblings.Record, {});
  EXPECT_EQ(Handle(), "T10006 T10015");
  siblings.Record = record;
  siblings.Record[u"DBPWD"] = u"\x7F";
  EXPECT_TRUE(Handle().ends_with(" T10006"));
  siblings.Record = record;
  siblings.Record[u"TVSFilePath"] = u"R.tvs";
  EXPECT_EQ(Handle(), "");
  EXPECT_EQ(siblings.Log.front(), "GetUsers()") << "an open project isn't opened anew by a changed record";
  EXPECT_TRUE(siblings.Ended.empty());

  siblings.Log.clear();
  manager.MailHandler_Finalize();
  manager.MailHandler_Finalize();
  EXPECT_EQ(siblings.Ended, (Log{"project", "application"}));
  EXPECT_EQ(Handle(), "");  // the same mailbox; everything is opened again
  EXPECT_EQ(siblings.Log.front(), "CreateApplication()");
}

TEST_F(HandleMessageTest, WithoutTextsAFailureContainsTheSubstituteTextTwice) {
  world.Services.Missing = {"TvResourceServices.Resource"};
  std::string result;
  std::thread([&] { result = Handle(kEve); }).join();
  const std::string text = Utf8(ResourceServiceMissing);
  EXPECT_EQ(result, text + " " + text);
  EXPECT_TRUE(world.Toolkit.Boxes.empty());
}

}  // namespace
}  // namespace Tests
