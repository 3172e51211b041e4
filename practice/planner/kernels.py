# SPDX-License-Identifier: Apache-2.0
"""The model's element-wise operations and attention as autograd functions over compiled routines.

The C++ files are compiled once per version into the cache folder. reference_kernels.py has the same functions in
plain PyTorch; check_kernels.py compares the two.
"""

import ctypes
import hashlib
import os
import pathlib
import subprocess
from typing import Tuple

import torch
from torch import Tensor

_FOLDER = pathlib.Path(__file__).parent
_SOURCES = [_FOLDER / "kernels.cpp", _FOLDER / "attention.cpp"]
_HEADERS = [_FOLDER / "bfloat16.h"]
HEAD_WIDTH = 32  # hard-coded in attention.cpp
_COMPILER = ["g++", "-O3", "-march=native", "-ffast-math", "-fopenmp", "-shared", "-fPIC"]


def _library() -> ctypes.CDLL:
    texts = b"".join(path.read_bytes() for path in _SOURCES + _HEADERS)
    digest = hashlib.sha256(texts + " ".join(_COMPILER).encode()).hexdigest()[:16]
    cache = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "orvane-practice"
    target = cache / ("kernels-%s.so" % digest)
    if not target.exists():
        cache.mkdir(parents=True, exist_ok=True)
        unfinished = target.with_suffix(".%d" % os.getpid())
        subprocess.run([*_COMPILER, "-o", str(unfinished), *map(str, _SOURCES)], check=True)
        os.replace(unfinished, target)
    return ctypes.CDLL(str(target))


_KERNELS = _library()


def _call(name: str, *arguments) -> None:
    """Passes tensors as pointers, ints as long, floats as float."""
    converted = []
    for argument in arguments:
        if isinstance(argument, Tensor):
            if not argument.is_contiguous():
                raise ValueError(name + " needs contiguous tensors")
            converted.append(ctypes.c_void_p(argument.data_ptr()))
        else:
            converted.append(
                ctypes.c_float(argument) if isinstance(argument, float) else ctypes.c_long(argument)
            )
    getattr(_KERNELS, name)(*converted)


class _RmsNorm(torch.autograd.Function):
    @staticmethod
    def forward(context, x: Tensor, weight: Tensor, epsilon: float) -> Tensor:
        x = x.contiguous()
        width = x.shape[-1]
        rows = x.numel() // width
        y = torch.empty_like(x, dtype=torch.bfloat16)
        scales = torch.empty(rows)
        _call("rmsNormForward", x, weight, y, scales, rows, width, epsilon, torch.get_num_threads())
        context.save_for_backward(x, weight, scales)
        return y

    @staticmethod
    def backward(context, gradient: Tensor):
        x, weight, scales = context.saved_tensors
        x_gradient, weight_gradient = torch.empty_like(x), torch.zeros_like(weight)
        gradient = gradient.contiguous()
        _call(
            "rmsNormBackward",
            x,
            weight,
            scales,
            gradient,
            x_gradient,
            weight_gradient,
            len(scales),
            x.shape[-1],
        )
        return x_gradient, weight_gradient, None


class _Gated(torch.autograd.Function):
    @staticmethod
    def forward(context, gate: Tensor, up: Tensor) -> Tensor:
        y = torch.empty_like(gate)
        _call("gatedForward", gate, up, y, y.numel(), torch.get_num_threads())
        context.save_for_backward(gate, up)
        return y

    @staticmethod
    def backward(context, gradient: Tensor):
        gate, up = context.saved_tensors
        gate_gradient, up_gradient = torch.empty_like(gate), torch.empty_like(up)
        gradient = gradient.contiguous()
        _call(
            "gatedBackward",
            gate,
            up,
            gradient,
            gate_gradient,
            up_gradient,
            up.numel(),
            torch.get_num_threads(),
        )
        return gate_gradient, up_gradient


class _Attention(torch.autograd.Function):
    @staticmethod
    def forward(context, query: Tensor, key: Tensor, value: Tensor, heads: int) -> Tensor:
        matrices, length, width = query.shape
        if width != HEAD_WIDTH:
            raise ValueError("heads must be %d wide" % HEAD_WIDTH)
        output = query.new_empty(matrices // heads, length, heads * width)
        logarithms = torch.empty(matrices, length)
        sizes = (matrices, heads, length, key.shape[1], width**-0.5, torch.get_num_threads())
        _call("attentionForward", query, key, value, output, logarithms, *sizes)
        context.save_for_backward(query, key, value, output, logarithms)
        context.sizes = sizes
        return output

    @staticmethod
    def backward(context, gradient: Tensor):
        query, key, value, output, logarithms = context.saved_tensors
        gradients = [torch.empty_like(x) for x in (query, key, value)]
        tensors = (query, key, value, output, logarithms, gradient.contiguous(), *gradients)
        _call("attentionBackward", *tensors, *context.sizes)
        return (*gradients, None)


class _SplitHeads(torch.autograd.Function):
    @staticmethod
    def forward(
        context,
        qkv: Tensor,
        cosine: Tensor,
        sine: Tensor,
        shared_key: Tensor,
        shared_value: Tensor,
        heads: int,
    ):
        rows, length, _ = qkv.shape
        width = qkv.shape[-1] // 3 // heads
        prefix = shared_key.shape[1]
        query = qkv.new_empty(rows * heads, length, width)
        key = qkv.new_empty(rows * heads, prefix + length, width)
        value = torch.empty_like(key)
        sizes = (rows, length, heads, width, prefix, torch.get_num_threads())
        _call("splitHeadsForward", qkv, cosine, sine, shared_key, shared_value, query, key, value, *sizes)
        context.save_for_backward(cosine, sine)
        context.sizes = sizes
        return query, key, value

    @staticmethod
    def backward(context, query_gradient: Tensor, key_gradient: Tensor, value_gradient: Tensor):
        cosine, sine = context.saved_tensors
        rows, length, heads, width, prefix, _ = context.sizes
        gradient = query_gradient.new_empty(rows, length, 3 * heads * width)
        shared_key = query_gradient.new_empty(heads, prefix, width)
        shared_value = torch.empty_like(shared_key)
        gradients = [g.contiguous() for g in (query_gradient, key_gradient, value_gradient)]
        _call(
            "splitHeadsBackward", *gradients, cosine, sine, gradient, shared_key, shared_value, *context.sizes
        )
        return gradient, None, None, shared_key, shared_value, None


def rms_norm(x: Tensor, weight: Tensor, epsilon: float) -> Tensor:
    """RMS normalisation of the last dimension; float32 in, bfloat16 out."""
    return _RmsNorm.apply(x, weight, epsilon)


def gated(gate: Tensor, up: Tensor) -> Tensor:
    """SiLU of the gate times the other half of the feed-forward layer."""
    return _Gated.apply(gate, up)


def attention(query: Tensor, key: Tensor, value: Tensor, heads: int) -> Tensor:
    """Causal attention of (rows · heads, ·, HEAD_WIDTH) to (rows, length, heads · HEAD_WIDTH).

    The last query sees all keys, the one before it all but one, and so on.
    """
    return _Attention.apply(query, key, value, heads)


def split_heads(
    qkv: Tensor, cosine: Tensor, sine: Tensor, shared_key: Tensor, shared_value: Tensor, heads: int
) -> Tuple[Tensor, Tensor, Tensor]:
    """Queries, keys and values of (rows · heads, ·, head width), rotated by their positions.

    Keys and values begin with those of the shared prefix (heads, prefix, head width), which may be empty.
    """
    return _SplitHeads.apply(qkv, cosine, sine, shared_key, shared_value, heads)
