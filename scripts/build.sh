#!/bin/sh
# Configures and builds one preset of CMakePresets.json; further arguments go to the configuring step.
#   scripts/build.sh PRESET [-DNAME=VALUE...]
set -eu
cd "$(dirname "$0")/.."
preset=$1
shift
log=build/$preset/configure.log
mkdir -p "build/$preset"
cmake --preset "$preset" "$@" >"$log" 2>&1 || { cat "$log" >&2; exit 1; }
cmake --build "build/$preset" --parallel "$(nproc)"
