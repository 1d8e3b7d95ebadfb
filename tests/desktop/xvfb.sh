#!/bin/sh
# Real key and mouse events on both dialogs, under a display and a window manager of their own.
#   xvfb.sh TVMAIL       77 where there is no Xvfb
set -eu
tvmail=$1
command -v Xvfb >/dev/null || exit 77

home=$(mktemp -d)
trap 'kill $running 2>/dev/null || true; rm -rf "$home"' EXIT
running=
unset QT_QPA_PLATFORM WAYLAND_DISPLAY QT_SCALE_FACTOR
export LC_ALL=C.UTF-8 TALVANE_HOME="$home/home" XDG_RUNTIME_DIR="$home"

Xvfb -displayfd 3 -screen 0 1280x1024x24 3>"$home/display" >/dev/null 2>&1 &
running=$!
# await COMMAND...: until it succeeds, for 20 seconds at most
await() {
  tries=0
  until "$@" >/dev/null 2>&1; do
    tries=$((tries + 1))
    [ $tries -lt 200 ] || { echo "in vain: $*" >&2; exit 1; }
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
front() { [ "$(xdotool getactivewindow getwindowname)" = "$1" ]; }
gone() { ! kill -0 "$dialog" 2>/dev/null; }
# open TITLE ARGUMENTS...: the command's dialog in front, in $window, its process in $dialog
open() {
  title=$1
  shift
  "$tvmail" "$@" >"$home/out" 2>&1 </dev/null &
  dialog=$!
  running="$running $dialog"
  fact "$1 opens its dialog" front "$title"
  window=$(xdotool getactivewindow)
}
# As a person would: a moment passes before the next key.
keys() {
  xdotool key --delay 30 "$@"
  sleep 0.5
}
enter() {
  xdotool type --delay 40 "$1"
  sleep 0.5
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
keys F1
fact "F1 shows help" xdotool search --onlyvisible --name '^Help: E-mail Configuration$'
fact "which ends the standing" no_state _NET_WM_STATE_ABOVE
xdotool windowactivate "$window"
fact "until the dialog comes to the front again" state _NET_WM_STATE_ABOVE
keys alt+s
enter "mail.x"
keys alt+e
enter "me@x.example"
keys alt+r
enter "My Name"
keys Return
fact "Enter presses OK" gone
fact "what the access keys led to is stored" value '"me@x.example"'

printf secret >"$home/password"
"$tvmail" project create "$home/Apollo.TVS" --name Apollo --user ann --password-file "$home/password" >/dev/null
add="mailbox add x --transport smtp --host mail.example.org --address a@example.org"
open "Talvane E-mail Setup" $add
fact "it is an ordinary window" no_state _NET_WM_STATE_ABOVE
enter "$home/Apollo.TVS"
keys alt+u
enter "ann"
keys alt+w
enter "secret"
keys Return
fact "Enter binds the mailbox" sh -c "'$tvmail' mailbox list --json | grep -q Apollo"

open "Talvane E-mail Setup" $add
keys alt+F4
fact "the close box ends it" gone
