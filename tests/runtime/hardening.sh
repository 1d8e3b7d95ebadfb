#!/bin/sh
# Every program and library is hardened: position independent, relocations read-only and bound at start, no executable
# stack, stack protector, no search for libraries in the current folder; where compiled so, checked calls of the C library.
# Usage: hardening.sh fortified|plain FOLDER...
set -eu
kind=$1
shift
seen=0
failed=0
lacks() { echo "$file lacks $1"; failed=1; }
for file in $(find "$@" -maxdepth 1 -type f); do
  head=$(readelf -W -h -l -d "$file" 2>/dev/null) || continue
  symbols=$(readelf -W --dyn-syms "$file")
  seen=$((seen + 1))
  has() { echo "$head" | grep -Eq "$1"; }
  has 'Type: +DYN' || lacks "position-independent code"
  ! has INTERP || has 'FLAGS_1.*PIE' || lacks "PIE"
  has GNU_RELRO || lacks "RELRO"
  has 'BIND_NOW|FLAGS_1.*NOW' || lacks "BIND_NOW"
  ! has 'R(UN)?PATH.*(\[:|::|:\]|\[\])' || lacks "a search path without the current folder"
  has 'GNU_STACK.* RW ' || lacks "a stack that isn't executable"
  case $symbols in *__stack_chk_fail*) ;; *) lacks "the stack protector" ;; esac
  case $symbols in *_chk@*) fortified="${fortified:-} $file" ;; esac
done
[ "$kind" = plain ] || [ -n "${fortified:-}" ] || { echo "no file calls the checked functions of FORTIFY_SOURCE"; failed=1; }
[ $seen -gt 7 ] || { echo "only $seen programs and libraries found"; failed=1; }
echo "$seen programs and libraries seen"
exit $failed
