"""What is known of mutants: those that change nothing, and what became of the others."""
import json
import os

from mutants import first_line, lines_of


class Equivalents:
    """Mutants that no test can notice, each with a reason: file, function, line, line as changed, reason. Lines are compared
    without their spaces and comments, so that they may move."""

    def __init__(self, path):
        self.entries = {}
        if os.path.exists(path):
            with open(path, encoding="utf-8") as file:
                for number, line in enumerate(file, 1):
                    if line.strip() and not line.startswith("#"):
                        fields = line.rstrip("\n").split("\t")
                        if len(fields) != 5 or not all(fields[at] for at in (0, 2, 4)):
                            raise ValueError(f"{path}:{number}: not a file, a function, two lines and a reason")
                        self.entries[tuple(fields[:4])] = fields[4]

    def reason(self, source, mutant):
        return self.entries.get(key_of(source, mutant))

    def unused(self, keys, files):
        """Entries of these files that are no mutant of theirs any more."""
        return [entry for entry in self.entries if entry[0] in files and entry not in keys]


def key_of(source, mutant):
    before, after = lines_of(source, mutant)
    return mutant.file, mutant.function, before, after


class Results:
    """A file with a line for each mutant tried, so that an interrupted run goes on where it was. `what` says of which sources,
    tests and sample they are; results of anything else are no longer true."""

    def __init__(self, path, what, keep_noticed=False):
        self.path = path
        self.of = {}  # The number of a mutant: what noticed it, or "".
        old = {}
        header = None
        if os.path.exists(path):
            with open(path, encoding="utf-8") as file:
                lines = file.read().split("\n")
            header = json.loads(lines[0])
            for line in lines[1:-1]:  # A line that was being written has no end.
                number, noticed = json.loads(line)
                old[number] = noticed
        if header == what:
            self.of = old
        elif keep_noticed and header and header["sources"] == what["sources"]:
            self.of = {number: noticed for number, noticed in old.items() if noticed}
        with open(path, "w", encoding="utf-8") as file:
            file.write(json.dumps(what) + "\n")
            for entry in self.of.items():
                file.write(json.dumps(entry) + "\n")

    def add(self, number, noticed):
        self.of[number] = noticed
        with open(self.path, "a", encoding="utf-8") as file:
            file.write(json.dumps((number, noticed)) + "\n")


def described(source, mutant, reached):
    """A survivor as a user is told of it."""
    before, after = lines_of(source, mutant)
    how = "" if reached else ", no test comes here"
    inside = f" in {mutant.function}" if mutant.function else ""
    return f"{mutant.file}:{first_line(source, mutant)}:{inside} ({mutant.kind}{how})\n  - {before}\n  + {after}"
