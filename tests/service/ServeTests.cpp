// tvmail serve, fetch, check and status as an administrator and a service manager use them: the real program,
// stores and siblings, with Maildirs.
#include <sys/socket.h>
#include <sys/un.h>

#include <thread>

#include "runtime/DurableFile.h"
#include "tests/deliver/Deliver.h"

namespace Tests {
namespace {

// Functions of bash for the tests. mail ID [DISCUSSION] [FROM] puts a mail into the Maildir md; serve starts
// the service, and stop ends it; until_true waits for a command to succeed, for 20 s at most.
constexpr const char* kFunctions = R"bash(
mail() {
  printf 'From: %s\nMessage-ID: <%s@x>\nSubject: Re: Plan (Ostrand Talvane Project Apollo, Ostrand Talvane Discussion %s)\n\n%s-end\n' \
    "${3:-alice@apollo.example}" "$1" "${2:-1}" "$1" >"${MD:-md}/tmp/$1"
  mv "${MD:-md}/tmp/$1" "${MD:-md}/new/$1"
}
until_true() {
  for try in {1..200}; do "$@" >/dev/null 2>&1 && return; sleep 0.1; done
  echo "never true: $*"; cat log; return 1
}
logged() { [ "$(grep -cE "$1" log)" -ge "${2:-1}" ]; }
empty() { [ -z "$(ls $1)" ]; }
serve() { tvmail serve "$@" 2>>log & until_true logged event=started; }
stop() { kill -${1:-TERM} $!; wait $! 2>/dev/null; echo "ended $?"; }
replies() { tvmail project show Apollo.TVS --json | grep -o '"body":"[^"\\]*-end' | sort | cut -d'"' -f4; }
write_configuration() { printf '%s\n' "$@" >home/tvmail.toml; chmod 600 home/tvmail.toml; }
maildir() { printf '[[mailbox]]\nname = "%s"\nsource = "maildir"\nfolder = "%s"' "$1" "$PWD/$2"; }
mkdir -p md/{new,cur,tmp} other/{new,cur,tmp}; touch log
write_configuration "$(maildir apollo md)" "$(maildir Broken missing)"
)bash";

class Serve : public Deliver {
 protected:
  std::string OutputOf(const std::string& lines) const {
    const Outcome outcome = Run(kFunctions + lines);
    EXPECT_EQ(outcome.Errors, "");
    return outcome.Output;
  }
};

TEST_F(Serve, DeliversWhatComesWhileAnotherMailboxFailsAndEndsAtASignal) {
  EXPECT_EQ(OutputOf(R"bash(
mail a; serve; until_true logged outcome=delivered; mail b; mail c 99; until_true logged outcome= 3
until_true logged 'event=failing mailbox=Broken'; sleep 0.2
tvmail status apollo | grep -o 'apollo  ok  served'
tvmail fetch apollo 2>&1 | grep -c 'served by the process'; tvmail serve apollo 2>&1 | grep -c 'served by the process'
stop; replies; ls md/cur md/new; grep -c event=failing log; tvmail status >/dev/null; echo "status $?"
tvmail status apollo --json | grep -o '"counts.*"held":1,'; tvmail status apollo | head -1)bash"),
            "apollo  ok  served\n1\n1\nended 0\na-end\nb-end\nmd/cur:\na:2,S\nb:2,S\nc:2,S\n\nmd/new:\n1\n"
            "status 75\n\"counts\":{\"delivered\":2,\"duplicate\":0,\"refused\":0,\"held\":1,\"retry\":0},"
            "\"held\":1,\napollo  ok\n");
}

// A status of a wrong clock; a held mail that becomes old while nothing is refused; a mail whose body isn't
// read.
TEST_F(Serve, CountsExpiresAndKeepsOverMonths) {
  EXPECT_EQ(OutputOf(R"bash(
write_configuration "$(maildir apollo md)"
mail a 99; tvmail fetch apollo >/dev/null; sed -i 's/^day .*/day 2999-01-01/' home/status/apollo
serve; mail b; until_true logged outcome=delivered
touch -d '-91 days' home/held/apollo/new/*; touch -d '-2 days' home/held/apollo/expired
mail c; until_true empty home/held/apollo/new; until_true logged outcome=delivered 2; stop
tvmail status | grep -o '2 delivered, 0 duplicate, 0 refused, 0 held'
mail d; truncate -s 129M md/new/d; tvmail fetch apollo >/dev/null; tvmail held retry --all --post | cut -d' ' -f3-
replies; tvmail held list | wc -l)bash"),
            "ended 0\n2 delivered, 0 duplicate, 0 refused, 0 held\napollo  refused: The mail is larger than "
            "128 MB, so "
            "only its header was read. Send it again without attachments.\nb-end\nc-end\n2\n");
}

TEST_F(Serve, StoresEachMailOnceWhateverKillsIt) {
  EXPECT_EQ(OutputOf(R"bash(
write_configuration "$(maildir apollo md)"
for i in {100..139}; do mail $i; done
for count in 3 9 20; do
  tvmail serve 2>>log & until_true logged outcome=delivered $count; stop KILL
  # The mail server gives again what it gave before.
  for i in {100..109}; do mail $i; done
done
serve; until_true empty md/new; stop
replies | uniq | wc -l; replies | wc -l; tvmail status --json | grep -o '"retry":[0-9]*')bash"),
            "ended 137\nended 137\nended 137\nended 0\n40\n40\n\"retry\":0\n");
}

TEST_F(Serve, ReadsTheConfigurationAgainAndKeepsTheOldOneIfTheNewOneIsWrong) {
  EXPECT_EQ(OutputOf(R"bash(
serve; until_true logged 'event=failing mailbox=Broken'
write_configuration "$(maildir apollo md)" 'size-limit = "x"' 'colour = 1'
kill -HUP $!; until_true logged 'stays in use'; grep -o 'tvmail.toml:[0-9:]* [a-zA-Z-]*' log
mail a; until_true logged outcome=delivered
write_configuration "$(maildir apollo other)"; kill -HUP $!; until_true logged event=reloaded
MD=other mail b; until_true logged outcome=delivered 2; grep -o 'event=stopped.*' log | sort
stop INT; replies)bash"),
            "tvmail.toml:5:1: size-limit\ntvmail.toml:6:1: There\nevent=stopped mailbox=Broken\n"
            "event=stopped mailbox=apollo\nended 0\na-end\nb-end\n");
}

TEST_F(Serve, TakesUpAMailboxWhoseSourceComesLaterAndLogsNoForgedLine) {
  EXPECT_EQ(OutputOf(R"bash(
mv md away; serve; until_true logged 'event=failing mailbox=apollo'; mv away md
mail x 1 '"a" <"level=info event=forged"@x>'; mail y 1 $'"\e[31m\r\nq"@x'; mail a
until_true logged event=working; until_true logged outcome= 3; stop
grep -vc '^level=[a-z]* event=[a-z]*\( [a-z]*=\([^" ]*\|"\([^"\\]\|\\.\)*"\)\)*$' log
grep -c ' event=forged' log; grep -c $'\e' log; grep -c 'key=[0-9a-f]\{64\} outcome=held' log
)bash"),
            "ended 0\n0\n1\n0\n2\n");
}

TEST_F(Serve, TellsSystemdOfItsStatesAndAnswersItsWatchdog) {
  sockaddr_un address{AF_UNIX, {}};
  const std::string path = Path("notify").string();
  ASSERT_LT(path.size(), sizeof address.sun_path);
  path.copy(address.sun_path, path.size());
  const Runtime::Descriptor manager(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
  ASSERT_EQ(0, bind(manager.Number(), reinterpret_cast<const sockaddr*>(&address), sizeof address));
  const timeval longest{20, 0};
  setsockopt(manager.Number(), SOL_SOCKET, SO_RCVTIMEO, &longest, sizeof longest);
  std::string states;
  // Read at once, since the service waits while its manager is many messages behind.
  std::thread reader([&] {
    char state[512];
    for (ssize_t count = 1; count > 0 && !states.ends_with("STOPPING=1|");) {
      count = recv(manager.Number(), state, sizeof state, 0);
      if (count > 0) states += std::string(state, static_cast<std::size_t>(count)) + "|";
    }
  });
  OutputOf(R"bash(
export NOTIFY_SOCKET=$PWD/notify WATCHDOG_USEC=300000
serve; until_true logged event=failing; sleep 0.2; kill -HUP $!; until_true logged event=reloaded; stop)bash");
  reader.join();
  std::size_t at = 0;
  for (const char* expected : {"READY=1|", "WATCHDOG=1|", "STATUS=2 mailboxes, 1 failing: Broken|",
                               "WATCHDOG=1|", "RELOADING=1\nMONOTONIC_USEC=", "|READY=1|", "|STOPPING=1|"}) {
    at = states.find(expected, at);
    ASSERT_NE(at, std::string::npos) << expected << states;
  }
}

TEST_F(Serve, ChecksAndFetchesWithoutAService) {
  EXPECT_EQ(OutputOf(R"bash(
tvmail check | sed "s|$PWD||" | cut -d: -f1; echo "check ${PIPESTATUS[0]}"; mail a; mail b; ls md/new
tvmail fetch 2>/dev/null | tail -1; echo "fetch ${PIPESTATUS[0]}"
write_configuration "$(maildir apollo md)" 'notices = false'; tvmail check >/dev/null; echo "check $?"
mail b; tvmail fetch apollo --json | grep -o '"outcome":"[a-z]*"'; tvmail fetch nobody 2>/dev/null; echo "nobody $?"
mkdir kept; mv Apollo.* kept; tvmail project create Apollo.TVS --name Apollo --user admin --password-file wrong >/dev/null
tvmail check apollo | grep logon | grep -o 'The user name.*'; mv kept/* .
rm home/tvmail.toml; tvmail fetch 2>&1 | grep -c 'There is no file'; tvmail serve 2>/dev/null; echo "serve $?")bash"),
            "stores  ok\nconfiguration  ok\napollo  record  ok\napollo  project  ok\napollo  logon  ok\n"
            "apollo  held  ok\napollo  source  ok\napollo  sending  The address of h\nBroken  record  The "
            "mailbox Broken doesn't exist. Add it with "
            "tvmail mailbox add.\nBroken  held  ok\nBroken  source  /missing is no Maildir\n"
            "check 78\na\nb\n2 messages: 2 delivered, 0 refused, 0 to be tried again\nfetch 75\ncheck 0\n"
            "\"outcome\":\"duplicate\"\nnobody 78\nThe user name or the password is wrong.\n1\nserve 78\n");
}

}  // namespace
}  // namespace Tests
