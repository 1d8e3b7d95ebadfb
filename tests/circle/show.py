"""Shows the circle: three users hold a discussion by mail alone, in two rounds. For `run.sh --circle`."""
import threading

import circle
import users
from service import PASSWORD, tvmail, write_file

TEXTS = {"ann": ["Welcome! We open the yard on Friday.\nWho brings the keys?", "Thank you both.", "Then all is settled."],
         "bob": ["", "I bring them, after nine.", "Grüße aus Köln!"],
         "cem": ["", "The van can carry the chairs.", "金曜日で結構です。"]}
print_lock = threading.Lock()


def show(title, content=""):
    with print_lock:
        print(f"\n-- {title}", *(f"   | {line}" for line in content.strip().split("\n") if content), sep="\n", flush=True)


class ShownUser(users.User):
    def typed(self, client, start):
        return TEXTS[self.name][self.done]

    def take(self, notice):
        super().take(notice)
        head = f"From: {notice.mail['From']}\nSubject: {notice.subject}\n\n"
        if len(self.received) == 1:
            show(f"{self.name} reads a notice", head + "\n".join(notice.text.split("\n")[:7]))
        else:
            show(f"{self.name} reads another one, of {notice.name}")

    def sends(self, mail, client):
        text = users.clients.email.message_from_bytes(mail, policy=users.clients.email.policy.default)
        text = text.get_body(("plain", "html")).get_content()
        lines = [line.rstrip()[:100] for line in text.split("\n")]
        show(f"{self.name} answers it with a mail program of the kind \"{client.__name__.replace('_', ' ')}\"", "\n".join(lines[:9]))


def main():
    write_file(PASSWORD, "secret\n")
    run = circle.Run("Apollo", "plain", 1, 2, ["The plan for the yard"], ShownUser)
    tvmail("init")
    run.set_up()
    show(f"A project with a mailbox, {run.address}, and three users who take mail",
         "\n".join(f"{user.name}, {user.address}" for user in run.users))
    run.begin()
    show("ann posts the first reply on this machine: tvmail project post", TEXTS["ann"][0])
    show("tvmail serve takes the mailbox's mail, and sends a notice of each reply to the other users")
    run.hold(circle.Proxy())
    faults = run.check()
    show("The discussion, as the project has it", tvmail("project", "show", run.project).strip())
    if faults:
        print("\nNot done:", *faults, sep="\n")
        circle.print_log()
        return 1
    print(f"\nDone: {len(run.board.replies)} replies are stored as they were typed, and each user was told of all replies "
          f"of the others, by {run.received()} notices.")
    return 0


if __name__ == "__main__":
    raise SystemExit(main())
