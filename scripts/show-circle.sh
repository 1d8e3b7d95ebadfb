#!/bin/sh
# Shows a discussion by mail: three users answer each other's notices, through tvmail and a real Postfix and Dovecot. For
# run.sh --circle. The servers are unpacked, not installed; they run on a private machine (namespaces of processes,
# network and folders), which ends with everything in it.
#   scripts/show-circle.sh
set -eu
cd "$(dirname "$0")/.."
as_root=
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || { echo "The servers need root or sudo: run this as root." >&2; exit 1; }
  as_root=sudo
fi
scripts/install-packages.sh circle
scripts/build.sh release -DTALVANE_TESTS=OFF
scripts/unpack-mail-servers.sh build/mail-servers
outcome=0
$as_root env CIRCLE_PROGRAM=show.py sh tests/servers/machine.sh "$PWD/build/release" "$PWD" "$PWD/tests/circle/circle.sh" ||
  outcome=$?
# What the installation into the private machine leaves, which belongs to root.
rm -f build/release/install_manifest.txt
[ $outcome -ne 77 ] || { echo "Not shown: this system lets nobody make a private machine for the servers." >&2; exit 1; }
exit $outcome
