"""Times the check of a finished production beside pdftotext, which reads the same strips of the same copies."""
import os
import resource
import subprocess
import tempfile

# Where the numbers of the workloads are, from the top of a page: left, top, width, height.
STRIP = ("0", "560", "612", "240")
MOST_MORE = 0.5  # Milliseconds of a processor for a page.


def processor_time(commands):
    """In seconds, of all commands and of the processes that they started and waited for."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    for command in commands:
        subprocess.run(command, stdout=subprocess.DEVNULL, check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime


def bench_check(sources, pages, arguments, table):
    """Stamps `sources` of `pages` pages, and adds to `table` what checking the copies takes."""
    check = os.path.join(os.path.dirname(arguments.produce), "check")
    left, top, width, height = STRIP
    with tempfile.TemporaryDirectory(dir=arguments.memory) as folder:
        subprocess.run([arguments.produce, "--settings", arguments.settings, folder, *sources], stdout=subprocess.DEVNULL,
                       check=True)
        copies = [os.path.join(folder, name) for name in os.listdir(folder) if name.endswith(".pdf")]
        ours, theirs = [], []
        for _ in range(arguments.rounds):
            ours.append(processor_time([[check, folder]]))
            theirs.append(processor_time(
                [["pdftotext", "-x", left, "-y", top, "-W", width, "-H", height, copy, os.devnull] for copy in copies]))
    table.add("### Checking a finished production")
    table.add()
    table.add(f"{pages:,} dense pages in {len(copies)} copies, processor time, best of {arguments.rounds} rounds in turns.")
    table.add()
    table.add("| | ms a page |")
    table.add("| --- | ---: |")
    table.add(f"| Tallyfold | {min(ours) / pages * 1000:.2f} |")
    table.add(f"| pdftotext, the strip of the stamp | {min(theirs) / pages * 1000:.2f} |")
    table.add()
    table.target("ms more a page", (min(ours) - min(theirs)) / pages * 1000, MOST_MORE, False)
    table.add()
