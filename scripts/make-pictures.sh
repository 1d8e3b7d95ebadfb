#!/bin/sh
# Makes the pictures of both dialogs: docs/pictures/inbound.png and outbound.png. Needs Qt 6 (test packages).
#   scripts/make-pictures.sh [BUILD-FOLDER]      build/release by default
set -eu
cd "$(dirname "$0")/.."
build=${1:-build/release}
[ -f "$build/build.ninja" ] || cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DTALVANE_DESKTOP=ON >/dev/null
ninja -C "$build" desktop-pictures >/dev/null
mkdir -p docs/pictures
QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=1 LC_ALL=C.UTF-8 "$build/bin/desktop-pictures" docs/pictures
echo "docs/pictures/inbound.png and docs/pictures/outbound.png are made."
