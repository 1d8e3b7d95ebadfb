#!/bin/sh
# Who may include whom, and which folder adapts which foreign library.
#   includes.sh SOURCE
set -eu
cd "$1"

# FOLDER: the folders that its files may include beside their own; * stands for all below. Outside
# platform/, no folder includes one of a line above its own, so that there is no circle.
folders='
host/main.cpp: host* platform runtime
host/commands: host host/export host/options host/terminal gateway* mime platform* runtime
host/export: gateway/delivery mime platform* runtime
host/options: host host/terminal platform* runtime
host/terminal: host mime platform* runtime
host: gateway* mime platform* runtime
desktop: platform* runtime
gateway/service: gateway* mime platform* runtime
gateway/delivery: gateway/notices gateway/policy gateway/sources mime platform* runtime
gateway/notices: gateway/policy gateway/sources mime platform* runtime
gateway/policy: mime platform* runtime
gateway/sources: mime platform* runtime
mime: platform
siblings/OstrCipherCOM: platform* runtime
siblings/Talvane40: platform* runtime
siblings/TvGeneralGuiServices: platform* runtime
siblings/TvGeneralServices: platform* runtime
siblings/TvResourceServices: platform* runtime
src/mail: src/outbound src/dialogs src/mailbox src/security src/services platform*
src/outbound: src/dialogs src/mailbox src/services platform*
src/dialogs: src/mailbox src/services platform*
src/mailbox: src/security src/services platform*
src/security: platform*
src/services: platform*
runtime: platform*
platform/Forms: platform platform/contracts
platform/contracts: platform
platform: platform/Forms
'
# HEADER: the one file or folder that adapts its library. A header with a dot that no line names is the system's, or
# has to get its line.
foreign='
sqlite3.h: runtime/Database. runtime/DatabaseState.
openssl/: siblings/OstrCipherCOM/ siblings/Talvane40/NoticeIds. siblings/Talvane40/PasswordHash. mime/ gateway/delivery/Digest. gateway/sources/SslLibrary. gateway/sources/TlsSession.
libetpan/: gateway/sources/EtpanLibrary.
curl/: gateway/notices/CurlLibrary. gateway/notices/SmtpTransport.
gmime/: mime/
glib: mime/
gio/: mime/
unicode/: mime/ runtime/MailAddress.
CLI/: host/commands/ host/options/ host/main.cpp
toml++/: gateway/service/SettingsFile.
systemd/: gateway/service/Systemd.
histedit.h: host/terminal/
editline/: host/terminal/
Q: desktop/
qpa/: desktop/
xcb/: desktop/
'
system='^(sys/|arpa/|netinet/|netdb|pthread|unistd|fcntl|dlfcn|link|pwd|grp|poll|signal|spawn|termios|locale|langinfo|time|dirent|malloc|errno|stdio|stdlib|string|wctype|sysexits)'

find platform runtime siblings src mime gateway host desktop -name '*.cpp' -o -name '*.h' | sort |
  xargs grep -HE '^#include ' |
  sed -E 's/:#include ([<"])([^>"]*)[>"].*/ \1 \2/' |
  awk -v folders="$folders" -v foreign="$foreign" -v system_headers="$system" '
function folder_of(path) { return match(path, /\/[^\/]*$/) ? substr(path, 1, RSTART - 1) : "" }
function wrong(text) { print text; failed = 1 }
function read_table(text, table, count, lines, i) {
  count = split(text, lines, "\n")
  for (i = 1; i <= count; i++)
    if (match(lines[i], /: /)) { table[substr(lines[i], 1, RSTART - 1)] = substr(lines[i], RSTART + 2); order[++rows] = substr(lines[i], 1, RSTART - 1) }
}
function may_include(from, to, allowed, count, names, i) {
  count = split(allowed, names, " ")
  for (i = 1; i <= count; i++)
    if (names[i] == to || (sub(/\*$/, "", names[i]) && (to == names[i] || index(to, names[i] "/") == 1))) return 1
  return from == to
}
BEGIN { read_table(folders, beside); read_table(foreign, place) }
{ file = $1; header = $3; seen++ }
$2 == "\"" {
  from = (file in beside) ? file : folder_of(file)
  if (!(from in beside)) wrong(from " has no rule: name it, and what it may include, in tests/includes/includes.sh")
  else if (!may_include(from, folder_of(header), beside[from])) wrong(file " must not include " header)
}
$2 == "<" {
  known = 0
  for (library in place)
    if (index(header, library) == 1) {
      known = 1
      good = 0
      count = split(place[library], names, " ")
      for (i = 1; i <= count; i++) good = good || index(file, names[i]) == 1
      if (!good) wrong(file " must not include " header ", which stays in " place[library])
    }
  if (!known && header ~ /[.\/]/ && header !~ system_headers) wrong(file " includes " header ": name the place of its library")
}
END { print seen " includes seen"; exit failed || seen < 100 }'
