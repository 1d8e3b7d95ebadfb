#!/bin/bash
# Times "tvmail deliver" side by side with the least work on an mbox of 5,000 messages, in turns, and
# prints the ratio of the best elapsed times, which include waits for the disk, and of the best processor times. The
# component and the host together should stay below 1.33.
#   bench/deliver/compare.sh [BUILD_FOLDER] [ROUNDS]
# BUILD_FOLDER is build/bench by default: a Release build with -DTALVANE_BENCH=ON. The stores are in a temporary
# folder below TMPDIR, since the disk's speed is part of both times.
set -eu
build=${1:-$(dirname "$0")/../../build/bench}
rounds=${2:-3}
count=5000
tvmail=$(cd "$build/bin" && pwd)/tvmail
floor=$(cd "$build/bin" && pwd)/bench_deliver_floor
for program in "$tvmail" "$floor"; do
  [ -x "$program" ] || { echo "compare.sh: there is no $program: build it with -DTALVANE_BENCH=ON" >&2; exit 64; }
done

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT INT TERM
cd "$folder"
export TALVANE_HOME="$folder/home"

# A reply of about 8 kB as a usual mail program writes it: text and HTML, the notification quoted in both.
awk -v count="$count" 'BEGIN {
  for (i = 1; i <= 40; i++) quote = quote "> Line " i " of the notification that is answered, as long as lines are.\n"
  for (i = 1; i <= 40; i++) html = html "<div>Line " i " of the notification that is answered, in a <b>block</b> of its own.</div>\n"
  for (n = 1; n <= count; n++) {
    print "From alice@apollo.example Mon Nov  2 09:14:07 2026"
    print "Received: from mail.apollo.example by mx.apollo.example with ESMTPS id " n "; Mon, 2 Nov 2026 09:14:07 +0100"
    print "From: =?utf-8?Q?Alice_=C3=84rcher?= <alice@apollo.example>\nTo: discussions@apollo.example"
    print "Subject: Re: Release plan (Ostrand Talvane Project Apollo,\n Ostrand Talvane Discussion 1)"
    print "Date: Mon, 2 Nov 2026 09:14:07 +0100\nMessage-ID: <" n "@apollo.example>\nMIME-Version: 1.0"
    print "Content-Type: multipart/alternative; boundary=\"=_b\"\n\n--=_b\nContent-Type: text/plain; charset=utf-8"
    print "Content-Transfer-Encoding: quoted-printable\n\nThis is reply " n ". Gr=C3=BC=C3=9Fe, and a line that was =\nbroken softly."
    print "\n> ----- Reply above this line -----\n" quote "\n--=_b\nContent-Type: text/html; charset=utf-8\n\n<html><body>" html
    print "</body></html>\n--=_b--\n"
  }
}' >mbox

echo secret >password
{
  "$tvmail" init
  "$tvmail" project create "$folder/Apollo.TVS" --name Apollo --user admin --password-file password
  "$tvmail" project add-user Apollo.TVS --name alice --email alice@apollo.example
  "$tvmail" project add-discussion Apollo.TVS --title "Release plan"
  "$tvmail" mailbox add Apollo --project "$folder/Apollo.TVS" --user admin --password-file password \
    --transport smtp --host mail.apollo.example --address discussions@apollo.example
} >/dev/null
database=$(ls Apollo.* | grep -v -e '\.TVS$' -e '-wal$' -e '-shm$' | head -n 1)
mkdir clean
cp Apollo.* clean/

# Elapsed and processor seconds that a command takes on a fresh copy of the project.
TIMEFORMAT='%R %U %S'
seconds() {
  rm -f Apollo.*
  cp clean/* .
  sync -f .
  { time "$@" >output 2>errors; } 2>time || { echo "compare.sh: $1 failed:" >&2; cat errors >&2; exit 75; }
  awk '{ print $1, $2 + $3 }' time
}

for ((round = 1; round <= rounds; round++)); do
  floorTime=$(seconds "$floor" mbox "$database")
  deliverTime=$(seconds "$tvmail" deliver Apollo mbox)
  echo "round $round, elapsed and processor seconds: floor $floorTime, tvmail deliver $deliverTime" | tee -a rounds
done
awk -v count="$count" '
  function least(best, time) { return best == "" || time + 0 < best ? time + 0 : best }
  { floorElapsed = least(floorElapsed, $8); floorProcessor = least(floorProcessor, $9)
    elapsed = least(elapsed, $12); processor = least(processor, $13) }
  END {
    printf "floor %d messages/s, tvmail deliver %d messages/s\n", count / floorElapsed, count / elapsed
    printf "ratio of elapsed times %.2f, of processor times %.2f (goal: at most 1.33)\n", elapsed / floorElapsed,
      processor / floorProcessor }' rounds
