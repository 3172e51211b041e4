# SPDX-License-Identifier: Apache-2.0
"""An endless stream of training batches, deterministic for a given seed."""

import random
from concurrent.futures import Future, ProcessPoolExecutor
from dataclasses import dataclass
from typing import Iterator, List, Tuple

import numpy as np

from . import conversations
from .tokenizer import Tokenizer
from .values import TrainingValues

POOL = 1000  # conversations sorted by length and cut into batches together
LONGEST = 1000  # longer conversations are dropped: one would fill a batch with padding

Row = Tuple[List[int], List[int]]


@dataclass
class Batch:
    numbers: np.ndarray  # (rows, length) token ids
    classes: np.ndarray  # loss class of each token
    pool: int  # index of the pool, for resuming


class Batches:
    """Batches of about `tokens` tokens, of conversations of similar length.

    Two settings define the curriculum and may be changed during training; changes take effect with the next pool.
    `shortened` is the share of conversations that end after their first reply; it must be 0 late in training, or the
    model forgets how to continue. `calm` is the share on a nearly empty desktop, whose state is short.
    """

    def __init__(self, tokenizer: Tokenizer, seed: int, tokens: int, first_pool: int = 0) -> None:
        self.shortened = 0.0
        self.calm = 0.0
        self._maker = (tokenizer, seed, tokens)
        self._next_pool = first_pool

    def __iter__(self) -> Iterator[Batch]:
        # Another process generates the next pool during training; that takes a third of a step's time.
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
    """Generates conversations and groups those of similar length into batches."""

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


_maker: _PoolMaker  # of the generating process


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
