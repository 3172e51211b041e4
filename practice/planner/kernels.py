# SPDX-License-Identifier: Apache-2.0
"""The element-wise parts of the model as autograd functions over the routines of kernels.cpp.

The C++ file is compiled once per version into the cache folder. reference_kernels.py holds the same functions in
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

_SOURCE = pathlib.Path(__file__).with_suffix(".cpp")
_COMPILER = ["g++", "-O3", "-march=native", "-ffast-math", "-fopenmp", "-shared", "-fPIC"]


def _library() -> ctypes.CDLL:
    digest = hashlib.sha256(_SOURCE.read_bytes() + " ".join(_COMPILER).encode()).hexdigest()[:16]
    cache = pathlib.Path(os.environ.get("XDG_CACHE_HOME", pathlib.Path.home() / ".cache")) / "orvane-practice"
    target = cache / ("kernels-%s.so" % digest)
    if not target.exists():
        cache.mkdir(parents=True, exist_ok=True)
        unfinished = target.with_suffix(".%d" % os.getpid())
        subprocess.run([*_COMPILER, "-o", str(unfinished), str(_SOURCE)], check=True)
        os.replace(unfinished, target)
    return ctypes.CDLL(str(target))


_KERNELS = _library()


def _call(name: str, *arguments) -> None:
    """Tensors go as pointers, ints as long, floats as float."""
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


class _CausalSoftmax(torch.autograd.Function):
    @staticmethod
    def forward(context, scores: Tensor, prefix: int, scale: float) -> Tensor:
        weights = scores.contiguous()  # in place: nothing else reads the scores
        context.mark_dirty(scores)
        matrices, length, keys = weights.shape
        _call("causalSoftmaxForward", weights, matrices, length, keys, prefix, scale, torch.get_num_threads())
        context.save_for_backward(weights)
        context.prefix, context.scale = prefix, scale
        return weights

    @staticmethod
    def backward(context, gradient: Tensor):
        (weights,) = context.saved_tensors
        matrices, length, keys = weights.shape
        result = gradient.contiguous().clone() if not gradient.is_contiguous() else gradient
        threads = torch.get_num_threads()
        _call(
            "causalSoftmaxBackward",
            weights,
            result,
            matrices,
            length,
            keys,
            context.prefix,
            context.scale,
            threads,
        )
        return result, None, None


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
    """Root-mean-square normalisation of the last dimension; float32 in, bfloat16 out."""
    return _RmsNorm.apply(x, weight, epsilon)


def gated(gate: Tensor, up: Tensor) -> Tensor:
    """SiLU of the gate times the other half of the feed-forward layer."""
    return _Gated.apply(gate, up)


def causal_softmax(scores: Tensor, prefix: int, scale: float) -> Tensor:
    """Weights of (matrices, length, keys) scores, in place; query t sees the keys 0 … prefix + t."""
    return _CausalSoftmax.apply(scores, prefix, scale)


def split_heads(
    qkv: Tensor, cosine: Tensor, sine: Tensor, shared_key: Tensor, shared_value: Tensor, heads: int
) -> Tuple[Tensor, Tensor, Tensor]:
    """Queries, keys and values of (rows · heads, ·, head width) with positions turned in.

    Keys and values begin with those of the shared prefix (heads, prefix, head width), which may be empty.
    """
    return _SplitHeads.apply(qkv, cosine, sine, shared_key, shared_value, heads)
