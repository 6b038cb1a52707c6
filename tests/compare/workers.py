"""Runs a function many times, each in a process of its own with limits, so that none holds up or ends the others."""
import multiprocessing
import multiprocessing.connection
import resource
import tempfile
import time
from dataclasses import dataclass

MEGABYTE = 1024 * 1024


@dataclass
class Limits:
    """What all runs together, and each of them, may take."""

    jobs: int  # At once.
    seconds: float  # By the clock, for one.
    until: float  # On the monotonic clock, for all.
    megabytes: int  # For one, without the programs that it starts; 0 for any number.
    folder: str  # For temporary files.


@dataclass
class _Run:
    argument: object
    process: multiprocessing.Process
    end: float


def results(function, arguments, limits):
    """Pairs of each of `arguments` and what `function` gives for it, as they come: None when its process ended before
    that, or was ended by a limit. Ends early, with all that still run, at the end of all."""
    waiting, running = iter(arguments), {}
    try:
        while time.monotonic() < limits.until:
            while len(running) < max(1, limits.jobs) and (argument := next(waiting, None)) is not None:
                connection, run = _start(function, argument, limits)
                running[connection] = run
            if not running:
                return
            end = min([limits.until, *(run.end for run in running.values())])
            ready = multiprocessing.connection.wait(running, max(0, end - time.monotonic()))
            late = [connection for connection, run in running.items() if run.end <= time.monotonic()]
            for connection in {*ready, *late}:
                run = running.pop(connection)
                result = _received(connection) if connection in ready else None
                _end(connection, run)
                yield run.argument, result
    finally:
        for connection, run in running.items():
            _end(connection, run)


def _start(function, argument, limits):
    receiving, sending = multiprocessing.Pipe(duplex=False)
    process = multiprocessing.Process(target=_call, args=(function, argument, sending, limits), daemon=True)
    process.start()
    sending.close()
    return receiving, _Run(argument, process, time.monotonic() + limits.seconds)


def _call(function, argument, connection, limits):
    tempfile.tempdir = limits.folder
    if limits.megabytes:
        _, hard = resource.getrlimit(resource.RLIMIT_AS)
        resource.setrlimit(resource.RLIMIT_AS, (limits.megabytes * MEGABYTE, hard))
    connection.send(function(argument))


def _received(connection):
    try:
        return connection.recv()
    except EOFError:
        return None


def _end(connection, run):
    connection.close()
    run.process.kill()
    run.process.join()
