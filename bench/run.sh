#!/bin/sh
# Builds the benchmarks and prints what they measure: the component's own work in tables, then "tvmail deliver" beside
# the program that does only the unavoidable.
#   bench/run.sh [ROUNDS]
# ROUNDS of the comparison, 3 unless told. It runs on the disk below TMPDIR (/tmp unless told), and again in memory,
# where no wait for a disk hides what the program costs. Give the machine nothing else to do meanwhile.
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

compare() {
  printf '\n== tvmail deliver beside the unavoidable, below %s (%s)\n' "$1" "$(stat -f -c %T "$1")"
  TMPDIR=$1 bench/deliver/compare.sh build/bench "$rounds"
}
compare "${TMPDIR:-/tmp}"
if [ -d /dev/shm ] && [ -w /dev/shm ]; then compare /dev/shm; fi
