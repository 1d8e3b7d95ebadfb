# The queues of servers, with a real Dovecot that listens on loopback. The test program starts, kills and fills it.
[ -e "$SERVERS/usr/sbin/dovecot" ] || { echo "skipped: run scripts/unpack-mail-servers.sh build/mail-servers"; exit 77; }
for user in dovecot dovenull mail-reader; do useradd --system $user; done
cat >/etc/hosts <<END
127.0.0.1 localhost mail.test
127.0.0.2 expired.test
127.0.0.3 other.test
127.0.0.4 unknown.test
127.0.0.5 plain.mail.test
END

# Dovecot finds its parts below /usr alone, so two folders there become folders of links, to the system's files and its.
for folder in lib bin; do
  mkdir "$WORK/$folder" "$WORK/system-$folder"
  mount --bind "/usr/$folder" "$WORK/system-$folder"
  ln -s "$WORK/system-$folder"/* "$WORK/$folder/"
done
ln -sfn "$SERVERS/usr/lib/dovecot" "$WORK/lib/dovecot"
ln -sf "$SERVERS/usr/bin/doveconf" "$WORK/bin/doveconf"
mount --bind "$WORK/bin" /usr/bin
mount --bind "$WORK/lib" /usr/lib
echo "$SERVERS/usr/lib/dovecot" >/etc/ld.so.conf.d/dovecot.conf
ldconfig -X

# An authority, and certificates by it: of mail.test, one that has expired, one of another host; and one by nobody.
mkdir "$WORK/tls"
cd "$WORK/tls"
printf '[req]\ndistinguished_name = name\n[name]\n' >openssl.cnf
export OPENSSL_CONF="$WORK/tls/openssl.cnf"
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=Test authority" -addext "basicConstraints = CA:TRUE" -keyout ca.key -out ca.pem 2>>log
certify() { # NAME HOST DAYS
  openssl req -newkey rsa:2048 -nodes -subj "/CN=$2" -keyout "$1.key" -out "$1.request" 2>>log
  echo "subjectAltName = DNS:$2,DNS:plain.$2,IP:127.0.0.1" >"$1.names"
  openssl x509 -req -in "$1.request" -CA ca.pem -CAkey ca.key -CAcreateserial -days "$3" -extfile "$1.names" \
    -out "$1.pem" 2>>log
}
certify mail mail.test 2
certify expired expired.test -1
certify other elsewhere.test 2
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=unknown.test" -addext "subjectAltName = DNS:unknown.test" \
  -keyout unknown.key -out unknown.pem 2>>log

cat >"$WORK/dovecot.conf" <<END
base_dir = $WORK/run
state_dir = $WORK/run
log_path = $WORK/log
libexec_dir = /usr/lib/dovecot
protocols = imap pop3
listen = 127.0.0.1, 127.0.0.2, 127.0.0.3, 127.0.0.4, 127.0.0.5
mail_location = maildir:$WORK/mail/%n
mail_uid = mail-reader
mail_gid = mail-reader
first_valid_uid = 1
first_valid_gid = 1
mail_max_userip_connections = 100
auth_failure_delay = 0
service anvil {
  unix_listener anvil-auth-penalty {
    mode = 0
  }
}
ssl = yes
ssl_cert = <$WORK/tls/mail.pem
ssl_key = <$WORK/tls/mail.key
pop3_uidl_format = %08Xu%08Xv
passdb {
  driver = static
  args = password=secret
}
userdb {
  driver = static
  args = uid=mail-reader gid=mail-reader home=$WORK/mail/%n
}
namespace inbox {
  inbox = yes
  mailbox Archiv-ä {
    auto = create
  }
}
END
for name in expired.2 other.3 unknown.4; do
  cat >>"$WORK/dovecot.conf" <<END
local 127.0.0.${name#*.} {
  ssl_cert = <$WORK/tls/${name%.*}.pem
  ssl_key = <$WORK/tls/${name%.*}.key
}
END
done
# A server that offers no extensions.
cat >>"$WORK/dovecot.conf" <<END
local 127.0.0.5 {
  protocol imap {
    imap_capability = IMAP4rev1
  }
}
END
mkdir "$WORK/mail" "$WORK/run"
chown mail-reader "$WORK/mail"
cd "$WORK"
timeout 250 "$BUILD/bin/server_queue_tests" || { status=$?; tail -n 20 "$WORK/log" >&2; exit $status; }
