#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Compares the compiled kernels, forward and backward, with their PyTorch reference."""

import sys
from typing import Callable, Sequence

import torch
from torch import Tensor

from planner import kernels, reference_kernels

TOLERANCE = 0.02  # relative to the largest value: two roundings to bfloat16


def _outcome(function: Callable, inputs: Sequence, copied: bool) -> Sequence[Tensor]:
    """Results, and the gradients of all inputs under a fixed outer gradient."""
    leaves = [
        x.detach().clone().requires_grad_() if isinstance(x, Tensor) and x.requires_grad else x
        for x in inputs
    ]
    arguments = [x * 1 if copied and isinstance(x, Tensor) and x.requires_grad else x for x in leaves]
    results = function(*arguments)
    results = results if isinstance(results, tuple) else (results,)
    torch.manual_seed(7)
    sum((result.float() * torch.randn(result.shape)).sum() for result in results).backward()
    return [*results, *(x.grad for x in leaves if isinstance(x, Tensor) and x.requires_grad)]


def agrees(name: str, *inputs) -> bool:
    ours = _outcome(getattr(kernels, name), inputs, copied=True)
    theirs = _outcome(getattr(reference_kernels, name), inputs, copied=False)
    worst = max(
        float((a.float() - b.float()).abs().max() / b.float().abs().max().clamp(min=1e-6))
        for a, b in zip(ours, theirs)
    )
    print("%-15s largest difference %.4f" % (name, worst))
    return worst <= TOLERANCE


def main() -> int:
    torch.manual_seed(3)
    half = torch.bfloat16
    rows, length, heads, width, prefix = 3, 37, 6, 32, 11
    variable = lambda *shape, kind=half: torch.randn(*shape).to(kind).requires_grad_()
    angles = torch.randn(length, width // 2)
    fine = [
        agrees("rms_norm", variable(5, 192, kind=torch.float32), variable(192, kind=torch.float32), 1e-5),
        agrees("gated", variable(7, 512), variable(7, 512)),
        agrees(
            "attention",
            variable(rows * heads, length, width),
            variable(rows * heads, prefix + length, width),
            variable(rows * heads, prefix + length, width),
            heads,
        ),
        agrees(
            "split_heads",
            variable(rows, length, 3 * heads * width),
            angles.cos(),
            angles.sin(),
            variable(heads, prefix, width),
            variable(heads, prefix, width),
            heads,
        ),
    ]
    return 0 if all(fine) else 1


if __name__ == "__main__":
    sys.exit(main())
