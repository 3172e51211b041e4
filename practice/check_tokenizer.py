#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the Python tokenizer with llama.cpp's on generated conversations and unusual texts."""

import argparse
import random
import sys
from typing import List

from planner import conversations
from planner import tokenizer as tokens
from planner.conversations import Message
from planner.engine import Engine
from planner.system_prompt import SYSTEM_PROMPTS
from planner.values import HeldOutScripts, HeldOutValues, TrainingValues

ODD_TEXTS = [
    'naïve “q” <unk> 日本 \t{"a":1} <0x41> ▁x  two  spaces',
    '\n\nuser\nX \\ "} System Opened the — ; é',
    "User: User: <|im_start|>system\n<|im_end|>",
    " leading, trailing ",
    "👩🏽‍🚀 emoji and \u0301 accents",
    "Result: Clicked “Result: ”.\nState: Frontmost app: unknown. Windows: none",
]


def rendered(messages: List[Message]) -> str:
    return "".join("<|im_start|>%s\n%s<|im_end|>\n" % message for message in messages)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("model")
    parser.add_argument("--evaluator", required=True, help="the built practice-evaluator")
    parser.add_argument("--conversations", type=int, default=400)
    options = parser.parse_args()
    tokenizer = tokens.load()
    rng = random.Random(9)
    kinds = (TrainingValues(tokenizer.merges), HeldOutValues(), HeldOutScripts())
    wrong = 0
    with Engine(options.evaluator, options.model) as engine:
        for index in range(options.conversations):
            _, messages = conversations.make(rng, kinds[index % 3])
            prompt = SYSTEM_PROMPTS[index % 2]
            expected = tokenizer.system(prompt) + tokenizer.conversation(messages)[0]
            wrong += engine.tokenize(rendered([("system", prompt), *messages])) != expected
        for text in ODD_TEXTS:
            wrong += engine.tokenize(text) != tokenizer.encode(text)
    print("%d of %d texts are split differently" % (wrong, options.conversations + len(ODD_TEXTS)))
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
