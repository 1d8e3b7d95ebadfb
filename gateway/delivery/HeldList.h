// HeldList: finds, reads and removes held mail.
//
// Any thread. Another process may remove or add mails at any time.
#pragma once

#include <ctime>
#include <optional>
#include <string>
#include <vector>

#include "gateway/delivery/HeldReason.h"

namespace Gateway {

// A held mail, found by its file's name alone.
struct HeldPlace {
  std::string Folder;  // the mailbox's
  std::string Id;
  std::string Path;
  std::time_t Received = 0;  // when it was held first
};

struct HeldDetails {
  String From;     // the sender's address; empty without one
  String Subject;  // empty if it can't be read
  HeldReason Why;  // Mailbox is never empty
};

// The held mails of a mailbox, or of all without one, the oldest first. Raises 57 if a folder can't be read.
std::vector<HeldPlace> HeldMails(const std::optional<String>& mailbox);

// Reads the mail's header, at most 64 kB of it, and its reason. Raises nothing but std::bad_alloc.
HeldDetails DetailsOf(const HeldPlace& place);

// The mail as it came; nothing if it isn't held any longer. Raises 57 and 70.
std::optional<std::string> BytesOf(const HeldPlace& place);

// Changes the reason, if the mail is still held. Raises 57 and 70.
void ChangeReason(const HeldPlace& place, const HeldReason& reason);

// Removes the mail and its reason, durably. Returns false if it wasn't held any longer. Raises 57 and 70.
bool RemoveHeld(const HeldPlace& place);

}  // namespace Gateway
