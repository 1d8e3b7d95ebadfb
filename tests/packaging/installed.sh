#!/bin/sh
# An installed tvmail runs without the build: the set-up of README.md, below a prefix of its own, as any user.
#   installed.sh BUILD SOURCE
set -eu
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
cmake --install "$1" --prefix "$folder/first" >/dev/null
mv "$folder/first" "$folder/installed"  # the libraries are found wherever the whole lies
sed -n '/^## Setting up/,/^## The/s/^    //p' "$2/README.md" |
  sed -n "/^mkdir/,/^tvmail project show/p" | sed "s,/usr/local,$folder/installed," >"$folder/typed"
unset TALVANE_HOME XDG_DATA_HOME DISPLAY WAYLAND_DISPLAY
export HOME="$folder/home" TALVANE_HOME="$folder/home/stores" PATH="$folder/installed/bin:$PATH" LC_ALL=de_DE.UTF-8
mkdir "$HOME"
sh -eu "$folder/typed" >"$folder/shown"
fact() { grep -q "$1" "$folder/shown" || { echo "not so: $2"; cat "$folder/shown"; exit 1; }; }
fact "Libraries: *$folder/installed/lib" "the installed libraries are registered"
fact "Friday works for me" "a mail becomes a reply"
tvmail deliver Apollo "$2/samples/mail/15-unknown-sender.eml" >"$folder/shown" || true
fact "Das Projekt hat keinen Benutzer" "the installed texts are found, in the user's language"
printf '?\n' | tvmail outbound >"$folder/shown" 2>&1 || true
fact "share/talvane/help\|SMTP" "the installed help is found"
cd "$folder/installed/share/doc/TvEmailServices"
for page in *.md docs/*.md; do
  for link in $(sed -n 's/[^(]*](\([^):]*\))/\1\n/gp' "$page" | grep -v ' '); do
    [ -e "$(dirname "$page")/$link" ] || { echo "not so: $link, a link of $page, is installed"; exit 1; }
  done
done
