#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Makes a checkpoint to train on from, out of the weights of an earlier planner's GGUF file.

The embedding goes over token by token, by text: tokens that the earlier model did not have start small and random.
All other tensors must have the same shapes.
"""

import argparse
import pathlib
import sys
from typing import Any, Dict, List

import torch
from torch import Tensor

from planner import tokenizer as tokens
from planner.model import Planner, Shape
from planner.optimizer import Muon
from train import new_adam


def read(path: pathlib.Path, gguf: Any) -> Any:
    return gguf.GGUFReader(str(path))


def texts(reader: Any) -> List[str]:
    """The texts of the earlier model's tokens, in their order."""
    field = reader.fields["tokenizer.ggml.tokens"]
    return [bytes(field.parts[index]).decode() for index in field.data]


def weights(reader: Any, gguf: Any) -> Dict[str, Tensor]:
    """All tensors in full precision, under llama.cpp's names."""
    return {
        tensor.name: torch.tensor(gguf.quants.dequantize(tensor.data, tensor.tensor_type))
        for tensor in reader.tensors
    }


def carried_over(model: Planner, earlier: Dict[str, Tensor], earlier_texts: List[str]) -> int:
    """Fills the model; returns how many tokens were new to the earlier one."""
    places = {text: place for place, text in enumerate(earlier_texts)}
    current = tokens.load().tokens
    new = 0
    with torch.no_grad():
        for number, text in enumerate(current):
            if text in places:
                model.embedding[number] = earlier["token_embd.weight"][places[text]]
            else:
                new += 1
        model.output_norm.copy_(earlier["output_norm.weight"])
        for layer in range(model.shape.layers):
            name = "blk.%d." % layer
            parts = [earlier[name + "attn_%s.weight" % part] for part in "qkv"]
            model.query_key_value[layer].copy_(torch.cat(parts))
            model.attention_output[layer].copy_(earlier[name + "attn_output.weight"])
            model.attention_norm[layer].copy_(earlier[name + "attn_norm.weight"])
            model.feed_forward_norm[layer].copy_(earlier[name + "ffn_norm.weight"])
            model.gate[layer].copy_(earlier[name + "ffn_gate.weight"])
            model.up[layer].copy_(earlier[name + "ffn_up.weight"])
            model.down[layer].copy_(earlier[name + "ffn_down.weight"])
    return new


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("earlier", type=pathlib.Path, help="the GGUF file of the earlier model")
    parser.add_argument(
        "checkpoint", type=pathlib.Path, help="the checkpoint to write, for train.py --resume"
    )
    parser.add_argument("--gguf-py", help="the folder gguf-py of a llama.cpp source tree")
    parser.add_argument("--seed", type=int, default=1)
    options = parser.parse_args()
    if options.gguf_py:
        sys.path.insert(0, options.gguf_py)
    import gguf  # only now: the folder may have been given by the option

    torch.manual_seed(options.seed)
    model = Planner(Shape(len(tokens.load())))
    reader = read(options.earlier, gguf)
    new = carried_over(model, weights(reader, gguf), texts(reader))
    state = {
        "shape": vars(model.shape),
        "model": model.state_dict(),
        "muon": Muon(model.matrices()).buffers,
        "adam": new_adam(model).state_dict(),
        "step": 0,
        "pool": -1,
    }
    options.checkpoint.parent.mkdir(parents=True, exist_ok=True)
    torch.save(state, options.checkpoint)
    print("%s: %d of %d tokens are new" % (options.checkpoint, new, model.shape.vocabulary))


if __name__ == "__main__":
    main()
