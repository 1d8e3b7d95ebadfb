// What users are told by mail: replies go out through an SMTP server or a command, once to each user, and
// what can't be sent waits. With the real program, stores and siblings.
#include "tests/deliver/Deliver.h"

namespace Tests {
namespace {

// reply ID FROM [OPTION...] delivers a reply to the discussion 1; report NAME prints a delivery report for
// the notice whose Message-ID it reads. smtp starts the server and lets the mailbox send by it; value prints
// a value of the status.
constexpr const char* kFunctions = R"bash(
reply() {
  printf 'From: %s@apollo.example\nMessage-ID: <%s@x>\nSubject: %s\n\nText %s\n' "$2" "$1" \
    "${SUBJECT:-Re: (Ostrand Talvane Project Apollo, Ostrand Talvane Discussion 1)}" "$1" |
    tvmail deliver Apollo "${@:3}" >/dev/null 2>&1
}
report() {
  printf 'From: MAILER-DAEMON@mx\nTo: a@b\nMessage-ID: <report%s@mx>\nAuto-Submitted: auto-replied\n' "$RANDOM$RANDOM"
  printf 'MIME-Version: 1.0\nContent-Type: multipart/report; report-type=delivery-status; boundary=b\n\n'
  printf -- '--b\n\nSorry.\n--b\nContent-Type: message/delivery-status\n\nReporting-MTA: dns; mx\n\n'
  printf 'Final-Recipient: rfc822; %s\nAction: failed\nStatus: 5.1.1\n\n' "$1"
  printf -- '--b\nContent-Type: text/rfc822-headers\n\nMessage-ID: %s\n\n--b--\n' "$2"
}
until_true() {
  for try in {1..200}; do "$@" >/dev/null 2>&1 && return; sleep 0.1; done
  echo "never true: $*"; cat log; return 1
}
smtp() {
  python3 -W ignore "$SMTP_SERVER" & server=$!
  trap 'kill $server 2>/dev/null' EXIT
  until_true test -f port
  tvmail mailbox change Apollo --transport smtp --host "127.0.0.1:$(cat port)" --address apollo@site.example >/dev/null
}
sql() { python3 -c "import sqlite3; d = sqlite3.connect('Apollo.db'); d.execute('$1'); d.commit()"; }
value() { tvmail status Apollo --json | grep -o "\"$1\":[^,}]*" | cut -d: -f2-; }
sent() { grep ' > ' sent | sort; rm sent; }
tvmail project add-user Apollo.TVS --name dora --email dora@apollo.example >/dev/null
)bash";

class Notify : public Deliver {
 protected:
  Notify() { setenv("SMTP_SERVER", SMTP_SERVER, 1); }

  std::string OutputOf(const std::string& lines) const {
    const Outcome outcome = Run(kFunctions + lines);
    EXPECT_EQ(outcome.Errors, "");
    return outcome.Output;
  }
};

TEST_F(Notify, TellsEachUserButTheAuthorOfAReplyThatCameByMailOnce) {
  EXPECT_EQ(
      OutputOf(R"bash(
smtp; reply 1 alice; value unsentNotices; tvmail notify | sort; grep -c 'From: alice <apollo@site.example>' sent
sent; value unsentNotices; tvmail notify; test -f sent || echo "no more"
reply 2 bob; tvmail notify nobody 2>/dev/null; echo $?; tvmail notify --drop; tvmail notify --json; test -f sent || echo "none"
printf '[[mailbox]]\nname = "Apollo"\nnotices = false\n' >home/tvmail.toml; chmod 600 home/tvmail.toml; reply 3 bob
tvmail notify; tvmail notify Apollo 2>&1; echo $?; tvmail serve 2>&1 | grep -o 'a source or notices'
printf 'notices-per-minute = 3\naddress = "new@site.example"\n' | sed '1i[[mailbox]]\nname = "Apollo"' >home/tvmail.toml
tvmail notify | sed 's/in [0-9]* s/in N s/'; sent)bash"),
      "2\n2 mails: 2 sent, 0 deferred, 0 given up\n"
      "Apollo  bob@apollo.example  discussion 1, reply 1  sent\n"
      "Apollo  dora@apollo.example  discussion 1, reply 1  sent\n2\n"
      "apollo@site.example > bob@apollo.example\napollo@site.example > dora@apollo.example\n0\n"
      "nothing was due\nno more\n78\nApollo  2 mails dropped: no user is notified by mail\nnone\n"
      "nothing was due\ntvmail: mailbox Apollo has notices = false in tvmail.toml: change that, or remove "
      "what waits with --drop\n78\na source or notices\n"
      "Apollo  alice@apollo.example  discussion 1, reply 3  sent\n"
      "Apollo  1 mail waits for the limit of 3 a minute: run tvmail notify again in N s\n"
      "1 mail: 1 sent, 0 deferred, 0 given up; more is due in N s\n"
      "new@site.example > alice@apollo.example\n");
}

TEST_F(Notify, TellsOfAPostedReplyByTheSettingsOfTheUserWhoPosts) {
  EXPECT_EQ(
      OutputOf(R"bash(
smtp; printf '#!/bin/sh\ncat >>"%s/command"\n' "$PWD" >sendmail; chmod +x sendmail
post() { echo "Text" | tvmail project post Apollo.TVS --discussion 1 --user bob - 2>&1 | cut -c1-40; }
post; value unsentNotices
tvmail outbound --transport smtp --host '[' --address bob@home.example --real-name 'Bob B.' >/dev/null
echo Text | tvmail project post Apollo.TVS --discussion 1 --user bob 2>&1 | cut -c1-137; tvmail check | grep outbound | cut -c1-41
tvmail outbound --host "127.0.0.1:$(cat port)" >/dev/null; tvmail check | grep outbound
post; tvmail notify | tail -1; grep From: sent | sort -u; grep Reply-To sent | sort -u; sent
tvmail outbound --disable >/dev/null; post; value unsentNotices
tvmail outbound add-profile Office; tvmail outbound add-profile office --command "$PWD/sendmail -t" | sed "s|$PWD||"
tvmail outbound --enable --transport mapi --profile Office | grep Command | sed "s|$PWD||"
post; tvmail notify | tail -1; grep ^To: command | sort
tvmail check | grep outbound; chmod -x sendmail; tvmail check | grep outbound | sed "s|$PWD||"; chmod +x sendmail
tvmail project set-user Apollo.TVS --user dora --email Apollo@SITE.example >/dev/null
printf '[[mailbox]]\nname = "Apollo"\n' >home/tvmail.toml; chmod 600 home/tvmail.toml
tvmail mailbox change Apollo --transport mapi --profile Office >/dev/null; sed -i /^EMailAddress/d Apollo.TVS
tvmail mailbox show Apollo | tail -1; echo 'address = "apollo@site.example"' >>home/tvmail.toml; tvmail mailbox show Apollo | tail -1
reply 2 bob; tvmail notify | tail -2 | cut -c1-92
sed -i /^address/d home/tvmail.toml; sed -i 's/^.EMail.$/&\nEMailAddress=apollo at site/' Apollo.TVS
reply 3 bob; tvmail notify 2>&1; value unsentNotices)bash"),
      "1\ntvmail: no user is notified of the reply\n0\n"
      "2\ntvmail: no user is notified of the reply by mail; correct the settings with tvmail outbound: "
      "\"[\" is no host for sending mail: give a name\noutbound  \"[\" is no host for sending mail\n"
      "outbound  ok\n3\ntvmail: users who will be notified by ma\n2 mails: 2 sent, 0 deferred, 0 given up\n"
      "From: \"Bob B.\" <bob@home.example>\nReply-To: Apollo <apollo@site.example>\n"
      "bob@home.example > alice@apollo.example\nbob@home.example > dora@apollo.example\n"
      "4\ntvmail: no user is notified of the reply\n0\n"
      "MAPI profile Office is defined. It sends by the command: sendmail -t -i\n"
      "MAPI profile office is defined. It sends by the command: /sendmail -t\n"
      "Command:      /sendmail -t\n5\ntvmail: users who will be notified by ma\n"
      "2 mails: 2 sent, 0 deferred, 0 given up\nTo: alice <alice@apollo.example>\nTo: dora "
      "<dora@apollo.example>\noutbound  ok\noutbound  The program /sendmail of the command for sending can't "
      "be run. Give this user the right with chmod, or set another command with tvmail outbound "
      "add-profile NAME --command.\n"
      "Missing:      address: set it in the mailbox's section of tvmail.toml\n"
      "Address:      apollo@site.example\n"
      "Apollo  Apollo@SITE.example  discussion 1, reply 6  given up: Apollo@SITE.example is the add\n"
      "2 mails: 1 sent, 0 deferred, 1 given up\ntvmail: Apollo: \"apollo at site\" is no e-mail address: it "
      "has no @. "
      "Give one such as ann@example.org.\nnothing was sent\n2\n");
}

TEST_F(Notify, DefersAndGivesUpWhatTheServerDoesNotTake) {
  EXPECT_EQ(OutputOf(R"bash(
smtp; echo '450 4.2.1 come later' >answer.bob@apollo.example; echo '550 5.1.1 no such user' >answer.dora@apollo.example
reply 1 alice; tvmail notify | cut -d: -f1; echo "notify ${PIPESTATUS[0]}"; tvmail status Apollo | tail -2 | grep -o 'come later\|no such user'
value unsentNotices; value deferredNotices; value givenUpNotices; value givenUpAddress; tvmail status >/dev/null; echo "status $?"
kill $server; wait $server 2>/dev/null; reply 2 alice; tvmail notify | cut -d: -f1; value unsentNotices
tvmail check Apollo | grep -c 'sending  .*127.0.0.1'; tvmail mailbox change Apollo --host '[' >/dev/null; reply 3 alice; tvmail notify 2>&1 | grep -c 'no host'
tvmail status | grep -c "can't send.*no host"
sql 'UPDATE notices SET first_attempt = 1, next_attempt = 1 WHERE attempts > 0 OR reply = 2'
tvmail mailbox change Apollo --host 127.0.0.1:1 >/dev/null; tvmail notify | grep -o 'reply 2  given up'
tvmail notify --drop --json; mv Apollo.db kept; tvmail status >/dev/null; echo "status $?")bash"),
            "Apollo  bob@apollo.example  discussion 1, reply 1  deferred\n"
            "Apollo  dora@apollo.example  discussion 1, reply 1  given up\n"
            "2 mails\nnotify 75\ncome later\nno such user\n1\n1\n1\n\"dora@apollo.example\"\nstatus 0\n"
            "Apollo  bob@apollo.example  discussion 1, reply 2  deferred\n1 mail\n3\n1\n1\n1\n"
            "reply 2  given up\nreply 2  given up\n{\"mailbox\":\"Apollo\",\"dropped\":2}\nstatus 75\n");
}

// Only what is tried is an attempt and counts for the limit: here three mails, and not the fourth for the
// server that was found to be down.
TEST_F(Notify, SendsByOtherRoutesWhileThatOfTheProjectCanNotBeUsed) {
  EXPECT_EQ(
      OutputOf(R"bash(
smtp; printf '[[mailbox]]\nname = "Apollo"\nnotices-per-minute = 3\n' >home/tvmail.toml; chmod 600 home/tvmail.toml
post() { echo "Text" | tvmail project post Apollo.TVS --discussion 1 --user bob - >/dev/null 2>&1; }
outcomes() { sed 's/^.*"reply":\([0-9]*\),"outcome":"\([a-zA-Z]*\)".*/\1 \2/; s/[0-9]* s\b/N s/'; }
tvmail outbound --transport smtp --host "127.0.0.1:$(cat port)" --address bob@home.example --real-name Bob >/dev/null
tvmail mailbox change Apollo --host 127.0.0.1:1 >/dev/null; reply 1 bob; post; tvmail notify --json | outcomes
value unsentNotices; value deferredNotices; tvmail mailbox change Apollo --host "127.0.0.1:$(cat port)" >/dev/null
tvmail notify | outcomes; tvmail notify --now | outcomes; tvmail notify --json | sed 's/:[0-9]*}/:N}/'; rm home/tvmail.toml
tvmail notify | tail -1; tvmail mailbox change Apollo --host '[' >/dev/null; reply 3 bob; post
tvmail notify 2>&1 | cut -c1-60 | sort; value unsentNotices
sql 'UPDATE notices SET sender = 1 WHERE user = (SELECT key FROM users WHERE name = "dora")'
tvmail status | grep "another user's"; tvmail status --json | grep -o '"otherUsers":[^]]*'
tvmail mailbox change Apollo --host "127.0.0.1:$(cat port)" >/dev/null; tvmail notify | tail -1)bash"),
      "1 deferred\n2 sent\n2 sent\n2\n1\nnothing was due; more is due in N s\n"
      "Apollo  2 mails wait for the limit of 3 a minute: run tvmail notify again in N s\n"
      "nothing was sent; more is due in N s\n"
      "{\"mailbox\":\"Apollo\",\"outcome\":\"limited\",\"waiting\":2,\"perMinute\":3,\"seconds\":N}\n"
      "2 mails: 2 sent, 0 deferred, 0 given up\n"
      "2 mails: 2 sent, 0 deferred, 0 given up\n"
      "Apollo  alice@apollo.example  discussion 1, reply 4  sent\n"
      "Apollo  dora@apollo.example  discussion 1, reply 4  sent\n"
      "tvmail: Apollo: \"[\" is no host for sending mail: give a name\n2\n"
      "  another user's  1 of the unsent can be sent only by a profile of daemon: run tvmail notify as that "
      "user\n\"otherUsers\":[{\"user\":\"daemon\",\"uid\":1,\"unsent\":1}\n"
      "1 mail: 1 sent, 0 deferred, 0 given up\n");
}

TEST_F(Notify, AnswersUsersOfHeldMailOnceAnHourAndStopsAfterThreeReports) {
  EXPECT_EQ(
      OutputOf(R"bash(
smtp; export SUBJECT='Re: lunch'
reply 1 alice; reply 2 stranger --hold; reply 3 alice --hold; reply 4 alice --hold; tvmail notify | tail -2; sent
printf '[defaults]\nanswer-senders = false\n' >home/tvmail.toml; chmod 600 home/tvmail.toml
reply 5 bob --hold; tvmail notify; rm home/tvmail.toml; unset SUBJECT
for i in 1 2 3; do reply "1$i" alice; done; tvmail notify >/dev/null
grep -A1 '> bob' sent | grep -o '<.*>' | while read -r id; do
  value stoppedAddresses; report dora@x.example "$id" | tvmail deliver Apollo --hold 2>&1 | grep -o 'it is about [^ ,]*'
  report bob@apollo.example "$id" >report; for again in 1 2; do tvmail deliver Apollo --hold <report >/dev/null; done
done
value stoppedAddresses; tvmail held list --json | grep -o auto-replied | wc -l; rm sent
reply 20 alice; tvmail notify >/dev/null; sent
tvmail outbound --transport smtp --host a.example --address a@home.example --real-name A >/dev/null
echo Text | tvmail project post Apollo.TVS --discussion 1 --user alice 2>&1 | sed 's/; .*//'
tvmail project set-user Apollo.TVS --user bob --accept-mail >/dev/null; value stoppedAddresses)bash"),
      "Apollo  alice@apollo.example  answer  sent\n1 mail: 1 sent, 0 deferred, 0 given up\n"
      "apollo@site.example > alice@apollo.example\nnothing was due\n[]\nit is about dora@x.example\n"
      "[]\nit is about dora@x.example\n[]\nit is about dora@x.example\n[\"bob@apollo.example\"]\n6\n"
      "apollo@site.example > dora@apollo.example\n5\ntvmail: users who will be notified by mail: 1\n"
      "tvmail: users who aren't notified, since three mails to each of them were not delivered: bob\n[]\n");
}

TEST_F(Notify, ServesAMailboxWithoutASource) {
  EXPECT_EQ(
      OutputOf(R"bash(
smtp; printf '[[mailbox]]\nname = "Apollo"\n' >home/tvmail.toml; chmod 600 home/tvmail.toml
tvmail fetch 2>/dev/null; echo "fetch $?"
tvmail serve 2>>log & until_true grep started log; reply 1 alice; until_true grep '> dora' sent
kill -9 $!; wait $! 2>/dev/null; echo '450 4.2.1 later' >answer.bob@apollo.example; reply 2 alice
tvmail serve 2>>log & until_true grep 'bob.*outcome=deferred' log; until_true grep '> dora' sent
sql 'UPDATE notices SET next_attempt = next_attempt + 3000000'; rm answer.bob@apollo.example
kill -HUP $!; until_true grep 'reply=2.*bob.*outcome=sent\|bob.*reply=2.*outcome=sent' log
echo 'notices = false' >>home/tvmail.toml; kill -HUP $!; until_true grep 'event=stopped mailbox=Apollo' log
grep -o 'event=configuration mailbox=Apollo.*' log; reply 3 alice; value unsentNotices
kill $!; wait $!; echo "ended $?"; sent; grep -c 'event=notice' log)bash"),
      "fetch 78\nevent=configuration mailbox=Apollo reason=\"The mailbox Apollo has no source and sends no "
      "notices. Set source, or notices = true.\"\n2\nended 0\napollo@site.example > bob@apollo.example\n"
      "apollo@site.example > bob@apollo.example\n"
      "apollo@site.example > dora@apollo.example\napollo@site.example > dora@apollo.example\n5\n");
}

}  // namespace
}  // namespace Tests
