"""Times tvmail deliver beside other programs that do the same with the same mails, and prints one table.

  python3 bench/measure.py BUILD PEERS [--rounds N] [--count N] [--check]

BUILD is a build with -DTALVANE_BENCH=ON, PEERS the folder of bench/peers/install.sh. The programs run in turns, on
fresh copies of a project; each ratio is the median of the rounds' ratios. With --check the exit code is 1 if a figure
is worse than its goal by more than 10 %. Below TMPDIR (/tmp by default) the disk is waited for, below /dev/shm not.
"""
import argparse
import json
import os
import pathlib
import re
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent


class World:
    """A project with its mailbox and an mbox, in a folder that is removed at the end."""

    def __init__(self, build, below, count, users=1):
        self.folder = tempfile.mkdtemp(prefix="tvmail-bench-", dir=below)
        self.bin = build / "bin"
        self.tvmail = str(self.bin / "tvmail")
        self.count = count
        subprocess.run([HERE / "deliver/world.sh", self.folder, self.tvmail, str(count), str(users)], check=True)
        self.environment = dict(os.environ, TALVANE_HOME=self.folder + "/home")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        shutil.rmtree(self.folder)

    def path(self, name):
        return os.path.join(self.folder, name)

    def first(self, count):
        """The path of an mbox of the first mails."""
        mails = re.split(rb"(?m)^(?=From )", pathlib.Path(self.path("mbox")).read_bytes())[1 : count + 1]
        pathlib.Path(self.path(f"mbox-{count}")).write_bytes(b"".join(mails))
        return self.path(f"mbox-{count}")

    def fresh(self):
        for file in pathlib.Path(self.folder).glob("Apollo.*"):
            file.unlink()
        for file in pathlib.Path(self.folder).glob("peer.*"):
            file.unlink()
        for file in pathlib.Path(self.path("clean")).iterdir():
            shutil.copy(file, self.folder)
        os.sync() if not self.folder.startswith("/dev/shm") else None

    def seconds(self, command, keep=False, **options):
        """The elapsed time of a whole process."""
        if not keep:
            self.fresh()
        begin = time.perf_counter()
        done = subprocess.run(command, env=self.environment, cwd=self.folder, stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE, check=False, **options)
        elapsed = time.perf_counter() - begin
        if done.returncode != 0:
            sys.exit(f"measure.py: {command} failed: {done.stderr.decode(errors='replace')}")
        return elapsed

    def deliver(self, mbox="mbox"):
        return [self.tvmail, "deliver", "Apollo", mbox]


class Table:
    def __init__(self):
        self.rows, self.missed = [], []

    def add(self, what, figure, value=None, most=None, least=None):
        goal = "" if most is None and least is None else f"at most {most:g}" if least is None else f"at least {least:g}"
        self.rows.append((what, figure, "" if value is None else f"{value:.2f}", goal))
        if (most is not None and value > most * 1.1) or (least is not None and value < least / 1.1):
            self.missed.append(f"{what}: {value:.2f}, {goal}")

    def lack(self, what):
        self.missed.append(f"{what}: not measured")

    def print(self):
        rows = [("What", "Figure", "Value", "Goal"), ("---",) * 4, *self.rows]
        for row in rows:
            print("| " + " | ".join(row) + " |")


def programs(world, peers):
    """The commands by name, each of which reads the mbox and stores a reply for each of its mails."""
    commands = {"floor": [str(world.bin / "bench_deliver_floor"), "mbox", "Apollo.db"], "deliver": world.deliver()}
    if (peers / "installed").exists():
        node = ["node", str(peers / "mailparser.js")]
        commands["Node.js"] = [*node, world.path("mbox"), world.path("peer.db")]
        commands["Node.js, least"] = [*node, "--least", world.path("mbox"), world.path("peer.db")]
    commands["Python"] = [sys.executable, str(HERE / "peers/email_sqlite.py"), world.path("mbox"), world.path("peer.db")]
    return commands


def compare(table, build, peers, below, count, rounds, most, least):
    place = "in memory" if below == "/dev/shm" else "on disk"
    with World(build, below, count) as world:
        commands = programs(world, peers)
        times = {name: [] for name in commands}
        for _ in range(rounds):
            for name, command in commands.items():
                times[name].append(world.seconds(command))

    def ratio(above, under):
        return statistics.median(a / b for a, b in zip(times[above], times[under]))

    def speed(name):
        return f"{count / statistics.median(times[name]):,.0f} mails a second"

    table.add(f"parse and commit alone, {place}", speed("floor"))
    table.add(f"tvmail deliver, {place}: times the time of that", speed("deliver"), ratio("deliver", "floor"), most=most)
    if "Node.js" in times:
        table.add(f"Node.js, mailparser and better-sqlite3, {place}: times the time of deliver", speed("Node.js"),
                  ratio("Node.js", "deliver"), least=least)
        table.add(f"the same without mailparser's conversions, {place}", speed("Node.js, least"),
                  ratio("Node.js, least", "deliver"))
    else:
        table.lack(f"Node.js {place}")
    table.add(f"Python, email and sqlite3, {place}: times the time of deliver", speed("Python"), ratio("Python", "deliver"))


def users(table, build, rounds):
    few, many = 20, 420
    costs = {}
    for number in (10, 1_000, 100_000):
        with World(build, "/dev/shm", many, number) as world:
            short = world.first(few)
            costs[number] = statistics.median(
                (world.seconds(world.deliver()) - world.seconds(world.deliver(short))) / (many - few) * 1e3
                for _ in range(rounds))
        table.add(f"one mail of {many - few}, {number:,} users", f"{costs[number]:.2f} ms")
    table.add("the walk of 100,000 users, ms", "", costs[100_000] - costs[10], most=0.5)


def hash_seconds():
    """The time of a password's hash in a new process, whose memory is new, too."""
    script = ("import hashlib, time; begin = time.perf_counter();"
              "hashlib.scrypt(b'secret', salt=bytes(16), n=8192, r=8, p=1, maxmem=64 << 20, dklen=32);"
              "print(time.perf_counter() - begin)")
    return float(subprocess.run([sys.executable, "-c", script], stdout=subprocess.PIPE, check=True).stdout)


def single(table, build, below, most):
    hashes, times = [], []
    with World(build, below, 1) as world:
        mail = pathlib.Path(world.path("mbox")).read_bytes()
        world.fresh()
        for number in range(31):
            hashes.append(hash_seconds())
            again = mail.replace(b"<1@", b"<single%d@" % number)
            times.append(world.seconds([world.tvmail, "deliver", "Apollo"], keep=True, input=again))
    hash_time, whole = statistics.median(hashes) * 1e3, statistics.median(times) * 1e3
    beside = statistics.median(a - b for a, b in zip(times, hashes)) * 1e3
    place = "in memory" if below == "/dev/shm" else "on disk"
    table.add(f"a single piped mail, {place}, ms beside the password hash", f"{whole:.1f} ms, hash {hash_time:.1f} ms",
              beside, most=most)


def calls(table, build):
    """System calls for a mail, without those of the start."""
    few, many = 20, 1020
    if not shutil.which("strace"):
        return table.lack("system calls, without strace")
    counts = []
    with World(build, "/dev/shm", many) as world:
        for mbox in (world.path("mbox"), world.first(few)):
            world.seconds(["strace", "-f", "-c", "-o", world.path("calls"), *world.deliver(mbox)])
            lines = [line.split() for line in pathlib.Path(world.path("calls")).read_text().splitlines()]
            counts.append({line[-1]: int(line[3]) for line in lines if len(line) > 4 and line[3].isdigit()})
    for what, names, most in (("locking calls (fcntl)", ("fcntl",), 8),
                              ("stat calls", ("stat", "fstat", "lstat", "newfstatat", "statx"), 2)):
        number = sum(counts[0].get(name, 0) - counts[1].get(name, 0) for name in names) / (many - few)
        table.add(f"{what} for a mail", "", number, most=most)


def texts(table, build):
    done = subprocess.run([build / "bin/TextBench", "--benchmark_format=json", "--benchmark_filter=^(CutMarker|OwnText)$"],
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True)
    time_of = {row["name"]: row["cpu_time"] / 1e3 for row in json.loads(done.stdout)["benchmarks"]}
    table.add("the cut marker and a text, us", "", sum(time_of.values()), most=0.5)


def machine():
    model = re.search(r"model name\s*: (.*)", pathlib.Path("/proc/cpuinfo").read_text())
    return f"{model.group(1) if model else os.uname().machine}, {os.cpu_count()} processors"


def versions(peers):
    """What the table's programs are, in one line."""
    names = ["Python " + sys.version.split()[0]]
    if (peers / "installed").exists():
        node = subprocess.run(["node", "--version"], stdout=subprocess.PIPE, text=True, check=True).stdout.strip()
        packages = json.loads((peers / "installed").read_text())["packages"]
        names += ["Node.js " + node] + [f"{name} {packages['node_modules/' + name]['version']}"
                                        for name in ("mailparser", "better-sqlite3")]
    return ", ".join(names)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("build", type=lambda path: pathlib.Path(path).resolve())
    parser.add_argument("peers", type=lambda path: pathlib.Path(path).resolve())
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--count", type=int, default=5000)
    parser.add_argument("--check", action="store_true")
    options = parser.parse_args()
    table = Table()
    disk = os.environ.get("TMPDIR", "/tmp")
    compare(table, options.build, options.peers, disk, options.count, options.rounds, most=1.0, least=3)
    compare(table, options.build, options.peers, "/dev/shm", options.count, options.rounds, most=1.1, least=5)
    users(table, options.build, options.rounds)
    single(table, options.build, "/dev/shm", most=12)
    single(table, options.build, disk, most=None)
    calls(table, options.build)
    texts(table, options.build)
    print(f"{machine()}, {time.strftime('%Y-%m-%d')}; {options.count:,} mails of 7 kB; {versions(options.peers)}\n")
    table.print()
    for missed in table.missed:
        print("missing, or worse than its goal by more than 10 %:", missed, file=sys.stderr)
    return 1 if options.check and table.missed else 0


sys.exit(main())
