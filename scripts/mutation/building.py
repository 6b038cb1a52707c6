"""Builds the tests of a room around sources that hold mutants: only what these touch is compiled, the rest is taken from a
build that is there."""
import hashlib
import json
import os
import pickle
import re
import shlex
import subprocess
import time
from concurrent.futures import ThreadPoolExecutor

from weave import at_fault, woven

HERE = os.path.dirname(os.path.abspath(__file__))
PLACE = re.compile(r"^(?:In file included from |\s+from )?(/[^:\n]+):(\d+)(?::(\d+))?[:,]", re.MULTILINE)
WARNINGS = re.compile(r"-W(?!l,|a,|p,)|-O|-g\d?$")


class TooLate(Exception):
    """There is no time left to build."""


class CannotBuild(Exception):
    """The build fails for a reason that is no mutant's."""


def run(command, folder):
    return subprocess.run(command, cwd=folder, shell=isinstance(command, str), capture_output=True, text=True, errors="replace")


class Build:
    """A folder with the woven sources, their objects and the programs linked with them."""

    def __init__(self, root, base, folder, jobs, until=float("inf")):
        self.root, self.base, self.folder, self.jobs, self.until = root, base, folder, jobs, until
        with open(os.path.join(base, "compile_commands.json"), encoding="utf-8") as file:
            entries = json.load(file)
        self.commands = {}  # An object, from `base`: the command that makes it, and its source from the root.
        for entry in entries:
            words = shlex.split(entry["command"])
            made = os.path.relpath(os.path.join(entry["directory"], words[words.index("-o") + 1]), base)
            self.commands[made] = (words, os.path.relpath(entry["file"], root))
        self.units = {os.path.relpath(entry["file"], root): entry["command"] for entry in entries}
        self.links = {}
        for name in ("woven", "objects", "bin"):
            os.makedirs(os.path.join(folder, name), exist_ok=True)

    # Sources

    def weave(self, read, mutants):
        """Writes the woven sources; `mutants` are numbers and mutants. Returns where each mutant went, by file."""
        places = {}
        wanted = {mutant.file for mutant in mutants.values()}
        for path in wanted:
            own = {number: mutant for number, mutant in mutants.items() if mutant.file == path}
            text, places[path] = woven(read[path].source, own, read[path].constexpr_at)
            self.write(os.path.join("woven", path), text)
        for folder, _, names in os.walk(os.path.join(self.folder, "woven")):
            for name in names:
                path = os.path.relpath(os.path.join(folder, name), os.path.join(self.folder, "woven"))
                if path not in wanted:
                    os.remove(os.path.join(folder, name))
        return places

    def write(self, name, content):
        """Writes a file unless it is as it should be already."""
        path = os.path.join(self.folder, name)
        os.makedirs(os.path.dirname(path), exist_ok=True)
        if os.path.exists(path):
            with open(path, "rb") as file:
                if file.read() == content:
                    return
        with open(path, "wb") as file:
            file.write(content)

    # Objects

    def touched(self, files, programs):
        """The objects of the programs that have one of the files in them."""
        depends = run(["ninja", "-t", "deps"], self.base).stdout
        headers = {os.path.join(self.root, path) for path in files if not path.endswith(".cpp")}
        objects = {made for made, (_, source) in self.commands.items() if source in files}
        for block in depends.split("\n\n"):
            lines = block.split("\n")
            made = lines[0].split(":")[0]
            if made in self.commands and headers.intersection(
                    os.path.normpath(os.path.join(self.base, line.strip())) for line in lines[1:]):
                objects.add(made)
        linked = set()
        for program in programs:
            linked.update(self.objects_in(program, objects))
        return sorted(linked)

    def objects_in(self, program, objects):
        """Those of `objects` that the program is made of, by itself or from one of its libraries."""
        words = self.link_command(program)
        parts = {os.path.dirname(word).split(".dir")[0] + ".dir" for word in words if word.endswith(".o")}
        for word in words:
            if word.endswith(".a") and not os.path.isabs(word):
                folder, name = os.path.split(word)
                parts.add(os.path.join(folder, "CMakeFiles", name[len("lib"):-len(".a")] + ".dir"))
        return [made for made in objects if made.split(".dir")[0] + ".dir" in parts]

    def link_command(self, program):
        """How the program is linked, as it was when this began: a build beside this one may change it."""
        if program not in self.links:
            self.links[program] = self.read_link_command(program)
        return list(self.links[program])

    def read_link_command(self, program):
        lines = run(["ninja", "-t", "commands", "-s", f"bin/{program}"], self.base).stdout.strip().split("\n")
        for part in lines[-1].split(" && "):
            words = shlex.split(part)
            if "-o" in words and words[words.index("-o") + 1] == f"bin/{program}":
                return words
        raise CannotBuild(f"ninja does not say how {program} is linked.")

    def object_path(self, made):
        return os.path.join(self.folder, "objects", made.replace("/", "_"))

    def compile_command(self, made):
        words, source = self.commands[made]
        replacement = os.path.join(self.folder, "woven", source)
        kept = []
        skip = False
        for word in words:
            if skip:
                skip = False
            elif word == "-o":
                skip = True
            elif os.path.isabs(word) and os.path.relpath(word, self.root) == source:
                continue
            elif not WARNINGS.match(word) and word != "-c":
                kept.append(word)
        out = self.object_path(made)
        command = kept + ["-O1", "-g0", "-w", "-Wno-narrowing", "-fmax-errors=0", "-fdiagnostics-column-unit=byte", "-include",
                          os.path.join(HERE, "mutant.h"), "-c", replacement if os.path.exists(replacement) else
                          os.path.join(self.root, source), "-o", out, "-MD", "-MF", out + ".d"]
        at = next(index for index, word in enumerate(command) if word.startswith("-") or word == "-I")
        command.insert(at, "-I" + os.path.join(self.folder, "woven"))
        return command

    def is_made(self, made):
        return self.is_current(self.object_path(made), self.compile_command(made))

    def compile(self, made):
        """Compiles one object. Returns what the compiler has to say when it fails."""
        out, command = self.object_path(made), self.compile_command(made)
        if self.is_current(out, command):
            return ""
        if time.monotonic() > self.until:
            raise TooLate
        result = run(command, self.base)
        if result.returncode == 0:
            self.note(out, command)
            return ""
        if os.path.exists(out + ".made"):
            os.remove(out + ".made")
        return result.stderr or "The compiler gives no reason."

    def inputs(self, out):
        with open(out + ".d", encoding="utf-8") as file:
            return shlex.split(file.read().replace("\\\n", " "))[1:]

    def state(self, out, command):
        """What the object is made of. Woven headers take the place of others, so that there are any is a part of it."""
        overlay = sorted(os.path.relpath(os.path.join(folder, name), self.folder)
                         for folder, _, names in os.walk(os.path.join(self.folder, "woven"))
                         for name in names if name.endswith(".h"))
        stamps = [(path, os.stat(os.path.join(self.base, path)).st_mtime_ns) for path in self.inputs(out)]
        return hashlib.sha256(repr((command, overlay, stamps)).encode()).hexdigest()

    def is_current(self, out, command):
        try:
            with open(out + ".made", encoding="utf-8") as file:
                return file.read() == self.state(out, command)
        except OSError:
            return False

    def note(self, out, command):
        with open(out + ".made", "w", encoding="utf-8") as file:
            file.write(self.state(out, command))

    # All

    def compile_all(self, read, mutants, programs):
        """Compiles until all is accepted. Returns the mutants that are in, those that are not, and the objects."""
        known = self.refused(read)
        kept = {number: mutant for number, mutant in mutants.items() if mutant not in known}
        dropped = {number: mutant for number, mutant in mutants.items() if mutant in known}
        files = {mutant.file for mutant in mutants.values()}
        objects = self.touched(files, programs)
        folders = {os.path.dirname(path) for path in files}
        # Headers are tried with the sources beside them before all that has them is compiled.
        own = [made for made in objects if os.path.dirname(self.commands[made][1]) in folders]
        for names in (own, objects):
            failing = names
            while failing:
                places = self.weave(read, kept)
                for number, mutant in list(kept.items()):
                    if sum(number in place.mutants and not place.is_variable for place in places[mutant.file]) < len(mutant.edits):
                        dropped[number] = kept.pop(number)
                with ThreadPoolExecutor(self.jobs) as pool:
                    messages = dict(zip(failing, pool.map(self.compile, failing)))
                wrong = set()
                for made, message in messages.items():
                    faults = self.faults(message, places, kept) if message else set()
                    if message and not faults:
                        raise CannotBuild(message)
                    wrong |= faults
                for number in wrong:
                    dropped[number] = kept.pop(number)
                if not kept:
                    raise CannotBuild("No mutant can be compiled.")
                if wrong:
                    self.refuse(read, known.union(dropped.values()))
                    self.weave(read, kept)
                    failing = [made for made in names if not self.is_made(made)]
                else:
                    failing = []
        return kept, dropped, objects

    def refused(self, read):
        """The mutants that the compiler is known to refuse, which spares it all others when it is asked again."""
        try:
            with open(os.path.join(self.folder, "refused"), "rb") as file:
                sources, mutants = pickle.load(file)
        except OSError:
            return set()
        return {mutant for mutant in mutants if mutant.file in read and sources[mutant.file] == read[mutant.file].source}

    def refuse(self, read, mutants):
        with open(os.path.join(self.folder, "refused"), "wb") as file:
            pickle.dump(({path: one.source for path, one in read.items()}, mutants), file)

    def faults(self, message, places, kept):
        """The mutants that the compiler complains about."""
        wrong = set()
        blocks = re.split(r"\n(?=\S[^\n]*: (?:fatal )?error: )", "\n" + message)
        for block in blocks:
            if not re.search(r": (?:fatal )?error: ", block):
                continue
            named = {}
            for path, line, column in PLACE.findall(block):
                woven_path = os.path.relpath(path, os.path.join(self.folder, "woven"))
                if woven_path in places:
                    named.setdefault(woven_path, []).append((int(line), int(column or 1)))
            own = set()
            for path, positions in named.items():
                with open(os.path.join(self.folder, "woven", path), "rb") as file:
                    starts = [0]
                    for line in file:
                        starts.append(starts[-1] + len(line))
                offsets = [starts[line - 1] + column - 1 for line, column in positions]
                found = at_fault(places[path], offsets)
                if not found:  # Somewhere on the lines.
                    found = [number for place in places[path] for number in place.mutants
                             for line, _ in positions if place.start < starts[line] and place.end > starts[line - 1]]
                own.update(found)
            wrong |= own
        return {number for number in wrong if number in kept}

    def link(self, programs, objects):
        """Links the programs into a folder of their own. Returns their paths."""
        runtime = os.path.join(self.folder, "mutant.o")
        compiler = self.link_command(programs[0])[0]
        result = run([compiler, "-std=c++20", "-O2", "-c", os.path.join(HERE, "mutant.cpp"), "-o", runtime], self.folder)
        if result.returncode != 0:
            raise CannotBuild(result.stderr)
        paths = []
        for program in programs:
            words = self.link_command(program)
            own = self.objects_in(program, objects)
            out = os.path.join(self.folder, "bin", program)
            words[words.index("-o") + 1] = out
            direct = [made for made in own if made in words]
            words = [self.object_path(word) if word in direct else word for word in words]
            first = next(index for index, word in enumerate(words) if word.endswith(".o"))
            words[first:first] = [self.object_path(made) for made in own if made not in direct] + [runtime]
            if os.path.lexists(out):
                os.remove(out)
            result = run(words, self.base)
            if result.returncode != 0:
                raise CannotBuild(result.stderr)
            paths.append(out)
        return paths
