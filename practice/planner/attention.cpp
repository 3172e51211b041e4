// SPDX-License-Identifier: Apache-2.0
//
// Causal attention for the practice planner's training step, fused: scores and weights stay in the CPU cache,
// and masked positions are skipped. Compiled and called by kernels.py; reference_kernels.py is the PyTorch
// equivalent.
//
// query (rows · heads, length, WIDTH), key and value (rows · heads, keys, WIDTH), output (rows, length,
// heads, WIDTH); query t sees the keys 0 … keys − length + t. All tensors are contiguous bfloat16; sums are
// float.

#include "bfloat16.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

namespace {

constexpr long WIDTH = 32; // of a head
constexpr long LANES = 16;
constexpr long BLOCK = 8;       // queries processed together
constexpr long STRIP = 2 * LANES; // keys whose scores are computed together
typedef float Lanes __attribute__((vector_size(sizeof(float) * LANES), aligned(4)));

inline Lanes &lanes(float *at)
{
    return *reinterpret_cast<Lanes *>(at);
}

inline const Lanes &lanes(const float *at)
{
    return *reinterpret_cast<const Lanes *>(at);
}

long padded(long keys)
{
    return (keys + STRIP - 1) / STRIP * STRIP;
}

using Floats = std::vector<float>;

// (count, WIDTH) as floats, followed by BLOCK zero rows
void widen(const bfloat16 *from, long count, Floats &to)
{
    to.assign(std::size_t((count + BLOCK) * WIDTH), 0.0F);
    for (long i = 0; i < count * WIDTH; ++i)
        to[std::size_t(i)] = widened(from[i]);
}

// (count, WIDTH) floats to (WIDTH, padded(count)), rows padded with zeros
void transpose(const Floats &from, long count, Floats &to)
{
    const long stride = padded(count);
    to.assign(std::size_t(WIDTH * stride), 0.0F);
    for (long k = 0; k < count; ++k)
        for (long d = 0; d < WIDTH; ++d)
            to[std::size_t(d * stride + k)] = from[std::size_t(k * WIDTH + d)];
}

// products[r][k] = left[r] · right[k] for one block of left rows and the first `seen` keys; right is
// transposed
void multiply(const float *left, const Floats &right, long stride, long seen, float *products)
{
    for (long k = 0; k < seen; k += STRIP) {
        Lanes sums[BLOCK][2] = {};
        for (long d = 0; d < WIDTH; ++d) {
            const float *row = right.data() + d * stride + k;
            const Lanes first = lanes(row), second = lanes(row + LANES);
            for (long r = 0; r < BLOCK; ++r) {
                sums[r][0] += left[r * WIDTH + d] * first;
                sums[r][1] += left[r * WIDTH + d] * second;
            }
        }
        for (long r = 0; r < BLOCK; ++r) {
            lanes(products + r * stride + k) = sums[r][0];
            lanes(products + r * stride + k + LANES) = sums[r][1];
        }
    }
}

// sums[r] = Σ weights[r][k] · rows[k], over the first `seen` keys
void mix(const float *weights, long stride, const Floats &rows, long seen, float *sums)
{
    Lanes total[BLOCK][2] = {};
    for (long k = 0; k < seen; ++k) {
        const Lanes first = lanes(rows.data() + k * WIDTH), second = lanes(rows.data() + k * WIDTH + LANES);
        for (long r = 0; r < BLOCK; ++r) {
            total[r][0] += weights[r * stride + k] * first;
            total[r][1] += weights[r * stride + k] * second;
        }
    }
    for (long r = 0; r < BLOCK; ++r) {
        lanes(sums + r * WIDTH) = total[r][0];
        lanes(sums + r * WIDTH + LANES) = total[r][1];
    }
}

// rows[k] += Σ weights[r][k] · left[r]
void spread(const float *weights, long stride, const float *left, long seen, Floats &rows)
{
    Lanes from[BLOCK][2];
    for (long r = 0; r < BLOCK; ++r) {
        from[r][0] = lanes(left + r * WIDTH);
        from[r][1] = lanes(left + r * WIDTH + LANES);
    }
    for (long k = 0; k < seen; ++k) {
        Lanes first = lanes(rows.data() + k * WIDTH), second = lanes(rows.data() + k * WIDTH + LANES);
        for (long r = 0; r < BLOCK; ++r) {
            first += weights[r * stride + k] * from[r][0];
            second += weights[r * stride + k] * from[r][1];
        }
        lanes(rows.data() + k * WIDTH) = first;
        lanes(rows.data() + k * WIDTH + LANES) = second;
    }
}

void narrow(const Floats &from, long count, bfloat16 *to)
{
    for (long i = 0; i < count * WIDTH; ++i)
        to[i] = narrowed(from[std::size_t(i)]);
}

struct Block
{
    long first; // query
    long count; // queries without padding
    long seen;  // keys visible to the last of them

    Block(long at, long length, long keys)
        : first(at), count(std::min(BLOCK, length - at)), seen(keys - length + at + count)
    {
    }
    long seenBy(long r) const
    {
        return seen - count + r + 1;
    }
};

// Turns the scores of one block into weights in place; masked positions become 0.
void softmax(const Block &block, float *scores, long stride, float scale, float *logarithms)
{
    for (long r = 0; r < BLOCK; ++r) {
        float *line = scores + r * stride;
        const long seen = r < block.count ? block.seenBy(r) : 0;
        float highest = -INFINITY;
        for (long k = 0; k < seen; ++k)
            highest = line[k] > highest ? line[k] : highest;
        float sum = 0;
        for (long k = 0; k < seen; ++k) {
            line[k] = std::exp((line[k] - highest) * scale);
            sum += line[k];
        }
        const float share = 1.0F / sum;
        for (long k = 0; k < seen; ++k)
            line[k] *= share;
        std::fill(line + seen, line + padded(block.seen), 0.0F);
        if (r < block.count)
            logarithms[block.first + r] = highest * scale + std::log(sum);
    }
}

} // namespace

extern "C" {

void attentionForward(const bfloat16 *query, const bfloat16 *key, const bfloat16 *value, bfloat16 *output,
                      float *logarithms, long matrices, long heads, long length, long keys, float scale,
                      int threads)
{
    const long stride = padded(keys);
#pragma omp parallel num_threads(threads) if (threads > 1)
    {
        Floats queries, rows, columns, scores(std::size_t(BLOCK * stride)), mixed(BLOCK * WIDTH);
#pragma omp for schedule(dynamic)
        for (long at = 0; at < matrices; ++at) {
            widen(query + at * length * WIDTH, length, queries);
            widen(key + at * keys * WIDTH, keys, rows);
            transpose(rows, keys, columns);
            widen(value + at * keys * WIDTH, keys, rows);
            const long row = at / heads, head = at % heads;
            for (long first = 0; first < length; first += BLOCK) {
                const Block block(first, length, keys);
                multiply(queries.data() + first * WIDTH, columns, stride, block.seen, scores.data());
                softmax(block, scores.data(), stride, scale, logarithms + at * length);
                mix(scores.data(), stride, rows, block.seen, mixed.data());
                for (long r = 0; r < block.count; ++r)
                    for (long d = 0; d < WIDTH; ++d)
                        output[((row * length + first + r) * heads + head) * WIDTH + d] =
                            narrowed(mixed[std::size_t(r * WIDTH + d)]);
            }
        }
    }
}

void attentionBackward(const bfloat16 *query, const bfloat16 *key, const bfloat16 *value,
                       const bfloat16 *output, const float *logarithms, const bfloat16 *gradient,
                       bfloat16 *queryGradient, bfloat16 *keyGradient, bfloat16 *valueGradient, long matrices,
                       long heads, long length, long keys, float scale, int threads)
{
    const long stride = padded(keys);
#pragma omp parallel num_threads(threads) if (threads > 1)
    {
        Floats queries, keyRows, keyColumns, valueRows, valueColumns, keySums, valueSums;
        Floats weights(std::size_t(BLOCK * stride)), slopes(std::size_t(BLOCK * stride)), mixed(BLOCK * WIDTH);
        Floats outer(BLOCK * WIDTH), along(BLOCK);
#pragma omp for schedule(dynamic)
        for (long at = 0; at < matrices; ++at) {
            widen(query + at * length * WIDTH, length, queries);
            widen(key + at * keys * WIDTH, keys, keyRows);
            transpose(keyRows, keys, keyColumns);
            widen(value + at * keys * WIDTH, keys, valueRows);
            transpose(valueRows, keys, valueColumns);
            keySums.assign(std::size_t(keys * WIDTH), 0.0F);
            valueSums.assign(std::size_t(keys * WIDTH), 0.0F);
            const long row = at / heads, head = at % heads;
            for (long first = 0; first < length; first += BLOCK) {
                const Block block(first, length, keys);
                std::fill(outer.begin(), outer.end(), 0.0F);
                for (long r = 0; r < block.count; ++r) {
                    const long from = ((row * length + first + r) * heads + head) * WIDTH;
                    float dot = 0;
                    for (long d = 0; d < WIDTH; ++d) {
                        outer[std::size_t(r * WIDTH + d)] = widened(gradient[from + d]);
                        dot += widened(gradient[from + d]) * widened(output[from + d]);
                    }
                    along[std::size_t(r)] = dot;
                }
                const float *left = queries.data() + first * WIDTH;
                multiply(left, keyColumns, stride, block.seen, weights.data());
                multiply(outer.data(), valueColumns, stride, block.seen, slopes.data());
                for (long r = 0; r < BLOCK; ++r) {
                    float *weight = weights.data() + r * stride, *slope = slopes.data() + r * stride;
                    const long seen = r < block.count ? block.seenBy(r) : 0;
                    const float logarithm = r < block.count ? logarithms[at * length + first + r] : 0;
                    const float mean = along[std::size_t(r)];
                    for (long k = 0; k < seen; ++k) {
                        weight[k] = std::exp(weight[k] * scale - logarithm);
                        slope[k] = weight[k] * (slope[k] - mean) * scale;
                    }
                    std::fill(weight + seen, weight + block.seen, 0.0F);
                    std::fill(slope + seen, slope + block.seen, 0.0F);
                }
                spread(weights.data(), stride, outer.data(), block.seen, valueSums);
                spread(slopes.data(), stride, left, block.seen, keySums);
                mix(slopes.data(), stride, keyRows, block.seen, mixed.data());
                for (long i = 0; i < block.count * WIDTH; ++i)
                    queryGradient[(at * length + first) * WIDTH + i] = narrowed(mixed[std::size_t(i)]);
            }
            narrow(keySums, keys, keyGradient + at * keys * WIDTH);
            narrow(valueSums, keys, valueGradient + at * keys * WIDTH);
        }
    }
}

} // extern "C"
