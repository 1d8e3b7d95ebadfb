#!/bin/sh
# Runs a test as root of a machine of its own: processes, network (loopback alone), /etc, /usr/local, /srv, /var/lib and
# /var/mail are private to it, with tvmail installed in /usr/local. So the commands of the documents run unchanged.
#   machine.sh BUILD SOURCE TEST      77 if this user may not create such a machine
# The test finds in its environment: SOURCE; SERVERS, the unpacked mail servers; BUILD; and WORK, an empty folder.
set -eu
skip() { echo "skipped: $*"; exit 77; }
build=$1
SOURCE=$2
SERVERS=$SOURCE/build/mail-servers
[ "$(id -u)" = 0 ] || skip "a machine of its own needs root"
for program in ip curl useradd; do command -v $program >/dev/null || skip "there is no $program"; done
unshare --mount --net --pid --fork true 2>/dev/null || skip "on this system not even root can create a private machine"

WORK=$(mktemp -d)
trap 'rm -rf "$WORK"' EXIT
chmod 755 "$WORK"
BUILD=$build
export SOURCE SERVERS WORK BUILD
DESTDIR=$WORK/root cmake --install "$build" --prefix /usr/local >/dev/null
mkdir -p "$WORK/root/etc" "$WORK/root/srv" "$WORK/root/var/lib" "$WORK/root/var/mail" "$WORK/test"
for file in passwd group nsswitch.conf ld.so.cache ld.so.conf ld.so.conf.d services login.defs pam.d security alternatives; do
  [ ! -e "/etc/$file" ] || cp -a "/etc/$file" "$WORK/root/etc/"
done
echo "127.0.0.1 localhost" >"$WORK/root/etc/hosts"
# The test runs from the copy, since a mount may hide the source.
cp "$SOURCE"/tests/servers/* "$SOURCE"/tests/packaging/*.sh "$WORK/test/"
cp "$(dirname "$3")"/* "$WORK/test/"
unshare --mount --net --pid --fork --kill-child --mount-proc sh -eu -c '
  for folder in etc usr/local srv var/lib var/mail; do mount --bind "$WORK/root/$folder" "/$folder"; done
  ip link set lo up
  cd "$WORK"
  exec sh -eu "$WORK/test/$1"' sh "$(basename "$3")"
