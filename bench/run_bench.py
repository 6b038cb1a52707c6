#!/usr/bin/python3
"""Times whole productions beside peers that do the same work, in turns, and prints what it comes to as a table.

Usage: run_bench.py [--produce PROGRAM] [--scale FRACTION] [--rounds N] [--peer-rounds N] [--memory FOLDER] [--disk FOLDER]
                    [--only WORKLOAD]... [--write-results]

The peers look at every file before the first is written, keep the page's content apart, put a white box and text in an
embedded font on it, compress what they write, bring each copy to the disk and give it its name without replacing
anything, as Tallyfold does. Everything runs on one core. The best of the rounds counts, and ratios are of one run, for what else the machine does
changes from minute to minute. Peers that are missing are named with the Debian package that has them. --write-results
puts the table into results.md beside this file.
"""
import argparse
import datetime
import os
import re
import shutil
import subprocess
import sys
import tempfile
from dataclasses import dataclass, field

from check_bench import bench_check
from make_workloads import make

HERE = os.path.dirname(os.path.abspath(__file__))
PEERS = os.path.join(HERE, "peers")
SETTINGS = os.path.join(HERE, "settings.json")
KILOBYTE = 1024


@dataclass
class Contender:
    """One way to stamp the files of a workload."""

    name: str
    command: object  # Of an output folder and the files, the arguments of the program.
    is_peer: bool = True
    rounds: int = 2
    seconds: list = field(default_factory=list)
    megabytes: float = 0
    written: int = 0

    def best(self):
        return min(self.seconds) if self.seconds else None


def run_once(arguments):
    """Wall time in seconds and peak resident memory in MB of a command on one core."""
    core = str(max(os.sched_getaffinity(0)))
    with tempfile.NamedTemporaryFile("r") as report:
        subprocess.run(["/usr/bin/python3", "-I", "-S", os.path.join(HERE, "measured.py"), report.name, "taskset", "-c",
                        core, *arguments], stdout=subprocess.DEVNULL, check=True)
        code, seconds, kilobytes = report.read().split()
    if code != "0":
        raise RuntimeError(f"{arguments[0]} ended with {code}")
    return float(seconds), float(kilobytes) / KILOBYTE


def size_of(folder):
    return sum(entry.stat().st_size for entry in os.scandir(folder))


def time_in_turns(contenders, files, place):
    """Lets every contender write the files in turn, as often as its rounds say, each into a new folder."""
    for turn in range(max(contender.rounds for contender in contenders)):
        for contender in contenders:
            if turn >= contender.rounds:
                continue
            with tempfile.TemporaryDirectory(dir=place) as output:
                os.sync()  # What the last one left to be written is not for this one to wait for.
                seconds, megabytes = run_once(contender.command(output, files))
                contender.seconds.append(seconds)
                contender.megabytes = max(contender.megabytes, megabytes)
                contender.written = size_of(output)
                if turn == 0 and contender.name != "cp and sync":
                    check_last_number(contender, output, files)


def pages_of(path):
    return int(subprocess.run(["qpdf", "--show-npages", path], capture_output=True, check=True).stdout)


def check_last_number(contender, output, files):
    """The last page of the first copy bears a number: what is timed is the real work."""
    copy = os.path.join(output, os.path.basename(files[0]))
    last = str(pages_of(copy))
    text = subprocess.run(["pdftotext", "-f", last, "-l", last, copy, "-"], capture_output=True, check=True).stdout
    if not re.search(rb"ABC\d{6}", text):
        raise RuntimeError(f"{contender.name} left the last page of {copy} without a number")


def number_overlays(files, folder):
    """One PDF to each file, with a page that shows nothing but the number for each of its pages."""
    import fitz
    number = 1
    for path in files:
        with fitz.open() as overlay:
            for _ in range(pages_of(path)):
                overlay.new_page(width=612, height=792).insert_text((536, 774), f"ABC{number:06d}", fontsize=10)
                number += 1
            overlay.save(os.path.join(folder, os.path.basename(path)))


def number_font(path):
    """Writes a font of nothing but what the numbers need: peers embed it as it is, and cutting it is not timed."""
    from fontTools import subset
    source = subprocess.run(["fc-match", "-f", "%{file}", "Liberation Sans:style=Regular"], capture_output=True, text=True,
                            check=True).stdout
    subset.main([source, "--text=ABC0123456789", "--drop-tables+=FFTM", "--no-hinting", f"--output-file={path}"])


def has_module(name):
    return subprocess.run(["/usr/bin/python3", "-c", f"import {name}"], capture_output=True).returncode == 0


def contenders_for(arguments, font, overlays):
    """Those that are installed, ours first; says which package has the others."""
    ours = Contender("Tallyfold", lambda output, files: [arguments.produce, "--settings", SETTINGS, "--no-index", output,
                                                         *files], False, arguments.rounds)
    copy = Contender("cp and sync", lambda output, files: ["sh", "-c", 'out=$1; shift; cp -- "$@" "$out" && sync', "sh",
                                                           output, *files], False, arguments.rounds)
    found = [ours, copy]
    for name, module, package, script in (("pikepdf", "pikepdf", "python3-pikepdf", "with_pikepdf.py"),
                                          ("PyMuPDF", "fitz", "python3-fitz", "with_pymupdf.py")):
        if has_module(module) and font:
            found.append(Contender(name, lambda output, files, script=script:
                                   ["/usr/bin/python3", os.path.join(PEERS, script), font, output, *files],
                                   True, arguments.peer_rounds))
        elif font:
            print(f"{name} is left out: package {package} is not installed.")
    if overlays:
        found.append(Contender("qpdf --overlay", lambda output, files:
                               [os.path.join(PEERS, "with_qpdf.sh"), output, overlays, *files], True,
                               arguments.peer_rounds))
    return found


class Table:
    """The lines of the report, printed as they come."""

    def __init__(self):
        self.lines = []

    def add(self, line=""):
        self.lines.append(line)
        print(line, flush=True)

    def rows(self, title, contenders, pages, files, source_size):
        self.add(f"### {title}")
        self.add()
        self.add(f"{pages:,} pages in {files:,} files of {source_size / 1e6:,.1f} MB together.")
        self.add()
        self.add("| | seconds | pages a second | times as long as Tallyfold | peak MB | size of output |")
        self.add("| --- | ---: | ---: | ---: | ---: | ---: |")
        ours = contenders[0].best()
        for contender in contenders:
            seconds = contender.best()
            self.add(f"| {contender.name} | {seconds:.3f} | {pages / seconds:,.0f} | {seconds / ours:.2f} | "
                     f"{contender.megabytes:.0f} | {contender.written / source_size:.4f} |")
        self.add()

    def target(self, what, value, bound, at_least):
        reached = value >= bound if at_least else value <= bound
        self.add(f"- {what}: {value:,.4g}, to be at {'least' if at_least else 'most'} {bound:g}: "
                 f"{'reached' if reached else '**missed**'}")


def faster_peer(contenders):
    """How many times as long as we the faster of pikepdf and PyMuPDF takes; None without either."""
    times = [contender.best() for contender in contenders if contender.name in ("pikepdf", "PyMuPDF")]
    return min(times) / contenders[0].best() if times else None


def bench_workload(name, folder, arguments, table, targets):
    files = sorted(os.path.join(folder, entry) for entry in os.listdir(folder))
    source_size = size_of(folder)
    pages = sum(map(pages_of, files))
    with tempfile.TemporaryDirectory(dir=arguments.memory) as overlays:
        has_overlays = has_module("fitz") and not name.startswith("long")
        if has_overlays:
            number_overlays(files, overlays)
        contenders = contenders_for(arguments, arguments.font, overlays if has_overlays else None)
        if name.startswith("long"):
            contenders = contenders[:2]
        time_in_turns(contenders, files, arguments.memory)
    table.rows(f"{name}, in memory", contenders, pages, len(files), source_size)
    factor = faster_peer(contenders)
    if name in targets and factor is not None:
        times, most_size, most_bytes = targets[name]
        table.target("times as fast as the faster of pikepdf and PyMuPDF", factor, times, True)
        if most_size:
            table.target("output in sizes of the input", contenders[0].written / source_size, most_size, False)
        if most_bytes:
            table.target("KB more for each file", (contenders[0].written - source_size) / len(files) / KILOBYTE, most_bytes,
                         False)
        table.add()
    on_disk = contenders_for(arguments, None, None)
    time_in_turns(on_disk, files, arguments.disk)
    table.rows(f"{name}, on a disk, every copy flushed", on_disk, pages, len(files), source_size)
    return pages / contenders[0].best(), contenders[0].megabytes


def processor():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        match = re.search(r"^model name\s*:\s*(.+)$", file.read(), re.M)
    return match.group(1) if match else "unknown processor"


def versions():
    found = []
    for package in ("qpdf", "python3-pikepdf", "python3-fitz"):
        shown = subprocess.run(["dpkg-query", "-W", "-f", "${Version}", package], capture_output=True, text=True)
        found.append(f"{package} {shown.stdout if shown.returncode == 0 else 'not installed'}")
    return ", ".join(found)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", default=os.path.join(HERE, "..", "build", "release", "bin", "produce"))
    parser.add_argument("--scale", type=float, default=1.0)
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--peer-rounds", type=int, default=2)
    parser.add_argument("--memory", default="/dev/shm")
    parser.add_argument("--disk", default=tempfile.gettempdir())
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--write-results", action="store_true")
    arguments = parser.parse_args()
    arguments.produce = os.path.abspath(arguments.produce)
    arguments.settings = SETTINGS
    # (times as fast, size of output, KB more a file)
    targets = {"text": (5, 1.05, None), "scans": (2.5, 1.005, None), "small": (4, None, 5)}

    table = Table()
    table.add("# Results")
    table.add()
    table.add(f"{datetime.date.today()}, {processor()}, one core; {versions()}; workloads at {arguments.scale:g} of their "
              f"size; best of {arguments.rounds} rounds, {arguments.peer_rounds} for peers, in turns.")
    table.add()
    workloads = tempfile.mkdtemp(dir=arguments.memory)
    try:
        arguments.font = os.path.join(workloads, "font.ttf")
        files = os.path.join(workloads, "files")
        number_font(arguments.font)
        make(files, arguments.scale)
        long = {}
        for name in sorted(os.listdir(files), reverse=True):
            if arguments.only and name not in arguments.only:
                continue
            long[name] = bench_workload(name, os.path.join(files, name), arguments, table, targets)
        if not arguments.only or "check" in arguments.only:
            sources = sorted(os.path.join(files, "text", name) for name in os.listdir(os.path.join(files, "text")))
            bench_check(sources, sum(map(pages_of, sources)), arguments, table)
        if "long-20000" in long and "long-2000" in long:
            table.target("pages a second of the long file, in those of the shorter one",
                         long["long-20000"][0] / long["long-2000"][0], 0.8, True)
            table.target("peak MB of the long file", long["long-20000"][1], 64, False)
            table.add()
    finally:
        shutil.rmtree(workloads)
    for program, title, scale in (("proof_bench", "The proof of every copy", min(arguments.scale, 0.25)),
                                  ("model_bench", "The model", min(arguments.scale, 0.25)),
                                  ("reader_bench", "The reader", min(arguments.scale, 0.25)),
                                  ("window_bench", "The window", arguments.scale)):
        path = os.path.join(os.path.dirname(arguments.produce), program)
        if not arguments.only and os.path.exists(path):
            table.add(f"### {title}")
            table.add()
            with tempfile.TemporaryDirectory(dir=arguments.memory) as folder:
                make(folder, scale)
                shown = subprocess.run(["taskset", "-c", "0", path, folder], stdout=subprocess.PIPE, text=True,
                                       check=True)
                table.add(shown.stdout.rstrip())
                table.add()
    if arguments.write_results:
        with open(os.path.join(HERE, "results.md"), "w", encoding="utf-8") as file:
            file.write("\n".join(table.lines) + "\n")


if __name__ == "__main__":
    sys.exit(main())
