"""Runs tests with and without a mutant."""
import os
import re
import resource
import shutil
import signal
import subprocess
import tempfile
import time

FAILED = re.compile(r"^\[  FAILED  \] (\S+?)(?:, where|\s|$)", re.MULTILINE)
MOST_MEMORY = 8 << 30
LARGEST_FILE = 16 << 30  # Sparse ones of that size are tested.
SLOWEST = 2.0  # Seconds; a test that takes longer is not run for every mutant. Few notice what no quicker one does.
SCRATCH = "/dev/shm" if os.access("/dev/shm", os.W_OK) else None  # Memory: many tests wait for the disk above all.
FIRST_SECONDS = 0.5  # Of tests that are run together at first; the slow ones come when these have noticed nothing.


class Case:
    """A test: the program, its name there, how long it takes, and which mutants it comes to."""

    def __init__(self, program, name, seconds=0.0, reached=frozenset()):
        self.program, self.name, self.seconds, self.reached = program, name, seconds, reached
        self.is_alone = False  # It fails with others in one process.


def limits():
    """A mutant may write or reserve without end."""
    resource.setrlimit(resource.RLIMIT_AS, (MOST_MEMORY, MOST_MEMORY))
    resource.setrlimit(resource.RLIMIT_FSIZE, (LARGEST_FILE, LARGEST_FILE))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run_tests(program, names, seconds, mutant=None, reached=None):
    """Runs the tests `names` of `program` for at most so many seconds. Returns whether they passed, and the output."""
    home = tempfile.mkdtemp(prefix="tallyfold-mutant-", dir=SCRATCH)
    environment = {**os.environ, "HOME": home, "TMPDIR": home, "XDG_CONFIG_HOME": home + "/config", "GTEST_COLOR": "no"}
    for name in ("TALLYFOLD_MUTANT", "TALLYFOLD_MUTANTS_REACHED", "TALLYFOLD_COUNTS"):
        environment.pop(name, None)
    if mutant is not None:
        environment["TALLYFOLD_MUTANT"] = str(mutant)
    if reached:
        environment["TALLYFOLD_MUTANTS_REACHED"] = reached
    environment["GTEST_FILTER"] = ":".join(names)
    with tempfile.TemporaryFile() as out:
        process = subprocess.Popen([program, "--gtest_fail_fast"], cwd=home, env=environment, stdin=subprocess.DEVNULL,
                                   stdout=out, stderr=subprocess.STDOUT, preexec_fn=limits, start_new_session=True)
        try:
            status = process.wait(seconds)
        except subprocess.TimeoutExpired:
            status = None
        try:
            os.killpg(process.pid, signal.SIGKILL)  # With whatever it started.
        except ProcessLookupError:
            pass
        process.wait()
        out.seek(0)
        text = out.read().decode(errors="replace")
    for folder, _, _ in os.walk(home):
        os.chmod(folder, 0o700)
    shutil.rmtree(home, ignore_errors=True)
    ran = re.search(r"^\[==========\] (\d+) tests? from", text, re.MULTILINE)
    if status == 0 and (not ran or int(ran.group(1)) != len(names)):
        return False, text + "\nNot every test was run."
    return status == 0, text if status is not None else text + f"\nNo end within {seconds:.0f} seconds."


def names_of(program):
    """The tests that a program has."""
    listing = subprocess.run([program, "--gtest_list_tests"], capture_output=True, text=True, check=True).stdout
    names = []
    suite = ""
    for line in listing.splitlines():
        name = line.split("#")[0].rstrip()
        if name.startswith("  "):
            names.append(suite + name.strip())
        elif name.endswith("."):
            suite = name
    return [name for name in names if "DISABLED_" not in name]


def measured(program, name, count):
    """The test with its time and the mutants below `count` it comes to, or None where it fails by itself."""
    with tempfile.NamedTemporaryFile(prefix="tallyfold-reached-") as file:
        file.write(bytes(count))
        file.flush()
        began = time.monotonic()
        passed, _ = run_tests(program, [name], 300, reached=file.name)
        seconds = time.monotonic() - began
        file.seek(0)
        reached = frozenset(match.start() for match in re.finditer(b"\x01", file.read()))
    return Case(program, name, seconds, reached) if passed else None


def batches(cases):
    """The quickest first and of these what comes to few places, which is often what is meant to notice; then ever more at
    once."""
    batch, total, most = [], 0.0, FIRST_SECONDS
    for case in sorted(cases, key=lambda case: (case.is_alone, case.seconds * len(case.reached))):
        if batch and (total + case.seconds > most or case.program != batch[0].program or case.is_alone):
            yield batch
            batch, total, most = [], 0.0, most * 3
        batch.append(case)
        total += case.seconds
    if batch:
        yield batch


def by_program(cases):
    programs = {}
    for case in cases:
        programs.setdefault(case.program, []).append(case)
    return sorted(programs.values(), key=lambda group: min(case.seconds for case in group))


def tried(number, cases):
    """What notices the mutant: a test's name, or None."""
    quick = [case for case in cases if number in case.reached and case.seconds <= SLOWEST]
    queues = [list(batches(group)) for group in by_program(quick)]
    while queues:
        queues.sort(key=lambda queue: sum(case.seconds for case in queue[0]))
        batch = queues[0].pop(0)
        if not queues[0]:
            queues.pop(0)
        expected = sum(case.seconds for case in batch)
        passed, output = run_tests(batch[0].program, [case.name for case in batch], 10 + 5 * expected, mutant=number)
        if not passed:
            failed = FAILED.search(output)
            if failed:
                return failed.group(1)
            return "time limit" if output.endswith("seconds.") else "crash"
    return None
