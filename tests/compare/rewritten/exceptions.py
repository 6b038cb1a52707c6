"""Rewritten files whose copies differ with a reason that is no fault of theirs."""
import csv

from .examination import FAILED


class Exceptions:
    """Rows of file, kind and cause; * for any file, or any kind."""

    def __init__(self, path):
        with open(path, encoding="utf-8", newline="") as file:
            rows = csv.DictReader((line for line in file if not line.startswith("#")), delimiter="\t",
                                  quoting=csv.QUOTE_NONE)
            self._causes = {(row["file"], row["kind"]): row["cause"] for row in rows}
        self._needed = set()

    def cause_of(self, variant):
        """Why `variant` may fail, None when it may not."""
        for key in self._keys_of(variant):
            if key in self._causes:
                self._needed.add(key)
                return self._causes[key]
        return None

    def not_needed(self, outcomes):
        """Those that were tried and explained nothing. One kind alone is meant to fail so; a pair may hide it."""
        tried = {key for outcome in outcomes if len(outcome.variant.kinds) == 1 for key in self._keys_of(outcome.variant)
                 if outcome.outcome != FAILED}
        return [key for key in self._causes if key in tried and key not in self._needed]

    @staticmethod
    def _keys_of(variant):
        return [key for kind in variant.kinds for key in ((variant.file, kind), ("*", kind))] + [(variant.file, "*")]
