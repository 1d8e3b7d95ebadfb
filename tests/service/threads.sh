#!/usr/bin/env bash
# Runs tvmail serve with 8 mailboxes under ThreadSanitizer, with mail that comes and is sent while it runs, a reload that
# stops and starts mailboxes, and a stop. Fails if a data race is reported, a mail isn't delivered or none is sent.
#   threads.sh BUILD [MAILS]     BUILD: a folder of the preset tsan
set -euo pipefail
suppressions=$(realpath "$(dirname "$0")/threads.suppressions")
program=$(realpath "$1/bin/tvmail") mails=${2:-20} mailboxes=8
folder=$(mktemp -d)
trap 'kill "${service:-}" 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
cd "$folder"
export TALVANE_HOME="$folder/home" LC_ALL=C.UTF-8 TSAN_OPTIONS="exitcode=66 second_deadlock_stack=1 suppressions=$suppressions"
# Memory that GLib recycles by itself changes threads unseen: its locks are no calls that the sanitizer knows.
export G_SLICE=always-malloc
umask 077
echo secret >password
"$program" init >/dev/null
printf '#!/bin/sh\ncat >/dev/null\necho >>"%s/sent"\n' "$folder" >sendmail
chmod +x sendmail
"$program" outbound add-profile Office --command "$folder/sendmail -t" >/dev/null
for ((i = 1; i <= mailboxes; i++)); do
  name=Project$i
  "$program" project create "$name.TVS" --name "$name" --user ann --email ann@example.org --password-file password
  "$program" project add-user "$name.TVS" --name bob --email bob@example.org
  "$program" project add-discussion "$name.TVS" --title Plan
  "$program" mailbox add "$name" --project "$name.TVS" --user ann --password-file password \
    --transport mapi --profile Office
  mkdir -p "$name"/{new,cur,tmp}
done >/dev/null

configure() {  # CONFIGURATION: its first line, and settings of the odd mailboxes
  for ((i = 1; i <= mailboxes; i++)); do
    printf '[[mailbox]]\nname = "Project%d"\naddress = "p@example.org"\nsource = "maildir"\nfolder = "%s/Project%d"\n' \
      "$i" "$folder" "$i"
    [ $((i % 2)) = 0 ] || printf '%s\n' "$1"
  done >home/tvmail.new
  mv home/tvmail.new home/tvmail.toml
}
send() {  # FIRST LAST: each third mail is a stranger's and is held, each fourth comes again
  for ((i = 1; i <= mailboxes; i++)); do
    for ((j = $1; j <= $2; j++)); do
      from=ann@example.org
      [ $((j % 3)) != 0 ] || from=stranger@example.org
      printf 'From: %s\nMessage-ID: <%d@x>\nSubject: Re: Plan (Ostrand Talvane Project Project%d, %s 1)\n\nReply %d\n' \
        "$from" $((j - (j % 4 == 0))) "$i" "Ostrand Talvane Discussion" "$j" >"Project$i/tmp/$j"
      mv "Project$i/tmp/$j" "Project$i/new/$j"
    done
  done
}
wait_for() {  # COUNT of mails in each mailbox
  for try in {1..1200}; do
    [ "$(find Project*/cur -type f | wc -l)" -lt $(($1 * mailboxes)) ] || return 0
    kill -0 "$service" 2>/dev/null || break
    sleep 0.1
  done
  echo "not all mails were handled"; tail -50 log; exit 1
}

configure ''
send 1 $((mails / 2))
"$program" serve 2>log &
service=$!
wait_for $((mails / 4))
configure 'held-days = 5'
kill -HUP "$service"
send $((mails / 2 + 1)) "$mails"
"$program" status >/dev/null || true
wait_for "$mails"
kill -TERM "$service"
code=0
wait "$service" || code=$?
if [ "$code" != 0 ] || grep -q "WARNING: ThreadSanitizer" log; then
  sed -n '/WARNING: ThreadSanitizer/,/^SUMMARY/p' log | head -150
  echo "the service ended with $code"
  exit 1
fi
grep -c 'event=reloaded' log >/dev/null
[ "$(wc -l <sent)" -ge "$mailboxes" ] || { echo "only $(wc -l <sent) mails were sent"; tail -50 log; exit 1; }
echo "$(grep -c event=mail log) mails of $mailboxes mailboxes, $(wc -l <sent) sent, no data race"
