"""Pages as pictures, drawn by two engines that share no code, and what differs between two of them."""
import os
import re

import numpy
from PIL import Image

from limited import run

POPPLER = "poppler"
MUPDF = "mupdf"
ENGINES = (POPPLER, MUPDF)

# A pixel differs when it lies further than this outside what the other picture shows within one pixel of it.
TOLERANCE = 32
# A page differs when more pixels than this do: fewer than a lost full stop has at 72 pixels per inch.
MOST_PIXELS = 3

# What an engine makes of its pixel grid is gone at another resolution; what is drawn differently stays.
FINER = (100 / 72, 4)
LARGEST_FINER_PICTURE = 30e6  # Pixels.

PAGES_AT_ONCE = 16


def resolution(width, height):
    """Pixels per inch for a page of so many points: 72, and more for a small page, where every point counts."""
    longest = max(width, height, 0.1)
    return 72 if longest >= 200 else min(7200, round(72 * 200 / longest))


def _pictures_in(data):
    """The pictures of a stream of binary PPM files."""
    pictures = []
    place = 0
    header = re.compile(rb"P6\s(?:#[^\n]*\n)*(\d+)\s+(\d+)\s+255\s")
    while place < len(data):
        match = header.match(data, place)
        if not match:
            break
        width, height = int(match.group(1)), int(match.group(2))
        size = width * height * 3
        if match.end() + size > len(data):
            break
        pictures.append(numpy.frombuffer(data, numpy.uint8, size, match.end()).reshape(height, width, 3))
        place = match.end() + size
    return pictures


def _draw_at_once(engine, path, first, last, dpi):
    if engine == POPPLER:
        arguments = ["pdftoppm", "-cropbox", "-r", str(dpi), "-f", str(first), "-l", str(last), path]
    else:
        arguments = ["mutool", "draw", "-q", "-i", "-c", "rgb", "-F", "ppm", "-r", str(dpi), "-o", "-", path,
                     f"{first}-{last}"]
    return _pictures_in(run(arguments).output)


def draw(engine, path, first, last, dpi):
    """The pictures of the pages `first` to `last`, counting from 1; None for a page the engine does not draw."""
    pictures = _draw_at_once(engine, path, first, last, dpi)
    if len(pictures) == last - first + 1:
        return pictures
    if first == last:
        return [None]
    alone = (_draw_at_once(engine, path, number, number, dpi) for number in range(first, last + 1))
    return [pictures[0] if len(pictures) == 1 else None for pictures in alone]


def _neighbourhood(picture, choose):
    """For each pixel the least or the greatest value within one pixel of it."""
    wide = numpy.pad(picture, ((1, 1), (1, 1), (0, 0)), mode="edge")
    rows = choose(choose(wide[:-2], wide[1:-1]), wide[2:])
    return choose(choose(rows[:, :-2], rows[:, 1:-1]), rows[:, 2:])


def _outside(picture, other):
    """Where `picture` shows what `other` does not show anywhere near."""
    low = _neighbourhood(other, numpy.minimum)
    high = _neighbourhood(other, numpy.maximum)
    too_dark = (low > TOLERANCE) & (picture < low - numpy.minimum(low, TOLERANCE))
    too_light = (high < 255 - TOLERANCE) & (picture > high + numpy.minimum(255 - high, TOLERANCE))
    return (too_dark | too_light).any(axis=2)


def difference(original, copy, mask):
    """Where two pictures of one page differ outside `mask`, as an array of truth values, or None where their
    sizes differ by more than the rounding of a pixel."""
    if abs(original.shape[0] - copy.shape[0]) > 1 or abs(original.shape[1] - copy.shape[1]) > 1:
        return None
    height = min(original.shape[0], copy.shape[0])
    width = min(original.shape[1], copy.shape[1])
    original, copy, mask = original[:height, :width], copy[:height, :width], mask[:height, :width]
    unequal = (numpy.abs(original.astype(numpy.int16) - copy) > TOLERANCE).any(axis=2) & ~mask
    if numpy.count_nonzero(unequal) <= MOST_PIXELS:
        return unequal
    return unequal & (_outside(original, copy) | _outside(copy, original))


def is_difference(found):
    return found is None or numpy.count_nonzero(found) > MOST_PIXELS


def mask_of(box, page_size, scale, shape):
    """Truth values for a picture of `shape` that has `scale` pixels to a unit of the page: those inside `box` (left,
    bottom, right, top, in units of the page) and one pixel around, and those at the edges that are not wholly on the
    page."""
    mask = numpy.zeros(shape[:2], bool)
    left, bottom, right, top = box
    rows = slice(max(0, int((page_size[1] - top) * scale) - 1), max(0, int((page_size[1] - bottom) * scale) + 2))
    columns = slice(max(0, int(left * scale) - 1), max(0, int(right * scale) + 2))
    mask[rows, columns] = True
    mask[max(1, int(page_size[1] * scale + 0.01)):] = True
    mask[:, max(1, int(page_size[0] * scale + 0.01)):] = True
    return mask


def keep(folder, name, original, copy, found):
    """Writes original, copy and difference side by side, for a person to look at."""
    os.makedirs(folder, exist_ok=True)
    parts = [picture for picture in (original, copy) if picture is not None]
    if found is not None:
        marked = numpy.full(found.shape + (3,), 255, numpy.uint8)
        marked[found] = (255, 0, 0)
        parts.append(marked)
    height = max(part.shape[0] for part in parts)
    sheet = numpy.full((height, sum(part.shape[1] + 8 for part in parts), 3), 128, numpy.uint8)
    left = 0
    for part in parts:
        sheet[:part.shape[0], left:left + part.shape[1]] = part
        left += part.shape[1] + 8
    image = Image.fromarray(sheet)
    image.thumbnail((6000, 4000))
    image.save(os.path.join(folder, name))
