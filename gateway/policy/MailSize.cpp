#include "gateway/policy/MailSize.h"

#include "platform/ProgramTexts.h"

namespace Gateway {
namespace {

// Rounded up, so that a mail beyond the limit never seems to be as large as the limit.
String Megabytes(std::size_t bytes) {
  return Platform::FromUtf8(std::to_string((bytes + (std::size_t{1} << 20) - 1) >> 20));
}

}  // namespace

std::optional<Refusal> RefuseSize(std::size_t size, const PolicySettings& settings) {
  if (size <= settings.SizeLimit) return std::nullopt;
  return MakeRefusal(Rule::kSize, Platform::TextNumber::kMailBeyondSizeLimit, Megabytes(size),
                     Megabytes(settings.SizeLimit));
}

}  // namespace Gateway
