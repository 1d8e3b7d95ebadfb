#!/bin/sh
# Installs what is missing, builds everything and runs all tests. Safe to repeat.
set -eu
cd "$(dirname "$0")"
scripts/install-packages.sh test
scripts/build.sh release -DTALVANE_TESTS=ON -DTALVANE_DESKTOP=ON
scripts/unpack-mail-servers.sh build/mail-servers ||
  echo "The mail servers can't be fetched: the tests that need them are skipped." >&2
. scripts/fast-temporary-folder.sh
ctest --test-dir build/release --output-on-failure --parallel "$(nproc)"
