"""The same with Python's standard library: email reads each mail of an mbox, and sqlite3 commits one reply for it.

python3 email_sqlite.py MBOX DATABASE
"""
import email
import email.policy
import sqlite3
import sys

CUT_MARKER = "----- Reply above this line -----"


def mails(data):
    begin = 0
    while begin < len(data):
        end = data.find(b"\nFrom ", begin) + 1 or len(data)
        yield data[data.index(b"\n", begin) + 1 : end]  # without its "From " line
        begin = end


def main(mbox, file):
    database = sqlite3.connect(file, isolation_level=None)  # each statement is a transaction
    database.execute("PRAGMA journal_mode = WAL")
    database.execute("PRAGMA synchronous = FULL")
    database.execute("CREATE TABLE replies (id INTEGER PRIMARY KEY, discussion, subject, body, user, at)")
    count = 0
    with open(mbox, "rb") as source:
        data = source.read()
    for data in mails(data):
        mail = email.message_from_bytes(data, policy=email.policy.default)
        text = mail.get_body(("plain",)).get_content()
        database.execute(
            "INSERT INTO replies (discussion, subject, body, user, at) "
            "VALUES (1, ?, ?, 1, strftime('%Y-%m-%dT%H:%M:%fZ', 'now'))",
            (mail["subject"], text.split(CUT_MARKER, 1)[0]),
        )
        count += 1
    database.close()
    print(count, "replies")


main(*sys.argv[1:])
