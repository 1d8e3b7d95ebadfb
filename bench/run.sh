#!/bin/sh
# Builds and runs the benchmarks: tables of the component's own work, then "tvmail deliver" compared with a program that
# does only the least work, and tvmail serve with many mailboxes.
#   bench/run.sh [ROUNDS]
# ROUNDS of the comparison, 3 by default. It runs on the disk below TMPDIR (/tmp by default), and again in memory, where
# no waits for the disk are included. Run nothing else on the machine meanwhile.
set -eu
cd "$(dirname "$0")/.."
rounds=${1:-3}

scripts/install-packages.sh bench
scripts/build.sh bench
programs=build/bench/bin

for program in "$programs"/*Bench; do
  printf '\n== %s\n' "$(basename "$program")"
  "$program" --benchmark_min_time=0.1 2>/dev/null
done

printf '\n== tvmail serve with 50 mailboxes of 1,000 mails\n'
bench/service/serve.sh "$programs/tvmail"

compare() {
  printf '\n== tvmail deliver beside the least work, below %s (%s)\n' "$1" "$(stat -f -c %T "$1")"
  TMPDIR=$1 bench/deliver/compare.sh build/bench "$rounds"
}
compare "${TMPDIR:-/tmp}"
if [ -d /dev/shm ] && [ -w /dev/shm ]; then compare /dev/shm; fi
