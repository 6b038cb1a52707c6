"""Breaks the code of a room one place at a time and says what no test notices; see docs/testing.md."""
import argparse
import fcntl
import glob
import hashlib
import os
import pickle
import random
import sys
import time
from concurrent.futures import ThreadPoolExecutor, as_completed

import trials
from building import Build, CannotBuild, TooLate
from changes import changed_lines
from judging import Equivalents, Results, described, key_of
from mutants import first_line
from reading import CannotRead, sites_in
from rooms import ROOMS

LATE = object()
MOST_IN_A_FILE = 10000  # So that a source that changes has no other compiled anew.
ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))


def say(*words):
    print(*words, flush=True)


def digest(paths):
    whole = hashlib.sha256()
    for path in sorted(paths):
        whole.update(path.encode())
        with open(path, "rb") as file:
            whole.update(hashlib.sha256(file.read()).digest())
    return whole.hexdigest()


def files_of(room, root):
    return sorted(os.path.relpath(path, root) for pattern in room.sources for path in glob.glob(os.path.join(root, pattern)))


def read_room(files, build, root):
    """The mutants of the files. Finding them takes clang a while, so they are kept until a source changes."""
    tool = glob.glob(os.path.join(os.path.dirname(os.path.abspath(__file__)), "*.py"))
    sources = [os.path.join(root, path) for path in files]
    headers = [path for depth in ("*", "*/*") for path in glob.glob(os.path.join(root, depth, "*.h"))]
    state = digest(sources + headers + tool)
    kept = os.path.join(build.folder, "sites")
    if os.path.exists(kept):
        with open(kept, "rb") as file:
            old_state, read = pickle.load(file)
        if old_state == state:
            return read
    read = sites_in(files, build.units, root)
    with open(kept, "wb") as file:
        pickle.dump((state, read), file)
    return read


def known_tests(build, programs, count, jobs, until):
    """All tests with what they reach, measured anew when a program is another one; those that there is time for."""
    state = digest(programs + [os.path.join(build.folder, "bin", name) for name in os.listdir(os.path.join(build.folder, "bin"))])
    kept = os.path.join(build.folder, "reached")
    if os.path.exists(kept):
        with open(kept, "rb") as file:
            old_state, cases = pickle.load(file)
        if old_state == state:
            return cases
    cases = []
    is_whole = True
    for program in programs:
        names = trials.names_of(program)
        with ThreadPoolExecutor(jobs) as pool:
            measured = list(pool.map(
                lambda name: trials.measured(program, name, count) if time.monotonic() < until else LATE, names))
        is_whole = is_whole and LATE not in measured
        for name, case in zip(names, measured):
            if case is None:
                say(f"left out, for it fails without a mutant: {name}")
        found = [case for case in measured if case and case is not LATE]
        if is_whole:
            find_loners(program, found)
        cases += found
    if is_whole:
        with open(kept, "wb") as file:
            pickle.dump((state, cases), file)
    else:
        say("not every test was looked at for want of time, so nothing is broken.")
    return cases


def find_loners(program, cases):
    """Marks tests that fail with others in one process: a mutant is not to be blamed for that."""
    together = list(cases)
    while together:
        passed, output = trials.run_tests(program, [case.name for case in together], 900)
        if passed:
            return
        failed = trials.FAILED.search(output)
        loners = [case for case in together if failed and case.name == failed.group(1)] or together
        for case in loners:
            case.is_alone = True
            together.remove(case)


def sampled(numbers, count, seed):
    """A sample that is the same for a seed, in random order."""
    numbers = sorted(numbers)
    return random.Random(seed).sample(numbers, min(count, len(numbers)))


def try_all(numbers, cases, results, jobs, until):
    """Tries the mutants until it is late."""
    missing = [number for number in numbers if number not in results.of]
    reached = {number for case in cases for number in case.reached}
    done = 0
    last = time.monotonic()
    with ThreadPoolExecutor(jobs) as pool:
        waiting = {}
        queue = iter(missing)

        def start():
            number = next(queue, None)
            if number is not None and time.monotonic() < until:
                waiting[pool.submit(trials.tried, number, cases)] = number

        if time.monotonic() < until:
            for number in [number for number in missing if number not in reached]:
                results.add(number, "")
        missing = [number for number in missing if number in reached]
        queue = iter(missing)
        for _ in range(jobs):
            start()
        while waiting:
            finished = next(as_completed(waiting))
            results.add(waiting.pop(finished), finished.result() or "")
            done += 1
            if time.monotonic() - last > 30:
                last = time.monotonic()
                say(f"  {done} of {len(missing)}")
            start()


def mutate(root, name, room, options, until):
    """Runs one room. Returns whether its goal is reached."""
    files = files_of(room, root)
    lines = None
    if options.changed:
        lines = changed_lines(root, options.changed)
        if lines is None:
            say(f"{name}: there is no base {options.changed} to compare with, so nothing is broken.")
            return True
        files = [path for path in files if path in lines]
        if not files:
            say(f"{name}: nothing differs from {options.changed}.")
            return True
    folder = os.path.join(root, "build", "mutate", name + ("-changed" if options.changed else ""))
    os.makedirs(folder, exist_ok=True)
    with open(os.path.join(folder, "lock"), "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)  # Two runs would write the same objects.
        return mutate_in(folder, root, name, room, files, lines, options, until)


def mutate_in(folder, root, name, room, files, lines, options, until):
    """The same, with the folder to itself."""
    build = Build(root, os.path.join(root, "build", "release"), folder, options.jobs, until)
    read = read_room(files, build, root)
    mutants = {}
    for place, path in enumerate(files):
        for index, mutant in enumerate(read[path].mutants if path in read else ()):
            if lines is None or first_line(read[path].source, mutant) in lines[path]:
                mutants[place * MOST_IN_A_FILE + index] = mutant
    if not mutants:
        say(f"{name}: no line that changed can be broken.")
        return True
    programs = list(room.tests + room.beside)
    if not build.touched(set(mutant.file for mutant in mutants.values()), programs):
        say(f"{name}: what changed is in none of the tests' programs.")
        return True
    beginning = time.monotonic()
    try:
        kept, dropped, objects = build.compile_all(read, mutants, programs)
    except TooLate:
        say(f"{name}: not built for want of time, so nothing is broken.")
        return True
    paths = build.link([program for program in programs if build.objects_in(program, objects)], objects)
    for program in programs:
        link = os.path.join(folder, "bin", program)
        if link not in paths and not os.path.exists(link):
            os.symlink(os.path.join(build.base, "bin", program), link)
    say(f"{name}: {len(kept)} places can be broken, {len(dropped)} cannot be chosen when the program runs; "
        f"built in {time.monotonic() - beginning:.0f} s")
    tests = [path for path in paths if os.path.basename(path) in room.tests]
    beginning = time.monotonic()
    cases = known_tests(build, tests, max(mutants) + 1, options.jobs, until)
    slow = sum(case.seconds > trials.SLOWEST for case in cases)
    say(f"{name}: {len(cases)} tests, looked at in {time.monotonic() - beginning:.0f} s; {slow} that take more than "
        f"{trials.SLOWEST:.0f} s are left out")

    equivalents = Equivalents(os.path.join(root, "tests", "mutation", "equivalents.tsv"))
    keys = {key_of(read[mutant.file].source, mutant) for mutant in mutants.values()}
    if lines is None:
        for entry in equivalents.unused(keys, files):
            say("no such mutant any more: " + " | ".join(entry))
    chosen = sampled(kept, options.sample or room.sample, options.seed)
    same = [number for number in chosen if equivalents.reason(read[kept[number].file].source, kept[number])]
    to_try = [number for number in chosen if number not in same]
    results = Results(os.path.join(folder, f"results-{options.seed}"),
                      {"sources": digest([os.path.join(root, path) for path in files]), "sample": len(chosen),
                       "mutants": len(mutants), "programs": digest(paths)}, options.survivors)
    try_all(to_try, cases, results, options.jobs, until)
    return report(name, room, read, kept, to_try, same, results, cases)


def report(name, room, read, kept, to_try, same, results, cases):
    reached = {number for case in cases for number in case.reached}
    tried = [number for number in to_try if number in results.of]
    survivors = sorted(number for number in tried if not results.of[number])
    for number in survivors:
        mutant = kept[number]
        say(described(read[mutant.file].source, mutant, number in reached))
    by = {how: sum(results.of[number] == how for number in tried) for how in ("time limit", "crash")}
    noticed = len(tried) - len(survivors)
    percent = 100 * noticed / len(tried) if tried else 100
    late = len(to_try) - len(tried)
    say(f"{name}: {len(tried) + len(same)} broken, {len(same)} of them the same as before, {noticed} noticed "
        f"({by['time limit']} by the time limit, {by['crash']} by a crash), {len(survivors)} not: {percent:.1f} %, "
        f"the goal is {room.goal} %" + (f"; {late} not tried for want of time" if late else ""))
    return percent >= room.goal


def main():
    parser = argparse.ArgumentParser(prog="scripts/mutate", description=__doc__)
    parser.add_argument("rooms", nargs="*", metavar="ROOM", help=f"one of {', '.join(ROOMS)}; all unless told otherwise")
    parser.add_argument("--sample", type=int, help="how many places to break, instead of the room's number")
    parser.add_argument("--seed", type=int, default=1, help="which places are chosen")
    parser.add_argument("--changed", metavar="BASE", help="only lines that differ from this commit")
    parser.add_argument("--minutes", type=float, help="how long it may take, building the tests apart")
    parser.add_argument("--jobs", type=int, default=2, help="how many at once")
    parser.add_argument("--survivors", action="store_true", help="try only those again that were not noticed before")
    options = parser.parse_args()
    for name in options.rooms:
        if name not in ROOMS:
            parser.error(f"no such room: {name}")
    until = time.monotonic() + 60 * options.minutes if options.minutes else float("inf")
    try:
        reached = [mutate(ROOT, name, ROOMS[name], options, until) for name in options.rooms or ROOMS]
    except (CannotRead, CannotBuild) as error:
        say(str(error))
        return 2
    return 0 if all(reached) else 1


if __name__ == "__main__":
    sys.exit(main())
