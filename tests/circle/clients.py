"""How mail clients answer: each makes a mail from a notification and from what its user types above the quote.

A client knows the notification alone: it keeps the subject, after its own mark of a reply and in its own encoding, and
quotes the body in its own form.
"""
import base64
import email
import email.policy
import html
import quopri
import re
import textwrap
import uuid
from dataclasses import dataclass
from email.header import Header
from email.utils import format_datetime, formataddr, localtime

JAPANESE = "iso-2022-jp"


class Notification:
    """A mail as a client reads it."""

    def __init__(self, raw):
        self.mail = email.message_from_bytes(raw, policy=email.policy.default)
        self.id = self.mail["Message-ID"].strip()
        self.references = (self.mail["References"] or "").split()
        self.subject = str(self.mail["Subject"])
        self.raw_subject = email.message_from_bytes(raw)["Subject"]
        self.sender = self.mail["From"].addresses[0]
        self.reply_to = (self.mail["Reply-To"] or self.mail["From"]).addresses[0].addr_spec
        self.text = self.mail.get_body(("plain",)).get_content().replace("\r\n", "\n").rstrip("\n")
        page = self.mail.get_body(("html",)).get_content()
        self.html = re.search("(?is)<body[^>]*>(.*)</body>", page)[1].strip()
        # As clients write when and by whom it was sent.
        self.date = self.mail["Date"].datetime
        self.name = self.sender.display_name or self.sender.addr_spec
        self.author = f"{self.name} <{self.sender.addr_spec}>"


@dataclass
class Part:
    kind: str
    text: str
    charset: str = "utf-8"
    encoding: str = "quoted-printable"

    def bytes(self):
        lines = self.text.split("\n")
        content = self.text.encode(self.charset, "replace")
        if self.encoding == "base64":
            content = base64.encodebytes(content.replace(b"\n", b"\r\n"))
        elif self.encoding == "quoted-printable" or max(len(line.encode()) for line in lines) > 990:
            self.encoding, content = "quoted-printable", quopri.encodestring(content)
        return (f"Content-Type: {self.kind}; charset={self.charset}\n"
                f"Content-Transfer-Encoding: {self.encoding}\n\n").encode() + content


def encoded(subject, charset="utf-8"):
    """A subject in encoded words if it needs them, folded."""
    try:
        subject.encode("ascii")
        return subject
    except UnicodeEncodeError:
        return Header(subject, charset, 72, "Subject").encode()


def refolded(subject, blank):
    """A subject in ASCII folded at its blanks, whatever they separate."""
    return "\n".join(textwrap.wrap(subject, 48, break_long_words=False)).replace("\n", "\n" + blank)


def mail(notice, writer, program, subject, *parts):
    """A reply in one part, or in alternatives."""
    head = {
        "Date": format_datetime(localtime()),
        "From": formataddr(writer),
        "To": notice.reply_to,
        "Subject": subject,
        "Message-ID": f"<{uuid.uuid4()}@{writer[1].partition('@')[2]}>",
        "In-Reply-To": notice.id,
        "References": "\n ".join(notice.references + [notice.id]),
        "User-Agent": program,
        "MIME-Version": "1.0",
    }
    content = parts[0].bytes()
    if len(parts) > 1:
        line = f"--=_{uuid.uuid4().hex}"
        content = f'Content-Type: multipart/alternative; boundary="{line[2:]}"\n\n'.encode()
        content += b"".join(line.encode() + b"\n" + part.bytes() + b"\n" for part in parts) + f"{line}--\n".encode()
    head = "".join(f"{name}: {value}\n" for name, value in head.items()).encode()
    return re.sub(rb"\r?\n", b"\r\n", head + content.rstrip(b"\n") + b"\n")


def quoted(text, sign="> "):
    return "\n".join((sign + line).rstrip() if not line.startswith(">") else ">" + line for line in text.split("\n"))


def on_date(notice):
    return f"On {notice.date:%d/%m/%Y %H:%M}, {notice.author} wrote:"


def markup(text):
    """A typed line in HTML: blanks that HTML would join are no-break spaces."""
    text = html.escape(text, quote=False)
    return re.sub("^ |(?<= ) ", "\u00a0", text).replace(" \u00a0", "\u00a0 ").replace("\u00a0", "&nbsp;")


def lines_in(element, typed):
    return "".join(f"<{element}>{markup(line) or '<br>'}</{element}>" for line in typed.split("\n"))


def top_posted(notice, typed, writer, random):
    """The mail below, not quoted, with its header lines."""
    head = f"From: {notice.author}\nSent: {notice.date:%A, %d %B %Y %H:%M}\nTo: {writer[0]}\n"
    head = f"-----Original Message-----\n{head}Subject: {notice.subject}\n\n"
    return mail(notice, writer, "Top/1.0", encoded("RE: " + notice.subject),
                Part("text/plain", f"{typed}\n\n{head}{notice.text}\n", encoding="8bit"))


def quoted_marker(notice, typed, writer, random):
    subject = "Re: " + notice.raw_subject  # unchanged, with the sender's encoded words and folding
    return mail(notice, writer, "Quote/1.0", subject,
                Part("text/plain", f"{typed}\n\n{on_date(notice)}\n{quoted(notice.text)}\n", encoding="8bit"))


def wrapped(notice, typed, writer, random):
    """Quotes in narrow lines, the marker too, as phones do."""
    width = random.randrange(14, 34)
    lines = [part for line in notice.text.split("\n") for part in textwrap.wrap(line, width) or [""]]
    subject = encoded("Re: " + notice.subject)
    return mail(notice, writer, "Wrap/1.0", refolded(subject, random.choice([" ", "\t"])),
                Part("text/plain", f"{typed}\n\n{on_date(notice)}\n\n" + quoted("\n".join(lines)) + "\n"))


def flowed(notice, typed, writer, random):
    """RFC 3676: lines end in a blank where they go on, and are stuffed."""
    def flow(line):
        rows = re.findall(r".{0,66}\S*(?: +|$)", line)[:-1] or [line] if len(line) > 72 else [line]
        assert "".join(rows) == line, (rows, line)
        return "\n".join(" " + row if row.startswith((" ", ">", "From ")) else row for row in rows)

    text = "\n".join(map(flow, typed.split("\n")))
    text += f"\n\n{on_date(notice)}\n{quoted(notice.text)}\n"
    return mail(notice, writer, "Flow/1.0", encoded("Re: " + notice.subject),
                Part("text/plain; format=flowed", text, encoding="8bit"))


def in_base64(notice, typed, writer, random):
    line = f"Am {notice.date:%d.%m.%Y um %H:%M} schrieb {notice.name}:"
    return mail(notice, writer, "Sixtyfour/1.0", Header("AW: " + notice.subject, "utf-8", 70, "Subject").encode(),
                Part("text/plain", f"{typed}\n\n{line}\n{quoted(notice.text)}\n", encoding="base64"))


def japanese(notice, typed, writer, random):
    """ISO-2022-JP where it has the characters; in a quote others are lost."""
    def charset(text):
        return JAPANESE if text == text.encode(JAPANESE, "ignore").decode(JAPANESE) else "utf-8"

    text = f"{typed}\n\n{notice.date:%Y年%m月%d日} {notice.date:%H:%M} {notice.author}:\n{quoted(notice.text)}\n"
    subject = "Re: " + notice.subject
    return mail(notice, writer, "Kanji/1.0", encoded(subject, charset(subject)),
                Part("text/plain", text, charset(typed), "7bit" if charset(typed) == JAPANESE else "base64"))


def gmail(notice, typed, writer, random):
    """Only the plain part has its lines wrapped."""
    when = f"On {notice.date:%a, %b} {notice.date.day}, {notice.date.year} at {notice.date:%I:%M}\u202f{notice.date:%p}"
    address = notice.sender.addr_spec
    page = f"""<div dir="ltr">{lines_in("div", typed).replace("<div>", "", 1).replace("</div>", "", 1)}</div><br>\
<div class="gmail_quote gmail_quote_container"><div dir="ltr" class="gmail_attr">{when} {markup(notice.name)} &lt;\
<a href="mailto:{address}">{address}</a>&gt; wrote:<br></div><blockquote class="gmail_quote" \
style="margin:0px 0px 0px 0.8ex;border-left:1px solid rgb(204,204,204);padding-left:1ex">{notice.html}</blockquote>\
</div>"""
    wrapped_lines = "\n".join(re.sub(r"(?=.{77})(.{1,76})(?<! ) +(?=\S)", r"\1\n", line) for line in typed.split("\n"))
    text = f"{wrapped_lines}\n\n{when} {notice.name} <\n{address}> wrote:\n\n" + quoted(notice.text) + "\n"
    return mail(notice, writer, "G/1.0", encoded("Re: " + notice.subject),
                Part("text/plain", text), Part("text/html", page))


def outlook(notice, typed, writer, random):
    def paragraph(line):
        line = line or "<o:p>&nbsp;</o:p>"
        return f'<p class="MsoNormal"><span style="mso-fareast-language:EN-US">{line}</span></p>\n'

    head = "<br>\n".join(f"<b>{name}:</b> {html.escape(value)}" for name, value in [
        ("From", notice.author), ("Sent", f"{notice.date:%A, %B %d, %Y %I:%M %p}"), ("To", writer[0]),
        ("Subject", notice.subject)])
    page = f"""<html xmlns:o="urn:schemas-microsoft-com:office:office" xmlns:w="urn:schemas-microsoft-com:office:word">
<head><meta http-equiv="Content-Type" content="text/html; charset=utf-8">
<meta name="Generator" content="Microsoft Word 15 (filtered medium)"><style><!--
/* Style Definitions */
p.MsoNormal, li.MsoNormal {{margin:0cm; font-size:11.0pt; font-family:"Calibri",sans-serif;}}
--></style><!--[if gte mso 9]><xml><o:shapedefaults v:ext="edit" spidmax="1026" /></xml><![endif]--></head>
<body lang="EN-GB" link="#0563C1" vlink="#954F72" style="word-wrap:break-word"><div class="WordSection1">
{"".join(paragraph(markup(line) and markup(line) + "<o:p></o:p>") for line in typed.split(chr(10)))}\
{paragraph("")}<div><div style="border:none;border-top:solid #E1E1E1 1.0pt;padding:3.0pt 0cm 0cm 0cm">\
<p class="MsoNormal"><span lang="EN-US">{head}<o:p></o:p></span></p></div></div>
<p class="MsoNormal"><o:p>&nbsp;</o:p></p>{notice.html}</div></body></html>"""
    return mail(notice, writer, "O/16.0", encoded("AW: " + notice.subject), Part("text/html", page))


def apple(notice, typed, writer, random):
    line = f"On {notice.date.day} {notice.date:%b %Y, at %H:%M}, {notice.author} wrote:"
    text = f"{typed}\n\n" + quoted(f"{line}\n\n{notice.text}") + "\n"
    page = f"""<html><head><meta http-equiv="content-type" content="text/html; charset=utf-8"></head>\
<body style="overflow-wrap: break-word; -webkit-nbsp-mode: space; line-break: after-white-space;">\
{lines_in("div", typed)}<br id="lineBreakAtBeginningOfMessage"><div><blockquote type="cite"><div>{markup(line)}</div>\
<br class="Apple-interchange-newline"><div>{notice.html}</div></blockquote></div><br></body></html>"""
    return mail(notice, writer, "Apple/3.7", encoded("Re: " + notice.subject),
                Part("text/plain", text), Part("text/html", page))


CLIENTS = [top_posted, gmail, quoted_marker, wrapped, flowed, in_base64, japanese, outlook, apple]
