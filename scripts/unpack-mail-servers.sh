#!/bin/sh
# Unpacks Debian's Postfix, Exim, procmail and Dovecot into a folder, for the tests of packaging/, of the queues and of a
# whole site. They aren't installed: two mail servers exclude each other, and an installed one would take over the
# machine's mail.
#   scripts/unpack-mail-servers.sh FOLDER
set -eu
folder=$1
packages="postfix exim4-daemon-light procmail dovecot-core dovecot-imapd dovecot-pop3d dovecot-lmtpd"
[ "$(cat "$folder/complete" 2>/dev/null || true)" != "$packages" ] || exit 0
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
as_root=
[ "$(id -u)" -eq 0 ] || as_root=sudo
# The package lists may be old, or may never have been fetched.
apt-get download -q $packages >log 2>&1 || {
  $as_root apt-get update -q >>log 2>&1
  apt-get download -q $packages >>log 2>&1
} || { cat log >&2; exit 1; }
for package in $packages; do
  dpkg-deb -x "$package"_*.deb .
done
rm ./*.deb
echo "$packages" >complete
