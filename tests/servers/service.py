"""Runs tvmail and its service as the user of the mailboxes."""
import glob
import json
import os
import pwd
import random
import signal
import subprocess
import time

USER = pwd.getpwnam("talvane")
HOME = "/srv/talvane"
STORES = f"{HOME}/.local/share/talvane"
WORK = os.environ["WORK"]
PASSWORD = f"{HOME}/password"


def program(*arguments):
    """The command, and the options to start it as the user of the mailboxes."""
    return ["/usr/local/bin/tvmail", *arguments], dict(
        user=USER.pw_uid, group=USER.pw_gid, extra_groups=[], cwd=HOME,
        env={**os.environ, "HOME": HOME, "LC_ALL": "C.UTF-8"})


def tvmail(*arguments):
    """Runs tvmail; returns its output. Ends the test if it fails."""
    command, options = program(*arguments)
    done = subprocess.run(command, capture_output=True, timeout=120, **options)
    if done.returncode != 0:
        raise SystemExit(f"not so: {' '.join(command)} ends well; it ended with {done.returncode}: "
                         + (done.stdout + done.stderr).decode(errors="replace")[-3000:])
    return done.stdout.decode("utf-8", "surrogateescape")


def tvmail_json(*arguments):
    return json.loads(tvmail(*arguments, "--json"))


def write_file(path, text):
    with open(os.open(path, os.O_WRONLY | os.O_CREAT | os.O_TRUNC, 0o600), "w") as file:
        file.write(text)
    os.chown(path, USER.pw_uid, USER.pw_gid)


def kill_deliveries():
    """Kills what Postfix has started. The machine has processes of its own, so no other's are found."""
    for command in glob.glob("/proc/[0-9]*/cmdline"):
        try:
            with open(command, "rb") as file:
                if file.read().startswith(b"/usr/local/bin/tvmail\0deliver"):
                    os.kill(int(command.split("/")[2]), signal.SIGKILL)
        except OSError:
            pass  # it has ended


class Service:
    """tvmail serve. Its log goes on in one file, whichever process writes it."""

    def __init__(self):
        self.log = open(f"{WORK}/service.log", "ab")
        self.start()

    def start(self):
        command, options = program("serve")
        self.process = subprocess.Popen(command, stderr=self.log, stdout=self.log, **options)

    def handled(self):
        """The number of mails that the service has handled since the beginning."""
        with open(self.log.name, "rb") as log:
            return log.read().count(b" event=mail ")

    def kill_after(self, mails, deadline):
        """Kills the service and the piped deliveries soon after it has handled so many mails, and starts it again.
        Returns how many it had handled."""
        while self.handled() < mails:
            if time.monotonic() > deadline:
                raise SystemExit(f"not so: the service handles {mails} mails; it handled {self.handled()}")
            if self.process.poll() is not None:
                break  # by itself
            time.sleep(0.02)
        time.sleep(random.random() * 0.1)
        return self.kill()

    def kill(self):
        self.process.kill()
        kill_deliveries()
        if self.process.wait() != -signal.SIGKILL:
            raise SystemExit(f"not so: the service goes on; it ended with {self.process.returncode}")
        handled = self.handled()
        self.start()
        return handled

    def stop(self):
        self.process.send_signal(signal.SIGTERM)
        status = self.process.wait(20)
        if status != 0:
            raise SystemExit(f"not so: SIGTERM ends the service with 0; it ended with {status}")
