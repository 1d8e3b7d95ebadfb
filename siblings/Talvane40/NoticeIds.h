// NoticeIds: the left parts of the Message-IDs of what a project sends.
//
//   talvane.notice.PROJECT.REPLY.USER.MAC    the notice of a reply to a user
//   talvane.notice.PROJECT.a.ANSWER.MAC      the answer to the sender of a refused mail
//   talvane.notice.PROJECT.d.DISCUSSION      a whole discussion
//
// PROJECT (8 digits) and MAC (16 digits) are hexadecimal, made from the project's key by HMAC-SHA256: only
// who has the project's database, or has received the mail, knows its Message-ID.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "platform/Text.h"

namespace Talvane40 {

using namespace Platform;

// What a Message-ID of a project names.
struct NamedNotice {
  std::int32_t Reply = 0;  // 0 for an answer
  std::int32_t User = 0;   // 0 for an answer
  std::int32_t Answer = 0;
};

class NoticeIds {
 public:
  explicit NoticeIds(std::span<const std::uint8_t> key) : key_(key.begin(), key.end()) {}

  String OfReply(std::int32_t reply, std::int32_t user) const;
  String OfAnswer(std::int32_t answer) const;
  String OfDiscussion(std::int32_t discussion) const;

  // What an id names, in any case, with or without brackets and domain; nothing unless this project has made
  // it for a notice or an answer. The time doesn't depend on how much of a wrong MAC is right.
  std::optional<NamedNotice> Read(StringView id) const;

 private:
  String Digits(std::string_view text, std::size_t count) const;
  std::string Start() const;
  String WithMac(const std::string& id) const;

  std::vector<std::uint8_t> key_;
};

}  // namespace Talvane40
