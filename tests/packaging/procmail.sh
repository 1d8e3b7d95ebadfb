# The recipe for procmail, with a real procmail.
[ -e "$SERVERS/complete" ] || { echo "skipped: run scripts/unpack-mail-servers.sh build/mail-servers"; exit 77; }
. "$WORK/test/mailbox.sh"
install -o talvane -m 600 "$SOURCE/packaging/procmailrc" $home/.procmailrc
chown talvane /var/mail
cp "$SERVERS/usr/bin/procmail" "$WORK/procmail"
# send MAIL CODE
send() {
  code=0
  as_talvane "$WORK/procmail" DEFAULT=$home/inbox <"$WORK/$1" || code=$?
  [ $code = "$2" ] || fail "procmail ends with $2 for the mail $1, not with $code"
}

send good 0
replied "Friday works for me." || fail "a mail becomes a reply"
send refused 0
held "Nobody knows me." || fail "a refused mail is held"
project_away
send deferred 75
project_back
! held "The disk was away." || fail "a mail that goes back to the server isn't held as well"
printf 'From: bob@example.org\nTo: talvane@example.org\n\nHello.\n' >"$WORK/other"
send other 0
grep -q "Hello." $home/inbox || fail "other mail goes to the inbox"
[ "$(grep -c "^From: " $home/inbox)" = 1 ] || fail "and that alone"
