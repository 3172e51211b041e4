#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Learns the tokenizer's letter pieces from generated conversations and writes planner/merges.json."""

import argparse
import collections
import json
import random
import re

from planner import conversations, tokenizer
from planner.values import TrainingValues


def count_words(conversation_count: int, seed: int) -> "collections.Counter[str]":
    """Words of letters outside the fixed texts, with how often they occur; rare ones teach nothing."""
    rng = random.Random(seed)
    values = TrainingValues()
    counts: "collections.Counter[str]" = collections.Counter()
    for _ in range(conversation_count):
        _, messages = conversations.make(rng, values)
        for _, text in messages:
            for fixed in tokenizer.SKELETON:
                text = text.replace(fixed, "\0")
            counts.update(re.findall(r"[A-Za-z]+", text))
    return collections.Counter({word: count for word, count in counts.items() if count >= 4})


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--pieces", type=int, default=420, help="letter pieces to learn")
    parser.add_argument("--conversations", type=int, default=12000)
    parser.add_argument("--seed", type=int, default=5)
    options = parser.parse_args()
    merges = tokenizer.learn_merges(count_words(options.conversations, options.seed), options.pieces)
    tokenizer.MERGES_FILE.write_text(json.dumps(merges) + "\n")
    print("vocabulary:", len(tokenizer.Tokenizer(merges)))


if __name__ == "__main__":
    main()
