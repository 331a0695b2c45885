#!/usr/bin/env python3
"""Prints jobs to a print server that is killed, frozen, stopped, out of space or talks garbage at random moments.

    reliability/jobs.py STAGE COUNT [SEED]

STAGE is a build's folder of that name. Each job either is in the queue, once and whole, and the program says so, or the
program says why not; then it is not there, unless the program says that nobody knows. Nothing is left in the program's
folders. One line for each manner of the server, and one for each fault; the exit status is 1 when there is one.
"""

import collections
import contextlib
import os
import pathlib
import random
import select
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

SOURCES = pathlib.Path(__file__).resolve().parent.parent
SPOOL_BYTES = 6_000_000
PROGRAM_SECONDS = 120
UNKNOWN = "look at the queue before you print it again"


class Server:
    """A cupsd of our own with a queue that keeps its jobs, and a door before it that may garble what it says."""

    def __init__(self, work, stage):
        self.work = work
        self.process = None
        for folder in ("root", "cache", "state", "spool"):
            (work / folder).mkdir()
        work.chmod(0o755)
        self.has_small_spool = subprocess.run(
            ["mount", "-t", "tmpfs", "-o", f"size={SPOOL_BYTES}", "none", work / "spool"], capture_output=True,
            check=False).returncode == 0
        (work / "spool/tmp").mkdir()
        self.port = free_port()
        (work / "cupsd.conf").write_text(
            f"Listen 127.0.0.1:{self.port}\nBrowsing Off\nDefaultAuthType None\nWebInterface No\nMaxJobs 0\n"
            "DirtyCleanInterval 0\n<Location />\nOrder allow,deny\nAllow all\n</Location>\n"
            "<Policy default>\n<Limit All>\nOrder deny,allow\n</Limit>\n</Policy>\n")
        places = {"ServerRoot": "root", "CacheDir": "cache", "StateDir": "state", "RequestRoot": "spool",
                  "TempDir": "spool/tmp", "ErrorLog": "error_log", "AccessLog": "access_log", "PageLog": "page_log"}
        (work / "cups-files.conf").write_text(
            "FileDevice Yes\nSystemGroup root\nGroup nogroup\nSyncOnClose Yes\n" +
            "".join(f"{key} {work / place}\n" for key, place in places.items()))
        self.start()
        self.admin("lpadmin", "-p", "office", "-E", "-v", "file:/dev/null", "-P", stage / "ppd/Tavro-ZR420.ppd")
        self.admin("cupsdisable", "office")
        self.door = Door(self.port)

    def start(self):
        if self.process is None:
            self.process = subprocess.Popen(["/usr/sbin/cupsd", "-f", "-c", self.work / "cupsd.conf", "-s",
                                             self.work / "cups-files.conf"])
        for _ in range(200):
            with contextlib.suppress(OSError), socket.create_connection(("127.0.0.1", self.port), 1):
                return
            time.sleep(0.02)
        sys.exit("jobs.py: the print server does not come up")

    def end(self, how):
        if self.process is not None:
            self.process.send_signal(how)
            self.process.wait()
            self.process = None

    def admin(self, *command):
        environment = {**os.environ, "CUPS_SERVER": f"127.0.0.1:{self.port}", "PATH": "/usr/sbin:/usr/bin:/sbin:/bin"}
        subprocess.run([*command], env=environment, check=True, capture_output=True, timeout=30)

    def filler(self):
        return self.work / "spool/filler"

    def fill_spool(self):
        with contextlib.suppress(OSError), open(self.filler(), "wb") as filler:
            while True:
                filler.write(bytes(65536))
                filler.flush()

    def jobs_of(self, title):
        """How many jobs of that title have a document."""
        count = 0
        for control in (self.work / "spool").glob("c?????"):
            document = control.with_name("d" + control.name[1:] + "-001")
            if title.encode() in control.read_bytes() and document.is_file() and document.stat().st_size > 0:
                count += 1
        return count

    def forget_jobs(self):
        self.admin("cancel", "-a", "-x", "office")

    def close(self):
        self.door.close()
        self.end(signal.SIGTERM)
        if self.has_small_spool:
            subprocess.run(["umount", "-l", self.work / "spool"], check=False)


class Door:
    """What the program connects to. It hands on what both sides say, or, garbling, says something else."""

    def __init__(self, port):
        self.to = port
        self.garbles = False
        self.listener = socket.create_server(("127.0.0.1", 0), backlog=50)
        self.port = self.listener.getsockname()[1]
        threading.Thread(target=self.listen, daemon=True).start()

    def listen(self):
        with contextlib.suppress(OSError):
            while True:
                caller, _ = self.listener.accept()
                threading.Thread(target=self.serve, args=(caller,), daemon=True).start()

    def serve(self, caller):
        with contextlib.suppress(OSError), caller, socket.create_connection(("127.0.0.1", self.to), 5) as server:
            while True:
                for ready in select.select([caller, server], [], [])[0]:
                    said = ready.recv(65536)
                    if not said:
                        return
                    if ready is server and self.garbles:
                        said = random.randbytes(len(said))
                    (caller if ready is server else server).sendall(said)

    def close(self):
        self.listener.close()


def free_port():
    with socket.create_server(("127.0.0.1", 0)) as listener:
        return listener.getsockname()[1]


class Misfortune:
    """What happens to the server, and how it comes back; each takes a server and a random number generator."""

    @staticmethod
    def nothing(server, chance):
        pass

    @staticmethod
    def killed(server, chance):
        server.end(signal.SIGKILL)
        if chance.random() < 0.5:
            time.sleep(chance.uniform(0, 1))
            server.start()

    @staticmethod
    def restarted(server, chance):
        server.end(signal.SIGTERM)
        server.start()

    @staticmethod
    def frozen(server, chance):
        server.process.send_signal(signal.SIGSTOP)
        time.sleep(chance.choice((0.2, 1, 4)))
        server.process.send_signal(signal.SIGCONT)

    @staticmethod
    def garbling(server, chance):
        server.door.garbles = True
        if chance.random() < 0.5:
            time.sleep(chance.uniform(0, 0.3))
            server.door.garbles = False

    @staticmethod
    def full(server, chance):
        server.fill_spool()

    @staticmethod
    def mend(server):
        server.filler().unlink(missing_ok=True)
        server.door.garbles = False
        server.start()


def print_one(server, stage, document, chance, misfortune, latest):
    folder = server.work / "user"
    for name in ("home", "tmp", "run"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    (folder / "run").chmod(0o700)
    environment = {"PATH": "/usr/bin:/bin", "HOME": str(folder / "home"), "TMPDIR": str(folder / "tmp"),
                   "XDG_RUNTIME_DIR": str(folder / "run"), "LANG": "C.UTF-8", "QT_QPA_PLATFORM": "offscreen",
                   "CUPS_SERVER": f"127.0.0.1:{server.door.port}",
                   **{name: value for name, value in os.environ.items() if name == "LSAN_OPTIONS"}}
    begun = time.monotonic()
    program = subprocess.Popen([stage / "bin/tavro-print", "--print", "--printer", "office", document],
                               env=environment, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    time.sleep(chance.uniform(0, latest))
    misfortune(server, chance)
    try:
        output, errors = program.communicate(timeout=PROGRAM_SECONDS)
    except subprocess.TimeoutExpired:
        program.kill()
        output, errors = program.communicate()
        errors += f"(still running after {PROGRAM_SECONDS} s)"
    seconds = time.monotonic() - begun
    left = [str(path.relative_to(folder)) for path in folder.rglob("*")
            if path.is_file() and path.parts[len(folder.parts)] != "home"]
    return program.returncode, errors, left, seconds


def main():
    stage, count = pathlib.Path(sys.argv[1]).resolve(), int(sys.argv[2])
    seed = int(sys.argv[3]) if len(sys.argv) > 3 else 1
    chance = random.Random(seed)
    work = pathlib.Path(tempfile.mkdtemp(prefix="tavro-jobs-"))
    rows = collections.defaultdict(collections.Counter)
    faults = []
    try:
        server = Server(work, stage)
        manners = [Misfortune.nothing, Misfortune.killed, Misfortune.killed, Misfortune.restarted, Misfortune.frozen,
                   Misfortune.garbling] + [Misfortune.full] * server.has_small_spool
        usual = 1.0
        for number in range(count):
            title = f"job-{seed}-{number}"
            document = work / f"{title}.pdf"
            shutil.copy(SOURCES / "tests/data/two-pages.pdf", document)
            misfortune = chance.choice(manners)
            status, errors, left, seconds = print_one(server, stage, document, chance, misfortune, usual)
            Misfortune.mend(server)
            if misfortune is Misfortune.nothing:
                usual = seconds  # misfortunes come at any moment of a usual run
            jobs = server.jobs_of(title)
            name = misfortune.__name__
            outcome = "printed" if status == 0 else "unknown" if UNKNOWN in errors else "refused"
            rows[name][outcome] += 1
            rows[name]["jobs"] += jobs
            what = f"{title}, {name}: status {status}, {jobs} jobs, {errors.strip()!r}"
            if status == 0 and jobs != 1:
                faults.append("said to be printed: " + what)
            if status != 0 and (not errors.startswith("tavro-print: ") or "still running" in errors):
                faults.append("no reason: " + what)
            if jobs > (1 if outcome != "refused" else 0):
                faults.append("printed all the same: " + what)
            if left:
                faults.append(f"leaves {left}: " + what)
            server.forget_jobs()
            document.unlink()
        server.close()
    finally:
        shutil.rmtree(work, ignore_errors=True)
    print(f"{'the server is':14}{'printed':>9}{'refused':>9}{'unknown':>9}{'in the queue':>14}")
    for name, row in sorted(rows.items()):
        print(f"{name:14}{row['printed']:9}{row['refused']:9}{row['unknown']:9}{row['jobs']:14}")
    for fault in faults:
        print(fault)
    print(f"{count} jobs, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
