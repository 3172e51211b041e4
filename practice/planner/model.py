# SPDX-License-Identifier: Apache-2.0
"""A small Llama-architecture model, written for training on a CPU.

Matrix products use bfloat16; the residual stream and the parameters are float32. All conversations of a batch have
the same system prompt, so it is evaluated once, as a prefix that all rows attend to. RoPE rotates neighbouring pairs,
as llama.cpp does for this architecture.
"""

import math
from dataclasses import dataclass
from typing import List, Tuple

import torch
import torch.nn.functional as F
from torch import Tensor, nn

from . import kernels

ROPE_BASE = 10000.0
LONGEST = 2048
EPSILON = 1e-5


@dataclass(frozen=True)
class Shape:
    vocabulary: int
    width: int = 256
    layers: int = 8
    heads: int = 8
    feed_forward: int = 704

    @property
    def head_width(self) -> int:
        return self.width // self.heads


class Planner(nn.Module):
    """Token ids to next-token logits; input and output share the embedding."""

    def __init__(self, shape: Shape) -> None:
        super().__init__()
        self.shape = shape
        width, inner, layers = shape.width, shape.feed_forward, shape.layers
        self.embedding = nn.Parameter(torch.randn(shape.vocabulary, width) * 0.05)
        self.query_key_value = _matrices(layers, 3 * width, width)
        self.attention_output = _matrices(layers, width, width, 0.3)
        self.gate = _matrices(layers, inner, width)
        self.up = _matrices(layers, inner, width)
        self.down = _matrices(layers, width, inner, 0.3)
        self.attention_norm = nn.ParameterList([nn.Parameter(torch.ones(width)) for _ in range(layers)])
        self.feed_forward_norm = nn.ParameterList([nn.Parameter(torch.ones(width)) for _ in range(layers)])
        self.output_norm = nn.Parameter(torch.ones(width))
        cosine, sine = _rotations(shape.head_width)
        self.register_buffer("cosine", cosine, persistent=False)
        self.register_buffer("sine", sine, persistent=False)

    def matrices(self) -> List[Tuple[nn.Parameter, int]]:
        """The matrices between layers, each with the number of independent matrices stacked in it."""
        single = [*self.attention_output, *self.gate, *self.up, *self.down]
        return [(matrix, 3) for matrix in self.query_key_value] + [(matrix, 1) for matrix in single]

    def others(self) -> List[nn.Parameter]:
        return [self.embedding, *self.attention_norm, *self.feed_forward_norm, self.output_norm]

    def forward(self, prefix: Tensor, rows: Tensor, wanted: Tensor) -> Tensor:
        """Logits at the `wanted` indices into the flattened rows. prefix: (P), rows: (B, T)."""
        shared = self.embedding[prefix][None]
        hidden = F.embedding(rows, self.embedding)
        for layer in range(self.shape.layers):
            last = layer == self.shape.layers - 1
            shared, hidden = self._layer(layer, shared, hidden, wanted if last else None)
        return F.linear(kernels.rms_norm(hidden, self.output_norm, EPSILON), _half(self.embedding)).float()

    def _layer(self, layer: int, shared: Tensor, hidden: Tensor, wanted) -> Tuple[Tensor, Tensor]:
        weight = _half(self.query_key_value[layer])
        norm = self.attention_norm[layer]
        shared_qkv = F.linear(kernels.rms_norm(shared, norm, EPSILON), weight)
        hidden_qkv = F.linear(kernels.rms_norm(hidden, norm, EPSILON), weight)
        prefix = shared.shape[1]
        nothing = shared_qkv.new_empty(self.shape.heads, 0, self.shape.head_width)
        shared_query, shared_key, shared_value = self._heads(shared_qkv, 0, nothing, nothing)
        query, key, value = self._heads(hidden_qkv, prefix, shared_key, shared_value)
        attended = kernels.attention(query, key, value, self.shape.heads)
        if wanted is not None:
            # the last layer: only the wanted positions, and the prefix is not needed any more
            attended = attended.reshape(-1, self.shape.width)[wanted]
            hidden = hidden.reshape(-1, self.shape.width)[wanted]
            return shared, self._rest(layer, hidden, attended)
        shared_attended = kernels.attention(shared_query, shared_key, shared_value, self.shape.heads)
        return self._rest(layer, shared, shared_attended), self._rest(layer, hidden, attended)

    def _rest(self, layer: int, hidden: Tensor, attended: Tensor) -> Tensor:
        hidden = hidden + F.linear(attended, _half(self.attention_output[layer]))
        normed = kernels.rms_norm(hidden, self.feed_forward_norm[layer], EPSILON)
        inner = kernels.gated(
            F.linear(normed, _half(self.gate[layer])), F.linear(normed, _half(self.up[layer]))
        )
        return hidden + F.linear(inner, _half(self.down[layer]))

    def _heads(self, qkv: Tensor, first: int, shared_key: Tensor, shared_value: Tensor) -> Tuple[Tensor, ...]:
        """(B, T, 3·width) to rotated queries and keys, and values, of (B·heads, ·, head width)."""
        last = first + qkv.shape[1]
        cosine, sine = self.cosine[first:last], self.sine[first:last]
        return kernels.split_heads(qkv, cosine, sine, shared_key, shared_value, self.shape.heads)


def _half(parameter: Tensor) -> Tensor:
    return parameter.to(torch.bfloat16)


def _matrices(count: int, outputs: int, inputs: int, scale: float = 1.0) -> nn.ParameterList:
    deviation = scale / math.sqrt(inputs)
    return nn.ParameterList([nn.Parameter(torch.randn(outputs, inputs) * deviation) for _ in range(count)])


def _rotations(head_width: int) -> Tuple[Tensor, Tensor]:
    frequencies = ROPE_BASE ** (-torch.arange(0, head_width, 2).float() / head_width)
    angles = torch.arange(LONGEST).float()[:, None] * frequencies[None]
    return angles.cos(), angles.sin()
