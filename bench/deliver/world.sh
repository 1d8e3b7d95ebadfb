#!/bin/bash
# Makes the stores, the project Apollo and its mailbox in a new folder, and an mbox of replies to it.
#   bench/deliver/world.sh FOLDER TVMAIL COUNT [USERS]
# USERS who take mail, 1 by default; the sender is the last one of them. A copy of the project's files is in FOLDER/clean.
set -eu
folder=$1
tvmail=$2
count=$3
users=${4:-1}
mkdir -p "$folder/clean"
cd "$folder"
export TALVANE_HOME="$folder/home"

# A reply of about 8 kB as a usual mail program writes it: text and HTML, the notification quoted in both.
awk -v count="$count" 'BEGIN {
  for (i = 1; i <= 40; i++) quote = quote "> Line " i " of the notification that is answered, as long as lines are.\n"
  for (i = 1; i <= 40; i++) html = html "<div>Line " i " of the notification that is answered, in a <b>block</b> of its own.</div>\n"
  for (n = 1; n <= count; n++) {
    print "From alice@apollo.example Mon Nov  2 09:14:07 2026"
    print "Received: from mail.apollo.example by mx.apollo.example with ESMTPS id " n "; Mon, 2 Nov 2026 09:14:07 +0100"
    print "From: =?utf-8?Q?Alice_=C3=84rcher?= <alice@apollo.example>\nTo: discussions@apollo.example"
    print "Subject: Re: Release plan (Ostrand Talvane Project Apollo,\n Ostrand Talvane Discussion 1)"
    print "Date: Mon, 2 Nov 2026 09:14:07 +0100\nMessage-ID: <" n "@apollo.example>\nMIME-Version: 1.0"
    print "Content-Type: multipart/alternative; boundary=\"=_b\"\n\n--=_b\nContent-Type: text/plain; charset=utf-8"
    print "Content-Transfer-Encoding: quoted-printable\n\nThis is reply " n ". Gr=C3=BC=C3=9Fe, and a line that was =\nbroken softly."
    print "\n> ----- Reply above this line -----\n" quote "\n--=_b\nContent-Type: text/html; charset=utf-8\n\n<html><body>" html
    print "</body></html>\n--=_b--\n"
  }
}' >mbox

(umask 077 && echo secret >password)
{
  "$tvmail" init
  "$tvmail" project create "$folder/Apollo.TVS" --name Apollo --user admin --password-file password
  python3 - "$users" <<'END'
import sqlite3, sys
database = sqlite3.connect("Apollo.db")
database.executemany(
    "INSERT INTO users (name, folded_name, email, mail_accepted, role) VALUES (?1, ?1, ?2, 1, 'member')",
    ((f"user{i}", f"user{i:05d}@apollo.example") for i in range(int(sys.argv[1]) - 1)))
database.commit()
END
  "$tvmail" project add-user Apollo.TVS --name alice --email alice@apollo.example
  "$tvmail" project add-discussion Apollo.TVS --title "Release plan"
  "$tvmail" mailbox add Apollo --project "$folder/Apollo.TVS" --user admin --password-file password \
    --transport smtp --host mail.apollo.example --address discussions@apollo.example
} >/dev/null
cp Apollo.* clean/
