# To be sourced: starts a Postfix and a Dovecot (see postfix-server.sh and dovecot-server.sh) for the user talvane, who
# is created. For tests in Python.
#   fail TEXT      ends the test
command -v python3 >/dev/null || { echo "skipped: there is no python3"; exit 77; }
. "$WORK/test/postfix-server.sh"
fail() { echo "not so: $*" >&2; exit 1; }
useradd --system --create-home --home-dir /srv/talvane --shell /bin/sh talvane
echo "127.0.0.1 localhost mail.test" >/etc/hosts
. "$WORK/test/dovecot-server.sh"
"$SERVERS/usr/sbin/dovecot" -c "$WORK/dovecot.conf"
start_postfix
