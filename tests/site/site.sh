# A site of ten mailboxes with a real Postfix and a real Dovecot: see site.py.
#   SITE_MAILS   how many mails arrive, 2000 without it
#   SITE_KILLS   how often the service is killed, 3 times without it
. "$WORK/test/both-servers.sh"

install -d -o talvane -m 700 /var/mail/site /srv/talvane/mail
for name in Apollo Gemini; do
  echo "$name@site.example site/$name/" >>/etc/postfix/maildirs
  echo "$name@site.example virtual:" >>/etc/postfix/transport
done
for name in Mercury Skylab; do echo "$name@site.example $name@example.org" >>/etc/postfix/virtual; done
echo "Voyager@site.example talvane:" >>/etc/postfix/transport
echo "site.example lmtp:inet:127.0.0.1:2424" >>/etc/postfix/transport
mkdir /etc/talvane
cat >/etc/talvane/aliases <<END
Mercury: /srv/talvane/mail/Mercury/
Skylab: "|/usr/local/bin/tvmail deliver --hold Skylab"
END
sed -n '/^talvane/,$p' "$SOURCE/packaging/postfix/domain.master.cf" >>/etc/postfix/master.cf
postmap /etc/postfix/maildirs /etc/postfix/transport /etc/postfix/virtual
postalias /etc/talvane/aliases
chown talvane /etc/talvane/aliases /etc/talvane/aliases.db
# The mails come as from another machine: nothing is added to them or changed. Deferred mail is tried again soon.
postconf -e "relay_domains = site.example" "transport_maps = hash:/etc/postfix/transport" \
  "virtual_mailbox_maps = hash:/etc/postfix/maildirs" "virtual_alias_maps = hash:/etc/postfix/virtual" \
  "alias_maps = hash:/etc/aliases, hash:/etc/talvane/aliases" "mailbox_size_limit = 0" \
  "talvane_destination_recipient_limit = 1" "local_header_rewrite_clients =" "in_flow_delay = 0" \
  "minimal_backoff_time = 1s" "maximal_backoff_time = 2s" "queue_run_delay = 1s"
reload_postfix
export QUEUE="$queue"
python3 "$WORK/test/site.py" "${SITE_MAILS:-2000}" "${SITE_KILLS:-3}"
