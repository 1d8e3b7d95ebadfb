# The recipe for Exim, with a real Exim.
[ -e "$SERVERS/complete" ] || { echo "skipped: run scripts/unpack-mail-servers.sh build/mail-servers"; exit 77; }
. "$WORK/test/mailbox.sh"
useradd --system Debian-exim
spool=$WORK/exim
mkdir -p "$spool" /etc/exim4
chown Debian-exim "$spool"
# All mail but that of the recipe goes into a file.
{
  printf "%s\n" "spool_directory = $spool" "log_file_path = $spool/%slog" "primary_hostname = mail.example.org" \
    "exim_path = $SERVERS/usr/sbin/exim4" "keep_environment ="
  sed '/^begin transports/i \
others:\
  driver = accept\
  transport = file\
' "$SOURCE/packaging/exim.conf"
  printf '\nfile:\n  driver = appendfile\n  file = /var/mail/others\n  user = talvane\n'
  printf '\nbegin retry\n\n* * F,1h,1m\n'
} >/etc/exim4/exim4.conf
touch /var/mail/others
chown talvane /var/mail /var/mail/others
exim() { "$SERVERS/usr/sbin/exim4" "$@"; }
# send MAIL: returns after the delivery
send() { exim -odf -oi -f alice@apollo.example apollo@talvane.example.org <"$WORK/$1"; }

send good
replied "Friday works for me." || fail "a mail becomes a reply: $(cat "$spool"/mainlog)"
! grep . "/var/mail/others" || fail "a mail that became a reply causes no mail"
send refused
exim -qff
held "Nobody knows me." || fail "a refused mail is held: $(cat "$spool/mainlog")"
! grep . "/var/mail/others" || fail "and its sender is not told"
sed -i "s/deliver --hold/deliver --quiet/" /etc/exim4/exim4.conf
send refused
exim -qff
grep -q "$sentence" "/var/mail/others" || fail "a refused mail comes back with its reason: $(cat "/var/mail/others" "$spool/mainlog")"
! grep -q " message: " "/var/mail/others" || fail "and with nothing else"
project_away
send deferred
[ "$(exim -bpc)" = 1 ] || fail "a mail stays in the queue while its project is away: $(cat "$spool"/mainlog)"
project_back
exim -qff
replied "The disk was away." || fail "and is delivered then: $(cat "$spool"/mainlog)"
[ "$(exim -bpc)" = 0 ] || fail "the queue is empty at the end"
