#!/usr/bin/python3
"""Rewrites files so that they show the same, and holds what the program makes of them against what it makes of the files
themselves.

Usage: rewritten_test.py --produce PROGRAM [--everything] [--file NAME]... [--kind KIND]... [--seed N] [--jobs N]
                         [--minutes M] [--keep FOLDER] [--no-pictures] [--no-memory-limit] [FOLDER]

Rewritten are the samples of this project, three files that are made, and those of FOLDER (else of the folder that
TALLYFOLD_CORPUS names): without further options every kind on a fixed dozen, on another tenth of the files each, and
pairs of kinds. --everything has every kind on every file and draws every page. With --kind, those together, on all files
or those named. With --minutes it ends after that time, and says how many of the rewritten files were not come to.

Where Poppler and mupdf draw the rewritten file as the file itself,
  it is taken for the same: problem, number of pages, earlier number,
  both copies have the same numbers in the same places,
  Poppler and mupdf draw both copies alike,
  and the copy says what the rewritten file says, object by object.
Where they do not, it is not counted; how many those are is printed, by kind. What has a good reason to be otherwise is
in rewritten_exceptions.tsv beside this file. Exit code 1 when anything else is, 77 when there was nothing to test.
"""
import argparse
import collections
import os
import random
import shlex
import sys
import tempfile
import time

import compare_copies
from rewriting.kinds import KINDS, conflict_of
from rewritten import choice, made_files
from rewritten.exceptions import Exceptions
from rewritten.examination import (DRAWN_OTHERWISE, FAILED, HELD, NOT_REWRITTEN, NOT_STAMPED, Options, Outcome, Variant,
                                   examine)
from workers import Limits, results

NOTHING_TO_TEST = 77
HERE = os.path.dirname(os.path.abspath(__file__))
SAMPLES = os.path.join(os.path.dirname(os.path.dirname(HERE)), "samples")
SEED = 20240229
PAGES_OF_A_SAMPLE = 1
VARIANTS_AT_ONCE = 6
SECONDS_OF_A_BATCH = 900
MEGABYTES_OF_A_BATCH = 4096


def files_of(made, folder):
    """Names of all files there are, and their paths."""
    files = {f"made/{os.path.basename(path)}": path for path in made_files.write_into(made)}
    files.update({f"samples/{name}": os.path.join(SAMPLES, name) for name, _ in compare_copies.files_of(SAMPLES)})
    if folder:
        files.update({name: os.path.join(folder, name) for name, _ in compare_copies.files_of(folder)})
    return files


def chosen(arguments, files):
    if arguments.kind:
        return [Variant(file, tuple(arguments.kind), arguments.seed) for file in files]
    return (choice.everything if arguments.everything else choice.in_sample)(files, arguments.seed)


def batches(variants, files, options, seed):
    """Variants of one file together, since much is done once for all; files in an order of chance."""
    by_file = collections.defaultdict(list)
    for variant in variants:
        by_file[variant.file].append(variant)
    for file in random.Random(seed).sample(sorted(by_file), len(by_file)):
        for start in range(0, len(by_file[file]), VARIANTS_AT_ONCE):
            yield files[file], options, by_file[file][start:start + VARIANTS_AT_ONCE]


def examine_batch(batch):
    return examine(*batch)


def outcomes_of(work, limits):
    """The outcomes of each batch of `work`, as they come."""
    for batch, outcomes in results(examine_batch, work, limits):
        if outcomes is None:
            reason = f"the examination of {len(batch[-1])} variants did not end, or took more than {limits.seconds} seconds"
            outcomes = [Outcome(variant, FAILED, [reason]) for variant in batch[-1]]
        yield outcomes


def command(variant, arguments):
    """What repeats a variant alone."""
    kinds = [word for kind in variant.kinds for word in ("--kind", kind)]
    words = [sys.argv[0], "--produce", arguments.produce, "--file", variant.file, *kinds, "--seed", str(variant.seed)]
    return " ".join(map(shlex.quote, words + ([arguments.folder] if arguments.folder else [])))


def report(outcome, arguments, exceptions):
    """Prints a failure; gives whether nothing explains it."""
    variant = outcome.variant
    cause = exceptions.cause_of(variant)
    print(f"{variant.file}, {' and '.join(variant.kinds)}, seed {variant.seed}:" + (f" [{cause}]" if cause else ""))
    print("".join(f"    {reason}\n" for reason in outcome.reasons) + f"    {command(variant, arguments)}", flush=True)
    return cause is None


def print_counts(outcomes):
    """A row for each kind: how many variants held, and how many could not be counted, and why."""
    print("kind\theld\tfailed\tdrawn otherwise\tnot rewritable\tno file to stamp")
    for kind in [*KINDS, None]:
        counts = collections.Counter(outcome.outcome for outcome in outcomes
                                     if kind is None or kind in outcome.variant.kinds)
        if counts:
            print("\t".join([kind or "together", *(str(counts[outcome]) for outcome in
                                                   (HELD, FAILED, DRAWN_OTHERWISE, NOT_REWRITTEN, NOT_STAMPED))]))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--produce", required=True)
    parser.add_argument("--everything", action="store_true")
    parser.add_argument("--file", action="append", default=[])
    parser.add_argument("--kind", action="append", default=[], choices=KINDS, metavar="KIND")
    parser.add_argument("--seed", type=int, default=SEED)
    parser.add_argument("--minutes", type=float, default=float("inf"))
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--keep", default="")
    parser.add_argument("--verbose", action="store_true", help="say also what was not counted, and why")
    parser.add_argument("--no-pictures", action="store_true")
    parser.add_argument("--no-memory-limit", action="store_true")
    parser.add_argument("folder", nargs="?", default=os.environ.get("TALLYFOLD_CORPUS"))
    arguments = parser.parse_args()
    conflict = conflict_of(arguments.kind)
    if conflict:
        parser.error(conflict)
    options = Options(os.path.abspath(arguments.produce), 0 if arguments.no_memory_limit else 512,
                      not arguments.no_pictures,
                      0 if arguments.everything or arguments.kind else PAGES_OF_A_SAMPLE, arguments.keep)
    exceptions = Exceptions(os.path.join(HERE, "rewritten_exceptions.tsv"))
    outcomes, unexplained = [], 0
    with tempfile.TemporaryDirectory() as made, tempfile.TemporaryDirectory() as temporary:
        files = files_of(made, arguments.folder)
        for name in arguments.file:
            if name not in files:
                parser.error(f"there is no file {name}")
        files = {name: path for name, path in files.items() if not arguments.file or name in arguments.file}
        variants = chosen(arguments, list(files))
        work = batches(variants, files, options, arguments.seed)
        limits = Limits(arguments.jobs, SECONDS_OF_A_BATCH, time.monotonic() + arguments.minutes * 60,
                        0 if arguments.no_memory_limit else MEGABYTES_OF_A_BATCH, temporary)
        for examined in outcomes_of(work, limits):
            outcomes += examined
            for outcome in examined:
                if outcome.outcome == FAILED:
                    unexplained += report(outcome, arguments, exceptions)
                elif arguments.verbose and outcome.outcome in (DRAWN_OTHERWISE, NOT_REWRITTEN):
                    report(outcome, arguments, exceptions)
    if len(outcomes) < len(variants):
        print(f"{len(variants) - len(outcomes)} rewritten files were not come to in {arguments.minutes:g} minutes")
    stale = exceptions.not_needed(outcomes) if not arguments.no_pictures else []
    for key in stale:
        print(f"This exception explains nothing any more: {' '.join(key)}")
    print_counts(outcomes)
    print(f"{len(outcomes)} rewritten files; {unexplained} failures not explained, {len(stale)} exceptions not needed")
    if not any(outcome.outcome in (HELD, FAILED) for outcome in outcomes):
        print("Skipped: there is no file that can be rewritten and stamped.")
        return NOTHING_TO_TEST
    return 1 if unexplained or stale else 0


if __name__ == "__main__":
    sys.exit(main())
