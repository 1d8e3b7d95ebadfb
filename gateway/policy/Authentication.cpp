#include "gateway/policy/Authentication.h"

#include <algorithm>

#include "gateway/policy/AuthenticationResults.h"
#include "platform/ProgramTexts.h"
#include "runtime/MailAddress.h"

namespace Gateway {
namespace {

namespace TextNumber = Platform::TextNumber;

// A domain for comparisons.
String Comparable(StringView domain) {
  return Platform::FoldCase(Runtime::CanonicalDomain(domain));
}

bool IsBelow(StringView child, StringView parent) {
  return child.size() > parent.size() + 1 && child.ends_with(parent) &&
         child[child.size() - parent.size() - 1] == u'.' && parent.find(u'.') != StringView::npos;
}

bool IsAligned(std::string_view reported, const String& from) {
  const String domain = Comparable(Platform::FromUtf8(reported));
  return !domain.empty() && (domain == from || IsBelow(domain, from) || IsBelow(from, domain));
}

// The topmost results of the server; nothing without any. The id in front of the results is read also where
// the results can't be, or are cut off: a field below doesn't take their place.
std::optional<AuthenticationResults> ResultsOf(StringView server, const Mime::MailHeader& header) {
  for (const Mime::HeaderField& field : header.Fields) {
    if (!Mime::IsNamed(field, "Authentication-Results")) continue;
    AuthenticationResults results = ReadAuthenticationResults(field.Value);
    if (Comparable(Platform::FromUtf8(results.Server)) != server) continue;
    if (!field.Whole) return AuthenticationResults{results.Server, false, {}};
    return results;
  }
  return std::nullopt;
}

// The sender's address, if every reader of the From field finds the same one.
std::optional<String> CertainSender(const Mime::Mail& mail) {
  const std::optional<String>& only = mail.Header.OnlySender;
  if (!only || !mail.FromAddress || !Runtime::AddressFault(*only).empty()) return std::nullopt;
  String sender = Runtime::CanonicalAddress(*only);
  if (!Platform::EqualsIgnoreCase(sender, Runtime::CanonicalAddress(*mail.FromAddress))) return std::nullopt;
  return sender;
}

bool DmarcFailed(const AuthenticationResults& results) {
  return std::ranges::any_of(results.Results,
                             [](const auto& r) { return r.Method == "dmarc" && r.Result == "fail"; });
}

// True if DMARC passed, and nothing else is reported of it. A server that doesn't name the domain means that
// of the From field.
bool DmarcPassed(const AuthenticationResults& results, const String& from) {
  bool found = false;
  for (const MethodResult& result : results.Results) {
    if (result.Method != "dmarc") continue;
    const std::string_view domain = result.Domain("header.from");
    if (result.Result != "pass") return false;
    if (!domain.empty() && Comparable(Platform::FromUtf8(domain)) != from) return false;
    found = true;
  }
  return found;
}

// True if SPF or a DKIM signature passed for an aligned domain. Some servers report a signature's identity,
// which is in the signing domain or below, in place of that domain.
bool OtherPassed(const AuthenticationResults& results, const String& from) {
  return std::ranges::any_of(results.Results, [&](const MethodResult& result) {
    if (result.Result != "pass") return false;
    if (result.Method == "spf") return IsAligned(result.Domain("smtp.mailfrom"), from);
    if (result.Method != "dkim") return false;
    const std::string_view domain = result.Domain("header.d");
    return IsAligned(domain.empty() ? result.Domain("header.i") : domain, from);
  });
}

}  // namespace

std::optional<Refusal> RefuseUnauthenticated(const GateFacts& facts, const PolicySettings& settings) {
  const String& server = settings.RequireAuthenticated;
  if (server.empty()) return std::nullopt;
  const auto refusal = [](std::int32_t text, StringView argument = {}) {
    return MakeRefusal(Rule::kAuthentication, text, argument);
  };
  const std::optional<String> sender = CertainSender(facts.Mail);
  if (!sender) return refusal(TextNumber::kFromAmbiguous);
  const std::optional<AuthenticationResults> results = ResultsOf(Comparable(server), facts.Mail.Header);
  if (!results || !results->Readable) return refusal(TextNumber::kNotAuthenticated, server);
  if (DmarcFailed(*results)) return refusal(TextNumber::kAuthenticationFailed, *sender);
  const String domain = Comparable(StringView(*sender).substr(sender->rfind(u'@') + 1));
  if (DmarcPassed(*results, domain) || OtherPassed(*results, domain)) return std::nullopt;
  return refusal(TextNumber::kNoAuthenticationPass, *sender);
}

}  // namespace Gateway
