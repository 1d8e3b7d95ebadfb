#!/bin/sh
# Every component of a library folder exports its four entry functions and nothing else.
# Usage: exports.sh FOLDER
set -eu
expected='DllCanUnloadNow
DllGetClassObject
DllRegisterServer
DllUnregisterServer'
seen=0
failed=0
for library in "$1"/*.so; do
  name=$(basename "$library")
  exported=$(nm -D --defined-only --format=posix "$library" | cut -d ' ' -f 1 | LC_ALL=C sort)
  # The run time is no component, and a forms toolkit exports another function.
  case "$name:$exported" in lib*:* | *CreateFormsToolkit*) continue ;; esac
  seen=$((seen + 1))
  if [ "$exported" != "$expected" ]; then
    printf '%s exports other than its four entries:\n%s\n' "$name" "$exported" | head -n 20
    failed=1
  fi
done
for needed in TvEmailServices TvGeneralServices; do
  [ -e "$1/$needed.so" ] || { echo "$1/$needed.so is missing"; failed=1; }
done
echo "$seen components seen"
exit $failed
