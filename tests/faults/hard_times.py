#!/usr/bin/python3
"""Writes productions where a program has little, or finds what it does not expect.

Usage: hard_times.py --produce PROGRAM --clock LIBRARY

Hardly any memory, and less and less of it; no fonts, no home, other languages, clocks that are wrong; two productions at
once into one folder; a folder to write into that is among the sources, or a link; folders without end; runs that are held
up at any moment; folders and files that are not for this user. Whatever has a name afterwards is whole, and what is said of
it is true. Besides, that long files take little memory, and that nothing is sent anywhere.
"""
import argparse
import contextlib
import json
import os
import resource
import signal
import struct
import subprocess
import sys
import tempfile
import time

from kill_sweep import COPIES, TABLES, digests_of, may_trace, state_of, write_pdf

MEGABYTE = 1 << 20
INPUT_MISSING = 66  # What the program ends with before it writes anything.


class Bench:
    def __init__(self, produce, clock, folder):
        self.produce = produce
        self.clock = clock
        self.folder = folder
        self.sources = self.new_folder()
        for pages, name in enumerate(COPIES, 1):
            write_pdf(os.path.join(self.sources, name), pages)
        self.before = state_of(self.sources)
        output = self.new_folder()
        if self.run(output).returncode != 0:
            raise RuntimeError("a production fails where nothing is amiss")
        self.whole = digests_of(output)

    def new_folder(self):
        return tempfile.mkdtemp(dir=self.folder)

    def command(self, output, *sources):
        return [self.produce, "--privilege-log", output, *(sources or [self.sources])]

    def run(self, output, *sources, **how):
        return subprocess.run(self.command(output, *sources), capture_output=True, check=False, **how)

    def faults(self, output, ended=None, expected=None):
        """What is not as it is where nothing is amiss. `expected` names what has to be there, everything as a rule."""
        found = digests_of(output)
        faults = [f"{name!r} is not whole" for name in found if name not in TABLES and self.whole.get(name) != found[name]]
        if expected is None:
            faults += [f"{name!r} is not as it should be" for name in self.whole if found.get(name) != self.whole[name]]
        if ended is not None and ended.returncode != 0:
            faults.append(f"exit code {ended.returncode}: {ended.stderr!r}")
        if state_of(self.sources) != self.before:
            faults.append("a source was changed")
        return faults


def whatever_the_surroundings(bench):
    """Nothing of what a desktop sets is needed, and nothing of it gets into a copy."""
    empty = bench.new_folder()
    fonts = os.path.join(empty, "fonts.conf")
    with open(fonts, "w", encoding="utf-8") as file:
        file.write("<fontconfig></fontconfig>")
    plain = {"PATH": os.environ["PATH"]}
    surroundings = {
        "no home and no language": plain,
        "a home that is not there": {**plain, "HOME": "/nowhere", "XDG_CACHE_HOME": "/nowhere", "XDG_CONFIG_HOME": "/nowhere"},
        "a home that is a file": {**plain, "HOME": fonts, "XDG_CACHE_HOME": fonts, "XDG_CONFIG_HOME": fonts},
        "Turkish": {**plain, "LC_ALL": "tr_TR.UTF-8", "LANG": "tr_TR.UTF-8"},
        "German": {**plain, "LC_ALL": "de_DE.UTF-8"},
        "Arabic": {**plain, "LC_ALL": "ar_EG.UTF-8"},
        "no such language": {**plain, "LC_ALL": "xx_YY", "LANGUAGE": "xx"},
        "another time zone": {**plain, "TZ": "Pacific/Kiritimati"},
        "no such time zone": {**plain, "TZ": "Nowhere/Nowhere"},
    }
    faults = []
    for name, environment in surroundings.items():
        output = bench.new_folder()
        ended = bench.run(output, env=environment)
        faults += [f"{name}: {fault}" for fault in bench.faults(output, ended)]
    output = bench.new_folder()
    ended = bench.run(output, env={**plain, "FONTCONFIG_FILE": fonts})
    said = json.loads(ended.stdout or "{}")
    if sorted([*said.get("written", []), *said.get("failures", {})]) != sorted(COPIES):
        faults.append(f"no fonts: {said} {ended.returncode} {ended.stderr!r}")
    return faults


def whatever_the_dates(bench):
    """Dates of files, be they of the future or from before all clocks, change no copy."""
    faults = []
    for seconds in (0, -1, 1, 2 ** 31 + 1, time.time() + 10 ** 8):
        sources = bench.new_folder()
        for pages, name in enumerate(COPIES, 1):
            path = os.path.join(sources, name)
            write_pdf(path, pages)
            os.utime(path, (seconds, seconds))
        output = bench.new_folder()
        ended = bench.run(output, sources)
        faults += [f"dated {seconds}: {fault}" for fault in bench.faults(output, ended)]
    return faults


def whatever_the_clock_does(bench):
    """A clock that jumps by years at every look neither fails a file nor leaves its text unread."""
    jumping = {**os.environ, "LD_PRELOAD": bench.clock}
    years = subprocess.run([sys.executable, "-c", "import time; print(abs(time.time() - time.time()) > 10 ** 9)"],
                           env=jumping, capture_output=True, check=False)
    faults = [] if years.stdout == b"True\n" else ["the clock does not jump"]
    output = bench.new_folder()
    faults += bench.faults(output, bench.run(output, env=jumping))

    def found(environment):
        said = subprocess.run([bench.produce, "--sources", output], env=environment, capture_output=True, check=False)
        return [(source["name"], source["pageCount"], source["existingBates"]) for source in json.loads(said.stdout)]

    expected = [("a.pdf", 1, "ABC000001"), ("b.pdf", 2, "ABC000002"), ("c.pdf", 3, "ABC000004")]
    for name, environment in {"with it": jumping, "without": dict(os.environ)}.items():
        if found(environment) != expected:
            faults.append(f"{name} is found {found(environment)}")
    return faults


def within(megabytes):
    """What limits a program to so many megabytes of addresses before it starts."""
    return lambda: resource.setrlimit(resource.RLIMIT_AS, (megabytes * MEGABYTE, megabytes * MEGABYTE))


def with_hardly_any_memory(bench):
    """From far too little memory to enough: a run writes all, or says what it did not write, or ends at once; what has
    a name is whole."""
    faults = []
    outcomes = set()
    for megabytes in (*range(24, 160, 8), *range(160, 640, 32)):
        output = bench.new_folder()
        ended = bench.run(output, preexec_fn=within(megabytes))
        found = digests_of(output)
        named = sorted(name for name in found if name in COPIES)
        faults += [f"{megabytes} MB: {fault}" for fault in bench.faults(output, expected=[])
                   if not fault.startswith("'.tallyfold-")]
        outcomes.add(ended.returncode == 0)
        if ended.returncode == 0 and found != bench.whole:
            faults.append(f"{megabytes} MB: it is said that all is well")
        if ended.returncode == 2 and ended.stdout:
            said = json.loads(ended.stdout)
            if sorted(said["written"]) != named or set(said["failures"]) != set(COPIES) - set(named):
                faults.append(f"{megabytes} MB: what is said is not what is there")
    if outcomes != {True, False}:
        faults.append(f"memory was never scarce, or always: {outcomes}")
    return faults


def two_at_once(bench):
    """Two productions into one folder: every name is given once, and what has one is whole."""
    faults = []
    for _ in range(20):
        output = bench.new_folder()
        runs = [subprocess.Popen(bench.command(output), stdout=subprocess.PIPE, stderr=subprocess.PIPE) for _ in range(2)]
        said = [json.loads(run.communicate()[0] or "{}") for run in runs]
        written = [name for one in said for name in one.get("written", [])]
        found = digests_of(output)
        faults += bench.faults(output, expected=[])
        there = [name for name in found if name in COPIES]
        # One that finds the other's index in its way says so, and nothing of its copies, which stay.
        if not set(written) <= set(there) or all(said) and sorted(written) != sorted(there):
            faults.append(f"{written} are said to be written, and there are {there}")
        if any(name.startswith(".") for name in found):
            faults.append("something hidden is left")
    return faults


def folders_within_folders(bench):
    """Where the copies go may be among the sources, or be a link; a second run refuses what the first has written."""
    top = bench.new_folder()
    output = os.path.join(top, "out")
    os.mkdir(output)
    for name in COPIES:
        os.link(os.path.join(bench.sources, name), os.path.join(top, name))
    os.symlink(top, os.path.join(top, "loop"))
    faults = bench.faults(output, bench.run(output, top))
    again = bench.run(output, top)
    conflicts = json.loads(again.stdout).get("conflicts", [])
    if again.returncode != 1 or {"duplicate": "a.pdf"} not in conflicts or digests_of(output) != bench.whole:
        faults.append(f"a second run: {again.returncode} {conflicts}")
    link = os.path.join(bench.new_folder(), "link")
    target = bench.new_folder()
    os.symlink(target, link)
    return faults + bench.faults(target, bench.run(link))


def folders_without_end(bench):
    """What lies deeper than paths may be long is told, and nothing is written that would lack it."""
    top = bench.new_folder()
    for name in COPIES:
        os.link(os.path.join(bench.sources, name), os.path.join(top, name))
    here = os.open(top, os.O_RDONLY)
    for _ in range(30):
        os.mkdir("d" * 200, dir_fd=here)
        below = os.open("d" * 200, os.O_RDONLY, dir_fd=here)
        os.close(here)
        here = below
    os.close(here)
    output = bench.new_folder()
    ended = bench.run(output, top)
    is_told = b"not everything in this folder could be read" in ended.stderr
    faults = bench.faults(output, expected=[])
    if ended.returncode != INPUT_MISSING or not is_told or os.listdir(output):
        faults.append(f"a folder that cannot be read to its end: {ended.returncode} {ended.stderr[-100:]} {os.listdir(output)}")
    with contextlib.suppress(OSError):
        subprocess.run(["rm", "-rf", top], check=False)
    return faults


def stops_of(command, said):
    """Runs `command`, whose output goes to the file `said`, and stops it again and again for a moment; its exit code and how
    often it was stopped."""
    with open(said, "wb") as file:
        run = subprocess.Popen(command, stdout=file, stderr=subprocess.DEVNULL)
    stops = 0
    moment = 0.0
    while True:
        time.sleep(moment)
        moment = (moment + 0.00037) % 0.01
        os.kill(run.pid, signal.SIGSTOP)
        _, status = os.waitpid(run.pid, os.WUNTRACED)
        if not os.WIFSTOPPED(status):
            run.returncode = os.waitstatus_to_exitcode(status)  # Else it is waited for again.
            return run.returncode, stops
        stops += 1
        os.kill(run.pid, signal.SIGCONT)


def stopped_and_continued(bench):
    """However often a run is held up, as by a machine that goes to sleep, what comes of it is the same."""
    sources = bench.new_folder()
    for name in COPIES:
        write_pdf(os.path.join(sources, name), 300)
    output = bench.new_folder()
    if bench.run(output, sources).returncode != 0:
        return ["a production fails that nobody stops"]
    whole = digests_of(output)
    said = os.path.join(bench.new_folder(), "said")
    faults = []
    stops = 0
    while stops < 300 and not faults:
        output = bench.new_folder()
        code, count = stops_of(bench.command(output, sources), said)
        stops += count
        if (code, digests_of(output)) != (0, whole):
            faults.append(f"after {count} stops: exit code {code}, and other files than without")
    return faults


def access_of(path):
    """Who may do what with a file: its mode, owner and group, and its list of others."""
    status = os.stat(path)
    try:
        others = os.getxattr(path, "system.posix_acl_access")
    except OSError:
        others = b""
    return oct(status.st_mode), status.st_uid, status.st_gid, others


def rights_are_those_of_new_files(bench):
    """A folder's group and its list of who may read what is made in it hold for copies and tables as for any new file,
    whichever way copies get their names."""
    everybody = 0xffffffff
    entries = ((1, 7, everybody), (2, 6, 4711), (4, 5, everybody), (8, 4, 4712), (16, 7, everybody), (32, 0, everybody))
    passed_on = struct.pack("<I", 2) + b"".join(struct.pack("<HHI", *entry) for entry in entries)

    def with_list(folder):
        os.setxattr(folder, "system.posix_acl_default", passed_on)

    def with_group(folder):
        group = next((group for group in os.getgroups() if group != os.getegid()), 4711)
        os.chown(folder, -1, group)
        os.chmod(folder, 0o2775)

    def with_both(folder):
        with_list(folder)
        with_group(folder)

    ways = {"renamed": [], "linked": ["-e", "inject=renameat2:error=EINVAL"],
            "copied": ["-e", "inject=renameat2:error=EINVAL", "-e", "inject=linkat:error=EPERM"]}
    if not may_trace():
        print("Left out: other ways than moves to give names, for processes may not be traced here (strace).")
        ways = {"renamed": []}
    faults = []
    for prepare in (with_list, with_group, with_both):
        for way, refusals in ways.items():
            output = bench.new_folder()
            try:
                prepare(output)
            except OSError as error:
                print(f"Left out: a folder {prepare.__name__.replace('_', ' ')} of rights ({error.strerror}).")
                break
            trace = ["strace", "-f", "-qq", "-o", "/dev/null", "-e", "trace=renameat2,linkat", *refusals]
            command = [*(trace if refusals else []), *bench.command(output)]
            ended = subprocess.run(command, capture_output=True, check=False, umask=0o027)
            faults += [f"{way}, {prepare.__name__}: {fault}" for fault in bench.faults(output, ended)]
            old = os.umask(0o027)
            os.close(os.open(os.path.join(output, "any new file"), os.O_CREAT | os.O_EXCL, 0o666))
            os.umask(old)
            access = {name: access_of(os.path.join(output, name)) for name in os.listdir(output)}
            faults += [f"{way}, {prepare.__name__}: {name!r} is {access[name]} instead of {access['any new file']}"
                       for name in access if access[name] != access["any new file"]]
    return faults


def what_is_not_for_this_user(bench):
    """A folder that may not be written to, or not be looked into, is told before anything is written; a source that may
    not be read costs itself."""
    plain = []
    if os.geteuid() == 0:  # Who may do everything, unless this is taken away.
        plain = ["setpriv", "--inh-caps=-all", "--bounding-set=-dac_override,-dac_read_search"]
        try:
            if subprocess.run([*plain, "true"], stderr=subprocess.DEVNULL, check=False).returncode != 0:
                raise FileNotFoundError
        except FileNotFoundError:
            print("Left out: what is not for this user, who is root and may not become less (setpriv).")
            return []
    faults = []
    for mode in (0o555, 0o444, 0o000):
        output = bench.new_folder()
        os.chmod(output, mode)
        ended = subprocess.run([*plain, *bench.command(output)], capture_output=True, check=False)
        os.chmod(output, 0o700)
        is_told = ended.returncode == 2 and not ended.stdout and ended.stderr.endswith(b": Permission denied\n")
        if not is_told or os.listdir(output):
            faults.append(f"a folder of mode {mode:o}: {ended} {os.listdir(output)}")
    sources = bench.new_folder()
    for pages, name in enumerate(COPIES, 1):
        write_pdf(os.path.join(sources, name), pages)
    last = COPIES[-1]
    os.chmod(os.path.join(sources, last), 0)
    closed = os.path.join(sources, "closed")
    os.mkdir(closed, 0)
    output = bench.new_folder()
    ended = subprocess.run([*plain, *bench.command(output, sources)], capture_output=True, check=False)
    os.rmdir(closed)
    is_told = b"closed: not everything in this folder could be read" in ended.stderr
    if ended.returncode != INPUT_MISSING or not is_told or os.listdir(output):
        faults.append(f"a folder that may not be read: {ended} {os.listdir(output)}")
    ended = subprocess.run([*plain, *bench.command(output, sources)], capture_output=True, check=False)
    named = sorted(set(digests_of(output)) - set(TABLES))
    with open(os.path.join(output, TABLES[0]), encoding="utf-8") as file:
        rows = file.read().splitlines()
    if ended.returncode != 0 or named != list(COPIES[:-1]) or not rows[-1].startswith(f"{last},,,,0,"):
        faults.append(f"a source that may not be read: {ended} {named} {rows}")
    return faults + bench.faults(output, expected=[])


def nothing_is_sent_anywhere(bench):
    """No program that reads or writes here asks for a way out of the machine."""
    if not may_trace():
        print("Left out: what is sent, for processes may not be traced here (strace).")
        return []

    def ways_out(*command):
        with tempfile.NamedTemporaryFile("r", dir=bench.folder) as trace:
            subprocess.run(["strace", "-f", "-qq", "-o", trace.name, "-e", "trace=%network", *command],
                           stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
            return [line.strip() for line in trace if "socket(" in line and "AF_UNIX" not in line]

    opened = "import socket; socket.socket(socket.AF_INET, socket.SOCK_DGRAM)"
    faults = [] if ways_out(sys.executable, "-c", opened) else ["this check finds nothing"]
    return faults + ways_out(*bench.command(bench.new_folder())) + ways_out(bench.produce, "--sources", bench.sources)


def long_files_take_little_memory(bench):
    """Neither many pages nor large ones are held in memory, be their objects packed or not."""
    folder = bench.new_folder()
    files = {name: os.path.join(folder, name + ".pdf") for name in ("few", "many", "packed", "large")}
    write_pdf(files["few"], 3)
    write_pdf(files["many"], 20_000)
    write_pdf(files["large"], 150, MEGABYTE)
    subprocess.run(["qpdf", "--object-streams=generate", files["many"], files["packed"]], check=True)

    def is_enough(name, megabytes):
        return bench.run(bench.new_folder(), files[name], preexec_fn=within(megabytes)).returncode == 0

    few = next(megabytes for megabytes in range(16, 1024, 8) if is_enough("few", megabytes))
    # All objects of the many pages would be hundreds of megabytes, and the large pages are a hundred and fifty.
    faults = [f"{name}: {few + 64} MB are not enough, where {few} are for few pages" for name in files
              if not is_enough(name, few + 64)]
    for path in files.values():
        os.unlink(path)
    return faults


CHECKS = (whatever_the_surroundings, whatever_the_dates, whatever_the_clock_does, with_hardly_any_memory, two_at_once,
          folders_within_folders, folders_without_end, stopped_and_continued, rights_are_those_of_new_files,
          what_is_not_for_this_user, nothing_is_sent_anywhere, long_files_take_little_memory)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", required=True)
    parser.add_argument("--clock", required=True)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(os.path.abspath(arguments.produce), os.path.abspath(arguments.clock), folder)
        faults = [f"{check.__name__}: {fault}" for check in CHECKS for fault in check(bench)]
    print("\n".join([*faults, f"{len(CHECKS)} kinds of hard times, {len(faults)} faults"]))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
