#!/usr/bin/python3
"""Holds a production to the order of its system calls, so that whenever the power goes, what has a name is whole.

Usage: call_order.py --produce PROGRAM

Every copy and table is created as a new hidden file, written, flushed, and only then named without replacing anything;
copies are read back between the two. The folder is flushed after the last copy and before the first table, and at the
end. Copies come in their order, the index after them, the privilege log last. Exit code 77 where processes may not be
traced.
"""
import argparse
import os
import re
import subprocess
import sys
import tempfile

from kill_sweep import COPIES, NOTHING_TO_TEST, TABLES, write_pdf

CALLS = "open,openat,creat,read,pread64,write,pwrite64,writev,copy_file_range,ftruncate,truncate,fdatasync,fsync,rename,renameat," \
        "renameat2,link,linkat,unlink,unlinkat"
WRITES = ("write", "pwrite64", "writev", "copy_file_range", "ftruncate", "truncate")
LINE = re.compile(r"^\d+ +(\w+)\((.*)\) += (-?\d+)")
DESCRIPTOR = re.compile(r"^\d+<([^>]*)>")
QUOTED = re.compile(r'"((?:[^"\\]|\\.)*)"')


def trace_of(produce, output, sources):
    """Each call that succeeded, as its name, its arguments, and the path of the descriptor it is about; none where
    nothing can be traced."""
    with tempfile.NamedTemporaryFile("r") as trace:
        command = ["strace", "-f", "-qq", "-y", "-s", "4096", "-o", trace.name, "-e", f"trace={CALLS}", produce,
                   "--privilege-log", output, *[os.path.join(sources, name) for name in COPIES]]
        try:
            ended = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        except FileNotFoundError:
            return []
        lines = trace.read().splitlines() if ended.returncode == 0 else []
    calls = []
    for match in filter(None, map(LINE.match, lines)):
        name, arguments, result = match.groups()
        # Copying names the file it reads first.
        descriptor = DESCRIPTOR.match(arguments.split(", ")[2] if name == "copy_file_range" else arguments)
        if int(result) >= 0:
            calls.append((name, arguments, descriptor.group(1) if descriptor else None))
    return calls


def places(calls, is_wanted):
    return [place for place, call in enumerate(calls) if is_wanted(*call)]


def faults_of_file(calls, output, hidden, name, named):
    """What is wrong with the way of the file that was `hidden` to the name it got at the place `named`."""
    path = os.path.join(output, hidden)
    created = places(calls, lambda call, arguments, _: call == "openat" and f'"{hidden}"' in arguments
                     and "O_CREAT" in arguments)
    written = places(calls, lambda call, _, about: call in WRITES and about == path)
    flushed = places(calls, lambda call, _, about: call in ("fdatasync", "fsync") and about == path)
    read = places(calls, lambda call, _, about: call == "pread64" and about == path)
    faults = []
    if len(created) != 1 or "O_EXCL" not in calls[created[0]][1] or "O_NOFOLLOW" not in calls[created[0]][1]:
        faults.append(f"{name} is not created once, as a new file")
    if not written or len(flushed) != 1 or not max(written) < flushed[0] < named:
        faults.append(f"{name} is not flushed between its last byte and its name")
    if name in COPIES and not (read and flushed and flushed[0] < min(read) and max(read) < named):
        faults.append(f"{name} is not read back between flush and name")
    return faults


def faults_of(calls, output):
    faults = []
    named = {}  # Name: the place of the call that gave it, in the order of the calls.
    for place in places(calls, lambda call, *_: call.startswith(("rename", "link"))):
        hidden, name = QUOTED.findall(calls[place][1])
        if calls[place][0] != "renameat2" or "RENAME_NOREPLACE" not in calls[place][1]:
            faults.append(f"{name} may replace something")
        named[name] = place
        faults += faults_of_file(calls, output, hidden, name, place)
    if tuple(named) != (*COPIES, *TABLES):
        return [*faults, f"names are given in the order {', '.join(named)}"]
    flushes = places(calls, lambda call, _, about: call == "fsync" and about == output)
    tables = places(calls, lambda call, arguments, _: call == "openat" and ".csv" in arguments)
    if not any(named[COPIES[-1]] < place < min(tables) for place in flushes):
        faults.append("the folder is not flushed between the last copy and the first table")
    if not any(place > named[TABLES[-1]] for place in flushes):
        faults.append("the folder is not flushed at the end")
    made = places(calls, lambda call, arguments, _: "O_CREAT" in arguments or "O_TRUNC" in arguments)
    if len(made) != len(named):
        faults.append("something is made that gets no name")
    if places(calls, lambda call, *_: call.startswith("unlink")):
        faults.append("something is removed")
    return faults


def is_blind(calls, output):
    """Whether a fault put into a good trace goes unseen: a check that cannot see a fault is none."""
    def unseen(changed):
        return changed != calls and not faults_of(changed, output)

    def without(kind):
        return [call for call in calls if call[0] != kind]

    def moved_to_end(kind):
        return without(kind) + [call for call in calls if call[0] == kind]

    return any(map(unseen, [without("fdatasync"), without("fsync"), without("pread64"), without("renameat2"),
                            moved_to_end("fdatasync"), moved_to_end("pread64"), moved_to_end("write"),
                            moved_to_end("copy_file_range"), moved_to_end("fsync"), list(reversed(calls))]))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", required=True)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as sources, tempfile.TemporaryDirectory() as output:
        output = os.path.realpath(output)
        for pages, name in enumerate(COPIES, 1):
            write_pdf(os.path.join(sources, name), pages)
        calls = trace_of(arguments.produce, output, sources)
    if not calls:
        print("Skipped: processes may not be traced here (strace).")
        return NOTHING_TO_TEST
    faults = faults_of(calls, output)
    if not faults and is_blind(calls, output):
        faults.append("this check finds nothing")
    print("\n".join(faults + [f"{len(calls)} calls, {len(faults)} faults"]))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
