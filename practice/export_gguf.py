#!/usr/bin/python3
# SPDX-License-Identifier: Apache-2.0
"""Exports a checkpoint of train.py as a GGUF file of the llama architecture.

Needs llama.cpp's Python package gguf: pass its folder in a llama.cpp source tree with --gguf-py, or install it.
"""

import argparse
import pathlib
import sys
from typing import Any, Dict, Iterator, Tuple

import numpy as np
import torch

from planner import tokenizer as tokens
from planner.model import EPSILON, ROPE_BASE, Shape
from planner.tokenizer import Tokenizer

CONTEXT_LENGTH = 4096
CHAT_TEMPLATE = (
    "{% for message in messages %}"
    "{{'<|im_start|>' + message['role'] + '\n' + message['content'] + '<|im_end|>' + '\n'}}"
    "{% endfor %}"
    "{% if add_generation_prompt %}{{ '<|im_start|>assistant\n' }}{% endif %}"
)


def tensors(shape: Shape, weights: Dict[str, np.ndarray]) -> Iterator[Tuple[str, np.ndarray]]:
    """The tensors under llama.cpp's names. RoPE uses neighbouring pairs there too, so no row moves."""
    yield "token_embd.weight", weights["embedding"]
    yield "output_norm.weight", weights["output_norm"]
    for layer in range(shape.layers):
        name = "blk.%d." % layer
        query, key, value = np.split(weights["query_key_value.%d" % layer], 3)
        yield name + "attn_norm.weight", weights["attention_norm.%d" % layer]
        yield name + "attn_q.weight", query
        yield name + "attn_k.weight", key
        yield name + "attn_v.weight", value
        yield name + "attn_output.weight", weights["attention_output.%d" % layer]
        yield name + "ffn_norm.weight", weights["feed_forward_norm.%d" % layer]
        yield name + "ffn_gate.weight", weights["gate.%d" % layer]
        yield name + "ffn_up.weight", weights["up.%d" % layer]
        yield name + "ffn_down.weight", weights["down.%d" % layer]


def describe(writer: Any, gguf: Any, shape: Shape, tokenizer: Tokenizer) -> None:
    """Writes the metadata: architecture, dimensions and vocabulary."""
    writer.add_name("practice-planner")
    writer.add_description(
        "Tiny practice model trained from scratch on synthetic data; not a real assistant model."
    )
    writer.add_license("Apache-2.0")
    writer.add_file_type(gguf.LlamaFileType.MOSTLY_Q8_0)
    writer.add_vocab_size(shape.vocabulary)
    writer.add_context_length(CONTEXT_LENGTH)
    writer.add_embedding_length(shape.width)
    writer.add_block_count(shape.layers)
    writer.add_feed_forward_length(shape.feed_forward)
    writer.add_head_count(shape.heads)
    writer.add_head_count_kv(shape.heads)
    writer.add_rope_dimension_count(shape.head_width)
    writer.add_rope_freq_base(ROPE_BASE)
    writer.add_layer_norm_rms_eps(EPSILON)
    writer.add_tokenizer_model("llama")
    writer.add_tokenizer_pre("default")
    writer.add_token_list([text.encode() for text in tokenizer.tokens])
    writer.add_token_scores(tokenizer.scores)
    writer.add_token_types(tokenizer.types)
    writer.add_unk_token_id(0)
    writer.add_bos_token_id(tokenizer.start)
    writer.add_eos_token_id(tokenizer.end)
    writer.add_eot_token_id(tokenizer.end)
    writer.add_pad_token_id(tokenizer.end)
    writer.add_add_bos_token(False)
    writer.add_add_eos_token(False)
    writer.add_add_space_prefix(False)
    writer.add_chat_template(CHAT_TEMPLATE)


def export(checkpoint: pathlib.Path, target: pathlib.Path, gguf: Any) -> None:
    state = torch.load(checkpoint, map_location="cpu")
    shape = Shape(**state["shape"])
    tokenizer = tokens.load()
    if len(tokenizer) != shape.vocabulary:
        raise SystemExit("the checkpoint was trained with another tokenizer")
    writer = gguf.GGUFWriter(str(target), "llama")
    describe(writer, gguf, shape, tokenizer)
    weights = {name: weight.float().numpy() for name, weight in state["model"].items()}
    kind = gguf.GGMLQuantizationType.Q8_0
    for name, weight in tensors(shape, weights):
        weight = np.ascontiguousarray(weight, dtype=np.float32)
        if weight.ndim == 1:  # norms keep full precision
            writer.add_tensor(name, weight)
        else:
            writer.add_tensor(name, gguf.quants.quantize(weight, kind), raw_dtype=kind)
    writer.write_header_to_file()
    writer.write_kv_data_to_file()
    writer.write_tensors_to_file()
    writer.close()
    print("%s: step %d, %d bytes" % (target, state["step"], target.stat().st_size))


def main() -> None:
    parser = argparse.ArgumentParser(
        description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter
    )
    parser.add_argument("checkpoint", type=pathlib.Path)
    parser.add_argument("target", type=pathlib.Path)
    parser.add_argument("--gguf-py", help="the folder gguf-py of a llama.cpp source tree")
    options = parser.parse_args()
    if options.gguf_py:
        sys.path.insert(0, options.gguf_py)
    import gguf  # imported late, because --gguf-py may name its folder

    export(options.checkpoint, options.target, gguf)


if __name__ == "__main__":
    main()
