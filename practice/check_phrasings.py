#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Checks that training and evaluation are disjoint.

No evaluation wording can be drawn from the grammar, and no training value contains a held-out word.
"""

import random
import re
import sys

from planner import held_out, vocabulary
from planner.evaluation_phrasings import EvaluationWordings
from planner.phrasings import PHRASINGS
from planner.values import TrainingValues


def wordings_in_grammar() -> int:
    """Counts the evaluation wordings that a template of the same rule can produce."""
    found = 0
    for rule, wordings in EvaluationWordings().all().items():
        patterns = list(PHRASINGS.patterns(rule))
        for wording in wordings:
            if any(pattern.fullmatch(wording) for pattern in patterns):
                print("the grammar produces: %s (%s)" % (wording, rule))
                found += 1
    return found


def grammar_matches_itself() -> int:
    """Counts drawn wordings that the patterns miss: the check above relies on the patterns."""
    rng = random.Random(1)
    missed = 0
    for rule in EvaluationWordings().all():
        patterns = list(PHRASINGS.patterns(rule))
        for _ in range(200):
            wording = PHRASINGS.expand(rule, rng)
            if not any(pattern.fullmatch(wording) for pattern in patterns):
                print("not recognised: %s (%s)" % (wording, rule))
                missed += 1
    return missed


def held_out_words_in_training() -> int:
    rng = random.Random(2)
    values = TrainingValues(["pro", "ject"])
    banned = held_out.banned_words()
    makers = (values.application, values.folder_name, values.query, values.text, values.label, values.host)
    found = 0
    for _ in range(20000):
        value = rng.choice(makers)(rng)
        if value.title() in vocabulary.APPLICATIONS:
            continue  # well-known names are not filtered; "1Password" contains a held-out word
        value = value.lower().replace("_", " ")
        found += len(banned.intersection(value.split(" ") + re.findall(r"[^\W\d]+", value)))
    if found:
        print("held-out words in training values:", found)
    return found


def main() -> int:
    return 1 if wordings_in_grammar() + grammar_matches_itself() + held_out_words_in_training() else 0


if __name__ == "__main__":
    sys.exit(main())
