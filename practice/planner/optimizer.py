# SPDX-License-Identifier: Apache-2.0
"""Muon: momentum with an orthogonalised update, for the matrices between the layers."""

import collections
from typing import Dict, List, Sequence, Tuple

import torch
from torch import Tensor, nn

_COEFFICIENTS = (3.4445, -4.7750, 2.0315)  # of the fifth-order Newton-Schulz iteration
_ITERATIONS = 5


def orthogonalised(matrices: Tensor) -> Tensor:
    """Each matrix of the stack (n, rows ≤ columns) with its singular values brought near one."""
    first, third, fifth = _COEFFICIENTS
    norms = matrices.flatten(1).norm(dim=1)[:, None, None]
    result = (matrices / (norms + 1e-7)).to(torch.bfloat16)
    for _ in range(_ITERATIONS):
        square = torch.bmm(result, result.transpose(1, 2))
        polynomial = third * square + fifth * torch.bmm(square, square)
        result = first * result + torch.bmm(polynomial, result)
    return result.float()


class Muon:
    """Takes (parameter, number of independent matrices stacked in it); batches equal shapes."""

    def __init__(
        self, matrices: Sequence[Tuple[nn.Parameter, int]], momentum: float = 0.95, decay: float = 0.01
    ):
        self._matrices = list(matrices)
        self._momentum = momentum
        self._decay = decay
        self.buffers = [torch.zeros_like(parameter) for parameter, _ in self._matrices]

    @torch.no_grad()
    def step(self, rate: float) -> None:
        by_shape: Dict[torch.Size, List[Tuple[Tensor, Tensor]]] = collections.defaultdict(list)
        for (parameter, parts), buffer in zip(self._matrices, self.buffers):
            buffer.mul_(self._momentum).add_(parameter.grad)
            direction = parameter.grad + self._momentum * buffer
            for target, part in zip(parameter.chunk(parts), direction.chunk(parts)):
                tall = target.shape[0] > target.shape[1]
                by_shape[part.t().shape if tall else part.shape].append((target, part.t() if tall else part))
        for pairs in by_shape.values():
            updates = orthogonalised(torch.stack([part for _, part in pairs]))
            for (target, part), update in zip(pairs, updates):
                rows, columns = target.shape
                scale = max(1.0, rows / columns) ** 0.5
                target.mul_(1 - rate * self._decay)
                target.add_(update.t() if update.shape != target.shape else update, alpha=-rate * scale)
