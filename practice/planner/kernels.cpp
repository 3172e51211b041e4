// SPDX-License-Identifier: Apache-2.0
//
// Element-wise operations of the practice planner's training step, each in one pass over memory. PyTorch
// takes several passes for each, which on a CPU cost more than the matrix products between them. Compiled and
// called by kernels.py; reference_kernels.py is the PyTorch equivalent. All tensors are contiguous.

#include "bfloat16.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

extern "C" {

void rmsNormForward(const float *x, const float *weight, bfloat16 *y, float *scales, long rows, long width,
                    float epsilon, int threads)
{
#pragma omp parallel for num_threads(threads) if (threads > 1)
    for (long row = 0; row < rows; ++row) {
        const float *in = x + row * width;
        bfloat16 *out = y + row * width;
        float sum = 0;
        for (long i = 0; i < width; ++i)
            sum += in[i] * in[i];
        const float scale = 1.0F / std::sqrt(sum / float(width) + epsilon);
        scales[row] = scale;
        for (long i = 0; i < width; ++i)
            out[i] = narrowed(in[i] * scale * weight[i]);
    }
}

// Single-threaded: every row adds to the same weight gradient.
void rmsNormBackward(const float *x, const float *weight, const float *scales, const bfloat16 *gradient,
                     float *xGradient, float *weightGradient, long rows, long width)
{
    for (long row = 0; row < rows; ++row) {
        const float *in = x + row * width;
        const bfloat16 *g = gradient + row * width;
        float *out = xGradient + row * width;
        const float scale = scales[row];
        float dot = 0;
        for (long i = 0; i < width; ++i) {
            const float product = widened(g[i]) * in[i] * scale;
            weightGradient[i] += product;
            dot += product * weight[i];
        }
        const float along = dot / float(width) * scale;
        for (long i = 0; i < width; ++i)
            out[i] = scale * (widened(g[i]) * weight[i] - in[i] * along);
    }
}

void gatedForward(const bfloat16 *gate, const bfloat16 *up, bfloat16 *y, long count, int threads)
{
#pragma omp parallel for simd num_threads(threads) if (parallel : threads > 1)
    for (long i = 0; i < count; ++i) {
        const float g = widened(gate[i]);
        y[i] = narrowed(g / (1.0F + std::exp(-g)) * widened(up[i]));
    }
}

void gatedBackward(const bfloat16 *gate, const bfloat16 *up, const bfloat16 *gradient, bfloat16 *gateGradient,
                   bfloat16 *upGradient, long count, int threads)
{
#pragma omp parallel for simd num_threads(threads) if (parallel : threads > 1)
    for (long i = 0; i < count; ++i) {
        const float g = widened(gate[i]);
        const float sigmoid = 1.0F / (1.0F + std::exp(-g));
        const float outer = widened(gradient[i]);
        upGradient[i] = narrowed(outer * g * sigmoid);
        gateGradient[i] = narrowed(outer * widened(up[i]) * sigmoid * (1.0F + g * (1.0F - sigmoid)));
    }
}

// qkv (rows, length, 3, heads, width) to query (rows, heads, length, width), and to key and value (rows,
// heads, prefix + length, width), which start with the shared prefix (heads, prefix, width). Neighbouring
// pairs of queries and keys are rotated by the angles of their positions (RoPE).
void splitHeadsForward(const bfloat16 *qkv, const float *cosine, const float *sine, const bfloat16 *sharedKey,
                       const bfloat16 *sharedValue, bfloat16 *query, bfloat16 *key, bfloat16 *value,
                       long rows, long length, long heads, long width, long prefix, int threads)
{
    const long keys = prefix + length;
    const std::size_t shared = sizeof(bfloat16) * std::size_t(prefix * width);
#pragma omp parallel for num_threads(threads) if (threads > 1)
    for (long at = 0; at < rows * heads; ++at) {
        const long row = at / heads;
        const long head = at % heads;
        bfloat16 *keyOut = key + at * keys * width;
        bfloat16 *valueOut = value + at * keys * width;
        if (prefix > 0) {
            std::memcpy(keyOut, sharedKey + head * prefix * width, shared);
            std::memcpy(valueOut, sharedValue + head * prefix * width, shared);
        }
        for (long t = 0; t < length; ++t) {
            const bfloat16 *in = qkv + ((row * length + t) * 3 * heads + head) * width;
            const bfloat16 *keyIn = in + heads * width;
            bfloat16 *q = query + (at * length + t) * width;
            bfloat16 *k = keyOut + (prefix + t) * width;
            std::memcpy(valueOut + (prefix + t) * width, in + 2 * heads * width,
                        sizeof(bfloat16) * std::size_t(width));
            const float *c = cosine + t * width / 2;
            const float *s = sine + t * width / 2;
            for (long i = 0; i < width / 2; ++i) {
                const float q0 = widened(in[2 * i]), q1 = widened(in[2 * i + 1]);
                const float k0 = widened(keyIn[2 * i]), k1 = widened(keyIn[2 * i + 1]);
                q[2 * i] = narrowed(q0 * c[i] - q1 * s[i]);
                q[2 * i + 1] = narrowed(q0 * s[i] + q1 * c[i]);
                k[2 * i] = narrowed(k0 * c[i] - k1 * s[i]);
                k[2 * i + 1] = narrowed(k0 * s[i] + k1 * c[i]);
            }
        }
    }
}

void splitHeadsBackward(const bfloat16 *queryGradient, const bfloat16 *keyGradient,
                        const bfloat16 *valueGradient, const float *cosine, const float *sine,
                        bfloat16 *gradient, bfloat16 *sharedKeyGradient, bfloat16 *sharedValueGradient,
                        long rows, long length, long heads, long width, long prefix, int threads)
{
    const long keys = prefix + length;
#pragma omp parallel for num_threads(threads) if (threads > 1)
    for (long at = 0; at < rows * heads; ++at) {
        const long row = at / heads;
        const long head = at % heads;
        for (long t = 0; t < length; ++t) {
            bfloat16 *out = gradient + ((row * length + t) * 3 * heads + head) * width;
            bfloat16 *keyOut = out + heads * width;
            const bfloat16 *q = queryGradient + (at * length + t) * width;
            const bfloat16 *k = keyGradient + (at * keys + prefix + t) * width;
            std::memcpy(out + 2 * heads * width, valueGradient + (at * keys + prefix + t) * width,
                        sizeof(bfloat16) * std::size_t(width));
            const float *c = cosine + t * width / 2;
            const float *s = sine + t * width / 2;
            for (long i = 0; i < width / 2; ++i) {
                const float q0 = widened(q[2 * i]), q1 = widened(q[2 * i + 1]);
                const float k0 = widened(k[2 * i]), k1 = widened(k[2 * i + 1]);
                out[2 * i] = narrowed(q0 * c[i] + q1 * s[i]);
                out[2 * i + 1] = narrowed(q1 * c[i] - q0 * s[i]);
                keyOut[2 * i] = narrowed(k0 * c[i] + k1 * s[i]);
                keyOut[2 * i + 1] = narrowed(k1 * c[i] - k0 * s[i]);
            }
        }
    }
    std::vector<float> keySum(std::size_t(prefix * width)), valueSum(std::size_t(prefix * width));
    for (long head = 0; head < heads; ++head) {
        std::fill(keySum.begin(), keySum.end(), 0.0F);
        std::fill(valueSum.begin(), valueSum.end(), 0.0F);
        for (long row = 0; row < rows; ++row) {
            const long from = (row * heads + head) * keys * width;
            for (long i = 0; i < prefix * width; ++i) {
                keySum[std::size_t(i)] += widened(keyGradient[from + i]);
                valueSum[std::size_t(i)] += widened(valueGradient[from + i]);
            }
        }
        for (long i = 0; i < prefix * width; ++i) {
            sharedKeyGradient[head * prefix * width + i] = narrowed(keySum[std::size_t(i)]);
            sharedValueGradient[head * prefix * width + i] = narrowed(valueSum[std::size_t(i)]);
        }
    }
}

} // extern "C"
