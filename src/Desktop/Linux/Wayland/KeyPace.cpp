// SPDX-License-Identifier: Apache-2.0
#include "Desktop/Linux/Wayland/KeyPace.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr std::size_t burst = 400;
constexpr auto interval = 5ms;

} // namespace

std::chrono::milliseconds KeyPace::pauseBefore(std::size_t keys)
{
    m_sent += keys;
    if (m_sent <= burst)
        return 0ms;
    const std::chrono::milliseconds due = (m_sent - burst) * interval;
    return std::max(due - std::chrono::milliseconds(m_elapsed.elapsed()), 0ms);
}
