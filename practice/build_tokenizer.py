#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Learns the tokenizer's merges from generated conversations and writes planner/merges.json.

Short pieces come first, for spelling names; then merges that make each word frequent in wordings or replies one
token. If "please" is one token, the planner sees at once that it does not belong to a name.
"""

import argparse
import collections
import json
import random
import re
from typing import Counter, Iterator, List, Set, Tuple

from planner import conversations, tokenizer
from planner.values import TrainingValues

_WORD = re.compile(r"[A-Za-z]+")


class _PlainValues(TrainingValues):
    """Without accents, which would split words into fragments."""

    ANY_SCRIPT = 0.0


def _texts(count: int, seed: object, values: TrainingValues) -> Iterator[Tuple[bool, str]]:
    """Yields (is task, text) for each message, without fixed texts and without the state of a task."""
    rng = random.Random(seed)
    for _ in range(count):
        _, messages = conversations.make(rng, values)
        for index, (_, text) in enumerate(messages):
            if index == 0:
                text = text.split("\nState: ")[0]
            for fixed in tokenizer.SKELETON:
                text = text.replace(fixed, "\0")
            yield index == 0, text


def count_words(conversation_count: int, seed: int) -> Counter[str]:
    """Counts words of letters outside the fixed texts, omitting rare ones."""
    counts: Counter[str] = collections.Counter()
    for _, text in _texts(conversation_count, seed, _PlainValues()):
        counts.update(_WORD.findall(text))
    return collections.Counter({word: count for word, count in counts.items() if count >= 4})


def frequent_words(conversation_count: int, seed: int, pieces: List[str]) -> Counter[str]:
    """Words in at least one of 1000 tasks, or in other messages of one of 250 conversations."""
    in_tasks: Counter[str] = collections.Counter()
    elsewhere: Counter[str] = collections.Counter()
    for is_task, text in _texts(conversation_count, "words %d" % seed, _PlainValues(pieces)):
        found: Set[str] = set(_WORD.findall(text))
        (in_tasks if is_task else elsewhere).update(found)
    enough = conversation_count // 1000
    words = {word for word, count in in_tasks.items() if count >= enough}
    words |= {word for word, count in elsewhere.items() if count >= 4 * enough}
    return collections.Counter({word: in_tasks[word] + elsewhere[word] for word in words})


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--pieces", type=int, default=420, help="short pieces to learn")
    parser.add_argument("--keep", type=int, default=0, help="keep so many pieces of the present file instead")
    parser.add_argument("--conversations", type=int, default=12000)
    parser.add_argument("--seed", type=int, default=5)
    options = parser.parse_args()
    if options.keep:
        pieces = tokenizer.load().merges[: options.keep]
    else:
        pieces = tokenizer.learn_merges(count_words(options.conversations, options.seed), options.pieces)
    words = frequent_words(options.conversations, options.seed, pieces)
    merges = pieces + tokenizer.join_words(words, tokenizer.Tokenizer(pieces))
    tokenizer.MERGES_FILE.write_text(json.dumps(merges) + "\n")
    print("vocabulary:", len(tokenizer.Tokenizer(merges)))


if __name__ == "__main__":
    main()
