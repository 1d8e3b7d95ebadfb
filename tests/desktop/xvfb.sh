#!/bin/sh
# Real key events on both dialogs, under a display and a window manager of their own. Each program must end by its
# own exit code and write nothing to standard error but its own lines.
#   xvfb.sh TVMAIL       77 where there is no Xvfb
set -eu
tvmail=$1
command -v Xvfb >/dev/null || exit 77

home=$(mktemp -d)
trap 'kill $running 2>/dev/null || true; rm -rf "$home"' EXIT
running=
unset QT_QPA_PLATFORM WAYLAND_DISPLAY QT_SCALE_FACTOR XDG_RUNTIME_DIR
export LC_ALL=C.UTF-8 TALVANE_HOME="$home/home" HOME="$home"

Xvfb -displayfd 3 -screen 0 1280x1024x24 3>"$home/display" >/dev/null 2>&1 &
running=$!
# await COMMAND...: until it succeeds, for 60 seconds at most
await() {
  tries=0
  until "$@" >/dev/null 2>&1; do
    tries=$((tries + 1))
    [ $tries -lt 600 ] || { echo "in vain: $*" >&2; exit 1; }
    sleep 0.1
  done
}
await test -s "$home/display"
DISPLAY=:$(cat "$home/display")
export DISPLAY
openbox >/dev/null 2>&1 &
running="$running $!"
await sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'

# fact TEXT COMMAND...: says which fact doesn't hold
fact() {
  text=$1
  shift
  ( await "$@" ) || { echo "not so: $text" >&2; exit 1; }
  echo "$text"
}
state() { xprop -id "$window" _NET_WM_STATE | grep -q "$1"; }
no_state() { ! state "$1"; }
value() { "$tvmail" outbound show --json | grep -q "$1"; }
front() { [ "$(xdotool getwindowfocus getwindowname)" = "$1" ]; }
covered() { [ "$(xdotool getwindowfocus)" != "$window" ]; }
uncovered() { ! covered; }
gone() { ! kill -0 "$dialog" 2>/dev/null; }
frame() { # X Y: where the frame's corner is
  xwininfo -id "$window" | awk -v x="$1" -v y="$2" '/Absolute.*X/ {a = $NF} /Absolute.*Y/ {b = $NF}
    /Relative.*X/ {a -= $NF} /Relative.*Y/ {b -= $NF} END {exit !(a == x && b >= y - 9 && b <= y + 9)}'
}
# open TITLE ARGUMENTS...: the command's dialog in front, in $window, its process in $dialog
open() {
  title=$1
  shift
  $checker "$tvmail" "$@" >"$home/out" 2>"$home/errors" </dev/null &
  dialog=$!
  running="$running $dialog"
  fact "$1 opens its dialog" front "$title"
  window=$(xdotool getwindowfocus)
}
checker=
# ended TEXT CODE: the program ends by this exit code, with no other errors than its own
ended() {
  fact "$1" gone
  code=0
  wait "$dialog" || code=$?
  [ "$code" = "$2" ] || { echo "not so: exit code $code instead of $2" >&2; cat "$home/errors" >&2; exit 1; }
  ! grep -v '^tvmail: ' "$home/errors" >&2 || exit 1
}
# As a person would: a moment passes before the next key.
keys() {
  xdotool key --delay 30 "$@"
  sleep 0.2
}
enter() {
  xdotool type --delay 30 "$1"
  sleep 0.2
}
refused() {
  keys Return
  fact "a missing entry is refused in a box" covered
  keys Return
  fact "which closes" uncovered
}

"$tvmail" init >/dev/null

open "E-mail Configuration" outbound
fact "it stands above all others" state _NET_WM_STATE_ABOVE
fact "it stands in no task bar" state _NET_WM_STATE_SKIP_TASKBAR
# The window manager gives its own default icon to a window without one, but not this hint.
fact "it has no icon" sh -c "! xprop -id $window WM_HINTS | grep -qi icon"
fact "its size is fixed" sh -c "xprop -id $window WM_NORMAL_HINTS | grep -q 'minimum size: 330 by 208' &&
  xprop -id $window WM_NORMAL_HINTS | grep -q 'maximum size: 330 by 208'"
fact "it has a title, a close box and nothing else" sh -c "xprop -id $window _MOTIF_WM_HINTS | grep -q '0x3, 0x26, 0x1e'"
fact "its frame is in the middle" frame 475 397
keys F1
fact "F1 shows help" front "Help: E-mail Configuration"
fact "above the dialog" no_state _NET_WM_STATE_ABOVE
keys Escape
fact "Escape closes help, and the dialog is topmost again" state _NET_WM_STATE_ABOVE
refused
keys alt+s
enter "mail.x"
keys alt+e
enter "me@x.example"
keys alt+r
enter "My Name"
keys Return
ended "Enter presses OK" 0
fact "what the access keys led to is stored" value '"me@x.example"'

printf secret >"$home/password"
"$tvmail" project create "$home/Apollo.TVS" --name Apollo --user ann --password-file "$home/password" >/dev/null
add="mailbox add x --transport smtp --host mail.example.org --address a@example.org"
open "Talvane E-mail Setup" $add
fact "it is an ordinary window" no_state _NET_WM_STATE_ABOVE
refused
enter "$home/Apollo.TVS"
keys alt+u
enter "ann"
keys alt+w
enter "secret"
keys Return
ended "Enter binds the mailbox" 0
fact "which is stored" sh -c "'$tvmail' mailbox list --json | grep -q Apollo"

# The dynamic loader reads strings by words, and the display's library sends bytes that nobody has set.
# A program that AddressSanitizer watches can't run in it.
if command -v valgrind >/dev/null && ! nm -D "$tvmail" 2>/dev/null | grep -q __asan_init; then
  printf '{\nloader\nMemcheck:Addr8\nfun:strncmp\nfun:is_dst\n...\n}\n' >"$home/known"
  checker="valgrind -q --error-exitcode=99 --undef-value-errors=no --suppressions=$home/known"
fi
open "Talvane E-mail Setup" $add
refused
keys alt+F4
ended "the close box ends it" 75
