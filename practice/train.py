#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Trains the practice planner from scratch on generated conversations.

The run is fixed by its arguments: data, initial weights and learning rates depend on the seed and on step numbers,
never on the clock. A checkpoint lets a run go on, also with an earlier or later decay:

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

MATRIX_RATE = 0.02
OTHER_RATE = 3e-3
WARM_UP = 100
SHORTENED = 0.5  # share of shortened conversations in the first two thirds of the run
REPORTED_WEIGHT = 0.15  # what the desktop reports is learnt as well, a little: it practises copying
VALUE_START_WEIGHT = 4.0


def rate_factor(step: int, steps: int, decay_from: int) -> float:
    """Up during the warm-up, then level, then down in a straight line to almost nothing."""
    rise = min(1.0, (step + 1) / WARM_UP)
    fall = 1.0 if step < decay_from else (steps - step) / (steps - decay_from)
    return min(rise, max(0.005, fall))


def weighted_loss(scores: Tensor, targets: Tensor, classes: Tensor) -> Dict[str, Tensor]:
    """The loss to descend, and the plain loss and accuracy over the model's own tokens."""
    each = F.cross_entropy(scores, targets, reduction="none")
    own = classes >= tokens.REPLY
    weights = 1.0 + (VALUE_START_WEIGHT - 1.0) * (classes[own] == tokens.VALUE_START).float()
    loss = (each[own] * weights).sum() / weights.sum()
    if not own.all():
        loss = loss + REPORTED_WEIGHT * each[~own].mean()
    right = (scores[own].argmax(-1) == targets[own]).float().mean()
    return {"loss": loss, "own": each[own].mean().detach(), "right": right.detach()}


class Run:
    """One training run: the model, its optimizers, its data and where it stands."""

    def __init__(self, options: argparse.Namespace) -> None:
        torch.manual_seed(options.seed)
        self.options = options
        self.tokenizer = tokens.load()
        self.prefix = torch.tensor(self.tokenizer.system())
        self.model = Planner(Shape(len(self.tokenizer)))
        self.muon = Muon(self.model.matrices())
        self.adam = torch.optim.Adam(self.model.others(), lr=OTHER_RATE, betas=(0.9, 0.98))
        self.step = 0
        first_pool = self._restore(options.resume) if options.resume else 0
        self.batches = Batches(self.tokenizer, options.seed, options.batch_tokens, first_pool)

    def _restore(self, path: str) -> int:
        state = torch.load(path)
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
        started, seen = time.time(), 0
        batch = None
        while self.step < options.steps:
            self.batches.shortened = SHORTENED if self.step < options.steps * 2 / 3 else 0.0
            batch = next(stream)
            measured = self._learn(batch)
            self.step += 1
            seen += batch.numbers.size
            for key, value in measured.items():
                averages[key] = 0.98 * averages.get(key, float(value)) + 0.02 * float(value)
            if self.step % 50 == 0:
                print(
                    "step %d  loss %.4f  right %.4f  tokens/s %.0f"
                    % (self.step, averages["own"], averages["right"], seen / (time.time() - started)),
                    flush=True,
                )
            if self.step % 250 == 0:
                self.save(batch.pool, "latest.pt")
            if self.step % 2000 == 0:
                self.save(batch.pool, "step-%d.pt" % self.step)
        if batch:
            self.save(batch.pool, "final.pt")

    def _learn(self, batch: Batch) -> Dict[str, Tensor]:
        numbers, classes = torch.from_numpy(batch.numbers), torch.from_numpy(batch.classes)
        following, counted = numbers[:, 1:].reshape(-1), classes[:, 1:].reshape(-1)
        wanted = counted.nonzero().squeeze(1)
        scores = self.model(self.prefix, numbers[:, :-1], wanted)
        measured = weighted_loss(scores, following[wanted], counted[wanted])
        for parameter in self.model.parameters():
            parameter.grad = None
        measured.pop("loss").backward()
        torch.nn.utils.clip_grad_norm_(self.model.others(), 1.0)
        factor = rate_factor(self.step, self.options.steps, self.options.decay_from)
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
    parser.add_argument("--batch-tokens", type=int, default=4096)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--threads", type=int, default=2)
    parser.add_argument("--resume", help="a checkpoint to go on from")
    parser.add_argument("--checkpoints", default="/var/tmp/orvane-practice", help="the folder to save in")
    options = parser.parse_args()
    torch.set_num_threads(options.threads)
    run = Run(options)
    print("parameters:", sum(parameter.numel() for parameter in run.model.parameters()), flush=True)
    run.train()


if __name__ == "__main__":
    main()
