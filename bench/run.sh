#!/bin/sh
# Builds and runs the benchmarks, and prints one table: "tvmail deliver" beside a program that does only the least work,
# and beside programs of others that do the same (bench/peers), each with its goal.
#   bench/run.sh [--check] [ROUNDS]      exit code 1 with --check if a figure is missing, or worse than its goal by more
#                                        than 10 %
#   bench/run.sh --parts                 tables of the component's own work, and tvmail serve with many mailboxes
# 5 ROUNDS by default. It runs on the disk below TMPDIR (/tmp by default), and again in memory, where no waits for the
# disk are included. Run nothing else on the machine meanwhile.
set -eu
cd "$(dirname "$0")/.."
check= parts= rounds=5
for argument; do
  case "$argument" in
    --check) check=--check ;;
    --parts) parts=1 ;;
    --help) sed -n '2,/^set /s/^# \{0,1\}//p' "bench/run.sh"; exit 0 ;;
    '' | *[!0-9]* | 0*) echo "run.sh: $argument is neither an option nor a number of rounds: see bench/run.sh --help" >&2; exit 64 ;;
    *) rounds=$argument ;;
  esac
done

scripts/install-packages.sh bench
scripts/build.sh bench >&2
programs=build/bench/bin

if [ "$parts" ]; then
  for program in "$programs"/*Bench; do
    printf '\n== %s\n' "$(basename "$program")"
    "$program" --benchmark_min_time=0.1 2>/dev/null
  done
  printf '\n== tvmail serve with 50 mailboxes of 1,000 mails\n'
  exec bench/service/serve.sh "$programs/tvmail"
fi

bench/peers/install.sh build/peers >&2 || echo "run.sh: npm can't be reached: the table lacks Node.js" >&2
exec python3 bench/measure.py build/bench build/peers --rounds "$rounds" $check
