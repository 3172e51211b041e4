#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Scores a model with llama.cpp, with the application's chat template and sampler.

Three sets, none of which training has seen:
  values    held-out values in wordings of the training grammar
  wordings  held-out values in wordings that the grammar cannot produce
  demo      the twelve demonstration tasks, each several times on different desktops

An action is right when its name and its arguments are equal to the planned ones, two names of one
key counting as equal; the words of a closing message are not judged, except that a request out of
reach must be closed at once. A run is right when every reply of it is, each one asked for after the
planned replies before it. The columns "bytes" count replies that are equal to the last character.
"""

import argparse
import collections
import json
import random
from typing import Dict, List, Optional, Tuple

from planner import conversations, demonstrations
from planner.conversations import Message, Setting
from planner.desktop import Desktop
from planner.engine import Engine
from planner.evaluation_phrasings import EvaluationWordings
from planner.phrasings import PHRASINGS
from planner.system_prompt import SYSTEM_PROMPT
from planner.values import HeldOutValues

DEMONSTRATION_SEED = 20
# The application presses the same key for both names.
KEY_OF_OTHER_NAME = {"enter": "return", "backspace": "delete", "esc": "escape"}


def parsed(reply: str) -> Optional[dict]:
    try:
        value = json.loads(reply)
    except ValueError:
        return None
    return value if isinstance(value, dict) else None


def with_one_name_a_key(action: dict) -> dict:
    key = KEY_OF_OTHER_NAME.get(str(action.get("key")))
    return {**action, "key": key} if key else action


def is_right(reply: str, planned: str) -> bool:
    """Whether the reply is the planned action; closing messages may differ in their words."""
    given, wanted = parsed(reply), json.loads(planned)
    if given is None:
        return False
    if wanted["action"] == "done":
        return given.get("action") == "done"
    return with_one_name_a_key(given) == with_one_name_a_key(wanted)


class Score:
    """Counts over one family."""

    def __init__(self) -> None:
        self.tasks = self.first = self.runs = self.first_bytes = self.run_bytes = 0

    def add(self, right: List[bool], same: List[bool]) -> None:
        self.tasks += 1
        self.first += right[0]
        self.runs += all(right)
        self.first_bytes += same[0]
        self.run_bytes += all(same)

    def plus(self, other: "Score") -> None:
        for name, value in vars(other).items():
            setattr(self, name, getattr(self, name) + value)

    def line(self, name: str) -> str:
        shares = [
            100 * count / max(1, self.tasks)
            for count in (self.first, self.runs, self.first_bytes, self.run_bytes)
        ]
        return "| %s | %d | %.1f | %.1f | %.1f | %.1f |" % (name, self.tasks, *shares)


Failure = Tuple[str, str, str, str]  # family, task, planned, given


def judge(
    engine: Engine, messages: List[Message]
) -> Tuple[List[bool], List[bool], Optional[Tuple[str, str]]]:
    """Per reply: right, and the same bytes; then the first wrong reply with its plan, where it stops."""
    history: List[Message] = [("system", SYSTEM_PROMPT)]
    right: List[bool] = []
    same: List[bool] = []
    for role, text in messages:
        if role == "assistant":
            reply = engine.reply(history)
            right.append(is_right(reply, text))
            same.append(reply == text)
            if not right[-1]:
                return right, same, (text, reply)
        history.append((role, text))
    return right, same, None


def score_families(
    engine: Engine, wordings, per_family: int, seed: int
) -> Tuple[Dict[str, Score], List[Failure]]:
    rng = random.Random(seed)
    values = HeldOutValues()
    scores: Dict[str, Score] = collections.defaultdict(Score)
    failures: List[Failure] = []
    for _ in range(per_family):
        for family in conversations.FAMILIES:
            _, messages = conversations.make(rng, values, family, wordings=wordings)
            right, same, wrong = judge(engine, messages)
            scores[family].add(right, same)
            if wrong:
                failures.append((family, messages[0][1].split("\nState: ")[0][len("User: ") :], *wrong))
    return scores, failures


def demonstration(task: str, rng: random.Random) -> List[Message]:
    """The planned conversation of a demonstration task on a random desktop."""
    setting = Setting(rng, HeldOutValues(), PHRASINGS, error_rate=0.0)
    desktop: Desktop = setting.desktop
    setting.ask(task)
    for reply, result in demonstrations.PLANS[task]:
        filled = result.replace("{home}", desktop.home).replace("{windows}", desktop.window_summary())
        if filled.endswith(" is now frontmost."):
            desktop.bring_forward(filled[: -len(" is now frontmost.")])
        setting.act(reply, filled)
    setting.finish("Done.")
    return setting.messages


def score_demonstrations(engine: Engine, times: int) -> Tuple[Dict[str, int], List[Failure]]:
    rng = random.Random(DEMONSTRATION_SEED)
    passed: Dict[str, int] = {}
    failures: List[Failure] = []
    for task in demonstrations.tasks():
        passed[task] = 0
        for _ in range(times):
            right, _, wrong = judge(engine, demonstration(task, rng))
            passed[task] += all(right)
            if wrong:
                failures.append(("demo", task, *wrong))
    return passed, failures


def report(title: str, scores: Dict[str, Score]) -> None:
    print("\n%s\n\n| family | tasks | first action | whole run | first, bytes | run, bytes |" % title)
    print("|---|---|---|---|---|---|")
    total = Score()
    for family in conversations.FAMILIES:
        print(scores[family].line(family))
        total.plus(scores[family])
    print(total.line("**all**"))


def show(failures: List[Failure], most: int) -> None:
    for family, task, planned, given in failures[:most]:
        print("- %s: %s\n    planned %s\n    given   %s" % (family, task, planned, given[:200]))


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("model")
    parser.add_argument("--evaluator", required=True, help="the built practice-evaluator")
    parser.add_argument("--tasks", type=int, default=50, help="tasks per family and set")
    parser.add_argument("--demonstrations", type=int, default=10, help="runs of each demonstration task")
    parser.add_argument("--seed", type=int, default=555)
    parser.add_argument("--show", type=int, default=0, help="failures to print per set")
    options = parser.parse_args()
    with Engine(options.evaluator, options.model) as engine:
        for title, wordings in (
            ("Held-out values", PHRASINGS),
            ("Held-out values and wordings", EvaluationWordings()),
        ):
            scores, failures = score_families(engine, wordings, options.tasks, options.seed)
            report(title, scores)
            show(failures, options.show)
        passed, failures = score_demonstrations(engine, options.demonstrations)
        print("\nDemonstration tasks, passed of %d\n" % options.demonstrations)
        for task, count in passed.items():
            print("- %d: %s" % (count, task))
        show(failures, options.show)
        print("\nmilliseconds a reply: %.1f" % (1000 * engine.seconds / engine.replies))


if __name__ == "__main__":
    main()
