#!/usr/bin/python3
"""Writes productions where a program has little, or finds what it does not expect.

Usage: hard_times.py --produce PROGRAM

Hardly any memory, and less and less of it; no fonts, no home, other languages, clocks that are wrong; two productions at
once into one folder; a folder to write into that is among the sources, or a link; folders without end. Whatever has a
name afterwards is whole, and what is said of it is true.
"""
import argparse
import contextlib
import json
import os
import resource
import subprocess
import sys
import tempfile
import time

from kill_sweep import COPIES, TABLES, digests_of, state_of, write_pdf

MEGABYTE = 1 << 20


class Bench:
    def __init__(self, produce, folder):
        self.produce = produce
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


def with_hardly_any_memory(bench):
    """From far too little memory to enough: a run writes all, or says what it did not write, or ends at once; what has
    a name is whole."""
    faults = []
    outcomes = set()
    for megabytes in (*range(24, 160, 8), *range(160, 640, 32)):
        output = bench.new_folder()
        limit = megabytes * MEGABYTE
        ended = bench.run(output, preexec_fn=lambda size=limit: resource.setrlimit(resource.RLIMIT_AS, (size, size)))
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
    """What lies deeper than paths may be long is told, and the rest is written."""
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
    faults = bench.faults(output, ended)
    if b"not everything in this folder could be read" not in ended.stderr:
        faults.append("a folder that cannot be read is not told")
    with contextlib.suppress(OSError):
        subprocess.run(["rm", "-rf", top], check=False)
    return faults


CHECKS = (whatever_the_surroundings, whatever_the_dates, with_hardly_any_memory, two_at_once, folders_within_folders,
          folders_without_end)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", required=True)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        bench = Bench(os.path.abspath(arguments.produce), folder)
        faults = [f"{check.__name__}: {fault}" for check in CHECKS for fault in check(bench)]
    print("\n".join([*faults, f"{len(CHECKS)} kinds of hard times, {len(faults)} faults"]))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
