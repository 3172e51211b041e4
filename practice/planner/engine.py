# SPDX-License-Identifier: Apache-2.0
"""The practice-evaluator program as a Python object: llama.cpp with the application's template and sampler."""

import json
import subprocess
from typing import Iterable, List

from .conversations import Message


class Engine:
    """Owns the evaluator's process; use it in a with statement."""

    def __init__(self, evaluator: str, model: str, threads: int = 1, seed: int = 1) -> None:
        self.seconds = 0.0
        self.replies = 0
        self._process = subprocess.Popen(
            [evaluator, model, str(threads), str(seed)],
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        )

    def __enter__(self) -> "Engine":
        return self

    def __exit__(self, *_) -> None:
        self._process.stdin.close()
        self._process.wait(timeout=10)

    def tokenize(self, text: str) -> List[int]:
        return self._ask({"tokenize": text})

    def reply(self, messages: Iterable[Message]) -> str:
        answer = self._ask({"messages": [{"role": role, "content": text} for role, text in messages]})
        self.seconds += answer["seconds"]
        self.replies += 1
        return answer["reply"]

    def _ask(self, request: dict):
        self._process.stdin.write(json.dumps(request) + "\n")
        self._process.stdin.flush()
        line = self._process.stdout.readline()
        if not line:
            raise RuntimeError("the evaluator ended; see its message above")
        return json.loads(line)
