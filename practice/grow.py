#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Makes a checkpoint of a larger model that gives the same answers as a smaller one, for further training.

New layers, heads and inner features have random input weights and zero output weights, and nothing reads the new
part of the residual stream yet, so nothing learnt is lost. The tokenizer may have more merges at its end: the
embedding of a new token starts as the mean of its parts.
"""

import argparse
import math
import pathlib
from typing import Dict, List

import torch
from torch import Tensor

from planner import tokenizer as tokens
from planner.model import Planner, Shape
from planner.optimizer import Muon
from train import new_adam

NEW_EMBEDDING_DEVIATION = 0.02


def old_places(layers: int, old_layers: int) -> List[int]:
    """Indices of the old layers in the new model: evenly spread, the first one first."""
    return [index * layers // old_layers for index in range(old_layers)]


def _fill_layer(model: Planner, place: int, weights: Dict[str, Tensor], index: int) -> None:
    old_qkv = weights["query_key_value.%d" % index]
    width = old_qkv.shape[1]
    inner = weights["gate.%d" % index].shape[0]
    for new, old in zip(model.query_key_value[place].chunk(3), old_qkv.chunk(3)):
        new[:width] = 0
        new[:width, :width] = old
    for name in ("gate", "up"):
        matrix = getattr(model, name)[place]
        matrix[:inner] = 0
        matrix[:inner, :width] = weights["%s.%d" % (name, index)]
    model.attention_output[place][:width, :width] = weights["attention_output.%d" % index]
    model.attention_output[place][:, width:] = 0
    model.down[place][:width, :inner] = weights["down.%d" % index]
    model.down[place][:, inner:] = 0
    scale = math.sqrt(width / model.shape.width)  # the mean square is now taken over more numbers
    for norms in ("attention_norm", "feed_forward_norm"):
        getattr(model, norms)[place][:width] = weights["%s.%d" % (norms, index)] * scale


def _embedding(old: Tensor) -> Tensor:
    """The old rows, and a new one for each further token of the present tokenizer."""
    present = tokens.load()
    merges = len(present.merges) - (len(present) - len(old))
    earlier = tokens.Tokenizer(present.merges[:merges])
    added = [old[earlier.encode(text)].mean(0) for text in present.merges[merges:]]
    return torch.cat([old, torch.stack(added)]) if added else old


@torch.no_grad()
def grown(weights: Dict[str, Tensor], old: Shape, shape: Shape) -> Planner:
    """A model of the given shape that contains the weights of a smaller one."""
    model = Planner(shape)
    width = old.width
    model.embedding.normal_(0, NEW_EMBEDDING_DEVIATION)
    model.embedding[:, :width] = _embedding(weights["embedding"])
    model.output_norm[:width] = weights["output_norm"] * math.sqrt(width / shape.width)
    model.output_norm[width:] = 0
    for layer in range(shape.layers):
        model.attention_output[layer][:width] = 0
        model.down[layer][:width] = 0
    for index, place in enumerate(old_places(shape.layers, old.layers)):
        _fill_layer(model, place, weights, index)
    return model


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("smaller", type=pathlib.Path, help="a checkpoint of the smaller model")
    parser.add_argument("target", type=pathlib.Path, help="the checkpoint to write, for train.py --resume")
    parser.add_argument("--width", type=int, default=Shape.width)
    parser.add_argument("--layers", type=int, default=Shape.layers)
    parser.add_argument("--heads", type=int, default=Shape.heads)
    parser.add_argument("--feed-forward", type=int, default=Shape.feed_forward)
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    torch.manual_seed(options.seed)
    state = torch.load(options.smaller)
    old = Shape(**state["shape"])
    shape = Shape(len(tokens.load()), options.width, options.layers, options.heads, options.feed_forward)
    if shape.head_width != old.head_width:
        raise SystemExit("heads must stay %d wide" % old.head_width)
    model = grown(state["model"], old, shape)
    options.target.parent.mkdir(parents=True, exist_ok=True)
    torch.save(
        {
            "shape": vars(shape),
            "model": model.state_dict(),
            "muon": Muon(model.matrices()).buffers,
            "adam": new_adam(model).state_dict(),
            "step": 0,
            "pool": -1,
        },
        options.target,
    )
    print("%s: %d parameters" % (options.target, sum(p.numel() for p in model.parameters())))


if __name__ == "__main__":
    main()
