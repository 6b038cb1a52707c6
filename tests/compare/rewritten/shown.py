"""What pages of a file look like to both engines, drawn once and compared with what others look like."""
import numpy

import pictures

LARGEST_PICTURE = 1600  # Pixels on the longer side.


def resolution(sizes):
    """One resolution for pages of several sizes, at which none of them becomes very large."""
    longest = max((max(size) for size in sizes), default=792)
    return min([pictures.resolution(*size) for size in sizes] + [max(1, int(72 * LARGEST_PICTURE / max(longest, 1)))])


class Shown:
    """The pages `first` to `last` of the file at `path`."""

    def __init__(self, path, first, last, dpi):
        self.path, self._first, self._last, self.dpi = path, first, last, dpi
        self._drawn = {}

    def pages(self, engine, dpi=None):
        """The pictures by `engine`, None for a page it does not draw."""
        key = (engine, dpi or self.dpi)
        if key not in self._drawn:
            self._drawn[key] = pictures.draw(engine, self.path, self._first, self._last, key[1])
        return self._drawn[key]

    def differences_from(self, other, engine):
        """The numbers of the pages that `engine` draws otherwise than those of `other`, at any resolution."""
        return [self._first + index
                for index, (ours, theirs) in enumerate(zip(self.pages(engine), other.pages(engine)))
                if _differs(ours, theirs) and not self._is_gone_when_finer(other, engine, index)]

    def _is_gone_when_finer(self, other, engine, index):
        picture = self.pages(engine)[index]
        for factor in pictures.FINER:
            finer = round(self.dpi * factor)
            pixels = 0 if picture is None else picture.shape[0] * picture.shape[1] * factor * factor
            if 0 < pixels <= pictures.LARGEST_FINER_PICTURE:
                number = self._first + index
                ours, theirs = (pictures.draw(engine, path, number, number, finer)[0]
                                for path in (self.path, other.path))
                if not _differs(ours, theirs):
                    return True
        return False

    def keep_difference(self, other, engine, number, folder, name):
        """Writes both pictures of a page and what differs between them, for a person to look at."""
        ours, theirs = (shown.pages(engine)[number - self._first] for shown in (self, other))
        found = None
        if ours is not None and theirs is not None:
            found = pictures.difference(theirs, ours, numpy.zeros(theirs.shape[:2], bool))
        if ours is not None or theirs is not None:
            pictures.keep(folder, name, theirs, ours, found)


def _differs(ours, theirs):
    if ours is None or theirs is None:
        return (ours is None) != (theirs is None)
    if ours.shape == theirs.shape and numpy.array_equal(ours, theirs):
        return False
    return pictures.is_difference(pictures.difference(theirs, ours, numpy.zeros(theirs.shape[:2], bool)))
