"""Runs a program with limits of time and memory, so that no file can hold up or bring down a whole run."""
import os
import resource
import signal
import subprocess
import tempfile
import time
from dataclasses import dataclass

MEGABYTE = 1024 * 1024
MOST_ERRORS = 4 * MEGABYTE  # A file can make a tool say the same thing for as long as it runs.
TIMES_BY_THE_CLOCK = 10


@dataclass
class Ended:
    """How a program ended, and what it cost."""

    code: int  # Negative: the signal that ended it.
    timed_out: bool
    output: bytes
    errors: bytes
    seconds: float


def run(arguments, seconds=20, megabytes=2048):
    """Runs `arguments` for at most `seconds` of processor time, for what else the machine does is not their fault, and
    many times that by the clock; without a limit of memory when `megabytes` is None."""

    def limit():
        resource.setrlimit(resource.RLIMIT_CORE, (0, 0))
        resource.setrlimit(resource.RLIMIT_CPU, (seconds, seconds + 1))
        resource.setrlimit(resource.RLIMIT_FSIZE, (2048 * MEGABYTE, 2048 * MEGABYTE))
        if megabytes is not None:
            resource.setrlimit(resource.RLIMIT_AS, (megabytes * MEGABYTE, megabytes * MEGABYTE))

    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        start = time.monotonic()
        child = subprocess.Popen(arguments, stdin=subprocess.DEVNULL, stdout=output, stderr=errors, preexec_fn=limit)
        timed_out = False
        pause = 0.001
        while True:
            pid, status = os.waitpid(child.pid, os.WNOHANG)
            if pid:
                break
            if not timed_out and time.monotonic() - start > TIMES_BY_THE_CLOCK * seconds:
                timed_out = True
                os.kill(child.pid, signal.SIGKILL)
            time.sleep(pause)
            pause = min(pause * 1.5, 0.02)
        child.returncode = os.waitstatus_to_exitcode(status)
        timed_out = timed_out or child.returncode == -signal.SIGXCPU
        took = time.monotonic() - start
        output.seek(0)
        errors.seek(0)
        return Ended(child.returncode, timed_out, output.read(), errors.read(MOST_ERRORS), took)
