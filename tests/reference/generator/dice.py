"""The source of all chance in a case: everything in it follows from one seed."""

import random


class Dice:
    """A random source with two grades.

    `variety`: how often (0 to 1) a slot of a description holds something of the right kind that few
    files have. `oddness`: how often it holds what its layout does not expect.
    """

    def __init__(self, seed):
        self._random = random.Random(seed)
        self.variety = 0.0
        self.oddness = 0.0

    def chance(self, probability):
        return self._random.random() < probability

    def unusual(self):
        return self.variety > 0 and self.chance(self.variety)

    def odd(self):
        return self.oddness > 0 and self.chance(self.oddness)

    def below(self, limit):
        """An integer from 0 to limit - 1."""
        return self._random.randrange(limit)

    def between(self, low, high):
        """An integer from low to high, both included."""
        return self._random.randint(low, high)

    def few(self, high):
        """0 to high, small numbers more often."""
        return min(self.below(high + 1), self.below(high + 1))

    def pick(self, items):
        return items[self._random.randrange(len(items))]

    def weighted(self, table):
        """One of the keys of a dictionary whose values tell how often each is wanted."""
        keys = list(table)
        return self._random.choices(keys, [table[key] for key in keys])[0]

    def some(self, items, count):
        """count of the items, each at most once, in random order."""
        return self._random.sample(items, min(count, len(items)))

    def shuffled(self, items):
        result = list(items)
        self._random.shuffle(result)
        return result

    def bytes(self, count):
        return bytes(self._random.randrange(256) for _ in range(count))
