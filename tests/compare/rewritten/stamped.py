"""A file as the program under test takes it, and the copy it makes."""
import json
import os
from dataclasses import dataclass

import copies
from limited import run

from .shown import Shown

SETTLED = "no problem"


class NotStamped(Exception):
    """The program did not do what it should, or said nothing."""


@dataclass
class Classification:
    """What a file is taken for."""

    problem: str
    pages: int
    earlier_number: str

    def __str__(self):
        number = f", {self.earlier_number} on it" if self.earlier_number else ""
        return f"{self.problem}, {self.pages} pages{number}"


def _produce(options, *arguments):
    ended = run([options.produce, *arguments], megabytes=options.produce_megabytes or None)
    if ended.timed_out or ended.code not in (copies.WRITTEN, copies.CONFLICTS, copies.SOME_FAILED):
        raise NotStamped(f"produce ended with {ended.code}: {copies.last_line(ended.errors)}")
    try:
        return json.loads(ended.output)
    except ValueError as problem:
        raise NotStamped(f"no JSON of produce: {copies.last_line(ended.errors)}") from problem


class Stamped:
    """The file at `path`, its classification, and its copy once it is asked for."""

    def __init__(self, path, options, folder):
        self.path, self._options = path, options
        listed = _produce(options, "--sources", path)
        if len(listed) != 1:
            raise NotStamped(f"produce lists {len(listed)} sources")
        source = listed[0]
        self.classification = Classification(source["problem"] or SETTLED, source["pageCount"], source["existingBates"])
        self.copy = None
        self._folder = folder

    @property
    def can_be_stamped(self):
        return self.classification.problem == SETTLED

    def stamp(self):
        """Makes the copy."""
        settings = os.path.join(self._folder, "settings.json")
        with open(settings, "w", encoding="utf-8") as file:
            json.dump({"stamp": copies.SETTINGS}, file)
        production = os.path.join(self._folder, "production")
        os.mkdir(production)
        result = _produce(self._options, "--settings", settings, "--no-index", production, self.path)
        written = os.listdir(production)
        if len(written) != 1:
            raise NotStamped(f"no copy: {json.dumps(result)[:160]}")
        self.copy = os.path.join(production, written[0])

    def numbers(self):
        """Per page: the words with a number on it, and their boxes."""
        return [[(word, box) for word, box in words if copies.SETTINGS["prefix"] in word]
                for words in copies.words_of(self.copy)]

    def shown(self, first, last, dpi):
        """The pages of the file, and of its copy."""
        return Shown(self.path, first, last, dpi), self.copy and Shown(self.copy, first, last, dpi)
