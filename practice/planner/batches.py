# SPDX-License-Identifier: Apache-2.0
"""An endless stream of training batches, the same for the same seed."""

import random
from concurrent.futures import Future, ProcessPoolExecutor
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
    A change shows after the pool that is being made.
    """

    def __init__(self, tokenizer: Tokenizer, seed: int, tokens: int, first_pool: int = 0) -> None:
        self.shortened = 0.0
        self.calm = 0.0
        self._maker = (tokenizer, seed, tokens)
        self._next_pool = first_pool

    def __iter__(self) -> Iterator[Batch]:
        # Another process makes the next pool while this one trains: that takes a third of a step's time.
        with ProcessPoolExecutor(1, initializer=_start_maker, initargs=self._maker) as process:
            coming = self._submit(process)
            while True:
                pool, groups = coming.result()
                coming = self._submit(process)
                for group in groups:
                    yield _padded(group, pool)

    def _submit(self, process: ProcessPoolExecutor) -> "Future[Tuple[int, List[List[Row]]]]":
        pool, self._next_pool = self._next_pool, self._next_pool + 1
        return process.submit(_make_pool, pool, self.shortened, self.calm)


class _PoolMaker:
    """Draws conversations and puts those of similar length into groups, one for a batch."""

    def __init__(self, tokenizer: Tokenizer, seed: int, tokens: int) -> None:
        self._tokenizer = tokenizer
        self._values = TrainingValues(tokenizer.merges)
        self._seed = seed
        self._tokens = tokens

    def groups(self, pool: int, shortened: float, calm: float) -> List[List[Row]]:
        rng = random.Random("%d/%d" % (self._seed, pool))
        rows = []
        for _ in range(POOL):
            _, messages = conversations.make(rng, self._values, calm=rng.random() < calm)
            if rng.random() < shortened:
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
        rng.shuffle(groups)
        return groups


_maker: _PoolMaker  # of the process that makes pools


def _start_maker(tokenizer: Tokenizer, seed: int, tokens: int) -> None:
    global _maker
    _maker = _PoolMaker(tokenizer, seed, tokens)


def _make_pool(pool: int, shortened: float, calm: float) -> Tuple[int, List[List[Row]]]:
    return pool, _maker.groups(pool, shortened, calm)


def _padded(rows: List[Row], pool: int) -> Batch:
    length = max(len(numbers) for numbers, _ in rows)
    batch = Batch(np.zeros((len(rows), length), np.int64), np.zeros((len(rows), length), np.int8), pool)
    for index, (numbers, classes) in enumerate(rows):
        batch.numbers[index, : len(numbers)] = numbers
        batch.classes[index, : len(classes)] = classes
    return batch
