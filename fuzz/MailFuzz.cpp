// MailFuzz: any bytes as a mail.
//
// Reading them must end in a mail or in a refusal. And the limits have to hold: what they let pass may give
// the parser no more parts, and no deeper ones, than they allow, however the mail hides its structure. For
// that they are checked with values so small that short inputs reach them.
#include <algorithm>
#include <cstdlib>

#include "mime/DeliveryStatus.h"
#include "mime/HeaderRepair.h"
#include "mime/LimitCheck.h"
#include "mime/Mail.h"
#include "mime/MessageParser.h"

namespace {

constexpr Mime::MailLimits kSmall = {.Depth = 3, .Parts = 6, .HeaderFields = 8, .Fields = 12};

struct Size {
  std::size_t Parts = 0;
  std::size_t Depth = 0;
};

void Measure(GMimeObject* object, std::size_t depth, Size& size) {
  if (!object) return;
  ++size.Parts;
  size.Depth = std::max(size.Depth, depth);
  if (GMIME_IS_MESSAGE_PART(object)) {
    GMimeMessage* message = g_mime_message_part_get_message(GMIME_MESSAGE_PART(object));
    if (message) Measure(g_mime_message_get_mime_part(message), depth + 1, size);
  } else if (GMIME_IS_MULTIPART(object)) {
    GMimeMultipart* multipart = GMIME_MULTIPART(object);
    for (int i = 0; i < g_mime_multipart_get_count(multipart); ++i)
      Measure(g_mime_multipart_get_part(multipart, i), depth + 1, size);
  }
}

void CheckSmallLimits(std::string bytes) {
  // The parser gets lines of another kind then.
  const std::size_t lineEnd = bytes.find_first_of("\r\n");
  if (lineEnd != std::string::npos && bytes[lineEnd] == '\r' && bytes.compare(lineEnd, 2, "\r\n") != 0)
    return;
  try {
    Mime::RepairHeaders(bytes);
    Mime::CheckLimits(bytes, kSmall);
  } catch (const Mime::LimitExceeded&) {
    return;
  }
  Size size;
  Measure(Mime::ParsedMessage(std::move(bytes)).Root(), 0, size);
  // The root is no part of anything.
  if (size.Parts > kSmall.Parts + 1 || size.Depth > kSmall.Depth) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(data, data + size);
  try {
    Mime::ReadMail(bytes);
    const auto status = Mime::ReadDeliveryStatus(bytes);
    if (status && status->Failures.size() > Mime::DeliveryStatus::kMostFailures) std::abort();
  } catch (const Mime::LimitExceeded&) {
  }
  CheckSmallLimits(bytes);
  return 0;
}
