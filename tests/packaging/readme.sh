# Runs the commands of README.md's set-up unchanged: as the user of the mailboxes, as an ordinary user and as root.
. "$WORK/test/mailbox.sh"
case $(setup scripts "su talvane" | tr '\n' ' ') in
  "scripts/build.sh release && cmake --install build/release useradd "*" su talvane ") ;;
  *) fail "README.md's set-up as root is the one that this test runs" ;;
esac
useradd --create-home --home-dir /srv/ann ann
mkdir /srv/root
su ann -c "sh -eu $WORK/as-user" >"$WORK/ann"
HOME=/srv/root sh -eu "$WORK/as-user" >"$WORK/root-typed"
for typed in typed ann root-typed; do
  grep -q "Friday works for me" "$WORK/$typed" || fail "the set-up ends with a reply: $(cat "$WORK/$typed")"
done
[ "$(stat -c '%U %a' /srv/ann/.local/share/talvane /var/lib/talvane | tr '\n' ' ')" = "ann 700 root 700 " ] ||
  fail "each has stores of its own"
LC_ALL=de_DE.UTF-8 su ann -c "$tvmail deliver Apollo $SOURCE/samples/mail/15-unknown-sender.eml" >"$WORK/typed" || :
grep -q "Das Projekt hat keinen Benutzer" "$WORK/typed" || fail "the installed texts are found in the user's language"
