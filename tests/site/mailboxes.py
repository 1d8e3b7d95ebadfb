"""The site's mailboxes."""
import json
import os

from service import HOME, PASSWORD, STORES, USER, WORK, tvmail, write_file

# How each mailbox gets its mail: a Maildir that Postfix writes, Postfix's pipe, or the server Dovecot.
SOURCES = {
    "Apollo": {"source": "maildir", "folder": "/var/mail/site/Apollo"},
    "Gemini": {"source": "maildir", "folder": "/var/mail/site/Gemini", "require-authenticated": "mx.example.net"},
    "Mercury": {"source": "maildir", "folder": f"{HOME}/mail/Mercury", "size-limit": 1},
    "Skylab": {},
    "Voyager": {},
    "Viking": {"source": "imap", "after-success": "mark"},
    "Magellan": {"source": "imap", "after-success": "move", "move-to": "Archiv-ä"},
    "Juno": {"source": "imap", "after-success": "delete"},
    "Cassini": {"source": "pop3", "after-success": "delete"},
    "Dawn": {"source": "pop3", "after-success": "keep"},
}


def project_of(name):
    return f"{HOME}/{name}.TVS"


def set_up():
    write_file(PASSWORD, "secret\n")
    tvmail("init")
    for name, settings in SOURCES.items():
        project = project_of(name)
        tvmail("project", "create", project, "--name", name, "--user", "admin", "--password-file", PASSWORD)
        for user in ("alice", "bob"):
            tvmail("project", "add-user", project, "--name", user, "--email", f"{user}@apollo.example")
        tvmail("project", "add-user", project, "--name", "carol", "--email", "carol@apollo.example", "--refuse-mail")
        for title in ("Release plan", "Launch site"):
            tvmail("project", "add-discussion", project, "--title", title)
        tvmail("mailbox", "add", name, "--project", project, "--user", "admin", "--password-file", PASSWORD,
               "--transport", "smtp", "--host", "127.0.0.1:2525", "--address", f"{name}@site.example")
        if "folder" in settings:
            for folder in ("", "/new", "/cur", "/tmp"):
                os.mkdir(settings["folder"] + folder, 0o700)
                os.chown(settings["folder"] + folder, USER.pw_uid, USER.pw_gid)
    lines = ["[defaults]", "poll-seconds = 1", "notices = false"]
    for name, settings in SOURCES.items():
        lines += ["[[mailbox]]", f'name = "{name}"']
        if settings.get("source") in ("imap", "pop3"):
            settings = {"host": "mail.test", "user": name.lower(), "password-file": PASSWORD,
                        "ca-file": f"{WORK}/tls/ca.pem", **settings}
        lines += [f"{setting} = {json.dumps(value)}" for setting, value in settings.items()]
    write_file(f"{STORES}/tvmail.toml", "\n".join(lines) + "\n")
    print(tvmail("check"))
