# Both recipes for Postfix, with a real Postfix that listens on loopback.
. "$WORK/test/postfix-server.sh"
. "$WORK/test/mailbox.sh"
start_postfix
# follow HEADING: runs the commands of the recipe; the reload goes to the running server
follow() {
  sed -n "/^$1/,/^[^ ]/"'s/^    //p' "$SOURCE/packaging/postfix/README" |
    sed 's/^postfix reload/reload_postfix/' >"$WORK/typed"
  grep -q reload_postfix "$WORK/typed" || fail "the recipe has a part '$1'"
  cd "$SOURCE/packaging/postfix"
  . "$WORK/typed"
}
# send MAIL RECIPIENT
send() { curl -sS -m 10 --url smtp://127.0.0.1:2525 --mail-from alice@apollo.example --mail-rcpt "$2" --upload-file "$WORK/$1"; }
# Postfix breaks the lines of its report.
returned() { find /var/mail/apollo.example -type f -exec cat {} + | tr -s '\n ' ' ' | grep -q "$1"; }
queued() { postqueue -p | grep -q "$1"; }
# try RECIPIENT: one mail becomes a reply, one is returned, one is deferred until its project is available
try() {
  for kind in good refused deferred; do sed -i "s/^Message-ID: </&to-$1-/; \$s/\$/ To $1./" "$WORK/$kind"; done
  await "$1 becomes a reply" send good "$1"
  await "and is stored" replied "works for me.* To $1"
  send refused "$1"
  await "a refused mail is held" held "Nobody knows me.* To $1"
  project_away
  send deferred "$1"
  await "a mail waits while its project is away" queued "temporary failure"
  project_back
  postqueue -f
  await "and is delivered then" replied "disk was away.* To $1"
  returned . && fail "a mail that became a reply causes no mail"
  :
}

follow "One address"
try apollo@example.org
[ "$(postconf -h mailbox_size_limit)" = 0 ] || fail "a store may grow"
# --quiet in place of --hold returns refused mail.
sed -i "s/--hold/--quiet/" /etc/talvane/aliases
postalias /etc/talvane/aliases
chown talvane /etc/talvane/aliases.db
# The server reads a table again if it is from another second.
touch -d tomorrow /etc/talvane/aliases.db
send refused apollo@example.org
await "a refused mail comes back with its reason" returned "$sentence"
! returned " message: " || fail "and with nothing else"
rm -r /var/mail/apollo.example/*
follow "A separate domain"
try apollo@talvane.example.org
send good stranger@talvane.example.org 2>&1 | grep -q 550 || fail "mail to no mailbox isn't accepted"
