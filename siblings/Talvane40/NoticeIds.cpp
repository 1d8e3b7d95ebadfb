#include "siblings/Talvane40/NoticeIds.h"

#include <openssl/evp.h>
#include <openssl/hmac.h>

#include <array>
#include <charconv>

#include "platform/Failure.h"
#include "platform/Hex.h"
#include "platform/StoredNames.h"
#include "siblings/Talvane40/PasswordHash.h"

namespace Talvane40 {
namespace {

constexpr std::size_t kProjectDigits = 8, kMacDigits = 16;
constexpr std::size_t kLongestId = 1000;  // of a line in a mail

// A positive number in decimal at the start of the text, which loses it together with the point behind it;
// nothing if there is none.
std::optional<std::int32_t> TakeNumber(std::string_view& text) {
  std::int32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const auto length = static_cast<std::size_t>(end - text.data());
  if (error != std::errc() || number <= 0 || length == text.size() || text[length] != '.')
    return std::nullopt;
  text.remove_prefix(length + 1);
  return number;
}

}  // namespace

String NoticeIds::Digits(std::string_view text, std::size_t count) const {
  std::array<std::uint8_t, EVP_MAX_MD_SIZE> mac{};
  unsigned int size = 0;
  if (!HMAC(EVP_sha256(), key_.data(), static_cast<int>(key_.size()),
            reinterpret_cast<const unsigned char*>(text.data()), text.size(), mac.data(), &size))
    throw Failure(FailureNumber::DeviceFailed, u"Talvane40", u"OpenSSL gives no HMAC-SHA256.");
  return HexText(std::span(mac).first(size), HexCase::Lower).substr(0, count);
}

std::string NoticeIds::Start() const {
  return ToUtf8(Notice::kMessageIdStart) + ToUtf8(Digits("project", kProjectDigits)) + ".";
}

String NoticeIds::WithMac(const std::string& id) const {
  return FromUtf8(id) + u"." + Digits(id, kMacDigits);
}

String NoticeIds::OfReply(std::int32_t reply, std::int32_t user) const {
  return WithMac(Start() + std::to_string(reply) + "." + std::to_string(user));
}

String NoticeIds::OfAnswer(std::int32_t answer) const {
  return WithMac(Start() + "a." + std::to_string(answer));
}

String NoticeIds::OfDiscussion(std::int32_t discussion) const {
  return FromUtf8(Start() + "d." + std::to_string(discussion));
}

std::optional<NamedNotice> NoticeIds::Read(StringView id) const {
  if (id.size() > kLongestId) return std::nullopt;
  String left = FoldCase(Trim(id));
  if (left.starts_with(u'<')) left.erase(0, 1);
  if (left.ends_with(u'>')) left.pop_back();
  left.erase(std::min(left.find(u'@'), left.size()));

  const std::string text = ToUtf8(left), start = Start();
  if (!text.starts_with(start)) return std::nullopt;
  std::string_view rest = std::string_view(text).substr(start.size());
  const bool isAnswer = rest.starts_with("a.");
  if (isAnswer) rest.remove_prefix(2);
  const auto first = TakeNumber(rest);
  const auto second = isAnswer ? first : TakeNumber(rest);
  if (!first || !second) return std::nullopt;
  if (!EqualSecrets(left, isAnswer ? OfAnswer(*first) : OfReply(*first, *second))) return std::nullopt;
  return isAnswer ? NamedNotice{.Answer = *first} : NamedNotice{.Reply = *first, .User = *second};
}

}  // namespace Talvane40
