# SPDX-License-Identifier: Apache-2.0
"""Reference implementation of kernels.py in plain PyTorch, used by check_kernels.py."""

from typing import Tuple

import torch
import torch.nn.functional as F
from torch import Tensor


def rms_norm(x: Tensor, weight: Tensor, epsilon: float) -> Tensor:
    return (x * torch.rsqrt(x.pow(2).mean(-1, keepdim=True) + epsilon) * weight).to(torch.bfloat16)


def gated(gate: Tensor, up: Tensor) -> Tensor:
    return (F.silu(gate.float()) * up.float()).to(torch.bfloat16)


def attention(query: Tensor, key: Tensor, value: Tensor, heads: int) -> Tensor:
    length, keys = query.shape[1], key.shape[1]
    scores = query.float() @ key.float().transpose(1, 2) * query.shape[-1] ** -0.5
    mask = torch.full((length, keys), float("-inf")).triu(keys - length + 1)
    mixed = F.softmax(scores + mask, -1) @ value.float()
    return mixed.unflatten(0, (-1, heads)).transpose(1, 2).flatten(2).to(torch.bfloat16)


def split_heads(
    qkv: Tensor, cosine: Tensor, sine: Tensor, shared_key: Tensor, shared_value: Tensor, heads: int
) -> Tuple[Tensor, Tensor, Tensor]:
    rows, length, _ = qkv.shape
    width = qkv.shape[-1] // 3 // heads
    query, key, value = qkv.view(rows, length, 3, heads, width).permute(2, 0, 3, 1, 4).unbind(0)
    key = torch.cat((shared_key.expand(rows, -1, -1, -1), _rotated(key, cosine, sine)), 2)
    value = torch.cat((shared_value.expand(rows, -1, -1, -1), value), 2)
    query = _rotated(query, cosine, sine)
    return query.flatten(0, 1), key.flatten(0, 1), value.flatten(0, 1)


def _rotated(x: Tensor, cosine: Tensor, sine: Tensor) -> Tensor:
    """Rotates neighbouring pairs of the last dimension by their positions' angles."""
    pairs = torch.view_as_complex(x.float().reshape(*x.shape[:-1], -1, 2))
    return torch.view_as_real(pairs * torch.complex(cosine, sine)).flatten(-2).to(torch.bfloat16)
