"""Proves that people can hold a discussion by mail alone. Three users, each with a mailbox on a real Dovecot, answer
each other's notices for ten rounds, in the shapes of many mail clients; a real Postfix carries all mail, and
`tvmail serve` takes the answers and sends the notices. Afterwards every reply is stored as it was typed, to the letter,
and every user has got every reply of the others, once, in one thread for each discussion.

The runs take turns: one without trouble, one in which the service is killed, one whose server fails every third mail.
"""
import argparse
import collections
import email
import json
import os
import random
import time

import users
from failing_server import Proxy
from service import HOME, PASSWORD, STORES, USER, WORK, Service, tvmail, tvmail_json, write_file

VARIANTS = ["plain", "killed", "failing"]
LANGUAGES = {"ann": "en", "bob": "de", "cem": "ja"}  # of the users' notices
LONG = "The plan of the hall and everything (that) we need for it: keys, cable drums, chairs " * 2
TITLES = [(LONG.strip(), "Grüße aus Köln – 会議の予定 🚀"), (LONG.replace("a", "ä").strip(), "会議の予定と資料")]


class Run:
    """One discussion by mail, in a project of its own."""

    def __init__(self, name, variant, seed, rounds, titles, user=users.User, maildir=False):
        self.name, self.variant, self.seed, self.rounds = name, variant, seed, rounds
        self.titles, self.maildir = titles, maildir  # the mailbox is a Maildir, or else on the server
        self.random = random.Random(seed)
        self.project = f"{HOME}/{name}.TVS"
        self.address = f"{name.lower()}@{'maildir' if maildir else 'site'}.example"
        self.board = users.Board(len(LANGUAGES), variant != "failing")  # else a round takes as long as a repetition
        third = len(users.clients.CLIENTS) // 3
        self.users = [user(person, f"{person}.{name.lower()}@people.example", self.board, seed + index * third, rounds,
                           seed) for index, person in enumerate(LANGUAGES)]
        self.faults = []

    def set_up(self):
        server = "127.0.0.1:2526" if self.variant == "failing" else "127.0.0.1:2525"
        tvmail("project", "create", self.project, "--name", self.name, "--user", "admin", "--password-file", PASSWORD)
        for user in self.users:
            tvmail("project", "add-user", self.project, "--name", user.name, "--email", user.address)
            tvmail("project", "set-user", self.project, "--user", user.name, "--language", LANGUAGES[user.name])
        for title in self.titles:
            tvmail("project", "add-discussion", self.project, "--title", title)
        tvmail("mailbox", "add", self.name, "--project", self.project, "--user", "admin", "--password-file", PASSWORD,
               "--transport", "smtp", "--host", server, "--address", self.address)
        tvmail("outbound", "--enable", "--transport", "smtp", "--host", server, "--address", self.users[0].address,
               "--real-name", "Ann Äcker")
        source = {"source": "imap", "host": "mail.test", "user": self.name.lower(), "password-file": PASSWORD,
                  "ca-file": f"{WORK}/tls/ca.pem"}
        if self.maildir:
            source = {"source": "maildir", "folder": f"/var/mail/site/{self.name.lower()}"}
            for folder in ("", "/new", "/cur", "/tmp"):
                os.mkdir(source["folder"] + folder, 0o700)
                os.chown(source["folder"] + folder, USER.pw_uid, USER.pw_gid)
        lines = ["[defaults]", "poll-seconds = 1", "notices-per-minute = 1000", "[[mailbox]]", f'name = "{self.name}"']
        write_file(f"{STORES}/tvmail.toml", "\n".join(
            lines + [f"{setting} = {json.dumps(value)}" for setting, value in source.items()]) + "\n")

    def begin(self):
        """Ann posts the first reply of each discussion on this machine."""
        for discussion in range(1, len(self.titles) + 1):
            text = self.users[0].typed(None, f"[ann, first of {discussion}]")
            self.board.replies.append(users.Reply("ann", 0, discussion, text))
            write_file(f"{HOME}/text", text + "\n")
            tvmail("project", "post", self.project, f"{HOME}/text", "--discussion", str(discussion), "--user", "ann")

    def expected(self, user):
        return {reply.text for reply in self.board.replies if reply.author != user.name}

    def is_complete(self):
        return all(user.done == self.rounds and not self.expected(user) - set(user.told) for user in self.users)

    def received(self):
        return sum(len(user.received) for user in self.users)

    def hold(self, proxy):
        """The discussion, until all is told or nothing has happened for so long that nothing will."""
        proxy.fails = True
        service = Service()
        kills = 8 if self.variant == "killed" else 0
        all_notices = 2 * (len(self.titles) + 3 * self.rounds)
        times = sorted(self.random.randrange(all_notices - 2) for _ in range(kills))
        last, changed = 0, time.monotonic()
        for user in self.users:
            user.start()
        while times or not self.is_complete() or tvmail_json("status")["mailboxes"][0]["unsentNotices"]:
            if times and self.received() >= times[0]:
                times.pop(0)
                time.sleep(self.random.random() * 0.05)
                service.kill()
                kills -= 1
            if all(user.done == self.rounds for user in self.users):
                proxy.fails = False  # so that the pauses before further attempts don't become long
            if self.received() != last:
                last, changed = self.received(), time.monotonic()
            failures = [user.failure for user in self.users if user.failure]
            failures += [f"{user.name} is told what nobody typed" for user in self.users if None in user.told]
            if failures or time.monotonic() > changed + 60:
                self.faults += failures or ["nothing has happened for a minute"]
                break
            time.sleep(0.02 if times else 0.1)
        self.faults += [f"the service was to be killed {kills} times more"] if kills else []
        for user in self.users:
            user.stop.set()
            user.join()
        service.stop()

    def check(self):
        self.check_replies()
        for user in self.users:
            self.check_mails(user)
        status = tvmail_json("status")["mailboxes"][0]
        if status["held"] or status["unsentNotices"]:
            self.faults.append(f"the status is {status}")
        return self.faults

    def check_replies(self):
        """Each text is stored once, of the right user and in the right discussion."""
        stored = [(reply["user"], discussion["number"], reply["body"])
                  for discussion in tvmail_json("project", "show", self.project)["discussions"]
                  for reply in discussion["replies"]]
        typed = {(reply.author, reply.discussion, reply.text.replace("\n", "\r\n")): reply.client
                 for reply in self.board.replies}
        for reply, count in collections.Counter(stored).items():
            if reply not in typed or count != 1:
                self.faults.append(f"{count} times stored, but typed otherwise: {reply}")
        self.faults += [f"not stored as typed ({client}): {reply}"
                        for reply, client in typed.items() if reply not in stored]

    def check_mails(self, user):
        """The user has a notice of each reply of others, which is repeated only as the same mail and after trouble, and
        the mails of a discussion are one thread."""
        def fault(text):
            self.faults.append(f"{user.name}: {text}")

        for text in self.expected(user) - set(user.told):
            fault(f"isn't told: {text[:60]!r}")
        for text, ids in user.told.items():
            if text not in self.expected(user):
                fault(f"is told {text!r}: {[notice.text for notice, reply in user.received if not reply]}")
            if len(set(ids)) != 1 or (len(ids) > 1 and self.variant == "plain"):
                fault(f"is told by {ids}: {text[:60]!r}")
        own = [email.message_from_bytes(mail) for mail in user.sent]
        ids = {mail["Message-ID"] for mail in own} | {notice.id for notice, _ in user.received}
        for discussion in range(1, len(self.titles) + 1):
            notices = [notice for notice, reply in user.received if reply and reply.discussion == discussion]
            roots = {notice.id for notice in notices if notice.mail["In-Reply-To"].strip() not in ids}
            if len(roots) != 1 or len({notice.references[0] for notice in notices}) != 1:
                fault(f"the mails of discussion {discussion} aren't one thread: {roots}")
            if len({notice.subject for notice in notices}) != 1:
                fault(f"the subjects differ: {[notice.subject for notice in notices]}")
        for notice, reply in user.received:
            if (notice.mail["Auto-Submitted"], notice.reply_to) != ("auto-generated", self.address):
                fault(f"{notice.id} can be answered by a program, or elsewhere")


def print_log():
    with open(f"{WORK}/service.log", errors="replace") as file:
        print("the end of the service's log:", *file.read().splitlines()[-40:], sep="\n  ")


def main():
    parser = argparse.ArgumentParser(description=__doc__.partition("\n\n")[0])
    parser.add_argument("--runs", type=int, default=3)
    parser.add_argument("--rounds", type=int, default=10)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--variants", default=",".join(VARIANTS), help="which take turns")
    options = parser.parse_args()
    variants = options.variants.split(",")
    write_file(PASSWORD, "secret\n")
    tvmail("init")
    proxy = Proxy()
    if not users.SWAKS:
        print("skipped: there is no swaks, so that Python's smtplib sends every mail")
    for number in range(1, options.runs + 1):
        begin = time.monotonic()
        variant = variants[(number - 1) % len(variants)]
        seed = options.seed + number - 1
        run = Run(f"Circle{number}", variant, seed, options.rounds, TITLES[seed % 2], maildir=number % 2 == 0)
        run.set_up()
        run.begin()
        run.hold(proxy)
        faults = run.check()
        repeated = run.received() - sum(len(user.told) for user in run.users)
        print(f"run {number} ({variant}, seed {seed}, {'Maildir' if run.maildir else 'IMAP'}): "
              f"{len(run.board.replies)} replies, {run.received()} notices, {repeated} repeated; "
              f"{time.monotonic() - begin:.1f} s; {len(faults)} faults", flush=True)
        if faults:
            print(*faults[:20], sep="\n")
            print_log()
            return 1
    return 0


if __name__ == "__main__":
    raise SystemExit(main())
