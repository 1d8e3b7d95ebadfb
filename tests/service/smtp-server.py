"""An SMTP server for tests: takes mail on a free port of 127.0.0.1 and answers as files say.

smtp-server.py     writes its port into the file port, and each mail that it takes into the file sent: a line
                   "SENDER > RECIPIENT", and one for each field Message-ID, From and Reply-To. A file
                   answer.RECIPIENT holds what it answers instead of "250 OK" to that recipient's mail.
"""
import asyncore
import email
import os
import smtpd


class Server(smtpd.SMTPServer):
    def process_message(self, peer, sender, recipients, data, **options):
        answer = "answer." + recipients[0]
        if os.path.exists(answer):
            with open(answer, encoding="ascii") as file:
                return file.read().strip()
        mail = email.message_from_bytes(data)
        with open("sent", "a", encoding="utf-8") as sent:
            print(sender, ">", ", ".join(recipients), file=sent)
            for name in ("Message-ID", "From", "Reply-To"):
                print(name + ":", mail[name], file=sent)


server = Server(("127.0.0.1", 0), None)
with open("port.new", "w", encoding="ascii") as file:
    print(server.socket.getsockname()[1], file=file)
os.rename("port.new", "port")
asyncore.loop(timeout=0.05)
