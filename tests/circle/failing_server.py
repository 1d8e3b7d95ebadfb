"""A mail server that fails every third mail while it is told to: a proxy in front of a good one, on 127.0.0.1:2526."""
import itertools
import socket
import socketserver
import threading

FAILURES = ["451 at RCPT", "451 after DATA", "closed at RCPT", "451 after DATA", "closed behind DATA"]


class Proxy(socketserver.ThreadingTCPServer):
    allow_reuse_address = True
    daemon_threads = True

    def __init__(self):
        super().__init__(("127.0.0.1", 2526), Connection)
        self.mails = itertools.count(1)
        self.fails = True
        threading.Thread(target=self.serve_forever, args=(0.05,), daemon=True).start()

    def next_failure(self):
        """How the next mail fails; nothing if it goes on."""
        number = next(self.mails)
        return FAILURES[number // 3 % len(FAILURES)] if self.fails and number % 3 == 0 else None


class Connection(socketserver.StreamRequestHandler):
    def handle(self):
        with socket.create_connection(("127.0.0.1", 2525)) as server:
            self.server_lines = server.makefile("rwb")
            self.relay_answer()
            failure = None
            for line in self.rfile:
                command = line[:4].upper()
                if command == b"RCPT":
                    failure = self.server.next_failure()
                    if failure == "closed at RCPT":
                        return
                    if failure == "451 at RCPT":
                        self.wfile.write(b"451 4.3.0 Try again later\r\n")
                        continue
                if command == b"DATA" and failure == "451 after DATA":
                    self.wfile.write(b"354 Go on\r\n")
                    self.read_data()
                    self.to_server(b"RSET\r\n")
                    self.answer()
                    self.wfile.write(b"451 4.3.0 Try again later\r\n")
                    continue
                self.to_server(line)
                if self.relay_answer().startswith(b"354"):
                    self.to_server(self.read_data())
                    if failure == "closed behind DATA":
                        self.answer()  # the mail is taken, but the sender doesn't learn it
                        return
                    self.relay_answer()

    def read_data(self):
        lines = []
        while not lines or lines[-1] not in (b".\r\n", b""):
            lines.append(self.rfile.readline())
        return b"".join(lines)

    def to_server(self, content):
        self.server_lines.write(content)
        self.server_lines.flush()

    def answer(self):
        lines = [self.server_lines.readline()]
        while lines[-1][3:4] == b"-":
            lines.append(self.server_lines.readline())
        return b"".join(lines)

    def relay_answer(self):
        answer = self.answer()
        self.wfile.write(answer)
        return answer
