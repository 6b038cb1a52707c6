#!/usr/bin/python3
"""Kills a production at every one of its system calls that touch files, and looks at what it leaves behind.

Usage: kill_sweep.py --produce PROGRAM [--jobs N]

After each kill every file with a final name has to be whole, nothing but hidden temporary files may be there besides,
the sources have to be what they were, and a production into another folder has to work. Exit code 77 where processes
may not be traced.
"""
import argparse
import collections
import hashlib
import multiprocessing
import os
import re
import subprocess
import sys
import tempfile
from functools import partial

from counts import note

CALLS = "openat,open,read,pread64,write,copy_file_range,fdatasync,fsync,renameat2,linkat,unlinkat,close"
NOTHING_TO_TEST = 77
COPIES = ("a.pdf", "b.pdf", "c.pdf")
TABLES = ("Production Index.csv", "Privilege Log.csv")


def may_trace():
    """Whether processes may be traced here."""
    try:
        return subprocess.run(["strace", "-o", "/dev/null", "true"], stderr=subprocess.DEVNULL, check=False).returncode == 0
    except FileNotFoundError:
        return False


def write_pdf(path, pages, padding=0):
    """A document of so many pages with a line of text each, all with so many spaces behind it; the last is so large that
    the system copies it."""
    objects = ["<</Type/Catalog/Pages 2 0 R>>", "", "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"]
    kids = []
    for page in range(pages):
        spaces = max(padding, 20_000 if page + 1 == pages else 0)
        text = f"BT /F 12 Tf 72 700 Td (Page {page + 1} of the original) Tj ET" + " " * spaces
        objects.append(f"<</Length {len(text)}>>stream\n{text}\nendstream")
        objects.append(f"<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Resources<</Font<</F 3 0 R>>>>"
                       f"/Contents {len(objects)} 0 R>>")
        kids.append(f"{len(objects)} 0 R")
    objects[1] = f"<</Type/Pages/Count {pages}/Kids[{' '.join(kids)}]>>"
    data = "%PDF-1.7\n"
    offsets = []
    for number, body in enumerate(objects, 1):
        offsets.append(len(data))
        data += f"{number} 0 obj\n{body}\nendobj\n"
    table = "".join(f"{offset:010d} 00000 n \n" for offset in offsets)
    data += (f"xref\n0 {len(objects) + 1}\n0000000000 65535 f \n{table}trailer\n<</Size {len(objects) + 1}/Root 1 0 R>>\n"
             f"startxref\n{len(data)}\n%%EOF\n")
    with open(path, "w", encoding="ascii") as file:
        file.write(data)


def state_of(folder):
    """Names, bytes and modification times of the files in a folder."""
    state = {}
    for name in sorted(os.listdir(folder)):
        path = os.path.join(folder, name)
        with open(path, "rb") as file:
            state[name] = (hashlib.sha256(file.read()).hexdigest(), os.stat(path).st_mtime_ns)
    return state


def digests_of(folder):
    return {name: digest for name, (digest, _) in state_of(folder).items()}


def run(produce, output, sources, kill_at=None):
    command = [produce, "--privilege-log", output, *[os.path.join(sources, name) for name in COPIES]]
    if kill_at is not None:
        call, number = kill_at
        command = ["strace", "-f", "-qq", "-o", "/dev/null", "-e", f"trace={call}",
                   "-e", f"inject={call}:signal=SIGKILL:when={number}", *command]
    return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, check=False)


def faults_after_kill(produce, sources, before, whole, kill_at):
    """How the run ended, and what is wrong with what it left. Copies are the same bytes every time, so that one with a
    final name either has the bytes of a whole one or is broken."""
    with tempfile.TemporaryDirectory() as output:
        ended = run(produce, output, sources, kill_at)
        left = digests_of(output)
        faults = [f"{name} is not whole" for name, digest in left.items()
                  if not name.startswith(".tallyfold-") and whole.get(name) != digest]
        finals = [name for name in left if not name.startswith(".")]
        if any(name in TABLES for name in finals) and not all(name in finals for name in COPIES):
            faults.append("a table is there before the copies it speaks of")
        if sum(name.startswith(".tallyfold-") for name in left) > 1:
            faults.append("there is more than one temporary file")
    if state_of(sources) != before:
        faults.append("a source was changed")
    return ended.returncode, [f"killed at {kill_at[0]} number {kill_at[1]}: {fault}" for fault in faults]


def calls_of_a_run(produce, sources):
    """Each of the calls that a whole run makes, as its name and which one of its kind it is; none where a run cannot be
    traced."""
    with tempfile.TemporaryDirectory() as output, tempfile.NamedTemporaryFile("r") as trace:
        command = ["strace", "-f", "-qq", "-o", trace.name, "-e", f"trace={CALLS}", produce, "--privilege-log", output,
                   *[os.path.join(sources, name) for name in COPIES]]
        ended = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
        names = re.findall(r"^\d+ +(\w+)\(", trace.read(), re.M) if ended.returncode == 0 else []
    counts = collections.Counter()
    calls = []
    for name in names:
        counts[name] += 1
        calls.append((name, counts[name]))
    return calls


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", required=True)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as sources:
        for pages, name in enumerate(COPIES, 1):
            write_pdf(os.path.join(sources, name), pages)
        calls = calls_of_a_run(arguments.produce, sources)
        if not calls:
            print("Skipped: processes may not be traced here (strace).")
            return NOTHING_TO_TEST
        before = state_of(sources)
        with tempfile.TemporaryDirectory() as output:
            if run(arguments.produce, output, sources).returncode != 0:
                print("A run that nobody kills fails.")
                return 1
            whole = digests_of(output)
            for name in COPIES:
                subprocess.run(["qpdf", "--check", os.path.join(output, name)], stdout=subprocess.DEVNULL, check=True)
        kills = 0
        faults = []
        check = partial(faults_after_kill, arguments.produce, sources, before, whole)
        with multiprocessing.Pool(max(1, arguments.jobs)) as pool:
            for code, found in pool.imap_unordered(check, calls, chunksize=8):
                kills += code != 0
                faults += found
        with tempfile.TemporaryDirectory() as output:
            if run(arguments.produce, output, sources).returncode != 0 or digests_of(output) != whole:
                faults.append("the production after all the kills is not what it was before them")
    note("kills", kills)
    print("\n".join(faults + [f"{kills} kills at {len(calls)} calls, {len(faults)} faults"]))
    return 1 if faults or kills < 300 else 0


if __name__ == "__main__":
    sys.exit(main())
