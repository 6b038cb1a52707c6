"""Numbers of objects (PDF 1.7, 7.3.10)."""
from dataclasses import dataclass


@dataclass
class Numbering:
    """How objects are numbered. With nothing said, they are in the order of the document, from 1, of generation 0."""

    is_shuffled: bool = False
    has_generations: bool = False
    has_gaps: bool = False

    def numbers(self, document, dice):
        """Number and generation of each object."""
        order = sorted(document.objects)
        if "Encrypt" in {key.decode() for key in document.trailer}:
            return {number: (number, 0) for number in order}  # Keys depend on the numbers (7.6.2).
        if self.is_shuffled:
            dice.shuffle(order)
        numbers, number = {}, 0
        for known in order:
            number += dice.choice((1, 1, 2, 7)) if self.has_gaps else 1
            generation = dice.choice((0, 0, 1, 2, 9)) if self.has_generations else 0
            numbers[known] = (number, generation)
        return numbers
