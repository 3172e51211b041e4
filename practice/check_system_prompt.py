#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the system prompts in the training data with the application's, byte by byte."""

import argparse
import subprocess
import sys

from planner.system_prompt import SYSTEM_PROMPTS


def first_difference(one: bytes, other: bytes) -> int:
    """The index of the first different byte, or the length of the shorter text."""
    for place, (a, b) in enumerate(zip(one, other)):
        if a != b:
            return place
    return min(len(one), len(other))


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument(
        "program", help="the built practice-system-prompt, which prints the application's text"
    )
    options = parser.parse_args()
    application = subprocess.run([options.program], check=True, stdout=subprocess.PIPE).stdout
    prompts = [prompt.encode() for prompt in SYSTEM_PROMPTS]
    if application in prompts:
        print("the application's system prompt is one of the training's")
        return 0
    training = max(prompts, key=lambda prompt: first_difference(application, prompt))
    place = first_difference(application, training)
    print("they differ at byte %d:" % place)
    print("  application", application[max(0, place - 20) : place + 40])
    print("  training   ", training[max(0, place - 20) : place + 40])
    return 1


if __name__ == "__main__":
    sys.exit(main())
