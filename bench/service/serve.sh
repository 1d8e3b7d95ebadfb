#!/usr/bin/env bash
# How tvmail serve bears many mailboxes: 50 with 1,000 mails each, all waiting when it starts. Prints the time, the
# memory at 10 % and at the end, and how many mails the slowest and the fastest mailbox have at half time.
#   bench/service/serve.sh PROGRAM [MAILBOXES [MAILS]]
set -euo pipefail
program=$(realpath "$1") mailboxes=${2:-50} mails=${3:-1000}
folder=$(mktemp -d)
trap 'kill "${service:-}" 2>/dev/null || true; wait; rm -rf "$folder"' EXIT
cd "$folder"
export TALVANE_HOME="$folder/home" LC_ALL=C.UTF-8
umask 077
echo secret >password
"$program" init >/dev/null
for ((i = 1; i <= mailboxes; i++)); do
  name=Project$i
  "$program" project create "$name.TVS" --name "$name" --user ann --email ann@example.org --password-file password
  "$program" project add-discussion "$name.TVS" --title Plan
  "$program" mailbox add "$name" --project "$name.TVS" --user ann --password-file password \
    --transport smtp --host h --address "$name@example.org"
  mkdir -p "$name"/{new,cur,tmp}
  printf '[[mailbox]]\nname = "%s"\nsource = "maildir"\nfolder = "%s"\n' "$name" "$folder/$name" >>home/tvmail.toml
done >/dev/null
awk -v mailboxes="$mailboxes" -v mails="$mails" 'BEGIN {
  for (i = 1; i <= mailboxes; i++) for (j = 1; j <= mails; j++) {
    file = "Project" i "/new/" (1000000 + j)
    printf "From: ann@example.org\nMessage-ID: <%d.%d@x>\nSubject: Re: Plan (Ostrand Talvane Project Project%d, " \
           "Ostrand Talvane Discussion 1)\n\nReply %d\n", i, j, i, j >file
    for (line = 0; line < 40; line++) print "> a quoted line of the notification that this mail answers" >file
    close(file)
  }
}'

delivered() { for name in Project*/; do find "${name}cur" -type f | wc -l; done; }
total() { delivered | awk '{ sum += $1 } END { print sum }'; }
memory() { awk '/^VmRSS/ { print $2 }' "/proc/$service/status"; }
wait_for() { while [ "$(total)" -lt $((mailboxes * mails * $1 / 100)) ]; do sleep 0.2; done; }

start=$(date +%s.%N)
"$program" serve 2>log &
service=$!
wait_for 10
echo "memory at 10 %: $(memory) kB"
wait_for 50
delivered | sort -n | awk '{ all[NR] = $1 } END { print "at half time the slowest mailbox has " all[1] " mails, the fastest " all[NR] }'
wait_for 100
echo "memory at the end: $(memory) kB"
awk -v start="$start" -v end="$(date +%s.%N)" -v count=$((mailboxes * mails)) \
  'BEGIN { printf "%d mails in %.1f s: %.0f in a second\n", count, end - start, count / (end - start) }'
echo "mails without a line in the log: $(grep -c event=mail log | awk -v count=$((mailboxes * mails)) '{ print count - $1 }')"
kill "$service"
wait "$service"
