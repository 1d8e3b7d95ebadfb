// The outcome for every result of the component, in every language.
#include <set>
#include <thread>

#include "gateway/delivery/FailureJudge.h"
#include "gateway/delivery/HandlerObject.h"
#include "gateway/delivery/MessageObject.h"
#include "platform/StoredNames.h"
#include "platform/contracts/FailureText.h"
#include "platform/contracts/ProjectAdministration.h"
#include "runtime/Texts.h"
#include "src/mailbox/MailboxRecords.h"
#include "src/services/modResource.h"
#include "tests/support/World.h"

namespace Tests {
namespace {

using Gateway::Outcome;

class Judge : public testing::TestWithParam<std::string> {
 protected:
  Judge() {
    setenv("LC_ALL", GetParam().c_str(), 1);
    const ProjectAdministration projects(world.Services.CreateByName(ProjectAdministration::kName));
    const String path = world.PathOf("Apollo.TVS");
    projects.CreateProject(path, u"Apollo", u"ann", u"ann@x.org", u"word");
    projects.AddUser(path, u"bob", u"bob@x.org", false);
    projects.AddDiscussion(path, u"Plan");
    TvEmailServices::WriteMailBoxRecord(path, u"ann", u"word", u"Apollo");
  }
  ~Judge() override { unsetenv("LC_ALL"); }

  World world;
};

TEST_P(Judge, RefusesAMailOnlyIfItIsTheCause) {
  const struct {
    std::int32_t Number;  // of the text; below 10000 that of a failure
    Outcome Expected;
    std::optional<String> From = u"ann@x.org";
    String Discussion = u"Discussion 1)", Body = u"Yes.", MailBox = u"Apollo";
  } rows[] = {
      {0, Outcome::Delivered},
      {TextNumber::kNoDiscussionSubject, Outcome::Refused, u"ann@x.org", u"Discussion 0)"},
      {TextNumber::kNoSuchDiscussion, Outcome::Refused, u"ann@x.org", u"Discussion 2)"},
      {TextNumber::kSenderUnknown, Outcome::Refused, u"eve@x.org"},
      {TextNumber::kNoSender, Outcome::Refused, std::nullopt},
      {TextNumber::kMailNotAccepted, Outcome::Refused, u"bob@x.org"},
      {FailureNumber::InvalidArgument, Outcome::Refused, u"ann@x.org", u""},
      {FailureNumber::Overflow, Outcome::Refused, u"ann@x.org", u"Discussion 99999999999)"},
      {FailureNumber::Overflow, Outcome::Refused, u"ann@x.org", u"Discussion 1)", String(40000, u'x')},
      {TextNumber::kRecordUnreadable, Outcome::Retry, u"ann@x.org", u"Discussion 1)", u"Yes.", u"Nobody"},
  };
  // The component keeps its texts for the life of a thread.
  std::thread([&] {
    Gateway::FailureJudge judge;
    std::set<std::int32_t> own;
    for (const auto& row : rows) {
      const Gateway::HandlerObject object;
      object.Mail().MailHandler_Initialize(row.MailBox, nullptr);
      const String failure = object.Mail().MailHandler_HandleMessage(Gateway::MakeMessageObject(
          {.FromAddress = row.From,
           .MessageId = {},
           .Subject = u"Re: (Ostrand Talvane Project Apollo, Ostrand Talvane " + row.Discussion,
           .Body = row.Body}));
      const Gateway::Verdict verdict = judge.Judge(failure);
      EXPECT_EQ(row.Expected, verdict.Result) << row.Number << Utf8(failure);
      if (verdict.Result != Outcome::Refused) continue;
      EXPECT_TEXT(Runtime::TextIn(FromUtf8(GetParam()), verdict.Text), verdict.Reason);
      own.insert(row.Number);
    }
    const auto text = [](std::int32_t number) { return TvEmailServices::LoadTvResourceString(number); };
    const String notice = text(TextNumber::kMailNotice);
    for (const auto& [number, places] : TextNumber::kComponentTexts) {
      EXPECT_EQ(own.contains(number) ? Outcome::Refused : Outcome::Retry,
                judge.Judge(NotedFailureText(notice, text(number))).Result)
          << number;
      EXPECT_EQ(Outcome::Retry, judge.Judge(RaisedFailureText(notice, Failure(57, {}, text(number)))).Result);
    }
  }).join();
}

INSTANTIATE_TEST_SUITE_P(Languages, Judge, testing::ValuesIn(CatalogueLanguages()),
                         [](const auto& language) { return language.param; });

}  // namespace
}  // namespace Tests
