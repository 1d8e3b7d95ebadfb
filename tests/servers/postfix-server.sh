# To be sourced: start_postfix starts a Postfix that listens on 127.0.0.1:2525. It needs the user talvane.
#   queue, log, sbin     its queue, its log and the folder of its commands
# All mail to apollo.example, where bounces go, is written into a Maildir; without smtp in master.cf no mail can leave
# the machine.
[ -e "$SERVERS/usr/sbin/postfix" ] || { echo "skipped: run scripts/unpack-mail-servers.sh build/mail-servers"; exit 77; }
queue=$WORK/queue
log=$WORK/log
sbin=$SERVERS/usr/sbin
export PATH="$sbin:$PATH:/usr/local/bin"

start_postfix() {
  useradd --system postfix
  groupadd --system postdrop
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
lmtp    unix - - n - - lmtp
local   unix - n n - - local
virtual unix - n n - - virtual
proxymap unix - - n - - proxymap
showq   unix n - n - - showq
postlog unix-dgram n - n - 1 postlogd
END
  echo "$SERVERS/usr/lib/postfix" >/etc/ld.so.conf.d/postfix.conf
  ldconfig -X
  postalias /etc/aliases
  "$SERVERS/usr/lib/postfix/sbin/master" -w || fail "Postfix starts: $(cat "$log")"
}
# reload_postfix: the running server reads its files again.
reload_postfix() { kill -HUP "$(cat "$queue"/pid/master.pid)"; }
