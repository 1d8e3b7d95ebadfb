#!/bin/sh
# Installs what is missing, builds, and shows the main job on real mail: a project with a bound mailbox, into which the
# given mails (files, mboxes, Maildirs) or the samples are delivered, and the discussions with their new replies.
#   ./run.sh [MAIL...]
# Everything is in one folder: $TALVANE_DEMO, or run/ beside this script. Safe to repeat: what exists is kept.
#   ./run.sh --circle
# shows users who hold a discussion by mail alone, through a Postfix and a Dovecot that run on a private machine of
# their own, as root or with sudo. Nothing of it remains.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
if [ "${1:-}" = --help ] || [ "${1:-}" = -h ]; then
  sed -n '2,8s/^# \{0,1\}//p' "$here/run.sh"
  exit 0
fi

[ "${1:-}" != --circle ] || exec "$here/scripts/show-circle.sh"

"$here/scripts/install-packages.sh" run
"$here/scripts/build.sh" release -DTALVANE_TESTS=OFF

demo=${TALVANE_DEMO:-$here/run}
project=$demo/Apollo.TVS
password=$demo/password
tvmail=$here/build/release/bin/tvmail
mkdir -p "$demo"
chmod 700 "$demo"
export TALVANE_HOME="$demo/home"

step() { printf '\n-- %s\n' "$*"; }

step "Stores and registration, below $demo"
"$tvmail" init

if [ ! -e "$project" ]; then
  step "A project with its users and discussions"
  # A project whose creation was interrupted is created again.
  rm -rf "$demo/new"
  mkdir "$demo/new"
  [ -e "$password" ] || (umask 077; head -c 18 /dev/urandom | base64 >"$password")
  "$tvmail" project create "$demo/new/Apollo.TVS" --name Apollo --user admin --password-file "$password"
  "$tvmail" project add-user "$demo/new/Apollo.TVS" --name alice --email alice@apollo.example
  "$tvmail" project add-user "$demo/new/Apollo.TVS" --name bob --email bob@apollo.example
  "$tvmail" project add-user "$demo/new/Apollo.TVS" --name carol --email carol@apollo.example --refuse-mail
  "$tvmail" project add-discussion "$demo/new/Apollo.TVS" --title "Release plan"
  "$tvmail" project add-discussion "$demo/new/Apollo.TVS" --title "Launch site"
  for file in "$demo"/new/Apollo.*; do
    [ "${file##*.}" = TVS ] || mv "$file" "$demo/"
  done
  mv "$demo/new/Apollo.TVS" "$project"
  rmdir "$demo/new"
fi

if ! "$tvmail" mailbox list | grep -q Apollo; then
  step "A mailbox, bound to the project by the component's own dialog"
  "$tvmail" mailbox add Apollo --project "$project" --user admin --password-file "$password" \
    --transport smtp --host mail.apollo.example --address discussions@apollo.example --real-name "Apollo discussions"
fi

[ $# -gt 0 ] || set -- "$here"/samples/mail/*.eml
step "Delivering to the mailbox"
outcome=0
"$tvmail" deliver Apollo "$@" || outcome=$?

step "The project's discussions"
"$tvmail" project show "$project"

case $outcome in
  0) printf '\nDone: every mail became a reply. The project is in %s\n' "$project" ;;
  65) printf '\nDone: the mails that could be answered became replies; the others are listed above with the reason. The project is in %s\n' "$project" ;;
  *)
    printf '\nNot done: a mail could not be delivered for a reason other than its own (tvmail ended with %s).\n' "$outcome" >&2
    exit "$outcome"
    ;;
esac
