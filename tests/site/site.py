"""Proves that a site loses no mail and doubles none: mails of every kind come to ten mailboxes through a real Postfix
and a real Dovecot, while the service is killed three times. Afterwards each mail is either stored once, as the right
user's reply to the right discussion, or held with the right reason.
"""
import collections
import glob
import os
import random
import re
import smtplib
import sys
import threading
import time

import mails as mail_kinds
from mailboxes import SOURCES, project_of, set_up
from service import STORES, WORK, Service, tvmail, tvmail_json

SEED = 20261102
QUEUE = os.environ["QUEUE"]
TOKEN = re.compile(rb"X-Token: (token-\d+-[0-9a-f]+)")
# Where a mail waits in the mailboxes that are Maildirs.
WAITING = [f"{source['folder']}/new/*" for source in SOURCES.values() if source.get("source") == "maildir"]


def send_all(mails):
    """Sends each mail as often as it comes, in an order of its own, by four connections."""
    sends = [mail for mail in mails for _ in range(mail.copies)]
    random.Random(SEED).shuffle(sends)
    failures = []

    def send(part):
        try:
            with smtplib.SMTP("127.0.0.1", 2525, local_hostname="mx.example.net") as server:
                for mail in part:
                    recipients = [f"{name}@site.example" for name in mail.mailboxes]
                    server.sendmail(mail.envelope, recipients, mail.bytes(), ["body=8bitmime"])
        except Exception as error:
            failures.append(f"{mail.token} ({mail.kind}): {error}")

    threads = [threading.Thread(target=send, args=(sends[start::4],)) for start in range(4)]
    for thread in threads:
        thread.start()
    return threads, failures


def files_below(*patterns):
    return [path for pattern in patterns for path in glob.glob(pattern, recursive=True) if os.path.isfile(path)]


def unread(name):
    """The files of a server's mailbox that are not handled yet. Those of mail that is kept don't tell."""
    files = files_below(f"{WORK}/mail/{name.lower()}/new/*", f"{WORK}/mail/{name.lower()}/cur/*")
    after = SOURCES[name]["after-success"]
    if after == "keep":
        return []
    return [path for path in files if after != "mark" or "S" not in path.rpartition(":2,")[2]]


def waiting():
    """The files of mails on their way."""
    files = files_below(*(f"{QUEUE}/{folder}/**" for folder in ("maildrop", "incoming", "active", "deferred")))
    files += files_below(*WAITING)
    return files + [path for name, source in SOURCES.items() if "after-success" in source for path in unread(name)]


def read(path):
    try:
        with open(path, "rb") as file:
            return file.read()
    except OSError:
        return b""


class Account:
    """What became of the mails."""

    def __init__(self):
        self.replies = collections.defaultdict(list)  # by mailbox and token
        self.held = collections.defaultdict(list)
        self.unknown = []
        self.total_replies = 0
        for name in SOURCES:
            for discussion in tvmail_json("project", "show", project_of(name))["discussions"]:
                for reply in discussion["replies"]:
                    self.add_reply(name, discussion["number"], reply)
        for mail in tvmail_json("held", "list"):
            path, = files_below(f"{STORES}/held/{mail['mailbox'].lower()}/[nc]*/{mail['id']}*") or [""]
            token = TOKEN.search(read(path))
            if token:
                self.held[mail["mailbox"], token[1].decode()].append(mail["reason"])
            else:
                self.unknown.append(f"held mail {mail['id']} of {mail['mailbox']}")

    def add_reply(self, name, discussion, reply):
        self.total_replies += 1
        tokens = set(re.findall(r"token-\d+-[0-9a-f]+", reply["body"]))
        for token in tokens:
            self.replies[name, token].append((discussion, reply["user"], reply["body"]))
        if len(tokens) != 1:
            self.unknown.append(f"a reply of {reply['user']} in {name}: {reply['body'][:200]!r}")

    def missing(self, mails):
        return [(name, mail) for mail in mails for name in mail.mailboxes
                if not (self.held[name, mail.token] if mail.reason else self.replies[name, mail.token])]


def fault_of(mail, name, account):
    """What is wrong with a mail in one of its mailboxes; nothing if all is well."""
    replies, held = account.replies[name, mail.token], account.held[name, mail.token]
    if mail.reason:
        if replies:
            return f"stored {len(replies)} times"
        if len(held) != mail.copies:
            return f"held {len(held)} times, not {mail.copies}"
        wrong = [reason for reason in held if not re.search(mail.reason, reason)]
        return f"held for another reason: {wrong[0]}" if wrong else None
    if held:
        return f"held: {held[0]}"
    if len(replies) != 1:
        return f"stored {len(replies)} times"
    discussion, user, body = replies[0]
    if (discussion, user) != (mail.discussion, mail.user):
        return f"stored in discussion {discussion} as {user}'s"
    if mail.text is not None and body.replace("\r\n", "\n").strip() != mail.text:
        return f"stored with another text: {body!r}"
    return None


def trace(token):
    """Where a mail was seen."""
    places = files_below(f"{QUEUE}/**", "/var/mail/**", "/srv/talvane/mail/**", f"{WORK}/mail/**", f"{STORES}/held/**")
    found = [path for path in places if token.encode() in read(path)]
    names = [os.path.basename(path).partition(":")[0] for path in found]
    log = read(f"{WORK}/service.log").decode(errors="replace").splitlines()
    log = [line for line in log if any(name in line for name in names)]
    return "".join(f"\n    {line}" for line in found + log)


def check(mails, account):
    """Prints a table of the kinds of mail; returns the faults."""
    rows = collections.defaultdict(collections.Counter)
    faults = [f"{item} belongs to no mail" for item in account.unknown]
    for mail in mails:
        for name in mail.mailboxes:
            row = rows[mail.kind]
            row["arrived"] += mail.copies
            row["stored"] += len(account.replies[name, mail.token])
            row["held"] += len(account.held[name, mail.token])
            row["repeated"] += 0 if mail.reason else mail.copies - 1
            fault = fault_of(mail, name, account)
            if fault:
                faults.append(f"{mail.token} ({mail.kind}) in {name}: {fault}{trace(mail.token)}")
    columns = ("arrived", "stored", "held", "repeated")
    rows["all"] = sum(rows.values(), collections.Counter())
    print(f"{'':32}" + "".join(f"{column:>10}" for column in columns))
    for kind in [*sorted(kind for kind in rows if kind != "all"), "all"]:
        print(f"{kind:32}" + "".join(f"{rows[kind][column]:10}" for column in columns))
    if rows["all"]["stored"] != account.total_replies:
        faults.append(f"the projects have {account.total_replies} replies")
    return faults


def check_status(account):
    """The status agrees with the stores, and the log has no text of a mail. What a killed service had not written yet
    isn't counted."""
    faults = []
    for row in tvmail_json("status")["mailboxes"]:
        name, counts = row["name"], row["counts"]
        stored = sum(len(replies) for (mailbox, _), replies in account.replies.items() if mailbox == name)
        held = sum(len(reasons) for (mailbox, _), reasons in account.held.items() if mailbox == name)
        if row["held"] != held or not 0 < counts["delivered"] <= stored or not row["lastDelivered"]:
            faults.append(f"the status is {row}, but {stored} replies are stored and {held} mails held")
    if b"token-" in read(f"{WORK}/service.log"):
        faults.append("the log shows a mail's text")
    return faults


def settle(mails, deadline):
    """Waits until no mail is on its way and every mail is found, or nothing has changed for some seconds."""
    last, changed = None, time.monotonic()
    while time.monotonic() < min(deadline, changed + 20):
        account = None if waiting() else Account()
        missing = account.missing(mails) if account else None
        if account and not missing:
            return True
        now = (waiting(), missing)
        if now != last:
            last, changed = now, time.monotonic()
        time.sleep(0.2)
    print("not settled:", *waiting()[:20], sep="\n  ")
    return False


def deliver_again():
    """Puts the handled mails of the Maildirs back, which changes nothing."""
    for path in files_below(*(pattern.replace("/new/", "/cur/") for pattern in WAITING)):
        os.rename(path, path.replace("/cur/", "/new/").partition(":")[0])
    tvmail("fetch")


def main():
    begin = time.monotonic()
    count, kills = int(sys.argv[1]), int(sys.argv[2])
    deadline = begin + 60 + count * 0.2
    set_up()
    mails = mail_kinds.make(list(SOURCES), count, SEED)
    served = sum(mail.copies for mail in mails for name in mail.mailboxes if "source" in SOURCES[name])
    print(f"{time.monotonic() - begin:.1f} s: {len(mails)} mails are sent; {served} deliveries are the service's")
    service = Service()
    threads, failures = send_all(mails)
    for kill in range(kills):
        at = service.kill_after(int(served * (kill + random.uniform(0.3, 0.9)) / kills), deadline)
        print(f"{time.monotonic() - begin:.1f} s: killed after {at} mails")
    for thread in threads:
        thread.join()
    print(f"{time.monotonic() - begin:.1f} s: all mails are sent")
    settled = settle(mails, deadline)
    service.stop()
    deliver_again()
    print(f"{time.monotonic() - begin:.1f} s: {'settled' if settled else 'NOT settled'}")
    account = Account()
    faults = failures + check(mails, account) + check_status(account)
    print(*faults[:50], sep="\n")
    print(f"{time.monotonic() - begin:.1f} s: {len(faults)} faults")
    return 1 if faults or not settled else 0


if __name__ == "__main__":
    sys.exit(main())
