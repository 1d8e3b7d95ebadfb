"""The mails that a site gets: each with what has to become of it.

A mail has a token that no other has: in its body, and as it is in the field X-Token. It is either stored, once, in
each of its mailboxes, or held there with its reason, as often as it was sent.
"""
import base64
import quopri
import random
import re
from dataclasses import dataclass, field

MARKER = "----- Reply above this line -----"
SUBJECT = "(Ostrand Talvane Project {}, Ostrand Talvane Discussion {})"
STRICT = "Gemini"  # takes only mail whose origin was checked by the server SERVER
SMALL = "Mercury"  # takes only mail of at most 1 MB
SERVER = "mx.example.net"


@dataclass
class Mail:
    token: str
    kind: str
    mailboxes: list
    fields: dict
    body: bytes
    envelope: str = "alice@apollo.example"
    copies: int = 1
    discussion: int = 1
    user: str = "alice"
    text: str = None  # the whole reply; otherwise the token is in it
    reason: str = None  # a regular expression of the reason for which it is held; None if it is stored

    def bytes(self):
        lines = [f"{name}: {value}".encode("utf-8", "surrogateescape") for name, value in self.fields.items()
                 if value is not None]
        return re.sub(rb"\r?\n", b"\r\n", b"\n".join(lines) + b"\n\n" + self.body)


def plain(text, charset="utf-8", encoding="8bit"):
    body = text.encode(charset)
    if encoding == "base64":
        body = base64.encodebytes(body)
    if encoding == "quoted-printable":
        body = quopri.encodestring(body)
    return {"Content-Type": f'text/plain; charset="{charset}"', "Content-Transfer-Encoding": encoding}, body


def parts(kind, *contents):
    """A multipart of bodies, each with its header."""
    lines = [b"--=_part\n" + content + b"\n" for content in contents]
    return {"Content-Type": f'{kind}; boundary="=_part"'}, b"".join(lines) + b"--=_part--\n"


def quoted(text):
    line = "On Mon, 2 Nov 2026 at 09:14, Bob Baker <bob@apollo.example> wrote:"
    return f"{text}\n\n{line}\n> {MARKER}\n>\n> Shall we release on Friday?\n"


def part(text, kind="text/plain"):
    return f"Content-Type: {kind}; charset=utf-8\n\n{text}".encode()


# How persons reply. Each returns header fields, the body, and the reply that is expected of it.
def reply_plain(token):
    return *plain(quoted(f"{token} Friday works for me.")), f"{token} Friday works for me."


def reply_quoted_printable(token):
    text = f"{token} Grüße aus Köln, und 1+1=2. " + "Noch ein Wort. " * 20 + "Ende."
    return *plain(quoted(text), encoding="quoted-printable"), text


def reply_base64(token):
    return *plain(quoted(f"{token} The site is ready 🚀"), encoding="base64"), f"{token} The site is ready 🚀"


def reply_japanese(token):
    return *plain(quoted(f"{token} 金曜日で結構です。"), "iso-2022-jp", "7bit"), f"{token} 金曜日で結構です。"


def reply_html(token):
    html = f"<html><body><p>{token} 5 &lt; 7</p><blockquote>{MARKER}<br>Shall we?</blockquote></body></html>"
    return {"Content-Type": "text/html; charset=utf-8"}, html.encode(), None


def reply_alternative(token):
    text = f"{token} See the attached map."
    image = b"Content-Type: image/png; name=map.png\nContent-Transfer-Encoding: base64\n\n"
    image += base64.encodebytes(b"\x89PNG" * 500)
    return *parts("multipart/mixed", part(quoted(text)), image), text


def reply_without_marker(token):
    return *plain(f"{token} I deleted the rest."), f"{token} I deleted the rest."


def reply_dots(token):
    text = f"{token}\n.\n..\n.hidden\nFrom here on it is a list.\n>From there too."
    return *plain(quoted(text)), text


REPLIES = [reply_plain, reply_quoted_printable, reply_base64, reply_japanese, reply_html, reply_alternative,
           reply_without_marker, reply_dots]


def nested(depth):
    """Multiparts within each other."""
    head = "".join(f'Content-Type: multipart/mixed; boundary="b{i}"\n\n--b{i}\n' for i in range(1, depth))
    body = f"--b0\n{head}Content-Type: text/plain\n\n{{token}}\n"
    return of_bytes(body.encode(), 'multipart/mixed; boundary="b0"')


def of_bytes(body, content_type="text/plain; charset=utf-8"):
    """A mail with this body, whose reply holds its token."""
    return lambda token: ({"Content-Type": content_type}, body.replace(b"{token}", token.encode()), None)


def with_empty_parts(count):
    return lambda token: (*parts("multipart/mixed", part(token), *[b""] * count), None)


def encrypted(token):
    control = b"Content-Type: application/pgp-encrypted\n\nVersion: 1"
    return *parts("multipart/encrypted", control, part(token, "application/octet-stream")), None


FROM_LINES = b"{token}\nFrom x@elsewhere.example Mon Nov  2 09:14:07 2026\nFrom: x@elsewhere.example\n\nSecond.\n"

# What every mailbox takes: content and header fields.
HOSTILE_STORED = {
    "zero bytes": (of_bytes(b"{token} zero \0\0\0 bytes\n"), {}),
    "From lines": (of_bytes(FROM_LINES), {}),
    "unknown charset": (of_bytes(b"{token} \xa4\xff", "text/plain; charset=x-none"), {}),
    "broken UTF-8": (of_bytes(b"{token} \xc3\x28 \xff\xfe \xed\xa0\x80\n"), {}),
    "no Message-ID": (of_bytes(b"{token} no Message-ID\n"), {"Message-ID": None}),
    "1 MB of HTML": (of_bytes(b"<html><body>{token}" + b"<div class='c'><b></b></div>\n" * 36000, "text/html"), {}),
    "3,000 empty parts": (with_empty_parts(3000), {}),
    "long line": (of_bytes(b"{token} " + b"x" * 30000), {}),
    "900 fields": (of_bytes(b"{token} many fields\n"), {f"X-Field-{i}": "x" for i in range(900)}),
    "parts 40 deep": (nested(40), {}),
    "control characters": (of_bytes(b"{token} \x1b[31mred\x07\n"), {"Message-ID": "<\x1b]0;{token}\x07@x.example>"}),
    "groups in To": (of_bytes(b"{token} groups\n"), {"To": "a:" * 3000 + "bob@apollo.example" + ";" * 3000}),
    "no date": (of_bytes(b"{token} no date\n"), {"Date": None, "MIME-Version": None, "To": None}),
}

# What none takes: content, header fields, and a part of the reason.
HOSTILE_HELD = {
    "5,100 parts": (with_empty_parts(5100), {}, "more than 5000 parts"),
    "parts 150 deep": (nested(150), {}, "nested more than 100 deep"),
    "groups in From": (reply_plain, {"From": "a:" * 200 + "alice@apollo.example" + ";" * 200},
                       "addresses are nested more than 100 deep"),
    "1,100 fields": (reply_plain, {f"X-Field-{i}": "x" for i in range(1100)}, "more than 1000 fields"),
    "no From": (reply_plain, {"From": None}, "doesn't say who sent it"),
    "long subject": (reply_plain, {"Subject": "Re: Plan " + "x " * 9000}, "Subject field has more than 16 KB"),
    "1 MB of text": (of_bytes(b"{token}" + b" 1234567" * 125000), {}, "too large for a reply"),
    "encrypted": (encrypted, {}, "the mail is encrypted"),
}

# Other mails of programs: header fields, the envelope's sender, and a part of the reason.
ROBOTS = [
    ({"Auto-Submitted": "auto-replied"}, "alice@apollo.example", r"header says \(Auto-Submitted: auto-replied\)"),
    ({"Auto-Submitted": "auto-replied (vacation)"}, "", r"header says \(Auto-Submitted: auto-replied"),
    ({}, "", "no return address"),
    ({"Precedence": "bulk"}, "alice@apollo.example", r"\(Precedence: bulk\)"),
    ({"X-Autoreply": "yes"}, "alice@apollo.example", r"\(X-Autoreply: yes\)"),
    ({"List-Id": "Plans <plans.apollo.example>"}, "plans-bounces@apollo.example", "through a mailing list"),
    ({"Message-ID": "<talvane.notice.{token}@apollo.example>"}, "alice@apollo.example", "itself a notification"),
]

# Mails whose origin the server in front of the site didn't prove, and a part of the reason.
UNPROVED = [
    ({"Authentication-Results": f"{SERVER}; dmarc=fail header.from=apollo.example"}, "mail's origin failed"),
    ({"Authentication-Results": "mx.elsewhere.example; dmarc=pass"}, f"{SERVER} didn't report"),
    ({"Authentication-Results": f"{SERVER}; spf=pass smtp.mailfrom=elsewhere.example"}, "Nothing proves"),
    ({"From": "alice@apollo.example, mallory@elsewhere.example"}, "doesn't name exactly one address"),
]

EMPTY = [
    (lambda token: (*plain(f"\n\n{MARKER}\n{token} written below\n"), None), "text below it is not read"),
    (lambda token: (*parts("multipart/mixed", b"Content-Type: image/png\n\n" + token.encode()), None), "has no text"),
    (lambda token: (*plain(quoted("")), None), "no text above the line"),
]


class Site:
    """Makes mails to the mailboxes, from one seed."""

    def __init__(self, mailboxes, seed):
        self.mailboxes = mailboxes
        self.random = random.Random(seed)
        self.mails = []

    def mail(self, kind, content, mailboxes=None, sender="alice@apollo.example", user="alice", **rest):
        token = f"token-{len(self.mails):05d}-{self.random.getrandbits(32):08x}"
        mailboxes = mailboxes or [self.random.choice(self.mailboxes)]
        header, body, text = content(token)
        discussion = self.random.choice([1, 2])
        fields = {
            "X-Token": token,
            # As the server in front of the site writes it; only one mailbox asks for it.
            "Authentication-Results": f"{SERVER}; dmarc=pass header.from={sender.rpartition('@')[2]}",
            "From": sender,
            "To": ", ".join(f"{name} <{name}@site.example>" for name in mailboxes),
            "Subject": "Re: Plan " + SUBJECT.format(mailboxes[0], discussion),
            "Date": "Mon, 2 Nov 2026 09:14:07 +0100",
            "Message-ID": f"<{token}@apollo.example>",
            "MIME-Version": "1.0",
        }
        fields.update(header)
        fields.update(rest.pop("fields", {}))
        fields = {name: value.replace("{token}", token) if value else value for name, value in fields.items()}
        mail = Mail(token, kind, mailboxes, fields, body, sender, discussion=discussion, user=user, text=text, **rest)
        self.mails.append(mail)
        return mail

    def reply(self, kind="reply", **rest):
        name = self.random.choice(["alice", "bob"])
        return self.mail(kind, self.random.choice(REPLIES), sender=f"{name}@apollo.example", user=name, **rest)

    def repeated(self):
        """The mail comes twice or three times, by ways of its own."""
        self.reply("repeated").copies = self.random.choice([2, 3])

    def robot(self):
        fields, envelope, reason = self.random.choice(ROBOTS)
        self.mail("robot", reply_plain, fields=fields, reason=reason).envelope = envelope

    def bounce(self):
        def report(token):
            status = b"Content-Type: message/delivery-status\n\nAction: failed\nStatus: 5.1.1\n"
            return *parts("multipart/report; report-type=delivery-status", part(f"{token} failed."), status), None
        self.mail("bounce", report, sender="MAILER-DAEMON@apollo.example",
                  reason=r"header says \(Content-Type: multipart/report").envelope = ""

    def own_address(self):
        name = self.other_than(STRICT)
        self.mail("own address", reply_plain, [name], sender=f"{name}@site.example",
                  reason="address of the project's own mailbox")

    def stranger(self):
        sender = f"mallory{self.random.randrange(1000)}@elsewhere.example"
        self.mail("stranger", self.random.choice(REPLIES), sender=sender, reason=f"no user with the address {sender}")

    def no_mail_taken(self):
        self.mail("takes no mail", reply_plain, sender="carol@apollo.example",
                  reason="address carol@apollo.example doesn't take part")

    def forged(self):
        """A copy of a reply, with its Message-ID but other text, by a stranger or by another user."""
        original = self.reply("copied")
        fields = {name: original.fields[name] for name in ("Message-ID", "Subject")}
        if self.random.random() < 0.5:
            other = "bob" if original.user == "alice" else "alice"
            self.mail("copy by a user", reply_plain, original.mailboxes, sender=f"{other}@apollo.example",
                      user=other, fields=fields).discussion = original.discussion
        else:
            fields["Reply-To"] = "alice@apollo.example"
            self.mail("copy by a stranger", reply_plain, original.mailboxes, sender="alice@apollo.example.net",
                      fields=fields, reason=r"no user with the address alice@apollo.example.net\.")

    def unproved(self):
        fields, reason = self.random.choice(UNPROVED)
        self.mail("unproved", reply_plain, [STRICT], fields=fields, reason=reason)

    def misdirected(self):
        subject, reason = self.random.choice([
            ("Re: lunch", "isn't that of a reply"),
            ("Re: Plan " + SUBJECT.format("Apollo", 99), "no discussion with the number"),
        ])
        self.mail("misdirected", reply_plain, fields={"Subject": subject}, reason=reason)

    def empty(self):
        content, reason = self.random.choice(EMPTY)
        self.mail("empty", content, reason="The reply is empty: .*" + reason)

    def hostile_stored(self):
        name = self.random.choice(sorted(HOSTILE_STORED))
        content, fields = HOSTILE_STORED[name]
        self.mail("hostile: " + name, content, [self.other_than(SMALL)], fields=fields)

    def hostile_held(self):
        name = self.random.choice(sorted(HOSTILE_HELD))
        content, fields, reason = HOSTILE_HELD[name]
        self.mail("hostile: " + name, content, [self.other_than(STRICT)], fields=fields, reason=reason)

    def too_large(self):
        self.mail("too large", of_bytes(b"{token}\n" + (b"x" * 70 + b"\n") * 25000), [SMALL],
                  reason="at most 1 MB are taken")

    def several(self):
        self.reply("to three mailboxes", mailboxes=self.random.sample(self.mailboxes, 3))

    def other_than(self, excluded):
        return self.random.choice([name for name in self.mailboxes if name != excluded])


# In a hundred mails. The same mail again, and a mail in three mailboxes, count as several.
SHARES = {Site.reply: 40, Site.repeated: 6, Site.robot: 10, Site.bounce: 2, Site.own_address: 1, Site.stranger: 8,
          Site.no_mail_taken: 2, Site.forged: 3, Site.unproved: 2, Site.misdirected: 3, Site.empty: 3,
          Site.hostile_stored: 5, Site.hostile_held: 3, Site.too_large: 1, Site.several: 2}


def make(mailboxes, count, seed):
    """Mails of which at least so many arrive."""
    site = Site(mailboxes, seed)
    kinds = list(SHARES)
    arriving = 0
    while arriving < count:
        before = len(site.mails)
        site.random.choices(kinds, SHARES.values())[0](site)
        arriving += sum(mail.copies * len(mail.mailboxes) for mail in site.mails[before:])
    return site.mails
