#!/bin/sh
# Installs what the programs of this folder need: Node.js of the distribution, and the packages of package-lock.json, which
# pins their versions, from npm. better-sqlite3 has a part in C++, which is compiled here where npm finds none for this
# version of Node.js. Exit code 75 if npm can't be reached.
#   bench/peers/install.sh [FOLDER]      the folder gets node_modules; build/peers by default
set -eu
cd "$(dirname "$0")/../.."
folder=${1:-build/peers}

if ! command -v npm >/dev/null; then
  apt-get install -y -q --no-install-recommends nodejs npm >/dev/null || exit 75
fi
mkdir -p "$folder"
cp bench/peers/mailparser.js "$folder"
if cmp -s bench/peers/package-lock.json "$folder/installed"; then exit 0; fi
cp bench/peers/package.json bench/peers/package-lock.json "$folder"
(cd "$folder" && npm ci --no-audit --no-fund --loglevel=error) || exit 75
cp bench/peers/package-lock.json "$folder/installed"
