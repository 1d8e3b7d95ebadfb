// The time for one message: its parsers, compared with a plain copy of the same text, and the whole
// processing with siblings in memory, which shows the component's own share.
#include <benchmark/benchmark.h>

#include "src/mail/DiscussionSubject.h"
#include "src/mail/EMailManager.h"
#include "src/mail/ReplyBody.h"
#include "tests/mail/MemorySiblings.h"

namespace {

using namespace Platform;
using namespace TvEmailServices;

// Siblings in memory, in place of the run time's own services for as long as this lives.
struct Setting {
  Setting() {
    Siblings.Quiet = true;
    Siblings.Install(Services);
    Before = InstallServices(&Services);
  }
  ~Setting() { InstallServices(Before); }

  Tests::TestServices Services{Platform::Services()};
  Tests::MemorySiblings Siblings;
  PlatformServices* Before = nullptr;
};

const String kSubject = u"Re: Plan (Ostrand Talvane Project Apollo), Ostrand Talvane Discussion 17)";

// Lines of 72 characters as mail programs write them.
String BodyOf(std::int64_t length, StringView lineEnd) {
  String body;
  while (body.size() < static_cast<std::size_t>(length)) {
    body.append(u"The quick brown fox jumps over the lazy dog - and then, of course, sleeps").append(lineEnd);
  }
  body.resize(static_cast<std::size_t>(length), u'.');
  body.back() = u'.';
  return body;
}

void SetCharacters(benchmark::State& state) {
  state.SetBytesProcessed(state.iterations() * state.range(0) * static_cast<std::int64_t>(sizeof(char16_t)));
}

void SubjectParsing(benchmark::State& state) {
  const Setting setting;
  for (auto _ : state) {
    std::int32_t number = 0;
    String subjectText, errorText;
    benchmark::DoNotOptimize(ParseDiscussionSubject(kSubject, number, subjectText, errorText));
  }
}
BENCHMARK(SubjectParsing);

void PlainCopy(benchmark::State& state) {
  const String body = BodyOf(state.range(0), u"\r\n");
  for (auto _ : state) {
    String copy = body;
    benchmark::DoNotOptimize(copy.data());
  }
  SetCharacters(state);
}
BENCHMARK(PlainCopy)->Arg(100)->Arg(2000)->Arg(32000);

// Each round cleans a copy of the body, as the body of a message is one.
void BodyCleaning(benchmark::State& state, StringView lineEnd) {
  const Setting setting;
  const String body = BodyOf(state.range(0), lineEnd);
  for (auto _ : state) {
    String reply = body, errorText;
    if (!ParseReplyBody(reply, errorText)) state.SkipWithError("refused");
    benchmark::DoNotOptimize(reply.data());
  }
  SetCharacters(state);
}
BENCHMARK_CAPTURE(BodyCleaning, WholeLineEnds, u"\r\n")->Arg(100)->Arg(2000)->Arg(32000);
BENCHMARK_CAPTURE(BodyCleaning, BareLineEnds, u"\n")->Arg(100)->Arg(2000)->Arg(32000);

// The sender is the last of all users.
void MessageProcessing(benchmark::State& state) {
  Setting setting;
  String sender;
  for (std::int64_t i = 1; i <= state.range(0); ++i) {
    const auto key = static_cast<std::int32_t>(i);
    sender = u"user";
    sender.append(Value(key).ToString()).append(u"@example.org");
    setting.Siblings.Users.push_back(std::make_shared<Tests::MemorySiblings::User>(sender, true, key));
  }
  const ObjectRef message = Tests::MessageOf(sender, kSubject, BodyOf(2000, u"\r\n"));
  EMailManager manager;
  manager.MailHandler_Initialize(u"Apollo", nullptr);
  for (auto _ : state) {
    if (!manager.MailHandler_HandleMessage(message).empty()) state.SkipWithError("not handled");
  }
}
BENCHMARK(MessageProcessing)->Arg(10)->Arg(1000)->Arg(100000);

}  // namespace
