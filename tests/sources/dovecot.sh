# The queues of servers, with a real Dovecot that listens on loopback. The test program starts, kills and fills it.
cat >/etc/hosts <<END
127.0.0.1 localhost mail.test
127.0.0.2 expired.test
127.0.0.3 other.test
127.0.0.4 unknown.test
127.0.0.5 plain.mail.test
END
. "$WORK/test/dovecot-server.sh"

# Certificates that aren't accepted: one that has expired, one of another host, and one by nobody.
cd "$WORK/tls"
certify expired expired.test -1
certify other elsewhere.test 2
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=unknown.test" -addext "subjectAltName = DNS:unknown.test" \
  -keyout unknown.key -out unknown.pem 2>>log
cd "$WORK"
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
timeout 250 "$BUILD/bin/server_queue_tests" || { status=$?; tail -n 20 "$WORK/dovecot.log" >&2; exit $status; }
