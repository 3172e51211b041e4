#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Scores a model through the application's own engine, system prompt and parser.

Four sets, all unseen in training:
  values    held-out values in wordings of the training grammar
  wordings  held-out values in wordings that the grammar cannot produce
  scripts   names and texts beyond ASCII in wordings of the training grammar
  demo      the demonstration tasks, each several times on different desktops

An action is right if its name and arguments equal the planned ones; two names of one key count as equal. A closing
message only has to be non-empty, except that an impossible request must be closed at once with the planned sentence.
A run is right if all its replies are; each is requested after the planned replies before it.
The columns "bytes" count replies that are equal to the last character. In the set of scripts, "declined" counts runs
in which the planner says that it cannot copy a name or text.

The tasks depend on the seed. Sampling is random, so a second run differs a little.
"""

import argparse
import collections
import json
import random
from typing import Dict, List, Optional, Sequence, Tuple

from planner import conversations, demonstrations
from planner.conversations import OUT_OF_REACH, TOO_LONG, Message, Setting
from planner.desktop import Desktop
from planner.engine import Action, Engine
from planner.evaluation_phrasings import EvaluationWordings
from planner.phrasings import PHRASINGS
from planner.values import HeldOutScripts, HeldOutValues, TrainingValues

DEMONSTRATION_SEED = 20
# Two names of one key in the application's key table.
KEY_OF_OTHER_NAME = {"enter": "return", "backspace": "delete", "esc": "escape"}
# Families whose tasks contain a name or text of the user's.
SCRIPT_FAMILIES = (
    "open_app quit_app web_search type_text click create_folder open_path trash finder_folder app_then two too_long"
).split()


def as_action(planned: str) -> Action:
    arguments = json.loads(planned)
    return arguments.pop("action"), arguments


def with_one_name_a_key(arguments: Dict[str, str]) -> Dict[str, str]:
    key = KEY_OF_OTHER_NAME.get(arguments.get("key", ""))
    return {**arguments, "key": key} if key else arguments


def says(message: str, planned: str) -> bool:
    """Whether a closing message is acceptable: the planned sentence for a declined request, else any text."""
    return message == planned if planned in (OUT_OF_REACH, TOO_LONG) else bool(message.strip())


def is_right(given: Optional[Action], planned: str) -> bool:
    """Whether the action equals the planned one."""
    wanted, arguments = as_action(planned)
    if given is None or given[0] != wanted:
        return False
    if wanted == "done":
        return says(given[1].get("message", ""), arguments["message"])
    return with_one_name_a_key(given[1]) == with_one_name_a_key(arguments)


class Score:
    """Counts for one family."""

    def __init__(self) -> None:
        self.tasks = self.first = self.runs = self.first_bytes = self.run_bytes = self.declined = 0

    def add(self, right: List[bool], same: List[bool], declined: bool) -> None:
        self.tasks += 1
        self.declined += declined
        self.first += right[0]
        self.runs += all(right)
        self.first_bytes += same[0]
        self.run_bytes += all(same)

    def plus(self, other: "Score") -> None:
        for name, value in vars(other).items():
            setattr(self, name, getattr(self, name) + value)

    def line(self, name: str, columns: Sequence[str]) -> str:
        shares = ["%.1f" % (100 * getattr(self, column) / max(1, self.tasks)) for column in columns]
        return "| %s | %d | %s |" % (name, self.tasks, " | ".join(shares))


Failure = Tuple[str, str, str, str]  # family, task, planned, given


def judge(
    engine: Engine, messages: List[Message]
) -> Tuple[List[bool], List[bool], Optional[Tuple[str, str]]]:
    """Per reply: whether it is right, and whether the bytes are the same; then the first wrong reply and its plan."""
    right: List[bool] = []
    same: List[bool] = []
    for index, (role, text) in enumerate(messages):
        if role == "assistant":
            reply = engine.reply(messages[:index])
            right.append(is_right(reply.action, text))
            same.append(reply.text == text)
            if not right[-1]:
                return right, same, (text, reply.text)
    return right, same, None


def score_families(
    engine: Engine, values: TrainingValues, wordings, families: Sequence[str], per_family: int, seed: int
) -> Tuple[Dict[str, Score], List[Failure]]:
    rng = random.Random(seed)
    scores: Dict[str, Score] = collections.defaultdict(Score)
    failures: List[Failure] = []
    for _ in range(per_family):
        for family in families:
            _, messages = conversations.make(rng, values, family, wordings=wordings)
            right, same, wrong = judge(engine, messages)
            scores[family].add(right, same, wrong is not None and TOO_LONG in wrong[1])
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
    setting.finish(demonstrations.DECLINED.get(task, "Done."))
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


COLUMNS = {
    "first": "first action",
    "runs": "whole run",
    "first_bytes": "first, bytes",
    "run_bytes": "run, bytes",
    "declined": "declined",
}


def report(title: str, scores: Dict[str, Score], columns: Sequence[str]) -> None:
    print("\n%s\n\n| family | tasks | %s |" % (title, " | ".join(COLUMNS[column] for column in columns)))
    print("|---|---|%s" % ("---|" * len(columns)))
    total = Score()
    for family, score in scores.items():
        print(score.line(family, columns))
        total.plus(score)
    print(total.line("**all**", columns))


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
        bytes_too = ("first", "runs", "first_bytes", "run_bytes")
        families = conversations.FAMILIES
        for title, values, wordings, chosen, columns in (
            ("Held-out values", HeldOutValues(), PHRASINGS, families, bytes_too),
            ("Held-out values and wordings", HeldOutValues(), EvaluationWordings(), families, bytes_too),
            ("Any script", HeldOutScripts(), PHRASINGS, SCRIPT_FAMILIES, ("first", "runs", "declined")),
        ):
            scores, failures = score_families(engine, values, wordings, chosen, options.tasks, options.seed)
            report(title, scores, columns)
            show(failures, options.show)
        passed, failures = score_demonstrations(engine, options.demonstrations)
        print("\nDemonstration tasks, passed of %d\n" % options.demonstrations)
        for task, count in passed.items():
            print("- %d: %s" % (count, task))
        show(failures, options.show)
        print("\nmilliseconds a reply: %.1f" % (1000 * engine.seconds / engine.replies))


if __name__ == "__main__":
    main()
