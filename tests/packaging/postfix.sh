# Both recipes for Postfix, with a real Postfix that listens on loopback.
[ -e "$SERVERS/complete" ] || { echo "skipped: run scripts/unpack-mail-servers.sh build/mail-servers"; exit 77; }
. "$WORK/test/mailbox.sh"
useradd --system postfix
groupadd --system postdrop
queue=$WORK/queue
log=$WORK/log
sbin=$SERVERS/usr/sbin
mkdir -p /etc/postfix "$WORK/data" "$queue" /var/mail/apollo.example
for folder in active bounce corrupt defer deferred flush hold incoming private saved trace; do
  mkdir -m 700 "$queue/$folder"
done
mkdir -m 730 "$queue/maildrop"
mkdir -m 710 "$queue/public"
mkdir -m 755 "$queue/pid"
chown -R postfix "$queue" "$WORK/data"
chown root "$queue" "$queue/pid"
chgrp postdrop "$queue/maildrop" "$queue/public"
chown talvane /var/mail/apollo.example
echo "postmaster: root" >/etc/aliases

# Bounces go into a Maildir; without smtp in master.cf no mail can leave the machine.
cat >/etc/postfix/main.cf <<END
compatibility_level = 3.6
queue_directory = $queue
data_directory = $WORK/data
daemon_directory = $SERVERS/usr/lib/postfix/sbin
command_directory = $sbin
shlib_directory = $SERVERS/usr/lib/postfix
meta_directory = $SERVERS/etc/postfix
maillog_file = $log
maillog_file_prefixes = $WORK
myhostname = mail.example.org
mydestination = example.org
inet_interfaces = 127.0.0.1
inet_protocols = ipv4
default_transport = error:no mail leaves this machine
virtual_mailbox_domains = apollo.example
virtual_mailbox_base = /var/mail
virtual_mailbox_maps = static:apollo.example/
virtual_uid_maps = static:$(id -u talvane)
virtual_gid_maps = static:$(id -g talvane)
virtual_minimum_uid = 1
virtual_mailbox_limit = 0
END
cat >/etc/postfix/master.cf <<END
127.0.0.1:2525 inet n - n - - smtpd
pickup  unix n - n 60 1 pickup
cleanup unix n - n - 0 cleanup
qmgr    unix n - n 300 1 qmgr
rewrite unix - - n - - trivial-rewrite
bounce  unix - - n - 0 bounce
defer   unix - - n - 0 bounce
trace   unix - - n - 0 bounce
error   unix - - n - - error
retry   unix - - n - - error
local   unix - n n - - local
virtual unix - n n - - virtual
proxymap unix - - n - - proxymap
showq   unix n - n - - showq
postlog unix-dgram n - n - 1 postlogd
END

echo "$SERVERS/usr/lib/postfix" >/etc/ld.so.conf.d/postfix.conf
ldconfig -X
export PATH="$SERVERS/usr/sbin:$PATH:/usr/local/bin"
postalias /etc/aliases
"$SERVERS/usr/lib/postfix/sbin/master" -w || fail "Postfix starts: $(cat "$log")"
# follow HEADING: runs the commands of the recipe; the reload goes to the running server
follow() {
  sed -n "/^$1/,/^[^ ]/"'s/^    //p' "$SOURCE/packaging/postfix/README" |
    sed 's/^postfix reload/kill -HUP $(cat "$queue"\/pid\/master.pid)/' >"$WORK/typed"
  grep -q HUP "$WORK/typed" || fail "the recipe has a part '$1'"
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
send refused apollo@example.org
await "a refused mail comes back with its reason" returned "$sentence"
! returned " message: " || fail "and with nothing else"
rm -r /var/mail/apollo.example/*
follow "A separate domain"
try apollo@talvane.example.org
send good stranger@talvane.example.org 2>&1 | grep -q 550 || fail "mail to no mailbox isn't accepted"
