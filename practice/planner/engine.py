# SPDX-License-Identifier: Apache-2.0
"""Wraps the practice-evaluator program: the application's engine, system prompt and parser."""

import json
import subprocess
from dataclasses import dataclass
from typing import Dict, Iterable, List, Optional, Tuple

from .conversations import Message

Action = Tuple[str, Dict[str, str]]  # name, arguments


@dataclass
class Reply:
    text: str
    action: Optional[Action]  # as parsed by the application


class Engine:
    """Owns the evaluator's process; use it in a with statement."""

    def __init__(self, evaluator: str, model: str) -> None:
        self.seconds = 0.0
        self.replies = 0
        self._process = subprocess.Popen(
            [evaluator, model], stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True
        )

    def __enter__(self) -> "Engine":
        return self

    def __exit__(self, *_) -> None:
        self._process.stdin.close()
        self._process.wait(timeout=10)

    def tokenize(self, text: str) -> List[int]:
        return self._ask({"tokenize": text})

    def reply(self, messages: Iterable[Message]) -> Reply:
        """The reply to the messages, which exclude the system prompt."""
        answer = self._ask({"messages": [{"role": role, "content": text} for role, text in messages]})
        self.seconds += answer["seconds"]
        self.replies += 1
        action = answer["action"]
        return Reply(answer["reply"], (action["name"], action["args"]) if action else None)

    def _ask(self, request: dict):
        self._process.stdin.write(json.dumps(request) + "\n")
        self._process.stdin.flush()
        line = self._process.stdout.readline()
        if not line:
            raise RuntimeError("the evaluator ended; see its message above")
        return json.loads(line)
