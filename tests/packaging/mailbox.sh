# To be sourced: creates the user talvane and the mailbox as README.md describes it, and mails; defines functions that
# check what happened to the mails.
tvmail=/usr/local/bin/tvmail
home=/srv/talvane
project=$home/apollo/Apollo.TVS
# setup FROM TO: the commands of README.md's set-up from the line FROM to the line TO
setup() { sed -n '/^## Setting up/,/^## The/s/^    //p' "$SOURCE/README.md" | sed -n "/^$1/,/^$2/p"; }
setup useradd "su talvane" | sed '$d' >"$WORK/as-root"
setup mkdir "tvmail project show" >"$WORK/as-user"
sh -eu "$WORK/as-root"
as_talvane() { setpriv --reuid talvane --regid talvane --clear-groups env HOME=$home "$@"; }
fail() { echo "not so: $*" >&2; exit 1; }
# await TEXT COMMAND...: repeats the command until it succeeds; fails with the text after 100 tries
await() {
  text=$1
  shift
  tries=0
  until "$@" >/dev/null 2>&1; do
    tries=$((tries + 1))
    [ $tries -lt 100 ] || { tail -n 20 "${log:-/dev/null}"; fail "$text"; }
    sleep 0.1
  done
  echo "$text"
}

as_talvane sh -eu "$WORK/as-user" >"$WORK/typed" 2>&1 || fail "the set-up ends well: $(cat "$WORK/typed")"

# mail NAME FROM WORDS: the file NAME, whose reply is WORDS
mail() {
  printf 'From: %s\nTo: apollo@example.org\nSubject: Re: Release plan (%s)\nMessage-ID: <%s@apollo.example>\n\n%s\n' \
    "$2" "Ostrand Talvane Project Apollo, Ostrand Talvane Discussion 1" "$1" "$3" >"$WORK/$1"
}
mail good alice@apollo.example "Friday works for me."
mail refused mallory@elsewhere.example "Nobody knows me."
mail deferred alice@apollo.example "The disk was away."
# What the sender of a refused mail has to read, and nothing else.
sentence='The project has no user with the address mallory@elsewhere.example.'
# Refused mail of the mailbox is held.
held() { find "$home/.local/share/talvane/held" -path '*/new/*' -type f -exec grep -l "$1" {} + | grep -q .; }
replied() { as_talvane $tvmail project show $project | grep -q "$1"; }
project_away() { mv $project $project.away; }
project_back() { mv $project.away $project; }
