// SPDX-License-Identifier: Apache-2.0
//
// A 16-bit number: the upper half of a float.

#pragma once

#include <cstdint>
#include <cstring>

using bfloat16 = std::uint16_t;

inline float widened(bfloat16 value)
{
    const std::uint32_t bits = std::uint32_t(value) << 16;
    float result;
    std::memcpy(&result, &bits, sizeof result);
    return result;
}

inline bfloat16 narrowed(float value)
{
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return bfloat16((bits + 0x7FFF + ((bits >> 16) & 1)) >> 16); // rounds to nearest, ties to even
}
