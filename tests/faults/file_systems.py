#!/usr/bin/python3
"""Writes productions into file systems of many kinds, and looks at what is there afterwards.

Usage: file_systems.py --produce PROGRAM

On each of them nothing that is there is replaced, be it as old as the folder or turned up during the run, in the same or
in another spelling that the file system does not tell apart; names it cannot hold fail by name and the others go on;
what does not fit fails and leaves nothing; copies are whole, may be read by whom the umask lets, and are what the index
says. Says which file systems were real, which only simulated, and why others were not possible.
"""
import argparse
import base64
import contextlib
import csv
import hashlib
import json
import os
import signal
import stat
import subprocess
import sys
import tempfile
import time

from counts import note
from kill_sweep import TABLES, digests_of, may_trace, write_pdf
import small_file_systems

INDEX = TABLES[0]
UMASK = 0o027
SOMEBODY_ELSES = b"somebody else's"
# Names of sources; their copies have the same ones where nothing else is said.
ODD_NAMES = [os.fsencode(name + ".pdf") for name in (
    "plain", "n" * 251, "\u00e9" * 125 + "x", "m" * 140, "what?", "star*", 'quo"ted', "pipe|", "back\\slash",
    "less<more>", "tab\there", "line\nbreak", "dots...", "space ", "CON", "=SUM(A1)", "caf\u00e9", "cafe\u0301",
    "\U0001F600", "\u05e9\u05dc\u05d5\u05dd", "colon:")] + [b"no text \xe9.pdf", b" space before.pdf"]
STRANGER = hashlib.sha256(SOMEBODY_ELSES).hexdigest()


class Bench:
    """A program that writes productions, what it is given, and what its copies are where nothing hinders it."""

    def __init__(self, produce, folder):
        self.produce = produce
        self.folder = folder
        self.odd = self.sources("odd", ODD_NAMES)
        self.letters = self.sources("letters", (b"a.pdf", b"b.pdf", b"c.pdf", b"d.pdf"))
        self.capitals = self.sources("capitals", (b"A.pdf",))
        self.large = self.sources("large", (b"a.pdf", b"c.pdf"))
        write_large_pdf(os.path.join(self.large, b"b.pdf"))
        self.expected = {inputs: self.reference(inputs) for inputs in (self.odd, self.letters, self.large)}

    def sources(self, name, files):
        """A folder with small documents of these names."""
        folder = os.path.join(os.fsencode(self.folder), os.fsencode(name))
        os.mkdir(folder)
        for file in files:
            write_pdf(os.path.join(folder, file), 1)
        return folder

    def command(self, output, *inputs):
        return [self.produce, "--privilege-log", output, *inputs]

    def run(self, output, *inputs):
        """Exit code, what was said (JSON), and what was said of errors."""
        ended = subprocess.run(self.command(output, *inputs), capture_output=True, check=False, umask=UMASK)
        return ended.returncode, json.loads(ended.stdout or "{}"), ended.stderr.decode(errors="replace")

    def reference(self, inputs):
        """Digests of the copies, and the rows of the index by the copy's name and in its order, in a folder where nothing
        hinders."""
        output = tempfile.mkdtemp(dir=self.folder)
        if self.run(output, inputs)[0] != 0:
            raise RuntimeError("a production fails in the folder for temporary files")
        copies = {name: digest for name, digest in digests_of(output).items() if name not in TABLES}
        return copies, {row[1].removeprefix("'"): row for row in index_of(output)}


def index_of(folder):
    with open(os.path.join(folder, INDEX), encoding="utf-8-sig", newline="") as file:
        return list(csv.reader(file))[1:]


def make(path, contents=SOMEBODY_ELSES):
    """A new file as any program would make it; what it is called in its folder then, or None where it cannot be."""
    folder, name = os.path.split(path)
    before = set(os.listdir(folder))
    old = os.umask(UMASK)
    try:
        with open(path, "xb") as file:
            file.write(contents)
    except OSError:
        return None
    finally:
        os.umask(old)
    new = set(os.listdir(folder)) - before
    return new.pop() if len(new) == 1 else name


def is_found(path):
    return os.path.lexists(path)


def difference(what, found, expected):
    return [] if found == expected else [f"{what}: {found!r} instead of {expected!r}"]


def faults_of_copies(output, result, reference, names, strangers=()):
    """What is wrong in `output` when just the copies of `names` were to be written: by the copy's name, what it is called
    in the folder."""
    copies, rows = reference
    found = digests_of(output)
    faults = [f"{name!r} is left" for name in found if name.startswith(".")]
    expected = {called: copies[name] for name, called in names.items()}
    written = {name: digest for name, digest in found.items() if name not in TABLES and name not in strangers}
    faults += difference("copies", written, expected)
    failed = {rows[name][0].removeprefix("'"): {"cannotWrite": name} for name in copies if name not in names}
    faults += difference("failures", result.get("failures"), failed)
    honest = [row if name in names else [row[0], "", "", "", row[4], "failed"] for name, row in rows.items()]
    if not os.path.exists(os.path.join(output, INDEX)):
        return [*faults, "there is no index"]
    return faults + difference("index", index_of(output), honest)


def new_folder(file_system, name):
    path = os.path.join(file_system.folder, name)
    os.mkdir(path)
    return path


def names_are_kept_or_fail(bench, file_system):
    """What the file system can call a file is what a copy can be called; and who may read it is as for any file."""
    probe = new_folder(file_system, "probe")
    output = new_folder(file_system, "odd names")
    copies, rows = bench.expected[bench.odd]
    names = {}
    for name in rows:  # In the order in which they are written.
        called = make(os.path.join(probe, name))
        if called is not None:
            names[name] = called
    code, result, _ = bench.run(output, bench.odd)
    faults = difference("exit code", code, 0 if len(names) == len(copies) else 2)
    faults += faults_of_copies(output, result, bench.expected[bench.odd], names)
    modes = {stat.S_IMODE(os.stat(os.path.join(output, name)).st_mode) for name in os.listdir(output)}
    faults += difference("modes", modes, {stat.S_IMODE(os.stat(os.path.join(probe, "plain.pdf")).st_mode)})
    file_system.names = f"{len(names)} of {len(copies)} names"
    return faults


def nothing_old_is_replaced(bench, file_system):
    output = new_folder(file_system, "old")
    folds = make(os.path.join(output, "A.PDF")) is not None and is_found(os.path.join(output, "a.pdf"))
    file_system.folds = folds
    code, said, _ = bench.run(output, bench.letters)
    found = digests_of(output)
    faults = [] if found.pop("A.PDF", None) == STRANGER else ["what was there is replaced"]
    if folds:
        faults += difference("outcome", (code, said, found), (1, {"conflicts": [{"exists": "a.pdf"}]}, {}))
    else:
        faults += faults_of_copies(output, said, bench.expected[bench.letters],
                                   {name: name for name in bench.expected[bench.letters][0]}, ["A.PDF"])
    twins = new_folder(file_system, "twins")
    code, said, _ = bench.run(twins, bench.letters, bench.capitals)
    return faults + difference("twins", (code, said, os.listdir(twins)), (1, {"conflicts": [{"duplicate": "a.pdf"}]}, []))


def nothing_new_is_replaced(bench, file_system):
    """The program is stopped while it writes; what turns up then stays."""
    output = new_folder(file_system, "new")
    log = os.path.join(tempfile.mkdtemp(dir=bench.folder), "trace")
    command = ["strace", "-f", "-o", log, "-e", "trace=fdatasync", "-e", "inject=fdatasync:signal=SIGSTOP:when=2",
               *bench.command(output, bench.letters)]
    with subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, umask=UMASK) as run:
        stopped = None
        while stopped is None and run.poll() is None:
            time.sleep(0.01)
            with contextlib.suppress(FileNotFoundError), open(log, encoding="utf-8") as trace:
                stopped = next((line.split()[0] for line in trace if "stopped by SIGSTOP" in line), None)
        if stopped is None:
            return ["the production could not be stopped"]
        stranger = "B.PDF" if file_system.folds else "b.pdf"
        make(os.path.join(output, stranger))
        link = os.path.join(output, "c.pdf")
        with contextlib.suppress(OSError):
            os.symlink("nowhere", link)
        has_link = os.path.islink(link)
        os.kill(int(stopped), signal.SIGCONT)
        said = json.loads(run.communicate()[0] or "{}")
    faults = difference("exit code", run.returncode, 2)
    if has_link:
        faults += [] if os.path.islink(link) else ["a link that led nowhere is replaced"]
        os.unlink(link)  # Else it cannot be read below.
    taken = {"b.pdf", "c.pdf"} if has_link else {"b.pdf"}
    faults += difference("stranger", digests_of(output).get(stranger), STRANGER)
    return faults + faults_of_copies(output, said, bench.expected[bench.letters],
                                     {name: name for name in bench.expected[bench.letters][0] if name not in taken}, [stranger])


def room_in(folder):
    room = os.statvfs(folder)
    return room.f_bavail * room.f_frsize


def fill(folder, spare):
    """Takes all room but so many bytes."""
    with open(os.path.join(folder, f"filler {spare}"), "wb", buffering=0) as file:
        size = 1 << 20
        while size > 0 and room_in(folder) > spare:
            try:
                file.write(bytes(min(size, room_in(folder) - spare)))
                os.fsync(file.fileno())
            except OSError:
                size //= 2


def what_does_not_fit_leaves_nothing(bench, file_system):
    output = new_folder(file_system, "nearly full")
    none = new_folder(file_system, "full")
    fill(file_system.folder, 700 << 10)
    code, said, _ = bench.run(output, bench.large)
    faults = difference("exit code", code, 2)
    faults += faults_of_copies(output, said, bench.expected[bench.large], {"a.pdf": "a.pdf", "c.pdf": "c.pdf"})
    fill(file_system.folder, 0)
    code, said, told = bench.run(none, bench.large)
    faults += difference("outcome where nothing fits", (code, said, told, os.listdir(none)),
                         (2, {}, f"{INDEX}: No space left on device\n", []))
    for name in os.listdir(file_system.folder):
        if name.startswith("filler"):
            os.unlink(os.path.join(file_system.folder, name))
    return faults


def what_may_not_be_written_to_is_told(bench, file_system):
    output = new_folder(file_system, "read-only")
    small_file_systems.tool("mount", "-o", "remount,bind,ro", file_system.folder)
    code, said, told = bench.run(output, bench.letters)
    return difference("outcome", (code, said, told, os.listdir(output)),
                      (2, {}, f"{INDEX}: Read-only file system\n", []))


def checks_for(file_system, is_traceable):
    checks = [names_are_kept_or_fail, nothing_old_is_replaced]
    if is_traceable:
        checks.append(nothing_new_is_replaced)
    if file_system.is_small:
        checks += [what_does_not_fit_leaves_nothing, what_may_not_be_written_to_is_told]
    return checks


def write_large_pdf(path):
    """A document of one page that is long and cannot be made shorter."""
    write_pdf(path, 1)
    with open(path, "rb") as file:
        small = file.read()
    noise = b"%" + base64.b64encode(os.urandom(1_200_000))
    begin = small.index(b"stream\n") + len(b"stream\n")
    end = small.index(b"\nendstream")
    with open(path, "wb") as file:  # Its cross-references are wrong now, and repaired.
        file.write(small[:begin].replace(b"/Length %d>>stream" % (end - begin), b"/Length %d>>stream" % len(noise))
                   + noise + small[end:])


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", required=True)
    arguments = parser.parse_args()
    small_file_systems.enter()
    is_traceable = may_trace()
    if not is_traceable:
        print("Left out: files that turn up during a run, for processes may not be traced here (strace).")
    faults = []
    counts = {True: 0, False: 0}
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(os.path.abspath(arguments.produce), folder)
        with small_file_systems.all_of(folder) as (file_systems, not_possible):
            for file_system in file_systems:
                found = [f"{file_system.name}, {check.__name__}: {fault}"
                         for check in checks_for(file_system, is_traceable) for fault in check(bench, file_system)]
                faults += found
                counts[file_system.is_real] += 1
                print(f"{'real' if file_system.is_real else 'simulated'}: {file_system.name}, {file_system.names}"
                      + ("" if file_system.is_small else ", not filled up nor made read-only"))
        for name, reason in not_possible.items():
            print(f"not possible: {name} ({reason})")
    note("real file systems", counts[True])
    note("simulated file systems", counts[False])
    print("\n".join([*faults, f"file systems: {counts[True]} real, {counts[False]} simulated, "
                     + (f"{len(faults)} faults" if faults else "nothing lost")]))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
