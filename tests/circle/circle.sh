# The circle of replies and notices with a real Postfix and a real Dovecot: see circle.py.
#   CIRCLE           options for circle.py, such as "--runs 20 --seed 7"
#   CIRCLE_PROGRAM   another program than circle.py, such as show.py
. "$WORK/test/both-servers.sh"
# The mail of persons and of the project's mailboxes goes to Dovecot, or into a Maildir of the project's.
install -d -o talvane -m 700 /var/mail/site
for run in $(seq 200); do echo "circle$run@maildir.example site/circle$run/"; done >/etc/postfix/maildirs
postconf -e "relay_domains = people.example site.example" \
  "transport_maps = inline:{people.example=lmtp:inet:127.0.0.1:2424, site.example=lmtp:inet:127.0.0.1:2424}" \
  "virtual_mailbox_domains = apollo.example maildir.example" \
  "virtual_mailbox_maps = texthash:/etc/postfix/maildirs" "local_header_rewrite_clients =" "in_flow_delay = 0"
reload_postfix
export QUEUE="$queue"
exec python3 "$WORK/test/${CIRCLE_PROGRAM:-circle.py}" ${CIRCLE:-}
