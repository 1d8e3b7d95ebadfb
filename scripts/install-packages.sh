#!/bin/sh
# Installs missing Debian packages. Doesn't use the network if none is missing.
#   scripts/install-packages.sh run     what building and running tvmail needs
#   scripts/install-packages.sh circle  that, and what run.sh --circle needs for its mail servers and users
#   scripts/install-packages.sh test    that, and what the tests of every part need (Qt among it)
#   scripts/install-packages.sh check   that, and what .ci/run also needs
#   scripts/install-packages.sh bench   what the benchmarks need in addition to run
set -eu

run="g++ cmake ninja-build pkg-config ccache libsqlite3-dev libgmime-3.0-dev libicu-dev libssl-dev libcli11-dev libedit-dev libetpan-dev libetpan20 libcurl4-gnutls-dev libcurl4 libtomlplusplus-dev libsystemd-dev"
servers="python3 curl iproute2 libdb5.3 libgnutls-dane0 libidn12 libnsl2 libpcre2-8-0 libsasl2-2 openssl libapparmor1 libsodium23 libstemmer0d libunwind8 swaks"
test="$run libgtest-dev qt6-base-dev libxcb1-dev qt6-translations-l10n xvfb x11-utils xdotool openbox fonts-dejavu-core fonts-vlgothic binutils sqlite3 procps $servers"
check="$test valgrind clang clang-format clang-tidy libclang-rt-14-dev git chromium"
bench="$run libbenchmark-dev python3 strace"

case "${1:-}" in
  run) wanted=$run ;;
  circle) wanted="$run $servers" ;;
  test) wanted=$test ;;
  check) wanted=$check ;;
  bench) wanted=$bench ;;
  *) echo "usage: $0 run|circle|test|check|bench" >&2; exit 64 ;;
esac

missing=
for package in $wanted; do
  status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=
if [ "$(id -u)" -ne 0 ]; then
  command -v sudo >/dev/null || {
    echo "These Debian packages are missing:$missing" >&2
    echo "Run this once as root: apt-get install$missing" >&2
    exit 1
  }
  as_root=sudo
fi
echo "Installing:$missing"
$as_root apt-get update -q >/dev/null
$as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends $missing >/dev/null
