#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Trains the practice planner from scratch on generated conversations.

A run is determined by its arguments: data, initial weights and learning rates depend on the seed and on step numbers,
never on the clock. A run can be resumed from a checkpoint, also with an earlier or later decay:

    train.py --steps 12000 --decay-from 4800
    train.py --resume checkpoints/step-9000.pt --steps 10500 --decay-from 5000
"""

import argparse
import os
import pathlib
import time
from typing import Dict, Iterator

os.environ.setdefault(
    "OMP_WAIT_POLICY", "passive"
)  # a spinning thread would take the core from the other one

import torch
import torch.nn.functional as F
from torch import Tensor

from planner import tokenizer as tokens
from planner.batches import Batch, Batches
from planner.model import Planner, Shape
from planner.optimizer import Muon
from planner.system_prompt import SYSTEM_PROMPTS

MATRIX_RATE = 0.02
OTHER_RATE = 3e-3
WARM_UP = 100
SHORTENED = 0.5  # share of shortened conversations between --simple-until and --shorten-until
REPORTED_WEIGHT = 0.15  # weight of the desktop's reports, which also practise copying
VALUE_EDGE_WEIGHT = 4.0


def rate_factor(step: int, steps: int, decay_from: int) -> float:
    """Rises during the warm-up, stays level, then falls linearly to almost zero."""
    rise = min(1.0, (step + 1) / WARM_UP)
    fall = 1.0 if step < decay_from else (steps - step) / (steps - decay_from)
    return min(rise, max(0.005, fall))


def weighted_loss(scores: Tensor, targets: Tensor, classes: Tensor) -> Dict[str, Tensor]:
    """The loss to minimise, and the unweighted loss and accuracy over the model's own tokens."""
    each = F.cross_entropy(scores, targets, reduction="none")
    own = classes >= tokens.REPLY
    weights = 1.0 + (VALUE_EDGE_WEIGHT - 1.0) * (classes[own] == tokens.VALUE_EDGE).float()
    loss = (each[own] * weights).sum() / weights.sum()
    if not own.all():
        loss = loss + REPORTED_WEIGHT * each[~own].mean()
    right = (scores[own].argmax(-1) == targets[own]).float().mean()
    return {"loss": loss, "own": each[own].mean().detach(), "right": right.detach()}


class ThreadCount:
    """Chooses between one thread and all, because on a busy machine one is often faster.

    Now and then it tries the other count for two steps, of which only the second is timed, since the first includes
    the cost of the change.
    """

    TRIAL_EVERY = 40

    def __init__(self, fixed: int) -> None:
        self._counts = [fixed] if fixed else sorted({1, os.cpu_count() or 1})
        self._seconds: Dict[int, float] = {}  # for a token, a moving average
        self._current = self._counts[-1]
        self._step = 0
        torch.set_num_threads(self._current)

    def after_step(self, seconds: float, size: int) -> None:
        if len(self._counts) == 1:
            return
        known = self._seconds.get(self._current, seconds / size)
        trial = self._step % self.TRIAL_EVERY
        self._step += 1
        if trial != 0:
            self._seconds[self._current] = 0.7 * known + 0.3 * seconds / size
        if trial == self.TRIAL_EVERY - 1:
            self._use(next(count for count in self._counts if count != self._current))
        elif trial == 1:
            self._use(min(self._seconds, key=lambda count: self._seconds[count]))

    def _use(self, count: int) -> None:
        self._current = count
        torch.set_num_threads(count)

    def __str__(self) -> str:
        return str(self._current)


def new_adam(model: Planner) -> torch.optim.Adam:
    """The optimizer of all parameters not handled by Muon."""
    return torch.optim.Adam(model.others(), lr=OTHER_RATE, betas=(0.9, 0.98))


class Run:
    """One training run: model, optimizers, data and progress."""

    def __init__(self, options: argparse.Namespace) -> None:
        torch.manual_seed(options.seed)
        self.options = options
        self.tokenizer = tokens.load()
        self.prefixes = [torch.tensor(self.tokenizer.system(prompt)) for prompt in SYSTEM_PROMPTS]
        state = torch.load(options.resume) if options.resume else None
        self.model = Planner(Shape(**state["shape"]) if state else Shape(len(self.tokenizer)))
        self.muon = Muon(self.model.matrices())
        self.adam = new_adam(self.model)
        self.step = 0
        first_pool = self._restore(state) if state else 0
        self.batches = Batches(self.tokenizer, options.seed, options.batch_tokens, first_pool)

    def _restore(self, state: Dict) -> int:
        self.model.load_state_dict(state["model"])
        for buffer, saved in zip(self.muon.buffers, state["muon"]):
            buffer.copy_(saved)
        self.adam.load_state_dict(state["adam"])
        self.step = state["step"]
        return state["pool"] + 1

    def save(self, pool: int, name: str) -> None:
        folder = pathlib.Path(self.options.checkpoints)
        folder.mkdir(parents=True, exist_ok=True)
        state = {
            "shape": vars(self.model.shape),
            "model": self.model.state_dict(),
            "muon": self.muon.buffers,
            "adam": self.adam.state_dict(),
            "step": self.step,
            "pool": pool,
            "options": vars(self.options),
        }
        torch.save(state, folder / "unfinished.pt")
        os.replace(folder / "unfinished.pt", folder / name)

    def train(self) -> None:
        options = self.options
        stream: Iterator[Batch] = iter(self.batches)
        averages: Dict[str, float] = {}
        threads = ThreadCount(options.threads)
        started, seen = time.time(), 0
        batch = None
        while self.step < options.steps:
            self._choose_lessons()
            batch = next(stream)
            began = time.time()
            measured = self._learn(batch)
            threads.after_step(time.time() - began, batch.numbers.size)
            self.step += 1
            seen += batch.numbers.size
            for key, value in measured.items():
                averages[key] = 0.98 * averages.get(key, float(value)) + 0.02 * float(value)
            if self.step % 50 == 0:
                print(
                    "step %d  loss %.4f  right %.4f  tokens/s %.0f  threads %s"
                    % (
                        self.step,
                        averages["own"],
                        averages["right"],
                        seen / (time.time() - started),
                        threads,
                    ),
                    flush=True,
                )
                started, seen = time.time(), 0
            if self.step % 250 == 0:
                self.save(batch.pool, "latest.pt")
            if self.step % 2000 == 0:
                self.save(batch.pool, "step-%d.pt" % self.step)
        if batch:
            self.save(batch.pool, "final.pt")

    def _choose_lessons(self) -> None:
        """First replies on calm desktops until copying is learnt, then more and more whole runs."""
        simple = self.step < self.options.simple_until
        self.batches.calm = 1.0 if simple else self.options.calm
        self.batches.shortened = (
            1.0 if simple else SHORTENED if self.step < self.options.shorten_until else 0.0
        )

    def _learn(self, batch: Batch) -> Dict[str, Tensor]:
        numbers, classes = torch.from_numpy(batch.numbers), torch.from_numpy(batch.classes)
        following, counted = numbers[:, 1:].reshape(-1), classes[:, 1:].reshape(-1)
        wanted = counted.nonzero().squeeze(1)
        prefix = self.prefixes[self.step % len(self.prefixes)]
        scores = self.model(prefix, numbers[:, :-1], wanted)
        measured = weighted_loss(scores, following[wanted], counted[wanted])
        for parameter in self.model.parameters():
            parameter.grad = None
        measured.pop("loss").backward()
        torch.nn.utils.clip_grad_norm_(self.model.others(), 1.0)
        factor = self.options.rate * rate_factor(self.step, self.options.steps, self.options.decay_from)
        for group in self.adam.param_groups:
            group["lr"] = OTHER_RATE * factor
        self.muon.step(MATRIX_RATE * factor)
        self.adam.step()
        return measured


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("--steps", type=int, default=12000)
    parser.add_argument(
        "--decay-from", type=int, default=4800, help="the step at which the rates begin to fall"
    )
    parser.add_argument(
        "--simple-until", type=int, default=1500, help="first replies on calm desktops before it"
    )
    parser.add_argument(
        "--shorten-until", type=int, default=8000, help="all conversations are whole from it on"
    )
    parser.add_argument(
        "--rate", type=float, default=1.0, help="multiplies the learning rates, to train on gently"
    )
    parser.add_argument(
        "--calm", type=float, default=0.6, help="share of calm desktops from --simple-until on"
    )
    parser.add_argument("--batch-tokens", type=int, default=4096)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument(
        "--threads", type=int, default=0, help="0: the faster of one and all, found as it goes"
    )
    parser.add_argument("--resume", help="a checkpoint to go on from")
    parser.add_argument("--checkpoints", default="/var/tmp/orvane-practice", help="the folder to save in")
    options = parser.parse_args()
    run = Run(options)
    print("parameters:", sum(parameter.numel() for parameter in run.model.parameters()), flush=True)
    run.train()


if __name__ == "__main__":
    main()
