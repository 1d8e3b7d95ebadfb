#!/usr/bin/env bash
# Runs tvmail serve with 8 mailboxes under ThreadSanitizer, with mail that comes and is sent while it runs, a reload that
# stops and starts mailboxes, and a stop; then tvmail deliver with an mbox, stopped in the middle and run again. Fails if
# a data race is reported, a mail isn't delivered or none is sent.
#   threads.sh BUILD [MAILS]     BUILD: a folder of the preset tsan
set -euo pipefail
suppressions=$(realpath "$(dirname "$0")/threads.suppressions")
program=$(realpath "$1/bin/tvmail") mails=${2:-20} mailboxes=8
folder=$(mktemp -d)
trap 'exec 3>&-; kill "${service:-}" 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
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
check_end() {  # PROCESS CODE LOG
  code=0
  wait "$1" || code=$?
  [ "$code" != "$2" ] || ! grep -q "WARNING: ThreadSanitizer" "$3" || code="$code and a report"
  [ "$code" = "$2" ] || { sed -n '/WARNING: ThreadSanitizer/,/^SUMMARY/p' "$3" | head -150; echo "it ended with $code"; exit 1; }
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
check_end "$service" 0 log
grep -c 'event=reloaded' log >/dev/null
[ "$(wc -l <sent)" -ge "$mailboxes" ] || { echo "only $(wc -l <sent) mails were sent"; tail -50 log; exit 1; }
echo "$(grep -c event=mail log) mails of $mailboxes mailboxes, $(wc -l <sent) sent, no data race"

# Each eighth mail is a stranger's, comes again, is no reply, has 1 MB, nests too deep, or has damaged parts.
large=$(head -c 750000 /dev/zero | base64)
deep=$(for i in {1..150}; do printf 'Content-Type: multipart/mixed; boundary=%d\n\n--%d\n' "$i" "$i"; done)
damaged=$(printf 'Content-Type: text/plain; charset=none\nContent-Transfer-Encoding: base64\n\n=A\0=\xFF!\n' | tr '\0' '~')
for i in {1..480}; do
  from=ann@example.org subject="Re: Plan (Ostrand Talvane Project Project1, Ostrand Talvane Discussion 1)" id=$i text="
Reply $i"
  case $((i % 8)) in
    1) from=stranger@example.org ;;
    2) id=$((i - 2)) ;;
    3) subject=Hello ;;
    4) [ $((i % 40)) != 4 ] || text="
$large" ;;
    5) text=$deep ;;
    6) text=$damaged ;;
  esac
  printf 'From x@example.org Mon Feb  2 12:00:00 2026\nFrom: %s\nSubject: %s\nMessage-ID: <mbox%s@x>\n%s\n\n' \
    "$from" "$subject" "$id" "$text"
done >mbox
deliver() { exec "$program" deliver --mbox --hold Project1; }
mkfifo pipe
exec 3<>pipe
head -c 6000000 mbox >pipe 3>&- &  # the rest never comes, so that it can't end before the signal
: >stopped
deliver <pipe >stopped 2>&1 3>&- &
service=$!
for try in {1..1200}; do
  [ "$(wc -l <stopped)" -lt 60 ] || break
  sleep 0.02
done
kill -TERM "$service"
check_end "$service" 75 stopped
exec 3>&-
deliver <mbox >delivered 2>&1 &
check_end $! 0 delivered
count=$(cat stopped delivered | grep -c '>  delivered')
[ "$count" = 229 ] || { echo "$count mails of the mbox were delivered instead of 229"; tail -n 1 stopped delivered; exit 1; }
echo "$(wc -l <stopped) and $(wc -l <delivered) lines of deliver, no data race"
