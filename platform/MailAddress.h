// MailAddress: what a valid e-mail address is (RFC 5321 section 4.1.2 with RFC 6531 section 3.3), and when
// two spellings name one mailbox.
//
// All functions are pure and may be called on any thread.
#pragma once

#include "platform/Text.h"

namespace Platform {

// The reason in English, as in "the domain is missing", why the text can't be an address; empty for a valid
// one. Valid are local parts of ASCII or UTF-8, bare or quoted, and domains of any script or in brackets as
// an address of IPv4, IPv6 or a tagged one. No control character is valid anywhere.
String AddressFault(StringView address);

// The spelling by which addresses are compared: the domain in Unicode, however it was encoded, without a
// point at its end; quotes around a local part that needs none are gone; composed characters (NFC). Letters
// keep their case in the local part. What is no address is given back as it is. Addresses that name one
// mailbox become equal but for case.
String CanonicalAddress(StringView address);

}  // namespace Platform
