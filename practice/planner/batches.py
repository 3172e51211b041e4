# SPDX-License-Identifier: Apache-2.0
"""An endless stream of training batches, the same for the same seed."""

import random
from dataclasses import dataclass
from typing import Iterator, List, Tuple

import numpy as np

from . import conversations
from .tokenizer import Tokenizer
from .values import TrainingValues

POOL = 1000  # conversations that are sorted by length and cut into batches together
LONGEST = 1000  # longer conversations are left out: one of them would fill a batch with blanks

Row = Tuple[List[int], List[int]]


@dataclass
class Batch:
    numbers: np.ndarray  # (rows, length) token numbers
    classes: np.ndarray  # how each token counts
    pool: int  # the pool that it came from, to go on from after a restart


class Batches:
    """Conversations of similar length together, about `tokens` to a batch.

    Two settings make lessons cheap, and may be changed as training goes on. `shortened` is the share of
    conversations that end after their first reply; late in training it must be nothing, or the model forgets to go
    on. `calm` is the share that happens on a desktop with hardly a window, whose state is said in a few words.
    """

    def __init__(self, tokenizer: Tokenizer, seed: int, tokens: int, first_pool: int = 0) -> None:
        self.shortened = 0.0
        self.calm = 0.0
        self._tokenizer = tokenizer
        self._values = TrainingValues(tokenizer.merges)
        self._seed = seed
        self._tokens = tokens
        self._next_pool = first_pool

    def __iter__(self) -> Iterator[Batch]:
        while True:
            pool, self._next_pool = self._next_pool, self._next_pool + 1
            rng = random.Random("%d/%d" % (self._seed, pool))
            groups = self._groups(rng)
            rng.shuffle(groups)
            for group in groups:
                yield _padded(group, pool)

    def _groups(self, rng: random.Random) -> List[List[Row]]:
        rows = []
        for _ in range(POOL):
            _, messages = conversations.make(rng, self._values, calm=rng.random() < self.calm)
            if rng.random() < self.shortened:
                messages = messages[:2]
            row = self._tokenizer.conversation(messages)
            if len(row[0]) <= LONGEST:
                rows.append(row)
        rows.sort(key=lambda row: len(row[0]))
        groups: List[List[Row]] = [[]]
        for row in rows:
            if (len(groups[-1]) + 1) * len(row[0]) > self._tokens:
                groups.append([])
            groups[-1].append(row)
        return groups


def _padded(rows: List[Row], pool: int) -> Batch:
    length = max(len(numbers) for numbers, _ in rows)
    batch = Batch(np.zeros((len(rows), length), np.int64), np.zeros((len(rows), length), np.int8), pool)
    for index, (numbers, classes) in enumerate(rows):
        batch.numbers[index, : len(numbers)] = numbers
        batch.classes[index, : len(classes)] = classes
    return batch
