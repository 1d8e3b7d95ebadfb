#!/bin/sh
# Runs clang-tidy on the sources of a build made with clang++, and shows its findings. Fails if there are any.
#   scripts/tidy.sh BUILD-FOLDER [PATTERN]     all rooms but the tests, or the files whose paths match
set -eu
cd "$(dirname "$0")/.."
pattern=${2:-"$PWD/(platform|runtime|src|siblings|mime|gateway|host|desktop)/"}
log=$1/tidy.log
if run-clang-tidy -p "$1" -quiet -j "$(nproc)" "$pattern" >"$log" 2>&1; then
  exit 0
fi
grep -v -e 'warnings generated' -e '^clang-tidy-14' -e '^$' "$log" >&2
exit 1
