"""Persons who take part in a discussion by mail alone: they read notices by IMAP and answer them by SMTP."""
import imaplib
import random
import shutil
import smtplib
import subprocess
import threading
from dataclasses import dataclass

import clients
import texts

# What a client doesn't keep of a typed text: blanks at the ends of lines, but where the expression matches.
KEPT = {clients.gmail: "", clients.outlook: "", clients.apple: ".* +", clients.flowed: "-- "}
SWAKS = shutil.which("swaks")


@dataclass
class Reply:
    author: str
    round: int
    discussion: int
    text: str
    client: str = "posted"


class Board:
    """What was written, as the writers know it."""

    def __init__(self, users, in_turns):
        self.users, self.in_turns = users, in_turns
        self.replies = []

    def find(self, text):
        """The reply that a notice tells, which has all of its text; nothing if it has not."""
        return next((reply for reply in list(self.replies) if f"\n{reply.text}\n" in text), None)


def send(sender, recipient, mail):
    with smtplib.SMTP("127.0.0.1", 2525, local_hostname="client.example") as server:
        server.sendmail(sender, [recipient], mail)


def send_by_swaks(sender, recipient, mail):
    subprocess.run([SWAKS, "--server", "127.0.0.1", "--port", "2525", "--from", sender, "--to", recipient, "--silent",
                    "--data", "-"], input=mail, check=True, capture_output=True, timeout=30)


class User(threading.Thread):
    """Answers one notice a round, with a client and a program of its own each time."""

    def __init__(self, name, address, board, first_client, rounds, seed):
        super().__init__(daemon=True)
        self.name, self.address, self.board, self.rounds = name, address, board, rounds
        self.first_client = first_client
        self.random = random.Random(f"{name} {seed}")
        self.received, self.sent = [], []  # notifications; bytes of mails
        self.told, self.open = {}, []  # the Message-IDs of the notices of each reply; what can be answered
        self.done, self.stop, self.failure = 0, threading.Event(), None
        self.seen = 0  # the last UID

    def run(self):
        try:
            with imaplib.IMAP4("127.0.0.1") as mailbox:
                mailbox.login(self.address.partition("@")[0], "secret")
                mailbox.select()
                while not self.stop.is_set():
                    self.read(mailbox)
                    if self.may_answer():
                        self.answer()
                    else:
                        self.stop.wait(0.1)
                self.read(mailbox)
        except Exception as error:  # of whatever kind, it is the test's result
            self.failure = f"{self.name}: {error!r}"

    def read(self, mailbox):
        mailbox.noop()
        for uid in mailbox.uid("SEARCH", f"UID {self.seen + 1}:*")[1][0].split():
            if int(uid) > self.seen:
                self.seen = int(uid)
                self.take(clients.Notification(mailbox.uid("FETCH", uid, "(BODY.PEEK[])")[1][0][1]))

    def take(self, notice):
        reply = self.board.find(notice.text)
        self.received.append((notice, reply))
        ids = self.told.setdefault(reply and reply.text, [])
        ids.append(notice.id)
        if reply and len(ids) == 1:
            self.open.append((notice, reply.discussion))

    def may_answer(self):
        """In turns, a round begins when all answers of the one before have come."""
        last = [reply.text in self.told for reply in list(self.board.replies)
                if reply.round == self.done and reply.author != self.name]
        in_time = self.done == 0 or not self.board.in_turns or (len(last) == self.board.users - 1 and all(last))
        return bool(self.open) and self.done < self.rounds and in_time

    def answer(self):
        in_turn = [item for item in self.open if item[1] == 1 + self.done % 2]  # so that no discussion ends early
        item = self.random.choice(in_turn or self.open)
        self.open.remove(item)
        notice, discussion = item
        self.done += 1
        client = clients.CLIENTS[(self.first_client + self.done) % len(clients.CLIENTS)]
        text = self.typed(client, f"[{self.name} {self.done}]")
        mail = client(notice, text, (f"{self.name.title()} Ärmel", self.address), self.random)
        self.sent.append(mail)
        self.board.replies.append(Reply(self.name, self.done, discussion, text, client.__name__))
        self.sends(mail, client)
        by_swaks = SWAKS and self.random.random() < 0.5
        (send_by_swaks if by_swaks else send)(self.address, notice.reply_to, mail)

    def sends(self, mail, client):
        """For a demonstration."""

    def typed(self, client, start):
        languages = list(texts.SENTENCES)
        self.random.shuffle(languages)
        if client is clients.japanese:
            languages = ["japanese", "english"]
        return texts.typed(self.random, start, languages, self.random.random() < 0.5, KEPT.get(client, ".* +"))
