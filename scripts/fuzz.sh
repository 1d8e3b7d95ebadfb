#!/bin/sh
# Builds the fuzzers and runs each for a time. New inputs are saved in build/fuzz/corpus/NAME, where the next run
# continues; the input of a crash is saved in build/fuzz/crash/.
#   scripts/fuzz.sh [SECONDS [NAME...]]      20 seconds, all of them
set -eu
cd "$(dirname "$0")/.."
seconds=${1:-20}
[ $# -eq 0 ] || shift
mkdir -p build/fuzz
cmake --preset fuzz >build/fuzz/configure.log 2>&1 || { cat build/fuzz/configure.log >&2; exit 1; }
cmake --build build/fuzz --target Fuzzers
[ $# -gt 0 ] || set -- $(cd build/fuzz/bin && ls -d ./*Fuzz)
mkdir -p build/fuzz/crash
for fuzzer; do
  name=$(basename "$fuzzer")
  found=build/fuzz/corpus/$name
  mkdir -p "$found"
  seeds=
  [ ! -d "fuzz/corpus/$name" ] || seeds=fuzz/corpus/$name
  case $name in Mail*) seeds="$seeds samples/mail samples/reports" ;; esac
  # A mail may take long under the sanitizers, and may take memory in proportion to its size.
  if ! "build/fuzz/bin/$name" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=1024 -print_final_stats=1 \
    -artifact_prefix="build/fuzz/crash/$name-" "$found" $seeds >"build/fuzz/$name.log" 2>&1; then
    tail -n 60 "build/fuzz/$name.log"
    echo "$name found a fault; its input is in build/fuzz/crash/" >&2
    exit 1
  fi
  echo "$name: $(sed -n 's/^stat::number_of_executed_units: *//p' "build/fuzz/$name.log") inputs"
done
