// MailAddress: the validity of e-mail addresses (RFC 5321 section 4.1.2 with RFC 6531 section 3.3), and their
// comparison.
//
// The functions raise no failure and may be called on any thread.
#pragma once

#include "platform/Text.h"

namespace Runtime {

using namespace Platform;

// The reason why the text is no address, in the user's language, such as "the domain is missing"; empty for
// an address. A local part may be ASCII or UTF-8, quoted or not; a domain may be of any script, or an address
// of IPv4, IPv6 or of another tag in brackets. Control characters are never valid.
String AddressFault(StringView address);

// The form in which addresses are compared: the domain in Unicode, without a point at its end; no quotes
// around a local part that needs none; composed characters (NFC). The local part keeps its case. Two
// addresses of one mailbox become equal but for case. A text that is no address is returned unchanged.
String CanonicalAddress(StringView address);

// The domain of CanonicalAddress. A text that is no domain is returned unchanged.
String CanonicalDomain(StringView domain);

// The domain as DNS has it, in ASCII (RFC 5891). Empty for a text that is no domain, and for an address in
// brackets.
String AsciiDomain(StringView domain);

}  // namespace Runtime
