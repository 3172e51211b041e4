#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Makes a checkpoint for further training from the weights of an earlier planner's GGUF file.

The embedding is carried over by token text. A part of a fixed text that used to be one token starts near that token.
Every other new token starts like one more of the short pieces that names are spelt with, so that the layers that copy
those copy it as well; so do the bytes beyond ASCII if the earlier model never used them. All other tensors must have
the same shapes.
"""

import argparse
import difflib
import pathlib
import sys
from typing import Any, Dict, List, Optional

import torch
from torch import Tensor

from planner import scripts
from planner import tokenizer as tokens
from planner.model import Planner, Shape
from planner.optimizer import Muon
from train import new_adam

SHORT_PIECES = 420  # the merges that names are spelt with
SHORTEST_SHARED = 8


def read(path: pathlib.Path, gguf: Any) -> Any:
    return gguf.GGUFReader(str(path))


def texts(reader: Any) -> List[str]:
    """The texts of the earlier model's tokens, in order."""
    field = reader.fields["tokenizer.ggml.tokens"]
    return [bytes(field.parts[index]).decode() for index in field.data]


def weights(reader: Any, gguf: Any) -> Dict[str, Tensor]:
    """All tensors in full precision, under llama.cpp's names."""
    return {
        tensor.name: torch.tensor(gguf.quants.dequantize(tensor.data, tensor.tensor_type))
        for tensor in reader.tensors
    }


def whole_of(part: str, earlier_texts: List[str]) -> Optional[str]:
    """The earlier fixed text that contained most of the part."""
    best, longest = None, SHORTEST_SHARED
    for text in earlier_texts:
        if len(text.encode()) > tokens.MOST_BYTES:
            match = difflib.SequenceMatcher(None, text, part, False).find_longest_match(0, len(text), 0, len(part))
            if match.size > longest:
                best, longest = text, match.size
    return best


class Embedding:
    """The earlier model's embedding, and the initial values of new tokens."""

    def __init__(self, rows: Tensor, texts: List[str]) -> None:
        self._rows = rows
        self._texts = texts
        self._places = {text: place for place, text in enumerate(texts)}
        merges = [text for text in tokens.load().merges[:SHORT_PIECES] if text in self._places]
        pieces = rows[[self._places[text] for text in merges]]
        self._mean = pieces.mean(0)
        self._deviations = pieces - self._mean
        self._spells_all = self._places.keys() >= set(scripts.CHARACTERS)

    def row(self, text: str, kind: int) -> Tensor:
        if text in self._places and (self._spells_all or not self._spells_other_scripts(text, kind)):
            return self._rows[self._places[text]]
        whole = whole_of(text, self._texts) if kind == tokens.USER_DEFINED else None
        if whole:
            row = self._rows[self._places[whole]]
            return row if whole.startswith(text) else row + 0.5 * row.norm() * _direction(len(row))
        some = self._deviations[torch.randint(len(self._deviations), (2,))]
        return self._mean + some.sum(0) / 2**0.5

    @staticmethod
    def _spells_other_scripts(text: str, kind: int) -> bool:
        return kind == tokens.BYTE and text >= "<0x80>" or text in scripts.CHARACTERS


def _direction(width: int) -> Tensor:
    vector = torch.randn(width)
    return vector / vector.norm()


def carried_over(model: Planner, earlier: Dict[str, Tensor], earlier_texts: List[str]) -> int:
    """Fills the model; returns how many tokens are new."""
    current = tokens.load()
    embedding = Embedding(earlier["token_embd.weight"], earlier_texts)
    with torch.no_grad():
        for number, (text, kind) in enumerate(zip(current.tokens, current.types)):
            model.embedding[number] = embedding.row(text, kind)
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
    return len(set(current.tokens) - set(earlier_texts))


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
    import gguf  # imported late, because --gguf-py may name its folder

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
