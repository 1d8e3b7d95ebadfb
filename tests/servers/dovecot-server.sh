# To be sourced: prepares a Dovecot with IMAP, POP3 and LMTP, but doesn't start it; its configuration is
# "$WORK/dovecot.conf". It knows every user with the password "secret"; the mail of NAME is the Maildir
# "$WORK/mail/NAME", which belongs to the user mail-reader. Its certificate is for mail.test, by the authority
# "$WORK/tls/ca.pem".
#   certify NAME HOST DAYS     makes another certificate in "$WORK/tls"
[ -e "$SERVERS/usr/lib/dovecot/lmtp" ] || { echo "skipped: run scripts/unpack-mail-servers.sh build/mail-servers"; exit 77; }
for user in dovecot dovenull mail-reader; do useradd --system $user; done

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

# An authority, and a certificate by it.
mkdir "$WORK/tls"
cd "$WORK/tls"
printf '[req]\ndistinguished_name = name\n[name]\n' >openssl.cnf
export OPENSSL_CONF="$WORK/tls/openssl.cnf"
openssl req -x509 -newkey rsa:2048 -nodes -days 2 -subj "/CN=Test authority" \
  -addext "basicConstraints = CA:TRUE" -keyout ca.key -out ca.pem 2>>log
certify() { # NAME HOST DAYS
  openssl req -newkey rsa:2048 -nodes -subj "/CN=$2" -keyout "$1.key" -out "$1.request" 2>>log
  echo "subjectAltName = DNS:$2,DNS:plain.$2,IP:127.0.0.1" >"$1.names"
  openssl x509 -req -in "$1.request" -CA ca.pem -CAkey ca.key -CAcreateserial -days "$3" -extfile "$1.names" \
    -out "$1.pem" 2>>log
}
certify mail mail.test 2

cat >"$WORK/dovecot.conf" <<END
base_dir = $WORK/run
state_dir = $WORK/run
log_path = $WORK/dovecot.log
libexec_dir = /usr/lib/dovecot
protocols = imap pop3 lmtp
listen = 127.0.0.1, 127.0.0.2, 127.0.0.3, 127.0.0.4, 127.0.0.5
mail_location = maildir:$WORK/mail/%n
mail_uid = mail-reader
mail_gid = mail-reader
first_valid_uid = 1
first_valid_gid = 1
mail_max_userip_connections = 100
auth_failure_delay = 0
service lmtp {
  inet_listener lmtp {
    address = 127.0.0.1
    port = 2424
  }
}
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
mkdir "$WORK/mail" "$WORK/run"
chown mail-reader "$WORK/mail"
cd "$WORK"
